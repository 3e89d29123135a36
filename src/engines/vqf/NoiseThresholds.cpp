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
/// What lies so far under the loudest coefficient isn't heard, as a factor of its power: 95 dB. Otherwise a
/// lone tone would be given up for the sake of silence at all other frequencies.
constexpr float HearingRange = 3.16e-10F;

dsp::MaskingSettings settings()
{
    dsp::MaskingSettings settings;
    settings.toneOffset = 4;
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
    for (std::size_t window = 0; window < WindowShapes.size(); ++window)
        for (int block = 0; block < Layouts[WindowShapes[window].type].blocks; ++block)
            m_shares[window].push_back(sharesOf(WindowShapes[window], block));
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
        const float least = HearingRange * *std::max_element(power.begin(), power.end());
        StepwisePower inverse(-MeanExponent);
        for (int k = 0; k < Size; ++k)
            m_inverse[w][k] = inverse(std::max(threshold[k], least));
    }
}

/// How much of a block's noise each window sees.
NoiseThresholds::Shares NoiseThresholds::sharesOf(const WindowShape &shape, int block) const
{
    const TypeLayout &layout = Layouts[shape.type];
    const int left = block == 0 ? shape.leftSlope : layout.innerSlope;
    const int right = block == layout.blocks - 1 ? shape.rightSlope : layout.innerSlope;
    const int begin = FrameSize / 2 + block * layout.blockSize - left / 2;
    const int end = FrameSize / 2 + (block + 1) * layout.blockSize + right / 2;
    Shares shares{};
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

void NoiseThresholds::inverse(int window, float *inverse) const
{
    const TypeLayout &layout = Layouts[WindowShapes[window].type];
    StepwisePower power(1 / MeanExponent);
    for (int block = 0; block < layout.blocks; ++block) {
        const Shares &parts = m_shares[window][block];
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
            inverse[block * layout.blockSize + k] = power(sum / static_cast<float>(last - first));
        }
    }
}

} // namespace vqf
