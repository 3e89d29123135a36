#pragma once

#include "engines/codecs/Encoder.h"

namespace codecs {

struct WavSettings
{
    PcmFormat format;
    int bits = 16; ///< 16 and 8 are PCM; 5, 4, 3 and 2 are IMA ADPCM with that many bits per sample
};

inline constexpr int HighestWavRate = 192000;
/// ADPCM goes up to this rate.
inline constexpr int HighestAdpcmRate = 48000;

bool wavFormatExists(const WavSettings &settings);

/// Encoders raise failure 6 for more than the 4 GB that a WAV file can hold.
std::shared_ptr<const EncoderRecipe> wavRecipe(const WavSettings &settings = {});

} // namespace codecs
