#include "engines/dsp/MaskingModel.h"

#include <algorithm>
#include <cmath>

namespace dsp {

namespace {

constexpr double BandsPerBark = 3;

double factor(double decibels)
{
    return std::pow(10.0, decibels / 10);
}

} // namespace

double bark(double hertz)
{
    return 13 * std::atan(0.00076 * hertz) + 3.5 * std::atan(hertz / 7500 * (hertz / 7500));
}

double hearingThreshold(double hertz)
{
    const double khz = std::max(hertz, 40.0) / 1000;
    const double pressure = 3.64 * std::pow(khz, -0.8) - 6.5 * std::exp(-0.6 * (khz - 3.3) * (khz - 3.3)) +
                            0.001 * std::pow(khz, 4);
    return 32768.0 * 32768 / 2 * factor(std::min(pressure, 80.0) - 96);
}

MaskingModel::MaskingModel(int coefficients, double rate, double unitPower, const MaskingSettings &settings)
    : m_settings(settings)
{
    const double width = rate / 2 / coefficients;
    const auto barkOf = [width](int k) { return bark((k + 0.5) * width); };
    double lastBark = 0;
    for (int begin = 0; begin < coefficients;) {
        int end = begin + 1;
        while (end < coefficients &&
               std::floor(barkOf(end) * BandsPerBark) == std::floor(barkOf(begin) * BandsPerBark))
            ++end;
        const double middle = (barkOf(begin) + barkOf(end - 1)) / 2;
        Band band{};
        band.begin = begin;
        band.end = end;
        band.offset = factor(-settings.noiseOffset - settings.highOffset * std::max(0.0, middle - 12));
        // The noise in a third of a Bark counts together.
        const double thirds = std::max(1.0, BandsPerBark * (bark(end * width) - bark(begin * width)));
        band.quiet = factor(-settings.quietOffset) * hearingThreshold((begin + end) / 2.0 * width) * thirds *
                     unitPower * coefficients / (end - begin);
        if (settings.quietVariance)
            band.quiet = *settings.quietVariance * unitPower;
        band.decayUp = factor(-settings.spreadUp * (middle - lastBark));
        band.decayDown = factor(-settings.spreadDown * (middle - lastBark));
        lastBark = middle;
        m_bands.push_back(band);
        begin = end;
    }
    std::vector<double> flat;
    for (Band &band : m_bands)
        flat.push_back(band.end - band.begin);
    const std::vector<double> gained = spread(flat);
    for (std::size_t b = 0; b < m_bands.size(); ++b)
        m_bands[b].norm = gained[b] / flat[b];
}

/// What each band's energy makes of itself and its neighbours.
std::vector<double> MaskingModel::spread(const std::vector<double> &energies) const
{
    std::vector<double> sums(energies.size());
    double carried = 0;
    for (std::size_t b = 0; b < energies.size(); ++b)
        sums[b] = carried = carried * m_bands[b].decayUp + energies[b];
    carried = 0;
    for (std::size_t b = energies.size(); b-- > 0;) {
        sums[b] += carried;
        carried = (carried + energies[b]) * m_bands[b].decayDown;
    }
    return sums;
}

/// From the flatness of the spectrum in the band and its neighbours: 0 noise, 1 a tone.
double MaskingModel::tonality(std::size_t band, const std::vector<float> &logarithms,
                              const float *power) const
{
    const int begin = m_bands[band > 0 ? band - 1 : 0].begin;
    const int end = m_bands[std::min(band + 1, m_bands.size() - 1)].end;
    double geometric = 0, sum = 0;
    for (int k = begin; k < end; ++k) {
        geometric += logarithms[k];
        sum += power[k];
    }
    const double flatness = 10 * std::log10(sum / (end - begin) + 1e-9) - geometric / (end - begin);
    return std::clamp((flatness - 3) / 15, 0.0, 1.0);
}

void MaskingModel::thresholds(const float *power, float *threshold) const
{
    const std::size_t count = m_bands.size();
    std::vector<float> logarithms;
    if (m_settings.judgesTonality) {
        logarithms.resize(m_bands.back().end);
        std::transform(power, power + logarithms.size(), logarithms.begin(),
                       [](float p) { return 10 * std::log10(p + 1e-9F); });
    }
    std::vector<double> masker(count);
    for (std::size_t b = 0; b < count; ++b) {
        const Band &band = m_bands[b];
        double energy = 0;
        for (int k = band.begin; k < band.end; ++k)
            energy += power[k];
        const double tone = m_settings.judgesTonality ? tonality(b, logarithms, power) : 0.5;
        masker[b] = energy * band.offset * factor(-m_settings.toneOffset * tone);
    }
    const std::vector<double> sums = spread(masker);
    for (std::size_t b = 0; b < count; ++b) {
        const Band &band = m_bands[b];
        const double density = sums[b] / band.norm / (band.end - band.begin);
        std::fill(threshold + band.begin, threshold + band.end,
                  static_cast<float>(std::max(density, band.quiet)));
    }
}

} // namespace dsp
