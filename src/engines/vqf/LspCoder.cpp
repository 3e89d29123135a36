#include "engines/vqf/LspCoder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace vqf {

namespace {

/// The curve is smooth: so many points of a block are enough to find it.
constexpr std::array<int, BlockTypes> Points{128, 256, 512};
constexpr int Lags = LspOrder + 1;

/// Keep the filter's peaks from growing too sharp.
constexpr double WhiteNoise = 1.001;
constexpr double LagWindow = 0.008;

} // namespace

LspCoder::LspCoder(const Tables &tables) : m_tables(tables)
{
    for (int type = 0; type < BlockTypes; ++type)
        for (int point = 0; point < Points[type]; ++point)
            for (int lag = 0; lag < Lags; ++lag)
                m_cosines[type].push_back(
                    static_cast<float>(std::cos(std::numbers::pi * (point + 0.5) / Points[type] * lag)));
}

std::optional<Lsp> LspCoder::analyse(BlockType type, const float *power, float exponent) const
{
    const TypeLayout &layout = Layouts[type];
    const int together = layout.blockSize / Points[type];
    std::array<float, Lags> sums{};
    for (int point = 0; point < Points[type]; ++point) {
        float amplitude = 0;
        for (int block = 0; block < layout.blocks; ++block)
            for (int n = 0; n < together; ++n)
                amplitude +=
                    std::pow(power[block * layout.blockSize + point * together + n] + 1e-6F, exponent);
        const float *cosines = m_cosines[type].data() + point * Lags;
        for (int lag = 0; lag < Lags; ++lag)
            sums[lag] += amplitude * cosines[lag];
    }
    std::array<double, Lags> correlation;
    for (int lag = 0; lag < Lags; ++lag)
        correlation[lag] = sums[lag] * std::exp(-0.5 * (LagWindow * lag) * (LagWindow * lag));
    correlation[0] *= WhiteNoise;
    return lspOf(correlation);
}

void LspCoder::quantize(const Lsp &wanted, const Lsp &last, ChannelFields &fields) const
{
    // Where angles are close together the curve has a peak, and a small error moves it.
    Lsp weight;
    for (int n = 0; n < LspOrder; ++n) {
        const double below = n == 0 ? wanted[n] : wanted[n] - wanted[n - 1];
        const double above = n == LspOrder - 1 ? std::numbers::pi - wanted[n] : wanted[n + 1] - wanted[n];
        weight[n] = 1 / std::max(below, 0.003) + 1 / std::max(above, 0.003);
    }
    double best = std::numeric_limits<double>::max();
    for (int predictor = 0; predictor < 2; ++predictor) {
        ChannelFields trial = fields;
        trial.lspPredictor = static_cast<std::uint8_t>(predictor);
        const double error = quantize(wanted, weight, last, trial);
        if (error < best) {
            best = error;
            fields = trial;
        }
    }
}

/// For the predictor of `fields`; gives the weighted squared error.
double LspCoder::quantize(const Lsp &wanted, const Lsp &weight, const Lsp &last, ChannelFields &fields) const
{
    constexpr std::array<int, LspSplits + 1> edges{0, 4, 9, 14, 20};
    Lsp target, cost;
    for (int n = 0; n < LspOrder; ++n) {
        const double history = m_tables.lspPredictor[fields.lspPredictor][n] * 0.0001;
        target[n] = (wanted[n] - last[n] * history) / (1 - history) * 10000;
        cost[n] = weight[n] * (1 - history) * (1 - history) * 1e-8;
    }
    double best = std::numeric_limits<double>::max();
    for (int first = 0; first < BookSize; ++first) {
        double error = 0;
        std::array<std::uint8_t, LspSplits> seconds{};
        for (int split = 0; split < LspSplits; ++split) {
            double bestSplit = std::numeric_limits<double>::max();
            for (int second = 0; second < LspSecondSize; ++second) {
                double sum = 0;
                for (int n = edges[split]; n < edges[split + 1]; ++n) {
                    const double off =
                        target[n] - m_tables.lspFirst[first][n] - m_tables.lspSecond[second][n];
                    sum += cost[n] * off * off;
                }
                if (sum < bestSplit) {
                    bestSplit = sum;
                    seconds[split] = static_cast<std::uint8_t>(second);
                }
            }
            error += bestSplit;
        }
        if (error < best) {
            best = error;
            fields.lspFirst = static_cast<std::uint8_t>(first);
            fields.lspSecond = seconds;
        }
    }
    return best;
}

} // namespace vqf
