#pragma once

#include "engines/dsp/AttackDetector.h"
#include "engines/wma/StreamFormat.h"

#include <array>
#include <vector>

namespace wma {

/// Chooses how frames divide into blocks: where a sound sets in suddenly they are small, so that noise
/// doesn't come before it.
class BlockPlan
{
public:
    explicit BlockPlan(const StreamFormat &format);

    /// Takes the next frameSize samples of each channel, in 16-bit units. Gives the blocks, as numbers of
    /// halvings, of the frame whose region is the second half of the samples before and the first half of
    /// these.
    std::vector<int> push(const std::array<const float *, MaxChannels> &samples);

private:
    void divide(int begin, int length, int halvings, std::vector<int> &blocks) const;

    const StreamFormat m_format;
    std::vector<dsp::AttackDetector> m_detectors; ///< of the channels
    std::vector<float> m_attacks; ///< of the last two frames' segments, the channels' larger ones
};

} // namespace wma
