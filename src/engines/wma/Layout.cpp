#include "engines/wma/Layout.h"

#include <algorithm>

namespace wma {

std::vector<BlockLayout> blockLayouts(const StreamFormat &format, const Tables &tables)
{
    std::vector<BlockLayout> layouts;
    for (int halvings = 0; halvings <= format.halvings(); ++halvings) {
        BlockLayout layout;
        layout.size = format.blockSize(halvings);
        layout.codedEnd = format.codedEnd(halvings);
        layout.noiseBegin = format.noiseBegin(halvings);
        const auto list = std::find_if(tables.bands.begin(), tables.bands.end(), [&](const BandList &list) {
            return list.rate == format.rate() && list.blockSize == layout.size;
        });
        layout.bands = list->bands;
        layout.edges.push_back(0);
        for (const int width : list->widths)
            layout.edges.push_back(std::min(layout.edges.back() + width, layout.codedEnd));
        const auto above = std::upper_bound(layout.edges.begin(), layout.edges.end(), layout.noiseBegin);
        layout.firstNoiseBand =
            std::min(static_cast<int>(above - layout.edges.begin()) - 1, layout.visibleBands());
        layouts.push_back(layout);
    }
    return layouts;
}

} // namespace wma
