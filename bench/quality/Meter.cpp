#include "quality/Meter.h"

#include "engines/dsp/MaskingModel.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace quality {

namespace {

constexpr double HighestHertz = 16000;
constexpr double BandsPerBark = 2;
/// Decay of the spreading per Bark, in dB.
constexpr double SpreadUp = 15, SpreadDown = 27;
/// Root mean square of windows that count as silent.
constexpr double SilentLevel = 3;
constexpr double RoundingVariance = 1.0 / 12;
/// The power per coefficient of noise of variance 1, by the window's share.
constexpr double WindowShare = 0.375;

double factor(double decibels)
{
    return std::pow(10, decibels / 10);
}

double decibels(double ratio)
{
    return 10 * std::log10(ratio);
}

} // namespace

Quality &Quality::operator+=(const Quality &other)
{
    snr += other.snr;
    noiseToMask += other.noiseToMask;
    tonal += other.tonal;
    return *this;
}

Quality Quality::operator/(double divisor) const
{
    return {snr / divisor, noiseToMask / divisor, tonal / divisor};
}

long delayOf(const Pcm &original, const DecodedPcm &decoded, long most)
{
    const long early = 200, whole = static_cast<long>(std::min(original.size(), decoded.size()) / 2);
    const long start = std::clamp(whole / 4, early, 100000L), end = std::min(start + 40000, whole - most);
    double best = 0;
    long delay = 0;
    for (long trial = -early; trial < most; ++trial) {
        double product = 0;
        for (long n = 2 * start; n < 2 * end; ++n)
            product += original[static_cast<std::size_t>(n)] *
                       static_cast<double>(decoded[static_cast<std::size_t>(n + 2 * trial)]);
        if (product > best) {
            best = product;
            delay = trial;
        }
    }
    return delay;
}

Meter::Meter(int rate) : m_half(rate > 24000 ? 1024 : rate > 12000 ? 512 : 256), m_transform(m_half)
{
    for (int n = 0; n < 2 * m_half; ++n)
        m_window.push_back(static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * (n + 0.5) / m_half)));
    const double width = rate / 2.0 / m_half;
    int last = -1;
    for (int k = 0; k < m_half && (k + 0.5) * width < HighestHertz; ++k) {
        const int band = static_cast<int>(BandsPerBark * dsp::bark((k + 0.5) * width));
        if (band != last)
            m_bands.push_back({k, k, (band + 0.5) / BandsPerBark});
        m_bands.back().end = k + 1;
        last = band;
    }
}

Quality Meter::measure(const Pcm &original, const DecodedPcm &decoded, long delay)
{
    const long frames = static_cast<long>(original.size() / 2);
    std::array<std::vector<float>, 2> signal, noise;
    double power = 0, error = 0;
    for (long n = 0; n < frames; ++n) {
        for (long c = 0; c < 2; ++c) {
            const float sample = original[static_cast<std::size_t>(2 * n + c)];
            const long at = 2 * (n + delay) + c;
            const bool exists = at >= 0 && at < static_cast<long>(decoded.size());
            const float off = sample - (exists ? decoded[static_cast<std::size_t>(at)] : 0);
            signal[static_cast<std::size_t>(c)].push_back(sample);
            noise[static_cast<std::size_t>(c)].push_back(off);
            power += sample * sample;
            error += off * off;
        }
    }
    Quality quality;
    int counted = 0;
    for (long start = 0; start + 2 * m_half <= frames; start += m_half) {
        Ratios sum;
        bool silent = true;
        for (std::size_t c = 0; c < 2; ++c) {
            const Spectrum sounding = spectrum(signal[c].data() + start);
            silent = silent && std::accumulate(sounding.begin(), sounding.end(), 0.0) <
                                   SilentLevel * SilentLevel * WindowShare * 2 * m_half * m_half;
            const Ratios ratios = compare(sounding, spectrum(noise[c].data() + start));
            sum.plain += ratios.plain;
            sum.tonal += ratios.tonal;
        }
        if (silent)
            continue;
        quality += {0, decibels(sum.plain / 2), decibels(sum.tonal / 2)};
        ++counted;
    }
    quality = quality / std::max(counted, 1);
    quality.snr = decibels(power / error);
    return quality;
}

/// The power of each coefficient, whatever the phase.
Meter::Spectrum Meter::spectrum(const float *samples)
{
    std::vector<float> windowed(m_window.size());
    std::transform(m_window.begin(), m_window.end(), samples, windowed.begin(), std::multiplies<>());
    const auto size = static_cast<std::size_t>(m_half);
    Spectrum power(size), sines(size);
    m_transform.forward(windowed.data(), power.data());
    m_transform.forwardSine(windowed.data(), sines.data());
    std::transform(power.begin(), power.end(), sines.begin(), power.begin(),
                   [](float cosine, float sine) { return cosine * cosine + sine * sine; });
    return power;
}

Meter::Ratios Meter::compare(const Spectrum &signal, const Spectrum &noise) const
{
    const double rounding = RoundingVariance * WindowShare * 2 * m_half;
    std::vector<double> mask(m_bands.size()), tonalMask(m_bands.size());
    for (const Band &from : m_bands) {
        double energy = 0, logarithms = 0;
        for (int k = from.begin; k < from.end; ++k) {
            energy += signal[static_cast<std::size_t>(k)];
            logarithms += decibels(signal[static_cast<std::size_t>(k)] + 1e-3);
        }
        const int width = from.end - from.begin;
        const double flatness = decibels(energy / width + 1e-3) - logarithms / width;
        const double tone = width < 2 ? 0.5 : std::clamp((flatness - 2.5) / 12, 0.0, 1.0);
        const double offset = 3 + 0.25 * std::max(0.0, from.bark - 12);
        const double tonalOffset = tone * (14.5 + from.bark) + (1 - tone) * 5.5;
        for (std::size_t b = 0; b < m_bands.size(); ++b) {
            const double distance = m_bands[b].bark - from.bark;
            const double decay = distance > 0 ? SpreadUp * distance : -SpreadDown * distance;
            mask[b] += energy * factor(-decay - offset);
            tonalMask[b] += energy * factor(-decay - tonalOffset);
        }
    }
    Ratios ratios{1e-9, 1e-9};
    const auto count = static_cast<double>(m_bands.size());
    for (std::size_t b = 0; b < m_bands.size(); ++b) {
        const Band &band = m_bands[b];
        const double error = std::accumulate(noise.begin() + band.begin, noise.begin() + band.end, 0.0);
        const double least = rounding * (band.end - band.begin);
        ratios.plain += error / std::max(mask[b], least) / count;
        ratios.tonal += error / std::max(tonalMask[b], least) / count;
    }
    return ratios;
}

} // namespace quality
