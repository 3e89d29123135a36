#include "engines/vqf/WindowPlan.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace vqf {

namespace {

int slopeBetween(BlockType left, BlockType right)
{
    if (left == Short || right == Short)
        return 64;
    return left == Long && right == Long ? 2048 : 512;
}

constexpr int SegmentSamples = 128;
constexpr int SegmentHistory = 8;
constexpr float ShortAttack = 60;
constexpr float MediumAttack = 6;
/// Least share of high frequencies, as the difference's energy, in a sound that short blocks suit: under
/// strong low tones their noise would spread too far.
constexpr double Brightness = 0.1;
/// Root mean square in 16-bit units. The smallest gain of long blocks is louder than this.
constexpr double SilentLevel = 3;

} // namespace

BlockType legalType(BlockType before, BlockType wanted, BlockType next)
{
    if (wanted == Long && before != Long && next != Long)
        return before == Medium || next == Medium ? Medium : Short;
    if (wanted == Medium && before == Short && next == Short)
        return Short;
    return wanted;
}

int windowCode(BlockType before, BlockType type, BlockType behind)
{
    const int left = slopeBetween(before, type), right = slopeBetween(type, behind);
    const auto found = std::find_if(WindowShapes.begin(), WindowShapes.end(), [&](const WindowShape &shape) {
        return shape.type == type && shape.leftSlope == left && shape.rightSlope == right;
    });
    return static_cast<int>(found - WindowShapes.begin());
}

WindowPlan::WindowPlan()
    : m_detectors{dsp::AttackDetector(SegmentSamples, SegmentHistory),
                  dsp::AttackDetector(SegmentSamples, SegmentHistory)}
{}

void WindowPlan::push(const float *left, const float *right)
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
    // Long blocks beside short ones would have a steep slope, and noise that spreads over the whole spectrum.
    const BlockType newest = wantedType();
    const BlockType next = m_unsure == Long && newest == Short ? Medium : m_unsure;
    if (m_wanted == Long && m_settled[2] == Short)
        m_wanted = Medium;
    m_settled = {m_settled[1], m_settled[2], legalType(m_settled[2], m_wanted, next)};
    m_wanted = next;
    m_unsure = newest;
}

int WindowPlan::window() const
{
    return windowCode(m_settled[0], m_settled[1], m_settled[2]);
}

/// Of the frame whose region lies in the second half of the last block and the first half of the new one.
BlockType WindowPlan::wantedType() const
{
    if ((m_last.energy + m_new.energy) / (2 * Channels * FrameSize) < SilentLevel * SilentLevel)
        return Medium;
    constexpr std::size_t Half = FrameSize / 2 / SegmentSamples;
    // An attack right before the region would still be in its first window.
    const float attack = std::max(*std::max_element(m_last.attacks.begin() + Half - 1, m_last.attacks.end()),
                                  *std::max_element(m_new.attacks.begin(), m_new.attacks.begin() + Half));
    const bool bright = m_last.changes + m_new.changes > Brightness * (m_last.energy + m_new.energy);
    return bright && attack > ShortAttack ? Short : attack > MediumAttack ? Medium : Long;
}

} // namespace vqf
