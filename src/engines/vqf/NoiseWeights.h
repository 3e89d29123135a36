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

    /// Hears a frame: `samples` of mid and side as FrameEncoder gets them.
    void listen(const std::array<const float *, Channels> &samples, dsp::Workers &workers);
    /// The weights of the frame's coefficients in that window, and the balances if they are wanted.
    void weigh(int window, Spectrum &weight, Spectrum *balance = nullptr) const;

private:
    std::array<NoiseThresholds, 2> m_sides;    ///< left and right
    std::array<Spectrum, BlockTypes> m_widths; ///< what their widths make of the weights
};

} // namespace vqf
