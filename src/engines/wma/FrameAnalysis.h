#pragma once

#include "engines/wma/Frame.h"

#include <array>
#include <vector>

namespace wma {

/// Qualities that the bits of a frame are estimated for: how far, in dB, the noise lies above what is best at
/// a high rate.
inline constexpr int Qualities = 20;
inline constexpr float FirstQuality = -20;
inline constexpr float QualityStep = 3;

using BitEstimates = std::array<float, Qualities>;

/// One channel of a block: left, right, mid, or side.
struct ChannelAnalysis
{
    std::vector<float> coefficients; ///< codedEnd of them; zeros where the encoder leaves something out
    std::vector<float> steps;        ///< the quantiser's in each visible band, in dB, at quality 0
    std::vector<float> leastSteps;   ///< so that no level is too large
};

struct BlockAnalysis
{
    int halvings;
    std::array<std::array<ChannelAnalysis, MaxChannels>, 2> channels; ///< left and right; mid and side
};

struct FrameAnalysis
{
    std::vector<BlockAnalysis> blocks;
    int halvingsBefore = 0; ///< of the last block before it
    int halvingsBehind = 0; ///< of the first block behind it
    BitEstimates bits{};
};

} // namespace wma
