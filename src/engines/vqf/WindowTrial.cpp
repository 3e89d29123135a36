#include "engines/vqf/WindowTrial.h"

#include "engines/vqf/EvenError.h"

#include <algorithm>
#include <cmath>

namespace vqf {

float WindowTrial::Trial::cost(int window, const std::array<const float *, Channels> &samples,
                               const NoiseWeights &weights)
{
    weights.weigh(window, m_weight);
    for (int c = 0; c < Channels; ++c) {
        m_transform.analyse(WindowShapes[window], samples[c], m_spectrum.data());
        for (int k = 0; k < FrameSize; ++k)
            m_weighted[c * FrameSize + k] = m_weight[k] * m_spectrum[k] * m_spectrum[k];
    }
    const float most = evenError(m_weighted);
    float sum = 1e-9F;
    for (const float power : m_weighted)
        sum += std::min(power, most);
    return 10 * std::log10(sum);
}

WindowCosts WindowTrial::costs(const std::array<const float *, Channels> &samples,
                               const NoiseWeights &weights, dsp::Workers &workers)
{
    WindowCosts costs;
    workers.run(static_cast<int>(costs.size()),
                [&](int window) { costs[window] = m_trials[window].cost(window, samples, weights); });
    return costs;
}

} // namespace vqf
