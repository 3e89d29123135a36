#include "engines/vqf/NoiseWeights.h"

#include <algorithm>
#include <cmath>

namespace vqf {

namespace {

/// Of the inverse threshold in the weight of an error. Errors weighted by the threshold alone would cost much
/// signal-to-noise ratio and leave hardly less audible noise: few bits do too much for faint parts.
constexpr float ThresholdExponent = 0.74F;

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
            m_widths[type][k] = std::pow(static_cast<float>(std::max(1.0, 0.5 / barks)), -ThresholdExponent);
        }
    }
}

void NoiseWeights::listen(const std::array<const float *, Channels> &samples, dsp::Workers &workers)
{
    workers.run(2, [&](int side) {
        const float sign = side == 0 ? 1 : -1;
        std::array<float, 2 * FrameSize> heard;
        for (int n = 0; n < 2 * FrameSize; ++n)
            heard[n] = samples[0][n] + sign * samples[1][n];
        m_sides[side].analyse(heard.data());
    });
}

void NoiseWeights::weigh(int window, Spectrum &weight, Spectrum *balance) const
{
    std::array<Spectrum, 2> inverse;
    for (std::size_t side = 0; side < 2; ++side)
        m_sides[side].inverse(window, inverse[side].data());
    StepwisePower power(ThresholdExponent), left(ThresholdExponent), right(ThresholdExponent);
    for (int k = 0; k < FrameSize; ++k) {
        weight[k] = power(inverse[0][k] + inverse[1][k]) * m_widths[WindowShapes[window].type][k];
        if (balance) {
            const float ofLeft = left(inverse[0][k]), ofRight = right(inverse[1][k]);
            (*balance)[k] = (ofLeft - ofRight) / (ofLeft + ofRight);
        }
    }
}

} // namespace vqf
