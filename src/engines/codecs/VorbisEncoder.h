#pragma once

#include "engines/codecs/Encoder.h"

#include <optional>

namespace codecs {

/// Bit rates are in kb/s; 0 leaves one out. Without any, and wherever a quality stands, the quality alone
/// rules.
struct VorbisSettings
{
    PcmFormat format;
    int nominalBitRate = 128;
    int minBitRate = 0;
    int maxBitRate = 0;
    std::optional<int> quality; ///< 0 to 1000

    bool isByQuality() const
    {
        return quality || (nominalBitRate <= 0 && minBitRate <= 0 && maxBitRate <= 0);
    }
    /// Limits hold over stretches of the stream, which the library keeps account of.
    bool isManaged() const { return !isByQuality() && (minBitRate > 0 || maxBitRate > 0); }
};

/// Whether the encoder can do it.
bool vorbisFormatExists(const VorbisSettings &settings);

std::shared_ptr<const EncoderRecipe> vorbisRecipe(const VorbisSettings &settings);

} // namespace codecs
