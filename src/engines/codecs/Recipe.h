#pragma once

#include "engines/codecs/Encoder.h"

#include <functional>
#include <memory>

namespace codecs {

class PieceCodec;

using MakeEncoder = std::function<std::unique_ptr<Encoder>(files::ByteSink &)>;

/// A recipe for the encoders that `make` gives, which want PCM of the format `wanted`. Where the input is
/// another, a converter stands before the encoder.
std::shared_ptr<const EncoderRecipe> makeRecipe(const PcmFormat &wanted, MakeEncoder make);

/// The same for encoders that work on up to `threads` threads.
using MakeThreadedEncoder = std::function<std::unique_ptr<Encoder>(files::ByteSink &, int threads)>;
std::shared_ptr<const EncoderRecipe> makeRecipe(const PcmFormat &wanted, MakeThreadedEncoder make);

/// The same for a stream that is encoded piece by piece.
std::shared_ptr<const EncoderRecipe> makeRecipe(const PcmFormat &wanted,
                                                std::shared_ptr<const PieceCodec> codec);

/// The same for encoders that know no pieces but take their time: each works in a thread beside its caller,
/// and on up to `threads` inside.
std::shared_ptr<const EncoderRecipe> makeBackgroundRecipe(const PcmFormat &wanted, MakeThreadedEncoder make);

/// Raises RunTimeFailure 5.
[[noreturn]] void refuse(const QString &description);

} // namespace codecs
