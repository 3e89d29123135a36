#include "engines/tagfile/Id3v2Frames.h"

#include "engines/tagfile/Id3v2Versions.h"

#include <QtEndian>
#include <algorithm>

namespace engines {

namespace {

constexpr qsizetype MostFrames = 10000; ///< an honest tag has some tens

template <typename Number>
void appendBigEndian(QByteArray &bytes, Number number)
{
    char buffer[sizeof number];
    qToBigEndian(number, buffer);
    bytes.append(buffer, sizeof number);
}

/// Ids out of order, with blanks or small letters, have been written, too. Some programs leave ids of version
/// 2 in tags of version 3, filled up with a NUL.
bool isFrameId(QByteArrayView id)
{
    const auto isIdCharacter = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == ' ';
    };
    return std::all_of(id.begin(), id.begin() + 3, isIdCharacter) &&
           (id.size() == 3 || isIdCharacter(id[3]) || id[3] == '\0');
}

/// Programs mix up the plain sizes of version 3 and the synchsafe ones of version 4. Below 128 both are the
/// same.
enum class SizeForm { Plain, Synchsafe };

/// The frames of a tag, as places in its bytes.
class Walk
{
public:
    Walk(const QByteArray &bytes, int version)
        : m_bytes(bytes), m_idSize(version == 2 ? 3 : 4), m_headerSize(version == 2 ? 6 : 10)
    {
        m_contentEnd = bytes.size();
        while (m_contentEnd > 0 && bytes[m_contentEnd - 1] == '\0')
            --m_contentEnd;
    }

    qsizetype idSize() const { return m_idSize; }
    qsizetype headerSize() const { return m_headerSize; }

    /// Whether nothing but padding follows.
    bool isAtEnd(qint64 place) const { return place >= m_contentEnd || m_bytes[place] == '\0'; }

    bool isFrameAt(qint64 place) const
    {
        return place + m_headerSize <= m_bytes.size() &&
               isFrameId(QByteArrayView(m_bytes).sliced(place, m_idSize));
    }

    qint64 sizeAt(qint64 place, SizeForm form) const
    {
        const char *size = m_bytes.constData() + place + m_idSize;
        if (m_idSize == 3)
            return qFromBigEndian<quint32>(size - 1) & 0xffffff;
        const qint64 plain = qFromBigEndian<quint32>(size);
        return form == SizeForm::Plain ? plain : synchsafeNumber(size).value_or(plain);
    }

    /// Whether a frame of this size would be followed by another one, by padding or by the end.
    bool goesOnBehind(qint64 place, qint64 size) const
    {
        const qint64 end = place + m_headerSize + size;
        return end <= m_bytes.size() && (end >= m_contentEnd || isFrameAt(end));
    }

    /// Whether sizes in this form lead from frame to frame up to the end.
    bool leadsThrough(SizeForm form) const
    {
        for (qint64 place = 0; place < m_contentEnd;) {
            if (!isFrameAt(place) || !goesOnBehind(place, sizeAt(place, form)))
                return false;
            place += m_headerSize + sizeAt(place, form);
        }
        return true;
    }

private:
    const QByteArray &m_bytes;
    qsizetype m_idSize;
    qsizetype m_headerSize;
    qint64 m_contentEnd; ///< what follows are zeros
};

} // namespace

std::optional<quint32> synchsafeNumber(const char *bytes)
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

Id3v2Frames Id3v2Frames::parse(const QByteArray &bytes, int version)
{
    const Walk walk(bytes, version);
    SizeForm usual = version == 4 ? SizeForm::Synchsafe : SizeForm::Plain;
    SizeForm other = version == 4 ? SizeForm::Plain : SizeForm::Synchsafe;
    if (!walk.leadsThrough(usual) && walk.leadsThrough(other))
        std::swap(usual, other);
    Id3v2Frames result;
    for (qint64 place = 0; !walk.isAtEnd(place) && place + walk.headerSize() <= bytes.size();) {
        result.damaged = !walk.isFrameAt(place) || result.frames.size() >= MostFrames;
        if (result.damaged)
            break;
        qint64 size = walk.sizeAt(place, usual);
        if (!walk.goesOnBehind(place, size) && walk.goesOnBehind(place, walk.sizeAt(place, other)))
            size = walk.sizeAt(place, other);
        const qint64 data = place + walk.headerSize();
        result.damaged = size > bytes.size() - data;
        if (result.damaged)
            break;
        Id3v2Frame frame{bytes.mid(place, walk.idSize()), 0, bytes.mid(data, size)};
        if (version > 2)
            frame.flags = qFromBigEndian<quint16>(bytes.constData() + data - 2);
        result.frames.append(version == 4 ? frame : withLongId(frame));
        place = data + size;
    }
    return result;
}

QByteArray bytesOfFrames(const QList<Id3v2Frame> &frames, int version)
{
    QByteArray bytes;
    for (const Id3v2Frame &frame : frames) {
        if (frame.data.isEmpty())
            continue;
        bytes.append(frame.id);
        const auto size = static_cast<quint32>(frame.data.size());
        if (version == 4)
            appendSynchsafe(bytes, size);
        else
            appendBigEndian(bytes, size);
        appendBigEndian(bytes, frame.flags);
        bytes.append(frame.data);
    }
    return bytes;
}

} // namespace engines
