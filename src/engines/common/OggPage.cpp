#include "engines/common/OggPage.h"

#include <QtEndian>
#include <memory>
#include <numeric>
#include <ogg/ogg.h>

namespace engines {

namespace {

constexpr qsizetype HeadSize = 27; ///< without the lacing
constexpr qsizetype SequencePlace = 18;
constexpr qsizetype ChecksumPlace = 22;

/// libogg's view of the bytes. It takes them as its own, but only the making of checksums writes to them.
ogg_page view(const QByteArray &head, const QByteArray &body)
{
    const auto bytes = [](const QByteArray &of) {
        return reinterpret_cast<unsigned char *>(const_cast<char *>(of.constData()));
    };
    return {bytes(head), long(head.size()), bytes(body), long(body.size())};
}

QByteArray bytesOf(const unsigned char *bytes, long count)
{
    return QByteArray(reinterpret_cast<const char *>(bytes), count);
}

} // namespace

std::optional<OggPage> OggPage::read(QIODevice &file)
{
    OggPage page;
    page.m_head = file.read(HeadSize);
    if (page.m_head.size() < HeadSize || !page.m_head.startsWith("OggS") || page.m_head[4] != '\0')
        return {};
    const qsizetype segments = static_cast<quint8>(page.m_head[HeadSize - 1]);
    const QByteArray lacing = file.read(segments);
    const qsizetype size =
        std::accumulate(lacing.begin(), lacing.end(), qsizetype(0),
                        [](qsizetype sum, char segment) { return sum + static_cast<quint8>(segment); });
    page.m_head += lacing;
    page.m_body = file.read(size);
    if (lacing.size() < segments || page.m_body.size() < size)
        return {};
    return page;
}

bool OggPage::isContinued() const
{
    const ogg_page page = view(m_head, m_body);
    return ogg_page_continued(&page) != 0;
}

bool OggPage::beginsStream() const
{
    const ogg_page page = view(m_head, m_body);
    return ogg_page_bos(&page) != 0;
}

bool OggPage::endsStream() const
{
    const ogg_page page = view(m_head, m_body);
    return ogg_page_eos(&page) != 0;
}

qint64 OggPage::granule() const
{
    const ogg_page page = view(m_head, m_body);
    return ogg_page_granulepos(&page);
}

quint32 OggPage::serial() const
{
    const ogg_page page = view(m_head, m_body);
    return static_cast<quint32>(ogg_page_serialno(&page));
}

quint32 OggPage::sequence() const
{
    const ogg_page page = view(m_head, m_body);
    return static_cast<quint32>(ogg_page_pageno(&page));
}

QByteArray OggPage::lacing() const
{
    return m_head.mid(HeadSize);
}

bool OggPage::isUndamaged() const
{
    return storedChecksum() == checksumOfBytes();
}

void OggPage::setSequence(quint32 sequence)
{
    const quint32 damage = storedChecksum() ^ checksumOfBytes();
    qToLittleEndian(sequence, m_head.data() + SequencePlace);
    qToLittleEndian(checksumOfBytes() ^ damage, m_head.data() + ChecksumPlace);
}

quint32 OggPage::storedChecksum() const
{
    return qFromLittleEndian<quint32>(m_head.constData() + ChecksumPlace);
}

quint32 OggPage::checksumOfBytes() const
{
    const QByteArray head(m_head.constData(), m_head.size()); // bytes of its own
    ogg_page page = view(head, m_body);
    ogg_page_checksum_set(&page);
    return qFromLittleEndian<quint32>(head.constData() + ChecksumPlace);
}

QList<QByteArray> oggPages(const QList<QByteArray> &packets, quint32 serial, quint32 firstSequence)
{
    ogg_stream_state stream;
    if (ogg_stream_init(&stream, static_cast<int>(serial)) != 0)
        throw std::bad_alloc();
    const std::unique_ptr<ogg_stream_state, int (*)(ogg_stream_state *)> cleared(&stream, &ogg_stream_clear);
    stream.b_o_s = 1; // the stream's first page is another one
    stream.pageno = firstSequence;
    for (const QByteArray &bytes : packets) {
        ogg_packet packet{};
        packet.packet = view({}, bytes).body;
        packet.bytes = bytes.size();
        if (ogg_stream_packetin(&stream, &packet) != 0)
            throw std::bad_alloc();
    }
    QList<QByteArray> pages;
    for (ogg_page page; ogg_stream_flush(&stream, &page) != 0;)
        pages.append(bytesOf(page.header, page.header_len) + bytesOf(page.body, page.body_len));
    return pages;
}

} // namespace engines
