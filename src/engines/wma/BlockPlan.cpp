#include "engines/wma/BlockPlan.h"

#include <algorithm>

namespace wma {

namespace {

constexpr int SegmentSamples = 64;
constexpr int SegmentHistory = 16;
constexpr float StrongChange = 12; ///< down to the smallest blocks
constexpr float MildChange = 3;    ///< to half the frame

void keepLarger(const std::vector<float> &values, std::vector<float>::iterator into)
{
    std::transform(values.begin(), values.end(), into, into,
                   [](float one, float other) { return std::max(one, other); });
}

} // namespace

BlockPlan::BlockPlan(const StreamFormat &format)
    : m_format(format),
      m_channels(static_cast<std::size_t>(format.channels()),
                 Channel{dsp::AttackDetector(SegmentSamples, SegmentHistory),
                         std::vector<float>(static_cast<std::size_t>(2 * format.frameSize()))}),
      m_attacks(static_cast<std::size_t>(2 * format.frameSize() / SegmentSamples))
{}

std::vector<int> BlockPlan::push(const std::array<const float *, MaxChannels> &samples)
{
    const int size = m_format.frameSize();
    const auto half = m_attacks.begin() + size / SegmentSamples;
    std::copy(half, m_attacks.end(), m_attacks.begin());
    std::fill(half, m_attacks.end(), 0.0F);
    std::vector<float> changes(m_attacks.size());
    for (std::size_t c = 0; c < m_channels.size(); ++c) {
        Channel &channel = m_channels[c];
        sharpen(samples[c], channel);
        keepLarger(channel.attacks.push(channel.sharp.data() + size, size), half);
        // A sound's end is its beginning backwards; what lies behind the region is the history.
        const std::vector<float> backwards(channel.sharp.rbegin(), channel.sharp.rend());
        dsp::AttackDetector detector(SegmentSamples, size / 2 / SegmentSamples);
        std::vector<float> found = detector.push(backwards.data(), 2 * size);
        std::reverse(found.begin(), found.end());
        keepLarger(found, changes.begin());
    }
    keepLarger(m_attacks, changes.begin());
    std::vector<int> blocks;
    divide(changes, size / 2 / SegmentSamples, size / SegmentSamples, 0, blocks);
    return blocks;
}

/// Steady low tones fluctuate within a segment; so only high frequencies count.
void BlockPlan::sharpen(const float *samples, Channel &channel) const
{
    const int size = m_format.frameSize();
    std::copy(channel.sharp.begin() + size, channel.sharp.end(), channel.sharp.begin());
    for (int n = 0; n < size; ++n) {
        const float difference = samples[n] - channel.last[0];
        channel.sharp[size + n] = difference - channel.last[1];
        channel.last = {samples[n], difference};
    }
}

/// `begin` and `length` count segments.
void BlockPlan::divide(const std::vector<float> &changes, int begin, int length, int halvings,
                       std::vector<int> &blocks) const
{
    // A change right beside the block would still be in its window.
    const float change = *std::max_element(changes.begin() + begin - 1, changes.begin() + begin + length + 1);
    const bool mild = change > MildChange && halvings == 0;
    if (halvings < m_format.halvings() && (mild || change > StrongChange)) {
        divide(changes, begin, length / 2, halvings + 1, blocks);
        divide(changes, begin + length / 2, length / 2, halvings + 1, blocks);
    } else {
        blocks.push_back(halvings);
    }
}

} // namespace wma
