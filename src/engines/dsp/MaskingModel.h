#pragma once

#include <optional>
#include <vector>

namespace dsp {

/// How the model hears; levels in dB.
struct MaskingSettings
{
    double noiseOffset = 4;  ///< how far below noise the threshold lies
    double toneOffset = 12;  ///< how much further below a pure tone
    double highOffset = 0.2; ///< how much further for each Bark above 12
    double spreadUp = 15;    ///< decay per Bark towards high frequencies
    double spreadDown = 27;  ///< decay per Bark towards low ones
    double quietOffset = 0;  ///< how far below the threshold of hearing noise has to be in silence
    /// In place of the threshold of hearing: noise of this variance isn't heard in silence.
    std::optional<double> quietVariance{};
    bool judgesTonality = true; ///< off: everything counts as half a tone, where blocks are too short to tell
};

/// What the ear doesn't hear beside a spectrum: simultaneous masking in thirds of a Bark. Powers are those of
/// transform coefficients for which noise of variance v, in 16-bit units, gives `unitPower` * v.
class MaskingModel
{
public:
    MaskingModel(int coefficients, double rate, double unitPower, const MaskingSettings &settings = {});

    /// The threshold at each coefficient, a power of noise per coefficient, from the power of each.
    void thresholds(const float *power, float *threshold) const;

private:
    struct Band
    {
        int begin;
        int end;
        double offset;    ///< of noise, as a factor
        double quiet;     ///< threshold of hearing, per coefficient
        double decayUp;   ///< from the band below, as a factor
        double decayDown; ///< from the band above
        double norm;      ///< what a flat spectrum gains by spreading
    };

    std::vector<double> spread(const std::vector<double> &energies) const;
    double tonality(std::size_t band, const std::vector<float> &logarithms, const float *power) const;

    MaskingSettings m_settings;
    std::vector<Band> m_bands;
};

/// The critical band number of a frequency.
double bark(double hertz);

/// The power of the faintest tone that can be heard, in 16-bit units squared, if full scale is 96 dB of sound
/// pressure.
double hearingThreshold(double hertz);

} // namespace dsp
