#include "engines/wma/BlockPlan.h"

#include <algorithm>

namespace wma {

namespace {

constexpr int SegmentSamples = 64;
constexpr int SegmentHistory = 16;
constexpr float StrongAttack = 12; ///< down to the smallest blocks
constexpr float MildAttack = 3;    ///< down to this size:
constexpr int MildAttackBlock = 512;

} // namespace

BlockPlan::BlockPlan(const StreamFormat &format)
    : m_format(format),
      m_detectors(static_cast<std::size_t>(format.channels()),
                  dsp::AttackDetector(SegmentSamples, SegmentHistory)),
      m_attacks(static_cast<std::size_t>(2 * format.frameSize() / SegmentSamples))
{}

std::vector<int> BlockPlan::push(const std::array<const float *, MaxChannels> &samples)
{
    const auto half = m_attacks.begin() + static_cast<std::ptrdiff_t>(m_attacks.size() / 2);
    std::copy(half, m_attacks.end(), m_attacks.begin());
    std::fill(half, m_attacks.end(), 0.0F);
    for (std::size_t c = 0; c < m_detectors.size(); ++c) {
        const std::vector<float> attacks = m_detectors[c].push(samples[c], m_format.frameSize());
        std::transform(attacks.begin(), attacks.end(), half, half,
                       [](float one, float other) { return std::max(one, other); });
    }
    std::vector<int> blocks;
    divide(static_cast<int>(m_attacks.size() / 4), static_cast<int>(m_attacks.size() / 2), 0, blocks);
    return blocks;
}

/// `begin` and `length` count segments.
void BlockPlan::divide(int begin, int length, int halvings, std::vector<int> &blocks) const
{
    // An attack right beside the block would still be in its window.
    const float attack =
        *std::max_element(m_attacks.begin() + begin - 1, m_attacks.begin() + begin + length + 1);
    const int size = m_format.blockSize(halvings);
    if (halvings < m_format.halvings() &&
        (attack > StrongAttack || (attack > MildAttack && size > MildAttackBlock))) {
        divide(begin, length / 2, halvings + 1, blocks);
        divide(begin + length / 2, length / 2, halvings + 1, blocks);
    } else {
        blocks.push_back(halvings);
    }
}

} // namespace wma
