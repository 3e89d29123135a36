#pragma once

#include "engines/wma/Streams.h"

#include <array>

namespace codecs {

using WmaSettings = wma::StreamKind;

/// Of the sample rate indexes 0 to 6.
inline constexpr std::array<int, 7> WmaRates = {8000, 11025, 16000, 22050, 32000, 44100, 48000};

/// False in a build for a system whose library has no decoder for WMA.
bool wmaIsAvailable();
/// Whether the combination can be written: each one of the format's can, where the encoder is available.
bool wmaFormatWritable(const WmaSettings &settings);
/// Whether any combination with this bit rate and number of channels can be written.
bool wmaBitRateWritable(int bitRate, int channels);

} // namespace codecs
