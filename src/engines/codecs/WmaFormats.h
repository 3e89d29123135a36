#pragma once

#include <array>

namespace codecs {

struct WmaSettings
{
    int rate = 44100;
    int channels = 2;
    int bitRate = 128; ///< kb/s

    bool operator==(const WmaSettings &) const = default;
};

/// Of the sample rate indexes 0 to 6.
inline constexpr std::array<int, 7> WmaRates = {8000, 11025, 16000, 22050, 32000, 44100, 48000};

/// What the encoding library needs at least, in kb/s.
inline constexpr int LowestWritableWmaBitRate = 24;

/// Whether the combination is one of the format's, and whether it can be written, too.
bool wmaFormatExists(const WmaSettings &settings);
bool wmaFormatWritable(const WmaSettings &settings);
/// Whether any combination with this bit rate and number of channels can be written.
bool wmaBitRateWritable(int bitRate, int channels);

} // namespace codecs
