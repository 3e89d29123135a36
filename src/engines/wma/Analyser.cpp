#include "engines/wma/Analyser.h"

#include "engines/wma/Levels.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace wma {

namespace {

/// Share of a band's threshold in its step; the rest is that of the whole block's mean. Noise by the
/// threshold alone would cost much signal-to-noise ratio and be heard hardly less.
constexpr float BandShare = 0.85F;
/// The same where bits are plenty.
constexpr float RichBandShare = 0.95F;
constexpr double RichBitsPerSample = 1.25;
/// How far the step follows the width of a critical band: in wide ones less noise costs more bits.
constexpr float WidthShare = 0.65F;
constexpr float UsualWidth = 200; ///< Hz, of a critical band
/// What a sound masks behind it, within a frame: dB for each millisecond later.
constexpr float MaskingDecay = 2;
/// The step, in dB, whose noise has power 1.
constexpr float UnitStep = 10.8F;
/// Below a band's loudest coefficient; levels end at 511.
constexpr float LevelRange = 53.6F;
/// Between coefficients; with larger distances tones can't be told.
constexpr int TonalHertz = 45;
/// Bits of a coefficient, as a share of the logarithm of its power in steps.
constexpr float BitsPerLog = 1.45F;

std::vector<float> hann(int size)
{
    std::vector<float> window;
    for (int n = 0; n < size; ++n)
        window.push_back(static_cast<float>(0.5 - 0.5 * std::cos(2 * std::numbers::pi * (n + 0.5) / size)));
    return window;
}

/// Noise of variance 1 gives half the block size in each coefficient.
dsp::MaskingModel maskingModel(const StreamFormat &format, int size)
{
    dsp::MaskingSettings settings;
    settings.noiseOffset = 5;
    settings.toneOffset = 6; // 12 would bring tones 0.2 dB and cost all else as much
    settings.highOffset = 0.25;
    settings.quietOffset = 30; // faint passages are turned up
    settings.judgesTonality = 2 * size * TonalHertz > format.rate();
    return {size, double(format.rate()), size / 2.0, settings};
}

/// The width of critical bands at each band, in dB.
std::vector<float> widthLevels(const StreamFormat &format, const BlockLayout &layout)
{
    std::vector<float> levels;
    for (int band = 0; band < layout.visibleBands(); ++band) {
        constexpr double Around = 50; // Hz
        const double hertz =
            0.25 * (layout.edges[band] + layout.edges[band + 1]) * format.rate() / layout.size;
        const double barks = dsp::bark(hertz + Around) - dsp::bark(hertz - Around);
        levels.push_back(decibels(static_cast<float>(2 * Around / barks) / UsualWidth));
    }
    return levels;
}

/// Where noise can't stand in for the highest frequencies, leaving them out saves bits for what is heard
/// better: from about 15 kHz on at 64 kb/s, from 18 kHz on at 160. Chosen by trial, as all here.
double lowPass(const StreamFormat &format)
{
    if (format.hasNoise() || format.rate() < 32000)
        return 1;
    const double bitsPerSample = double(format.bitRate()) / (format.channels() * format.rate());
    const double hertz = format.channels() == 2 ? 13000 + 2900 * bitsPerSample : 15000 * bitsPerSample;
    return std::min(1.0, 2 * hertz / format.rate());
}

} // namespace

Analyser::Analyser(const StreamFormat &format, const std::vector<BlockLayout> &layouts)
    : m_format(format),
      m_layouts(layouts),
      m_lowPass(lowPass(format)),
      m_bandShare(format.bitRate() < RichBitsPerSample * format.channels() * format.rate() ? BandShare
                                                                                           : RichBandShare),
      m_fullWindow(hann(2 * format.frameSize())),
      m_halfWindow(hann(format.frameSize()))
{
    for (const BlockLayout &layout : layouts)
        m_kits.push_back(
            {dsp::Mdct<float>(layout.size), maskingModel(format, layout.size), widthLevels(format, layout)});
    for (int n = 0; n < Qualities; ++n)
        m_scales[n] = amplitude(-2 * (FirstQuality + QualityStep * static_cast<float>(n)));
}

FrameAnalysis Analyser::analyse(const FrameSound &sound)
{
    FrameAnalysis frame;
    frame.halvingsBefore = sound.halvingsBefore;
    frame.halvingsBehind = sound.halvingsBehind;
    std::array<Spectrum, MaxChannels> thresholds, lasts;
    int begin = m_format.frameSize() / 2; // of the block's region
    for (std::size_t n = 0; n < sound.blocks.size(); ++n) {
        BlockAnalysis &block = frame.blocks.emplace_back();
        block.halvings = sound.blocks[n];
        const BlockLayout &layout = m_layouts[block.halvings];
        const int before = n > 0 ? sound.blocks[n - 1] : sound.halvingsBefore;
        const int behind = n + 1 < sound.blocks.size() ? sound.blocks[n + 1] : sound.halvingsBehind;
        std::array<BitEstimates, 2> bits{}; // of left and right; of mid and side
        auto &[left, right] = block.channels[0];
        for (int c = 0; c < m_format.channels(); ++c) {
            ChannelAnalysis &channel = block.channels[0][c];
            transform(sound.samples[c].data() + begin - layout.size / 2, block.halvings,
                      m_format.blockSize(before), m_format.blockSize(behind), channel.coefficients);
            findThresholds(sound.samples[c].data() + begin + layout.size / 2, block.halvings, thresholds[c]);
            if (n > 0)
                keepMasking(lasts[c], thresholds[c]);
            lasts[c] = thresholds[c];
            findSteps(block.halvings, thresholds[c], channel);
            estimate(layout, channel, bits[0]);
        }
        if (m_format.channels() == 2) {
            auto &[mid, side] = block.channels[1];
            for (int k = 0; k < layout.codedEnd; ++k) {
                mid.coefficients.push_back((left.coefficients[k] + right.coefficients[k]) / 2);
                side.coefficients.push_back((left.coefficients[k] - right.coefficients[k]) / 2);
                // Noise of the mid and of the side goes to left and right alike; what either masks counts.
                thresholds[0][k] = 1 / (1 / thresholds[0][k] + 1 / thresholds[1][k]);
            }
            for (ChannelAnalysis &channel : block.channels[1]) {
                findSteps(block.halvings, thresholds[0], channel);
                estimate(layout, channel, bits[1]);
            }
        }
        for (int q = 0; q < Qualities; ++q)
            frame.bits[q] += m_format.channels() == 2 ? std::min(bits[0][q], bits[1][q]) : bits[0][q];
        begin += layout.size;
    }
    return frame;
}

/// Also leaves the power of each coefficient, whatever its phase, in m_power.
void Analyser::transform(const float *samples, int halvings, int leftSlope, int rightSlope,
                         Spectrum &coefficients)
{
    const int size = m_format.blockSize(halvings);
    m_windowed.assign(samples, samples + 2 * size);
    dsp::applyLeftSlope(m_windowed.data(), size, std::min(size, leftSlope));
    dsp::applyRightSlope(m_windowed.data(), size, std::min(size, rightSlope));
    coefficients.resize(static_cast<std::size_t>(size));
    m_sines.resize(coefficients.size());
    m_power.resize(coefficients.size());
    m_kits[halvings].transform.forward(m_windowed.data(), coefficients.data());
    m_kits[halvings].transform.forwardSine(m_windowed.data(), m_sines.data());
    for (int k = 0; k < size; ++k)
        m_power[k] = (coefficients[k] * coefficients[k] + m_sines[k] * m_sines[k]) / 2;
    coefficients.resize(static_cast<std::size_t>(m_layouts[halvings].codedEnd));
    const auto passed = static_cast<std::size_t>(m_lowPass * size);
    if (passed < coefficients.size())
        std::fill(coefficients.begin() + static_cast<std::ptrdiff_t>(passed), coefficients.end(), 0.0F);
}

/// From m_power and from the spectrum of a longer, smoother window: through steep slopes strong low tones
/// leak into all the others and seem to mask them.
void Analyser::findThresholds(const float *centre, int halvings, Spectrum &thresholds)
{
    const int size = m_format.blockSize(halvings);
    thresholds.resize(static_cast<std::size_t>(size));
    m_kits[halvings].masking.thresholds(m_power.data(), thresholds.data());

    const std::vector<float> &window = halvings == 0 ? m_fullWindow : m_halfWindow;
    const int wide = static_cast<int>(window.size()) / 2; // coefficients
    Kit &kit = m_kits[halvings == 0 ? 0 : 1];
    m_windowed.resize(window.size());
    std::transform(window.begin(), window.end(), centre - wide, m_windowed.begin(), std::multiplies<>());
    m_power.resize(static_cast<std::size_t>(wide));
    m_sines.resize(m_power.size());
    m_other.resize(m_power.size());
    kit.transform.forward(m_windowed.data(), m_power.data());
    kit.transform.forwardSine(m_windowed.data(), m_sines.data());
    constexpr float HannScale = 4.0F / 3 / 2; // a Hann window's energy is three quarters of a sine window's
    for (int k = 0; k < wide; ++k)
        m_power[k] = (m_power[k] * m_power[k] + m_sines[k] * m_sines[k]) * HannScale;
    kit.masking.thresholds(m_power.data(), m_other.data());
    const int ratio = wide / size;
    for (int k = 0; k < size; ++k) {
        const auto first = m_other.begin() + k * ratio;
        const float inverse = std::accumulate(first, first + ratio, 0.0F,
                                              [](float sum, float threshold) { return sum + 1 / threshold; });
        thresholds[k] = std::min(thresholds[k], 1 / inverse);
    }
}

/// What the block before masks in this one.
void Analyser::keepMasking(const Spectrum &before, Spectrum &thresholds) const
{
    const auto was = static_cast<float>(before.size()), is = static_cast<float>(thresholds.size());
    const float milliseconds = 1000 * (was + is) / 2 / static_cast<float>(m_format.rate());
    const float factor = amplitude(-2 * MaskingDecay * milliseconds) * is / was;
    for (std::size_t k = 0; k < thresholds.size(); ++k)
        thresholds[k] = std::max(thresholds[k], factor * before[k * before.size() / thresholds.size()]);
}

/// Noise is even within a band: where the threshold is lowest it counts most.
void Analyser::findSteps(int halvings, const Spectrum &thresholds, ChannelAnalysis &channel) const
{
    const BlockLayout &layout = m_layouts[halvings];
    channel.steps.clear();
    channel.leastSteps.clear();
    float sum = 0;
    for (int band = 0; band < layout.visibleBands(); ++band) {
        float bandSum = 0, peak = 1e-9F;
        for (int k = layout.edges[band]; k < layout.edges[band + 1]; ++k) {
            bandSum += 1 / thresholds[k];
            peak = std::max(peak, std::abs(channel.coefficients[k]));
        }
        const auto width = static_cast<float>(layout.edges[band + 1] - layout.edges[band]);
        channel.steps.push_back(-decibels(bandSum / width));
        sum += width * channel.steps.back();
        channel.leastSteps.push_back(2 * decibels(peak) - LevelRange);
    }
    const float mean = sum / static_cast<float>(layout.codedEnd);
    const std::vector<float> &widths = m_kits[halvings].widthLevels;
    for (std::size_t band = 0; band < channel.steps.size(); ++band)
        channel.steps[band] = m_bandShare * channel.steps[band] + (1 - m_bandShare) * mean + UnitStep +
                              WidthShare * widths[band];
}

/// Adds to `bits`. Four coefficients share a logarithm.
void Analyser::estimate(const BlockLayout &layout, const ChannelAnalysis &channel, BitEstimates &bits) const
{
    constexpr float Largest = 1 << 20; // of a squared level: the product of four mustn't overflow
    constexpr int Together = 4;
    BitEstimates sums{};
    for (int band = 0; band < layout.visibleBands(); ++band) {
        const float inverse = amplitude(-2 * channel.steps[band]);
        for (int k = layout.edges[band]; k < layout.edges[band + 1]; k += Together) {
            BitEstimates products;
            products.fill(1);
            for (int i = k; i < std::min(k + Together, layout.edges[band + 1]); ++i) {
                const float square = channel.coefficients[i] * channel.coefficients[i] * inverse;
                for (int q = 0; q < Qualities; ++q)
                    products[q] *= 1 + std::min(square * m_scales[q], Largest);
            }
            for (int q = 0; q < Qualities; ++q)
                sums[q] += fastLog2(products[q]);
        }
    }
    for (int q = 0; q < Qualities; ++q)
        bits[q] += BitsPerLog * sums[q];
}

} // namespace wma
