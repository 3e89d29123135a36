#include "engines/tagfile/Id3v2Tag.h"

#include "base/RunTimeFailure.h"
#include "engines/tagfile/AudioKind.h"
#include "engines/tagfile/Id3v2Versions.h"

#include <QtEndian>
#include <algorithm>
#include <optional>

namespace engines {

namespace {

constexpr qsizetype HeaderSize = 10; ///< of a tag, and of a frame since version 2.3
constexpr qsizetype NewPadding = 2048;
constexpr qint64 LargestTag = 1 << 28;
constexpr qsizetype MostFrames = 10000; ///< an honest tag has some tens

/// Four bytes of seven bits each; nothing where one has its eighth.
std::optional<quint32> synchsafe(const char *bytes)
{
    const quint32 number = qFromBigEndian<quint32>(bytes);
    if (number & 0x80808080)
        return {};
    return ((number & 0x7f000000) >> 3) | ((number & 0x7f0000) >> 2) | ((number & 0x7f00) >> 1) |
           (number & 0x7f);
}

void appendSynchsafe(QByteArray &bytes, quint32 number)
{
    for (int shift = 21; shift >= 0; shift -= 7)
        bytes.append(static_cast<char>((number >> shift) & 0x7f));
}

template <typename Number>
void appendBigEndian(QByteArray &bytes, Number number)
{
    char buffer[sizeof number];
    qToBigEndian(number, buffer);
    bytes.append(buffer, sizeof number);
}

bool isFrameId(const QByteArray &id)
{
    const auto isIdCharacter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); };
    // Some programs leave ids of version 2.2 in tags of 2.3, filled up with a NUL.
    return std::all_of(id.begin(), id.begin() + 3, isIdCharacter) &&
           (id.size() == 3 || isIdCharacter(id[3]) || id[3] == '\0');
}

/// Whether another frame, the padding or the end of the tag follows at the place.
bool goesOnAt(const QByteArray &body, qint64 place)
{
    if (place >= body.size())
        return place == body.size();
    return body[place] == '\0' || (place + 4 <= body.size() && isFrameId(body.mid(place, 4)));
}

/// A frame's size. Programs mix up the plain form of version 2.3 and the synchsafe one of 2.4; the one that
/// leads to another frame is right.
qint64 frameSize(const QByteArray &body, qsizetype place, int version)
{
    const qint64 plain = qFromBigEndian<quint32>(body.constData() + place + 4);
    const qint64 safe = synchsafe(body.constData() + place + 4).value_or(plain);
    const qint64 usual = version == 4 ? safe : plain;
    const qint64 other = version == 4 ? plain : safe;
    const qint64 data = place + HeaderSize;
    return !goesOnAt(body, data + usual) && goesOnAt(body, data + other) ? other : usual;
}

/// Bytes of the extended header at the start of a tag's body; none where it can't be one.
std::optional<qsizetype> extendedHeaderSize(const QByteArray &body, int version)
{
    if (body.size() < 6)
        return {};
    const std::optional<quint32> size =
        version == 4 ? synchsafe(body.constData()) : 4 + qFromBigEndian<quint32>(body.constData());
    return size && *size >= 6 && *size <= body.size() ? std::optional<qsizetype>(*size) : std::nullopt;
}

} // namespace

qint64 Id3v2Tag::sizeAt(QIODevice &file, qint64 place)
{
    const QByteArray header = bytesAt(file, place, HeaderSize);
    if (header.size() < HeaderSize || !header.startsWith("ID3") || header[3] == '\xff' || header[4] == '\xff')
        return 0;
    const std::optional<quint32> size = synchsafe(header.constData() + 6);
    if (!size)
        return 0;
    const bool hasFooter = header[3] == 4 && (header[5] & 0x10);
    return HeaderSize + *size + (hasFooter ? HeaderSize : 0);
}

Id3v2Tag::Id3v2Tag(QIODevice &file)
{
    while (!m_damaged && readNext(file)) {
    }
}

bool Id3v2Tag::readNext(QIODevice &file)
{
    const qint64 size = sizeAt(file, m_size);
    if (size == 0)
        return false;
    if (m_size + size > file.size()) {
        m_damaged = true;
        return false;
    }
    file.seek(m_size);
    const QByteArray header = file.read(HeaderSize);
    const int version = header[3];
    const int flags = header[5];
    const bool hasFooter = version == 4 && (flags & 0x10);
    QByteArray body = file.read(size - HeaderSize - (hasFooter ? HeaderSize : 0));
    m_size += size;
    if (version < 2 || version > 4 || (version == 2 && (flags & 0x40))) {
        m_damaged = true; // a version to come, or the compression that version 2.2 never defined
        return false;
    }
    if (version < 4 && (flags & 0x80))
        body = withoutUnsynchronisation(body);
    if (version > 2 && (flags & 0x40)) {
        const std::optional<qsizetype> extended = extendedHeaderSize(body, version);
        m_damaged = !extended;
        body.remove(0, extended.value_or(0));
    }
    if (!m_damaged)
        readFrames(body, version);
    return true;
}

void Id3v2Tag::readFrames(const QByteArray &body, int version)
{
    const qsizetype headerSize = version == 2 ? 6 : HeaderSize;
    qint64 place = 0;
    while (place + headerSize <= body.size() && body[place] != '\0') {
        Id3v2Frame frame{.id = body.mid(place, version == 2 ? 3 : 4), .flags = 0, .data = {}};
        qint64 size = 0;
        if (version == 2) {
            size = qFromBigEndian<quint32>(body.constData() + place + 2) & 0xffffff;
        } else {
            size = frameSize(body, place, version);
            frame.flags = qFromBigEndian<quint16>(body.constData() + place + 8);
        }
        place += headerSize;
        if (!isFrameId(frame.id) || size > body.size() - place || frames.size() >= MostFrames) {
            m_damaged = true;
            return;
        }
        frame.data = body.mid(place, size);
        place += size;
        if (version == 2)
            frames.append(fromVersion22(frame.id, frame.data));
        else if (version == 4)
            frames.append(fromVersion24(frame));
        else
            frames.append(frame);
    }
}

QByteArray Id3v2Tag::render() const
{
    QByteArray body;
    for (const Id3v2Frame &frame : frames) {
        if (frame.data.isEmpty())
            continue; // a frame must hold something; readers stop at one that doesn't
        body.append(frame.id);
        appendBigEndian(body, static_cast<quint32>(frame.data.size()));
        appendBigEndian(body, frame.flags);
        body.append(frame.data);
    }
    if (body.isEmpty())
        return {};
    const qint64 used = HeaderSize + body.size();
    const qint64 size = used <= m_size ? m_size : used + NewPadding;
    if (size >= LargestTag)
        throw RunTimeFailure(RunTimeFailure::Overflow);
    QByteArray tag("ID3\x03\x00\x00", 6);
    appendSynchsafe(tag, static_cast<quint32>(size - HeaderSize));
    tag.append(body);
    tag.append(size - used, '\0');
    return tag;
}

} // namespace engines
