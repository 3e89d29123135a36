#include "engines/audiofile/OggPages.h"

#include "engines/codecs/AvHandles.h"

#include <QtEndian>
#include <cstring>

namespace audiofile {

namespace {

struct Page
{
    bool last;
    qint64 granule;
};

/// Reads a page's head and goes on to the next page.
std::optional<Page> readPage(AVIOContext *input)
{
    constexpr int HeadBytes = 27;
    unsigned char head[HeadBytes];
    unsigned char segments[255];
    if (avio_read(input, head, HeadBytes) != HeadBytes || std::memcmp(head, "OggS", 4) != 0)
        return {};
    const int count = head[HeadBytes - 1];
    if (avio_read(input, segments, count) != count)
        return {};
    int bytes = 0;
    for (int i = 0; i < count; ++i)
        bytes += segments[i];
    avio_skip(input, bytes);
    return Page{(head[5] & 4) != 0, qFromLittleEndian<qint64>(head + 6)};
}

} // namespace

std::optional<qint64> lengthInOnlyPage(AVIOContext *input)
{
    const std::int64_t place = avio_tell(input);
    std::optional<Page> page;
    // The pages of headers tell no place.
    do
        page = readPage(input);
    while (page && page->granule <= 0 && !page->last);
    avio_seek(input, place, SEEK_SET);
    if (!page || !page->last || page->granule < 0)
        return {};
    return page->granule;
}

} // namespace audiofile
