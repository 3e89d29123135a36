#include "engines/tagfile/OggPages.h"

#include <QtEndian>
#include <array>
#include <numeric>

namespace engines {

namespace {

constexpr qsizetype HeaderSize = 27;
constexpr qsizetype ChecksumPlace = 22;
constexpr qsizetype MostSegments = 255;

constexpr std::array<quint32, 256> checksumTable()
{
    std::array<quint32, 256> table{};
    for (quint32 i = 0; i < 256; ++i) {
        quint32 value = i << 24;
        for (int bit = 0; bit < 8; ++bit)
            value = (value << 1) ^ (value & 0x80000000 ? 0x04c11db7 : 0);
        table[i] = value;
    }
    return table;
}

quint32 checksumOf(const QByteArray &bytes)
{
    static constexpr std::array<quint32, 256> Table = checksumTable();
    quint32 sum = 0;
    for (const char byte : bytes)
        sum = (sum << 8) ^ Table[(sum >> 24) ^ static_cast<quint8>(byte)];
    return sum;
}

template <typename Number>
void put(QByteArray &bytes, qsizetype place, Number number)
{
    qToLittleEndian(number, bytes.data() + place);
}

/// The page with nothing in the checksum's place, as the checksum is made of it.
QByteArray withoutChecksum(const OggPage &page)
{
    QByteArray bytes("OggS");
    bytes.resize(HeaderSize);
    bytes[4] = '\0';
    bytes[5] = static_cast<char>(page.flags);
    put(bytes, 6, page.granule);
    put(bytes, 14, page.serial);
    put(bytes, 18, page.sequence);
    put(bytes, ChecksumPlace, quint32(0));
    bytes[26] = static_cast<char>(page.lacing.size());
    return bytes + page.lacing + page.body;
}

} // namespace

std::optional<OggPage> OggPage::read(QIODevice &file)
{
    const QByteArray header = file.read(HeaderSize);
    if (header.size() < HeaderSize || !header.startsWith("OggS") || header[4] != '\0')
        return {};
    const char *bytes = header.constData();
    OggPage page;
    page.flags = static_cast<quint8>(bytes[5]);
    page.granule = qFromLittleEndian<quint64>(bytes + 6);
    page.serial = qFromLittleEndian<quint32>(bytes + 14);
    page.sequence = qFromLittleEndian<quint32>(bytes + 18);
    page.checksum = qFromLittleEndian<quint32>(bytes + ChecksumPlace);
    const qsizetype segments = static_cast<quint8>(bytes[26]);
    page.lacing = file.read(segments);
    const qsizetype size =
        std::accumulate(page.lacing.begin(), page.lacing.end(), qsizetype(0),
                        [](qsizetype sum, char segment) { return sum + static_cast<quint8>(segment); });
    page.body = file.read(size);
    if (page.lacing.size() < segments || page.body.size() < size)
        return {};
    page.m_damage = page.checksum ^ checksumOf(withoutChecksum(page));
    return page;
}

QByteArray OggPage::render() const
{
    QByteArray bytes = withoutChecksum(*this);
    put(bytes, ChecksumPlace, checksumOf(bytes) ^ m_damage);
    return bytes;
}

QList<OggPage> oggPages(const QList<QByteArray> &packets, quint32 serial, quint32 firstSequence)
{
    QList<OggPage> pages;
    const auto addPage = [&](quint8 flags) {
        OggPage page;
        page.flags = flags;
        page.granule = OggPage::NoGranule;
        page.serial = serial;
        page.sequence = firstSequence + static_cast<quint32>(pages.size());
        pages.append(page);
    };
    addPage(0);
    for (const QByteArray &packet : packets) {
        // A packet ends with a segment of less than 255 bytes, if need be with an empty one.
        for (qsizetype place = 0; place <= packet.size(); place += 255) {
            if (pages.last().lacing.size() == MostSegments)
                addPage(place > 0 ? OggPage::Continued : 0);
            const QByteArray segment = packet.mid(place, 255);
            pages.last().lacing.append(static_cast<char>(segment.size()));
            pages.last().body.append(segment);
        }
        pages.last().granule = 0;
    }
    return pages;
}

} // namespace engines
