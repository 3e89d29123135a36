#pragma once

#include "engines/vqf/Format.h"

#include <vector>

namespace vqf {

/// Which coefficients the vectors of a block type hold: each has one in every row of the spectrum, so that
/// low and high ones, mid and side share its bits.
class VectorLayout
{
public:
    struct Place
    {
        int channel;
        int offset; ///< block * block size + coefficient
        int coefficient;
    };

    explicit VectorLayout(BlockType type);

    int length(int vector) const;
    const Place &place(int vector, int element) const { return m_places[vector * MaxVectorLength + element]; }

private:
    const TypeLayout &m_layout;
    std::vector<Place> m_places;
};

/// The same for the shape of the periodic peaks: channel and number of the peak value.
struct PeakPlace
{
    int channel;
    int value;
};
PeakPlace peakPlace(int vector, int element);

/// Where the values of the periodic peaks lie in the spectrum, in their order, for a period field of 0 to
/// 511. All are below FrameSize.
std::vector<int> peakPositions(int period);

} // namespace vqf
