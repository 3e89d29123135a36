#pragma once

#include "engines/wma/StreamFormat.h"
#include "engines/wma/Tables.h"

#include <vector>

namespace wma {

inline constexpr int MaxBands = 25;

/// How the coefficients of blocks of one size are used.
struct BlockLayout
{
    int size;
    int codedEnd;
    int bands;              ///< with an exponent
    std::vector<int> edges; ///< of the bands that begin below codedEnd; the last edge is codedEnd
    int noiseBegin;         ///< coefficients from here on may be noise
    int firstNoiseBand;     ///< this band and those above may be noise from noiseBegin on

    int visibleBands() const { return static_cast<int>(edges.size()) - 1; }
    int noiseBands() const { return visibleBands() - firstNoiseBand; }
};

/// The layout of each size of block in a stream, by its number of halvings.
std::vector<BlockLayout> blockLayouts(const StreamFormat &format, const Tables &tables);

} // namespace wma
