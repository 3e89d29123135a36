#pragma once

#include "engines/codecs/Encoder.h"
#include "engines/codecs/WmaFormats.h"

namespace codecs {

/// Takes each rate and number of channels of the format, with any bit rate from the lowest writable one on.
std::shared_ptr<const EncoderRecipe> wmaRecipe(const WmaSettings &settings);

} // namespace codecs
