#include "engines/vqf/NoiseThresholds.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vqf {

namespace {

/// Noise of variance 1 has this power in every coefficient, whatever the block size.
constexpr double UnitPower = 2;
/// Of the mean over windows. With 1 the quietest window would decide alone, which before an attack leaves too
/// few bits for the attack.
constexpr float MeanExponent = 0.7F;

dsp::MaskingSettings settings()
{
    dsp::MaskingSettings settings;
    settings.toneOffset = 6;
    settings.quietVariance = 1.0 / 12;
    return settings;
}

float slope(int n, int length)
{
    return n >= length ? 1 : static_cast<float>(std::sin(std::numbers::pi * (n + 0.5) / (2 * length)));
}

} // namespace

NoiseThresholds::NoiseThresholds() : m_transform(Size), m_model(Size, SampleRate, UnitPower, settings())
{
    for (int n = 0; n < 2 * Size; ++n)
        m_window[n] = static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * (n + 0.5) / Size));
}

void NoiseThresholds::analyse(const float *samples)
{
    constexpr float Scale = UnitPower / (0.375F * 2 * Size); // the window's mean square is 0.375
    std::array<float, 2 * Size> windowed;
    std::array<float, Size> power, sines, threshold;
    for (int w = 0; w < Windows; ++w) {
        for (int n = 0; n < 2 * Size; ++n)
            windowed[n] = samples[w * Step + n] * m_window[n];
        m_transform.forward(windowed.data(), power.data());
        m_transform.forwardSine(windowed.data(), sines.data());
        for (int k = 0; k < Size; ++k)
            power[k] = Scale * (power[k] * power[k] + sines[k] * sines[k]);
        m_model.thresholds(power.data(), threshold.data());
        for (int k = 0; k < Size; ++k)
            m_inverse[w][k] = std::pow(threshold[k], -MeanExponent);
    }
}

std::array<float, NoiseThresholds::Windows> NoiseThresholds::shares(const WindowShape &shape, int block) const
{
    const TypeLayout &layout = Layouts[shape.type];
    const int left = block == 0 ? shape.leftSlope : layout.innerSlope;
    const int right = block == layout.blocks - 1 ? shape.rightSlope : layout.innerSlope;
    const int begin = FrameSize / 2 + block * layout.blockSize - left / 2;
    const int end = FrameSize / 2 + (block + 1) * layout.blockSize + right / 2;
    std::array<float, Windows> shares{};
    float total = 0;
    for (int n = begin; n < end; ++n) {
        const float level = std::min(slope(n - begin, left), slope(end - 1 - n, right));
        for (int w = 0; w < Windows; ++w) {
            const int at = n - w * Step;
            if (at < 0 || at >= 2 * Size)
                continue;
            const float share = level * level * m_window[at] * m_window[at];
            shares[w] += share;
            total += share;
        }
    }
    for (float &share : shares)
        share /= total;
    return shares;
}

void NoiseThresholds::inverse(const WindowShape &shape, float *inverse) const
{
    const TypeLayout &layout = Layouts[shape.type];
    for (int block = 0; block < layout.blocks; ++block) {
        const std::array<float, Windows> parts = shares(shape, block);
        std::array<float, Size> mean{};
        for (int w = 0; w < Windows; ++w)
            for (int k = 0; k < Size; ++k)
                mean[k] += parts[w] * m_inverse[w][k];
        for (int k = 0; k < layout.blockSize; ++k) {
            const int first = k * Size / layout.blockSize;
            const int last = std::max(first + 1, (k + 1) * Size / layout.blockSize);
            float sum = 0;
            for (int n = first; n < last; ++n)
                sum += mean[n];
            inverse[block * layout.blockSize + k] =
                std::pow(sum / static_cast<float>(last - first), 1 / MeanExponent);
        }
    }
}

} // namespace vqf
