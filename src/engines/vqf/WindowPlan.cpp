#include "engines/vqf/WindowPlan.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace vqf {

namespace {

constexpr int SegmentSamples = 128;
constexpr int SegmentHistory = 8;
/// An attack that short blocks alone suit.
constexpr float SharpAttack = 60;
/// Least share of high frequencies, as the difference's energy, in a sound that short blocks suit: under
/// strong low tones their noise would spread too far.
constexpr double Brightness = 0.1;
/// Root mean square in 16-bit units. The smallest gain of long blocks is louder than this.
constexpr double SilentLevel = 3;
/// In dB. How much more noise long, short and medium blocks leave than the trial says, as far as that
/// differs: the fewer blocks there are, the worse one envelope suits all that happens in them. By experiment.
constexpr std::array<float, BlockTypes> Unforeseen{-2.5F, -3, 0};
/// In dB. What noise before a sharp attack costs: the trial doesn't see where in its windows it lies.
constexpr float EarlyNoise = 20;
/// In dB; more than anything.
constexpr float Forbidden = 1000;

/// Both frames medium, as if such a frame had been before the sound.
constexpr int FirstWindow = 8;

} // namespace

bool follows(int window, int next)
{
    return WindowShapes[window].rightSlope == WindowShapes[next].leftSlope;
}

WindowPlan::WindowPlan()
    : m_detectors{dsp::AttackDetector(SegmentSamples, SegmentHistory),
                  dsp::AttackDetector(SegmentSamples, SegmentHistory)},
      m_window(FirstWindow)
{}

void WindowPlan::push(const float *left, const float *right, const WindowCosts &costs)
{
    m_last = std::exchange(m_new, {});
    const std::array<const float *, Channels> samples{left, right};
    for (int c = 0; c < Channels; ++c) {
        const std::vector<float> attacks = m_detectors[c].push(samples[c], FrameSize);
        for (std::size_t n = 0; n < attacks.size(); ++n)
            m_new.attacks[n] = std::max(m_new.attacks[n], attacks[n]);
        m_new.energy += std::inner_product(samples[c], samples[c] + FrameSize, samples[c], 0.0);
        for (int n = 1; n < FrameSize; ++n)
            m_new.changes += (samples[c][n] - samples[c][n - 1]) * (samples[c][n] - samples[c][n - 1]);
    }
    m_costs.push_back(costs);
    const bool silent = isSilent(), sharp = hasSharpAttack();
    for (std::size_t window = 0; window < WindowShapes.size(); ++window) {
        const BlockType type = WindowShapes[window].type;
        float &cost = m_costs.back()[window];
        cost += Unforeseen[type];
        if (sharp && type != Short)
            cost += EarlyNoise;
        if (silent && type != Medium)
            cost += Forbidden;
    }
}

int WindowPlan::next()
{
    WindowCosts behind{}; // the cheapest succession after each window
    for (std::size_t frame = m_costs.size(); frame-- > 1;) {
        WindowCosts best;
        best.fill(std::numeric_limits<float>::max());
        for (int window = 0; window < static_cast<int>(best.size()); ++window)
            for (int next = 0; next < static_cast<int>(best.size()); ++next)
                if (follows(window, next))
                    best[window] = std::min(best[window], m_costs[frame][next] + behind[next]);
        behind = best;
    }
    float least = std::numeric_limits<float>::max();
    const int before = m_window;
    for (int window = 0; window < static_cast<int>(behind.size()); ++window) {
        const float cost = m_costs.front()[window] + behind[window];
        if (follows(before, window) && cost < least) {
            m_window = window;
            least = cost;
        }
    }
    m_costs.pop_front();
    return m_window;
}

bool WindowPlan::isSilent() const
{
    return (m_last.energy + m_new.energy) / (2 * Channels * FrameSize) < SilentLevel * SilentLevel;
}

/// In or right before the region of the frame, which lies in the second half of the last block and the first
/// half of the new one.
bool WindowPlan::hasSharpAttack() const
{
    constexpr std::size_t Half = FrameSize / 2 / SegmentSamples;
    const float attack = std::max(*std::max_element(m_last.attacks.begin() + Half - 1, m_last.attacks.end()),
                                  *std::max_element(m_new.attacks.begin(), m_new.attacks.begin() + Half));
    return attack > SharpAttack &&
           m_last.changes + m_new.changes > Brightness * (m_last.energy + m_new.energy);
}

} // namespace vqf
