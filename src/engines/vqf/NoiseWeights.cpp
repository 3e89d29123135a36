#include "engines/vqf/NoiseWeights.h"

#include <algorithm>
#include <cmath>

namespace vqf {

namespace {

/// Of the inverse threshold in the weight of an error. Errors weighted by the threshold alone would cost much
/// signal-to-noise ratio and leave hardly less audible noise: few bits do too much for faint parts.
constexpr float ThresholdExponent = 0.62F;

} // namespace

NoiseWeights::NoiseWeights()
{
    // The noise of half a Bark is heard as one: where that is wide, a coefficient's part counts little.
    for (int type = 0; type < BlockTypes; ++type) {
        const int size = Layouts[type].blockSize;
        const double hertz = SampleRate / 2.0 / size;
        for (int k = 0; k < FrameSize; ++k) {
            const int n = k % size;
            const double barks = dsp::bark((n + 1) * hertz) - dsp::bark(n * hertz);
            m_widths[type][k] = static_cast<float>(std::max(1.0, 0.5 / barks));
        }
    }
}

void NoiseWeights::analyse(const WindowShape &shape, const std::array<const float *, Channels> &samples,
                           dsp::Workers &workers)
{
    std::array<Spectrum, 2> inverse;
    workers.run(2, [&](int side) {
        const float sign = side == 0 ? 1 : -1;
        std::array<float, 2 * FrameSize> heard;
        for (int n = 0; n < 2 * FrameSize; ++n)
            heard[n] = samples[0][n] + sign * samples[1][n];
        m_sides[side].analyse(heard.data());
        m_sides[side].inverse(shape, inverse[side].data());
    });
    for (int k = 0; k < FrameSize; ++k) {
        const float hidden = 1 / (inverse[0][k] + inverse[1][k]);
        m_weight[k] = std::pow(hidden * m_widths[shape.type][k], -ThresholdExponent);
        const float left = std::pow(inverse[0][k], ThresholdExponent);
        const float right = std::pow(inverse[1][k], ThresholdExponent);
        m_balance[k] = (left - right) / (left + right);
    }
}

} // namespace vqf
