#include "engines/audiofile/OggWalk.h"

#include <QtEndian>
#include <algorithm>
#include <optional>

namespace audiofile {

namespace {

/// The library compares each with all before it. Files have a few dozen, as a rule.
constexpr quint32 MostComments = 2000;

OggWalk::Coding codingOf(QByteArrayView firstPacket)
{
    if (firstPacket.startsWith("Speex"))
        return OggWalk::Coding::Speex;
    return firstPacket.startsWith("\177FLAC") ? OggWalk::Coding::Flac : OggWalk::Coding::Other;
}

/// Where in a packet the comments begin, if it is one that has them: their maker's name, with its length in
/// front, then their number.
std::optional<qsizetype> commentsOf(QByteArrayView packet, OggWalk::Coding coding, bool second)
{
    constexpr QByteArrayView Names[] = {"\3vorbis", "OpusTags", "\x81theora", "OVP80\2 "};
    for (const QByteArrayView name : Names) {
        if (packet.startsWith(name))
            return name.size();
    }
    constexpr qsizetype FlacHeadBytes = 4;
    constexpr char FlacComments = 4;
    if (coding == OggWalk::Coding::Flac && packet.size() >= FlacHeadBytes &&
        (packet[0] & 0x7f) == FlacComments)
        return FlacHeadBytes;
    return coding == OggWalk::Coding::Speex && second ? std::optional<qsizetype>(0) : std::nullopt;
}

bool asksTooMuch(QByteArrayView comments)
{
    constexpr qsizetype NumberBytes = 4;
    if (comments.size() < NumberBytes)
        return true;
    const quint32 nameBytes = qFromLittleEndian<quint32>(comments.data());
    if (nameBytes + 2 * NumberBytes > comments.size())
        return true;
    return qFromLittleEndian<quint32>(comments.data() + NumberBytes + nameBytes) > MostComments;
}

/// Each packet that begins in the page, with what follows it there.
template <typename Take>
void eachPacket(const engines::OggPage &page, Take take)
{
    qsizetype place = 0;
    bool begins = !page.isContinued();
    for (const char segment : page.lacing()) {
        if (begins)
            take(QByteArrayView(page.body()).sliced(place));
        place += quint8(segment);
        begins = quint8(segment) < 255;
    }
}

} // namespace

bool OggWalk::follow(QIODevice &file, qint64 begin, qint64 end)
{
    // Before all else the library looks at the end of a file.
    while (m_next >= begin && m_next < end) {
        file.seek(m_next);
        if (const std::optional<engines::OggPage> page = engines::OggPage::read(file)) {
            m_gap |= m_searching;
            m_searching = false;
            m_next += page->size();
            if (take(*page))
                return true;
            continue;
        }
        m_searching = true;
        file.seek(m_next + 1);
        const qsizetype found = file.read(end - m_next + 3).indexOf("OggS");
        m_next = found < 0 ? end : m_next + 1 + found;
    }
    return false;
}

bool OggWalk::isWhole() const
{
    return !m_gap && std::all_of(m_streams.begin(), m_streams.end(), [](const Stream &s) { return s.ended; });
}

/// True for one that the library had better not see.
bool OggWalk::take(const engines::OggPage &page)
{
    const bool begins = page.beginsStream();
    const bool known = m_streams.contains(page.serial());
    Stream &stream = m_streams[page.serial()];
    m_gap |= !page.isUndamaged() || (!begins && (!known || page.sequence() != stream.sequence + 1));
    if (begins)
        stream.coding = codingOf(page.body());
    const bool second = stream.begins;
    stream.begins = begins;
    stream.sequence = page.sequence();
    stream.ended = page.endsStream();
    bool tooMuch = false;
    eachPacket(page, [&](QByteArrayView packet) {
        const std::optional<qsizetype> comments = commentsOf(packet, stream.coding, second);
        tooMuch |= comments && asksTooMuch(packet.sliced(*comments));
    });
    return tooMuch;
}

} // namespace audiofile
