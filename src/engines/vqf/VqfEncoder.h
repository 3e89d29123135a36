#pragma once

#include "engines/codecs/Encoder.h"

namespace vqf {

/// Whether the system's decoders knew the format when the program was built; there is no encoder without.
bool isAvailable();

/// Encoders of VQF files at 44.1 kHz, 96 kb/s stereo, that work on up to `threads` threads. The sound comes
/// out of a decoder without a delay, filled up with silence to a whole number of 2048 samples. Raises
/// RunTimeFailure 429 where the encoder isn't available.
std::shared_ptr<const codecs::EncoderRecipe> vqfRecipe(int threads);

} // namespace vqf
