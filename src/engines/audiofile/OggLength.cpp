#include "engines/audiofile/OggLength.h"

#include "engines/common/OggPage.h"

namespace audiofile {

namespace {

constexpr qint64 LargestHeader = 64 << 20; ///< of comments, which may hold pictures

} // namespace

std::optional<qint64> lengthInOnlyPage(QIODevice &file)
{
    const qint64 place = file.pos();
    std::optional<engines::OggPage> page;
    // The pages of headers tell no place.
    do
        page = engines::OggPage::read(file);
    while (page && page->granule() <= 0 && !page->endsStream() && file.pos() - place < LargestHeader);
    file.seek(place);
    if (!page || !page->endsStream() || page->granule() < 0)
        return {};
    return page->granule();
}

} // namespace audiofile
