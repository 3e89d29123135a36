#include "engines/vqf/EnvelopeCoder.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vqf {

namespace {

constexpr float FaintestLevel = 1e-9F;

/// The index whose value is the nearest in logarithm; `value` rises with the index.
template <typename Value>
int nearestIndex(int count, double wanted, const Value &value)
{
    int low = 0, high = count - 1;
    while (high - low > 1) {
        const int middle = (low + high) / 2;
        (value(middle) <= wanted ? low : high) = middle;
    }
    return value(high) * value(low) < wanted * wanted ? high : low;
}

double logMean(const std::array<EnvelopeTarget::Band, MaxBands> &bands, int count)
{
    double sum = 0, weights = 0;
    for (int band = 0; band < count; ++band) {
        const EnvelopeTarget::Band &of = bands[band];
        const float weight = of.ratioCost + of.errorCost * of.level * of.level;
        sum += weight * std::log(std::max(of.level, FaintestLevel));
        weights += weight;
    }
    return weights > 0 ? sum / weights : std::log(FaintestLevel);
}

} // namespace

struct EnvelopeCoder::BlockFit
{
    std::array<std::uint8_t, MaxBarkIndices> indices{};
    bool history = false;
    int gain = 0; ///< whichever gain field the caller tries
    float cost = std::numeric_limits<float>::max();
};

EnvelopeCoder::EnvelopeCoder(const Tables &tables) : m_tables(tables) {}

/// Tries all indices with each of the gains, each given by its field and its value.
void EnvelopeCoder::fitBlock(BlockType type, const std::array<EnvelopeTarget::Band, MaxBands> &bands,
                             const std::vector<std::pair<int, float>> &gains, const Levels *last,
                             BlockFit &best) const
{
    const TypeLayout &layout = Layouts[type];
    const auto history = static_cast<float>(last ? layout.history : 0);
    std::array<std::array<float, BookSize>, MaxBands> values, ratios;
    std::array<float, MaxBands> leastRatios;
    for (int band = 0; band < layout.bands; ++band) {
        const float remembered = history * (last ? (*last)[band] : 0);
        const float wanted = std::max(bands[band].level, FaintestLevel);
        leastRatios[band] = std::log(std::max(bands[band].least, FaintestLevel) / wanted);
        for (int entry = 0; entry < BookSize; ++entry) {
            const float value =
                static_cast<float>(m_tables.bark[type][entry][band / layout.barkIndices]) / 4096;
            values[band][entry] = 1 + (1 - history) * value + remembered;
            ratios[band][entry] = bands[band].ratioCost > 0 ? std::log(values[band][entry] / wanted) : 0;
        }
    }
    for (const auto &[index, gain] : gains) {
        const float logGain = std::log(gain);
        BlockFit fit;
        fit.history = last != nullptr;
        fit.gain = index;
        fit.cost = 0;
        for (int j = 0; j < layout.barkIndices; ++j) {
            std::array<float, BookSize> costs{};
            for (int band = j; band < layout.bands; band += layout.barkIndices) {
                const EnvelopeTarget::Band target = bands[band];
                for (int entry = 0; entry < BookSize; ++entry) {
                    const float ratio = ratios[band][entry] + logGain;
                    const float level = values[band][entry] * gain;
                    const float off = level - target.level;
                    const float missing = std::max(leastRatios[band] - ratio, 0.0F);
                    costs[entry] += target.ratioCost * ratio * ratio + target.errorCost * off * off +
                                    target.leastCost * missing * missing;
                }
            }
            const auto best = std::min_element(costs.begin(), costs.end());
            fit.indices[j] = static_cast<std::uint8_t>(best - costs.begin());
            fit.cost += *best;
        }
        if (fit.cost < best.cost)
            best = fit;
    }
}

CodedEnvelope EnvelopeCoder::fit(BlockType type, const EnvelopeTarget &target, const ChannelHistory &history,
                                 bool useHistory, ChannelFields &fields) const
{
    const TypeLayout &layout = Layouts[type];
    const auto gainOf = [type](int gain, int blockGain) { return gainValue(type, gain, blockGain); };
    std::array<double, MaxBlocks> means{};
    for (int block = 0; block < layout.blocks; ++block)
        means[block] = logMean(target.bands[block], layout.bands);
    const double loudest = std::exp(*std::max_element(means.begin(), means.begin() + layout.blocks));
    constexpr int UsualBlockGain = 30; // of the loudest block; one step is left for a louder one
    fields.gain = static_cast<std::uint8_t>(
        nearestIndex(Gains, loudest, [&](int gain) { return gainOf(gain, UsualBlockGain); }));

    double cost = 0;
    Levels last = history.envelope[type], unused;
    for (int block = 0; block < layout.blocks; ++block) {
        std::vector<std::pair<int, float>> gains;
        const auto addGain = [&gains](int index, double value) {
            gains.emplace_back(index, static_cast<float>(value));
        };
        if (type == Long) {
            for (int step = -6; step <= 6; ++step) {
                const int gain = std::clamp(fields.gain + 6 * step, 0, Gains - 1);
                addGain(gain, gainOf(gain, 0));
            }
        } else {
            const int near = nearestIndex(BlockGains, std::exp(means[block]),
                                          [&](int blockGain) { return gainOf(fields.gain, blockGain); });
            for (int gain = std::max(near - 3, 0); gain <= std::min(near + 3, BlockGains - 1); ++gain)
                addGain(gain, gainOf(fields.gain, gain));
        }
        BlockFit best;
        fitBlock(type, target.bands[block], gains, nullptr, best);
        // Within a frame every decoder remembers the block before.
        if (useHistory || block > 0)
            fitBlock(type, target.bands[block], gains, &last, best);
        fields.bark[block] = best.indices;
        fields.barkHistory[block] = best.history;
        (type == Long ? fields.gain : fields.blockGain[block]) = static_cast<std::uint8_t>(best.gain);
        barkEnvelope(m_tables, type, best.indices, best.history, last, unused);
        cost += best.cost;
    }
    CodedEnvelope coded = levels(type, history, fields);
    coded.cost = cost;
    return coded;
}

CodedEnvelope EnvelopeCoder::levels(BlockType type, const ChannelHistory &history,
                                    const ChannelFields &fields) const
{
    CodedEnvelope coded;
    Levels last = history.envelope[type];
    for (int block = 0; block < Layouts[type].blocks; ++block) {
        barkEnvelope(m_tables, type, fields.bark[block], fields.barkHistory[block], last,
                     coded.levels[block]);
        const auto gain = static_cast<float>(gainValue(type, fields.gain, fields.blockGain[block]));
        for (float &level : coded.levels[block])
            level *= gain;
    }
    return coded;
}

} // namespace vqf
