#include "engines/wma/RateControl.h"

#include <algorithm>

namespace wma {

namespace {

constexpr float LowestQuality = FirstQuality;
constexpr float HighestQuality = FirstQuality + QualityStep * (Qualities - 1);
constexpr float Precision = 0.05F; ///< dB
constexpr double Memory = 0.95;    ///< of what was learnt before a frame
/// Of the reservoir is planned with.
constexpr double PlannedShare = 0.9;

} // namespace

RateControl::RateControl(double dueBits, double reservoir) : m_due(dueBits), m_reservoir(reservoir) {}

float RateControl::quality(const std::deque<FrameAnalysis> &frames, double fill, double left) const
{
    if (fits(frames, fill, left, LowestQuality))
        return LowestQuality;
    float tooFine = LowestQuality, good = HighestQuality;
    for (float range = good - tooFine; range > Precision; range /= 2) {
        const float middle = (tooFine + good) / 2;
        (fits(frames, fill, left, middle) ? good : tooFine) = middle;
    }
    return good;
}

void RateControl::learn(const FrameAnalysis &frame, float quality, double bits)
{
    m_estimated = Memory * m_estimated + estimate(frame, quality);
    m_taken = Memory * m_taken + bits;
}

double RateControl::estimate(const FrameAnalysis &frame, float quality)
{
    const float place = std::clamp((quality - FirstQuality) / QualityStep, 0.0F, float(Qualities - 1));
    const auto below = std::min(static_cast<std::size_t>(place), std::size_t(Qualities - 2));
    const float share = place - static_cast<float>(below);
    return (1 - share) * frame.bits[below] + share * frame.bits[below + 1];
}

/// Whether one quality for all frames lets the stream never be too far ahead, and in the end not at all but
/// by the packet that is begun.
bool RateControl::fits(const std::deque<FrameAnalysis> &frames, double fill, double left, float quality) const
{
    const double ratio = m_estimated > 0 ? m_taken / m_estimated : 1;
    const std::size_t count = std::min(frames.size(), LookAhead);
    for (std::size_t n = 0; n < count; ++n) {
        const double bits = ratio * estimate(frames[n], quality);
        left -= bits;
        fill += bits - m_due;
        if (fill > PlannedShare * m_reservoir)
            return false;
    }
    return fill <= 0 || left >= 0;
}

} // namespace wma
