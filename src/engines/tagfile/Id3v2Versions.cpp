#include "engines/tagfile/Id3v2Versions.h"

#include "engines/tagfile/Id3v2Text.h"

#include <QtEndian>
#include <algorithm>

namespace engines {

namespace {

/// The ids of version 2.2 and those of 2.3.
constexpr struct
{
    const char *old;
    const char *id;
} OldIds[] = {
    {"BUF", "RBUF"}, {"CNT", "PCNT"}, {"COM", "COMM"}, {"CRA", "AENC"}, {"EQU", "EQUA"}, {"ETC", "ETCO"},
    {"GEO", "GEOB"}, {"GP1", "GRP1"}, {"IPL", "IPLS"}, {"LNK", "LINK"}, {"MCI", "MCDI"}, {"MLL", "MLLT"},
    {"MVI", "MVIN"}, {"MVN", "MVNM"}, {"PCS", "PCST"}, {"PIC", "APIC"}, {"POP", "POPM"}, {"REV", "RVRB"},
    {"RVA", "RVAD"}, {"SLT", "SYLT"}, {"STC", "SYTC"}, {"TAL", "TALB"}, {"TBP", "TBPM"}, {"TCM", "TCOM"},
    {"TCO", "TCON"}, {"TCP", "TCMP"}, {"TCR", "TCOP"}, {"TCT", "TCAT"}, {"TDA", "TDAT"}, {"TDR", "TDRL"},
    {"TDS", "TDES"}, {"TDY", "TDLY"}, {"TEN", "TENC"}, {"TFT", "TFLT"}, {"TID", "TGID"}, {"TIM", "TIME"},
    {"TKE", "TKEY"}, {"TLA", "TLAN"}, {"TLE", "TLEN"}, {"TMT", "TMED"}, {"TOA", "TOPE"}, {"TOF", "TOFN"},
    {"TOL", "TOLY"}, {"TOR", "TORY"}, {"TOT", "TOAL"}, {"TP1", "TPE1"}, {"TP2", "TPE2"}, {"TP3", "TPE3"},
    {"TP4", "TPE4"}, {"TPA", "TPOS"}, {"TPB", "TPUB"}, {"TRC", "TSRC"}, {"TRD", "TRDA"}, {"TRK", "TRCK"},
    {"TS2", "TSO2"}, {"TSA", "TSOA"}, {"TSC", "TSOC"}, {"TSI", "TSIZ"}, {"TSP", "TSOP"}, {"TSS", "TSSE"},
    {"TST", "TSOT"}, {"TT1", "TIT1"}, {"TT2", "TIT2"}, {"TT3", "TIT3"}, {"TXT", "TEXT"}, {"TXX", "TXXX"},
    {"TYE", "TYER"}, {"UFI", "UFID"}, {"ULT", "USLT"}, {"WAF", "WOAF"}, {"WAR", "WOAR"}, {"WAS", "WOAS"},
    {"WCM", "WCOM"}, {"WCP", "WCOP"}, {"WFD", "WFED"}, {"WPB", "WPUB"}, {"WXX", "WXXX"},
};

/// A picture names its format by three characters in version 2.2, by a MIME type later.
QByteArray pictureData(const QByteArray &data)
{
    if (data.size() < 4)
        return data;
    const QByteArray format = data.mid(1, 3);
    QByteArray type = format;
    if (format != "-->")
        type = format == "JPG" ? QByteArray("image/jpeg") : "image/" + format.toLower();
    return data.left(1) + type + '\0' + data.mid(4);
}

/// Where the frames begin that stand inside a chapter or a table of contents; none in other frames.
std::optional<qsizetype> embeddedFrames(const Id3v2Frame &frame)
{
    const qsizetype name = frame.data.indexOf('\0') + 1;
    if (frame.id == "CHAP" && name > 0)
        return name + 16; // four times
    if (frame.id != "CTOC" || name == 0 || frame.data.size() < name + 2)
        return {};
    qsizetype place = name + 2; // flags and count
    for (int children = static_cast<quint8>(frame.data[name + 1]); children > 0 && place > 0; --children)
        place = frame.data.indexOf('\0', place) + 1;
    return place > 0 ? std::optional(place) : std::nullopt;
}

Id3v2Frame frameToVersion24(const Id3v2Frame &frame)
{
    const QByteArray id = frame.id == "IPLS" ? "TIPL" : frame.id == "TORY" ? "TDOR" : frame.id;
    Id3v2Frame result{id, static_cast<quint16>((frame.flags & 0xe000) >> 1), {}};
    QByteArray data = frame.data;
    const auto take = [&](bool there, qsizetype count) {
        const QByteArray taken = there ? data.left(count) : QByteArray();
        data.remove(0, taken.size());
        return taken;
    };
    const QByteArray length = take(frame.flags & Id3v2Flags23::Compressed, 4);
    const QByteArray method = take(frame.flags & Id3v2Flags23::Encrypted, 1);
    const QByteArray group = take(frame.flags & Id3v2Flags23::Grouped, 1);
    result.data = group + method;
    if (length.size() == 4)
        appendSynchsafe(result.data, qFromBigEndian<quint32>(length.constData()));
    if (frame.flags & Id3v2Flags23::Compressed)
        result.flags |= Id3v2Flags24::Compressed | Id3v2Flags24::HasLength;
    if (frame.flags & Id3v2Flags23::Encrypted)
        result.flags |= Id3v2Flags24::Encrypted;
    if (frame.flags & Id3v2Flags23::Grouped)
        result.flags |= Id3v2Flags24::Grouped;
    if (const auto place = result.flags == 0 ? embeddedFrames(frame) : std::nullopt) {
        const Id3v2Frames embedded = Id3v2Frames::parse(data.mid(*place), 3);
        if (!embedded.damaged)
            data = data.left(*place) + bytesOfFrames(toVersion24(embedded.frames), 4);
    }
    result.data += data;
    return result;
}

/// The text of a frame that holds nothing but digits, `count` of them; empty for any other.
QByteArray digitsOf(const QList<Id3v2Frame> &frames, const char *id, qsizetype count)
{
    const auto frame = std::find_if(frames.begin(), frames.end(),
                                    [&](const Id3v2Frame &each) { return each.id == id && each.flags == 0; });
    if (frame == frames.end())
        return {};
    const QByteArray text = Id3v2Text::Reader(frame->data).allTexts().value(0).toLatin1();
    const bool isNumber = std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber && text.size() == count ? text : QByteArray();
}

} // namespace

QByteArray withoutUnsynchronisation(const QByteArray &data)
{
    QByteArray plain;
    plain.reserve(data.size());
    for (qsizetype i = 0; i < data.size(); ++i) {
        plain.append(data[i]);
        if (data[i] != '\xff' || i + 1 == data.size())
            continue;
        if (static_cast<quint8>(data[i + 1]) >= 0xe0)
            return data;
        if (data[i + 1] == '\0')
            ++i;
    }
    return plain;
}

Id3v2Frame withLongId(const Id3v2Frame &frame)
{
    if (frame.id.size() == 4 && !frame.id.endsWith('\0'))
        return frame;
    const QByteArray id = frame.id.left(3);
    for (const auto &known : OldIds) {
        if (id == known.old)
            return {known.id, frame.flags,
                    id == "PIC" && frame.id.size() == 3 ? pictureData(frame.data) : frame.data};
    }
    // An id of no known meaning; one of three characters gets the form of the version.
    return {frame.id.size() == 4 ? frame.id : id + '0', frame.flags, frame.data};
}

QList<Id3v2Frame> toVersion24(const QList<Id3v2Frame> &frames)
{
    QList<QByteArray> inDate;
    QByteArray date = digitsOf(frames, "TYER", 4);
    if (!date.isEmpty()) {
        inDate.append("TYER");
        if (const QByteArray day = digitsOf(frames, "TDAT", 4); !day.isEmpty()) {
            date += '-' + day.mid(2) + '-' + day.left(2);
            inDate.append("TDAT");
            if (const QByteArray time = digitsOf(frames, "TIME", 4); !time.isEmpty()) {
                date += 'T' + time.left(2) + ':' + time.mid(2);
                inDate.append("TIME");
            }
        }
    }
    QList<Id3v2Frame> result;
    for (const Id3v2Frame &frame : frames) {
        if (frame.id == "TYER" && !date.isEmpty())
            result.append({"TDRC", 0, '\0' + date});
        else if (frame.flags != 0 || !inDate.contains(frame.id))
            result.append(frameToVersion24(frame));
    }
    return result;
}

} // namespace engines
