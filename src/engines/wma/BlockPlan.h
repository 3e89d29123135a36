#pragma once

#include "engines/dsp/AttackDetector.h"
#include "engines/wma/StreamFormat.h"

#include <array>
#include <vector>

namespace wma {

/// Chooses how frames divide into blocks: where a sound sets in or ends suddenly they are small, so that
/// noise comes neither before it nor behind it.
class BlockPlan
{
public:
    explicit BlockPlan(const StreamFormat &format);

    /// Takes the next frameSize samples of each channel, in 16-bit units. Gives the blocks, as numbers of
    /// halvings, of the frame whose region is the second half of the samples before and the first half of
    /// these.
    std::vector<int> push(const std::array<const float *, MaxChannels> &samples);

private:
    struct Channel
    {
        dsp::AttackDetector attacks;
        std::vector<float> sharp; ///< the last two frames' high frequencies
        std::array<float, 2> last{};
    };

    void sharpen(const float *samples, Channel &channel) const;
    void divide(const std::vector<float> &changes, int begin, int length, int halvings,
                std::vector<int> &blocks) const;

    const StreamFormat m_format;
    std::vector<Channel> m_channels;
    std::vector<float> m_attacks; ///< of the last two frames' segments, the channels' larger ones
};

} // namespace wma
