#include "engines/vqf/LspAnalysis.h"

#include <algorithm>
#include <cmath>
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

LspAnalysis::LspAnalysis()
{
    for (int type = 0; type < BlockTypes; ++type)
        for (int point = 0; point < Points[type]; ++point)
            for (int lag = 0; lag < Lags; ++lag)
                m_cosines[type].push_back(
                    static_cast<float>(std::cos(std::numbers::pi * (point + 0.5) / Points[type] * lag)));
}

std::optional<Lsp> LspAnalysis::analyse(BlockType type, const float *power, float exponent) const
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

} // namespace vqf
