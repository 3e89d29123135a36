#pragma once

#include "engines/dsp/Workers.h"
#include "engines/vqf/NoiseThresholds.h"

namespace vqf {

/// What errors of a frame's coefficients cost. With e and f the errors of mid and side, a coefficient's cost
/// is weight * (e^2 + f^2 + 2 * balance * e * f): errors may cancel on the side that hides less.
class NoiseWeights
{
public:
    using Spectrum = std::array<float, FrameSize>;

    NoiseWeights();

    /// `samples` of mid and side as FrameEncoder gets them.
    void analyse(const WindowShape &shape, const std::array<const float *, Channels> &samples,
                 dsp::Workers &workers);

    const Spectrum &weight() const { return m_weight; }
    const Spectrum &balance() const { return m_balance; }

private:
    std::array<NoiseThresholds, 2> m_sides; ///< left and right
    std::array<Spectrum, BlockTypes> m_widths;
    Spectrum m_weight;
    Spectrum m_balance;
};

} // namespace vqf
