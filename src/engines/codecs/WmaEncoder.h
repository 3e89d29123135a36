#pragma once

#include "engines/codecs/Encoder.h"
#include "engines/codecs/WmaFormats.h"

namespace codecs {

/// Raises RunTimeFailure 5 in a build without the encoder.
std::shared_ptr<const EncoderRecipe> wmaRecipe(const WmaSettings &settings);

} // namespace codecs
