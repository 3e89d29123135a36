#pragma once

#include "engines/dsp/Mdct.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quality {

/// Left and right in turn, in 16-bit units.
using Pcm = std::vector<std::int16_t>;
using DecodedPcm = std::vector<float>;

/// In dB.
struct Quality
{
    double snr = 0;         ///< signal to noise over the whole sound
    double noiseToMask = 0; ///< lower is better
    double tonal = 0;       ///< noise to a mask that lies further under tones

    Quality &operator+=(const Quality &other);
    Quality operator/(double divisor) const;
};

/// By how many frames the decoded sound comes late, of 0 to `most`; it may start up to 200 early, too.
long delayOf(const Pcm &original, const DecodedPcm &decoded, long most = 2600);

/// Compares stereo sounds with what became of them. The noise-to-mask ratio is that of bands of half a Bark
/// up to 16 kHz in windows of 2048 samples, at low rates fewer; the mask lies 3 dB under the signal as it
/// spreads in the ear, and from 12 Bark on 0.25 dB per Bark more, but never under the rounding to 16 bits. A
/// window's value is the mean over bands and channels, a sound's the mean of its windows' values in dB
/// without those of silence.
class Meter
{
public:
    explicit Meter(int rate = 44100);

    Quality measure(const Pcm &original, const DecodedPcm &decoded, long delay);

private:
    struct Band
    {
        int begin;
        int end;
        double bark;
    };
    struct Ratios
    {
        double plain = 0, tonal = 0;
    };
    using Spectrum = std::vector<float>;

    Spectrum spectrum(const float *samples);
    Ratios compare(const Spectrum &signal, const Spectrum &noise) const;

    int m_half; ///< of a window
    std::vector<Band> m_bands;
    std::vector<float> m_window;
    dsp::Mdct<float> m_transform;
};

} // namespace quality
