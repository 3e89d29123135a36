#pragma once

#include "engines/wma/FrameAnalysis.h"

#include <deque>

namespace wma {

/// Frames whose estimates the choice of quality looks at.
inline constexpr std::size_t LookAhead = 64;

/// Chooses the qualities of frames so that all packets together are filled, and never many too few or too
/// many at a time.
class RateControl
{
public:
    /// `dueBits` of each frame; the stream may be ahead or behind by `reservoir` bits.
    RateControl(double dueBits, double reservoir);

    /// For the first of the frames. `fill` is by how many bits the stream is ahead, `left` how many the
    /// packet has that the frame begins in: where the stream ends in it, they are there to be used.
    float quality(const std::deque<FrameAnalysis> &frames, double fill, double left) const;
    /// That a frame took so many bits.
    void learn(const FrameAnalysis &frame, float quality, double bits);

private:
    static double estimate(const FrameAnalysis &frame, float quality);
    bool fits(const std::deque<FrameAnalysis> &frames, double fill, double left, float quality) const;

    const double m_due;
    const double m_reservoir;
    double m_estimated = 0; ///< sums that forget
    double m_taken = 0;
};

} // namespace wma
