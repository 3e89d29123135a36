#include "engines/tagfile/Id3v2Versions.h"

#include "engines/tagfile/Id3v2Text.h"

#include <QStringList>
#include <cstring>

namespace engines {

namespace {

/// How the data of a frame lie behind the encoding byte. A digit: that many bytes. L: a Latin-1 text up to
/// its end mark. S: a text in the frame's encoding up to its end mark. V: values, all in one text since
/// version 2.3 knows just one. P: a list of texts. What is left over is binary.
struct Layout
{
    const char *id;
    const char *parts;
};

constexpr Layout Layouts[] = {
    {"TXXX", "SV"},  {"WXXX", "S"},   {"COMM", "3SV"},    {"USLT", "3SV"}, {"USER", "3V"}, {"APIC", "L1S"},
    {"GEOB", "LSS"}, {"OWNE", "L8V"}, {"COMR", "L8L1SS"}, {"TIPL", "P"},   {"TMCL", "P"},
};

/// Beyond this a frame of texts is no honest one, and taking it apart would cost many times its size.
constexpr qsizetype LargestText = 1 << 20;

const char *layoutOf(const QByteArray &id)
{
    for (const Layout &layout : Layouts) {
        if (id == layout.id)
            return layout.parts;
    }
    return id.startsWith('T') ? "V" : nullptr;
}

/// Several genres as version 2.3 writes them: numbers in brackets before a text.
QString genreText(const QStringList &values)
{
    QString text;
    for (const QString &value : values) {
        bool isNumber = false;
        value.toUInt(&isNumber);
        if (!text.isEmpty() && !text.endsWith(u')'))
            text.append(u'/');
        text.append(isNumber ? u'(' + value + u')' : value);
    }
    return text;
}

/// The data of a frame whose texts are written anew in an encoding of version 2.3; as they are where nothing
/// is known of them.
QByteArray recoded(const QByteArray &id, const QByteArray &data)
{
    const char *layout = layoutOf(id);
    if (!layout || data.isEmpty() || !Id3v2Text::isEncoding(data[0]))
        return data;
    if (data.size() > LargestText && std::strpbrk(layout, "VP"))
        return data;
    Id3v2Text::Reader reader(data);
    QList<Id3v2Text::Piece> pieces;
    for (const char *part = layout; *part; ++part) {
        if (*part == 'L')
            pieces.append({reader.bytesToEndMark() + '\0', {}, Id3v2Text::Kind::Bytes});
        else if (*part == 'S')
            pieces.append({{}, reader.text(), Id3v2Text::Kind::MarkedText});
        else if (*part == 'V')
            pieces.append({{},
                           id == "TCON" ? genreText(reader.allTexts()) : reader.allTexts().join(u'/'),
                           Id3v2Text::Kind::LastText});
        else if (*part == 'P')
            for (const QString &text : reader.allTexts())
                pieces.append({{}, text, Id3v2Text::Kind::MarkedText});
        else
            pieces.append({reader.bytes(*part - '0'), {}, Id3v2Text::Kind::Bytes});
    }
    pieces.append({reader.rest(), {}, Id3v2Text::Kind::Bytes});
    return Id3v2Text::render(pieces);
}

Id3v2Frame textFrame(const char *id, const QString &text)
{
    return {id, 0, Id3v2Text::render({{{}, text, Id3v2Text::Kind::LastText}})};
}

/// A recording time, "2001-02-03T04:05:06" or its first parts, as the frames of version 2.3.
QList<Id3v2Frame> recordingTime(const QByteArray &data)
{
    const QString time = Id3v2Text::Reader(data).allTexts().value(0);
    QList<Id3v2Frame> frames{textFrame("TYER", time.left(4))};
    if (time.size() >= 10)
        frames.append(textFrame("TDAT", time.mid(8, 2) + time.mid(5, 2)));
    if (time.size() >= 16)
        frames.append(textFrame("TIME", time.mid(11, 2) + time.mid(14, 2)));
    return frames;
}

/// The ids of version 2.2 and those of 2.3.
constexpr struct
{
    const char *old;
    const char *id;
} OldIds[] = {
    {"BUF", "RBUF"}, {"CNT", "PCNT"}, {"COM", "COMM"}, {"CRA", "AENC"}, {"ETC", "ETCO"}, {"EQU", "EQUA"},
    {"GEO", "GEOB"}, {"IPL", "IPLS"}, {"MCI", "MCDI"}, {"MLL", "MLLT"}, {"PIC", "APIC"}, {"POP", "POPM"},
    {"REV", "RVRB"}, {"RVA", "RVAD"}, {"SLT", "SYLT"}, {"STC", "SYTC"}, {"TAL", "TALB"}, {"TBP", "TBPM"},
    {"TCM", "TCOM"}, {"TCO", "TCON"}, {"TCP", "TCMP"}, {"TCR", "TCOP"}, {"TDA", "TDAT"}, {"TDY", "TDLY"},
    {"TEN", "TENC"}, {"TFT", "TFLT"}, {"TIM", "TIME"}, {"TKE", "TKEY"}, {"TLA", "TLAN"}, {"TLE", "TLEN"},
    {"TMT", "TMED"}, {"TOA", "TOPE"}, {"TOF", "TOFN"}, {"TOL", "TOLY"}, {"TOR", "TORY"}, {"TOT", "TOAL"},
    {"TP1", "TPE1"}, {"TP2", "TPE2"}, {"TP3", "TPE3"}, {"TP4", "TPE4"}, {"TPA", "TPOS"}, {"TPB", "TPUB"},
    {"TRC", "TSRC"}, {"TRD", "TRDA"}, {"TRK", "TRCK"}, {"TS2", "TSO2"}, {"TSA", "TSOA"}, {"TSC", "TSOC"},
    {"TSI", "TSIZ"}, {"TSP", "TSOP"}, {"TSS", "TSSE"}, {"TST", "TSOT"}, {"TT1", "TIT1"}, {"TT2", "TIT2"},
    {"TT3", "TIT3"}, {"TXT", "TEXT"}, {"TXX", "TXXX"}, {"TYE", "TYER"}, {"UFI", "UFID"}, {"ULT", "USLT"},
    {"WAF", "WOAF"}, {"WAR", "WOAR"}, {"WAS", "WOAS"}, {"WCM", "WCOM"}, {"WCP", "WCOP"}, {"WPB", "WPUB"},
    {"WXX", "WXXX"},
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

} // namespace

QByteArray withoutUnsynchronisation(const QByteArray &data)
{
    QByteArray plain;
    plain.reserve(data.size());
    for (qsizetype i = 0; i < data.size(); ++i) {
        plain.append(data[i]);
        if (data[i] == '\xff' && i + 1 < data.size() && data[i + 1] == '\0')
            ++i;
    }
    return plain;
}

QList<Id3v2Frame> fromVersion22(const QByteArray &id, const QByteArray &data)
{
    for (const auto &known : OldIds) {
        if (id == known.old)
            return {{known.id, 0, id == "PIC" ? pictureData(data) : data}};
    }
    return {{id + '0', 0, data}}; // an id of no known meaning, in the form of the version
}

QList<Id3v2Frame> fromVersion24(const Id3v2Frame &frame)
{
    constexpr quint16 Grouped = 0x40, Compressed = 0x08, Encrypted = 0x04, Unsynchronised = 0x02,
                      HasLength = 0x01;
    QByteArray data = frame.flags & Unsynchronised ? withoutUnsynchronisation(frame.data) : frame.data;
    const auto take = [&](bool there, qsizetype count) {
        const QByteArray taken = there ? data.left(count) : QByteArray();
        data.remove(0, taken.size());
        return taken;
    };
    const QByteArray group = take(frame.flags & Grouped, 1);
    const QByteArray method = take(frame.flags & Encrypted, 1);
    QByteArray length = take(frame.flags & HasLength, 4);

    Id3v2Frame result{frame.id, static_cast<quint16>((frame.flags & 0x7000) << 1), {}};
    if (frame.flags & (Compressed | Encrypted)) {
        if (frame.flags & Compressed) {
            quint32 size = 0; // synchsafe so far, plain from now on
            for (const char byte : length)
                size = (size << 7) | (byte & 0x7f);
            for (int shift = 24; shift >= 0; shift -= 8)
                result.data.append(static_cast<char>(size >> shift));
            result.flags |= 0x80;
        }
        if (frame.flags & Encrypted)
            result.flags |= 0x40;
    } else if (frame.id == "TDRC") {
        return recordingTime(data);
    } else {
        data = recoded(frame.id, data);
    }
    if (frame.flags & Grouped)
        result.flags |= 0x20;
    result.data += method + group + data;
    return {result};
}

} // namespace engines
