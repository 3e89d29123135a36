#include "engines/dsp/AttackDetector.h"

#include <numeric>

namespace dsp {

namespace {

/// Per sample; a step out of digital silence is no sharper than one out of a faint noise.
constexpr float Floor = 4;

} // namespace

AttackDetector::AttackDetector(int segmentSamples, int history)
    : m_segment(segmentSamples), m_history(history)
{}

std::vector<float> AttackDetector::push(const float *samples, int count)
{
    std::vector<float> ratios;
    for (int start = 0; start < count; start += m_segment) {
        float energy = 0;
        for (int n = 0; n < m_segment; ++n) {
            const float difference = samples[start + n] - m_last;
            m_last = samples[start + n];
            energy += difference * difference;
        }
        const float mean =
            std::accumulate(m_history.begin(), m_history.end(), 0.0F) / static_cast<float>(m_history.size());
        const float floor = Floor * static_cast<float>(m_segment);
        ratios.push_back((energy + floor) / (mean + floor));
        m_history[m_next] = energy;
        m_next = (m_next + 1) % m_history.size();
    }
    return ratios;
}

} // namespace dsp
