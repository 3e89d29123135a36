#pragma once

#include "engines/codecs/Mp3Encoder.h"
#include "engines/codecs/VorbisEncoder.h"
#include "engines/codecs/WavEncoder.h"

#include <variant>

namespace audiofile {

struct WmaProfileNumber
{
    int number = 0;
};

/// What a writer makes; nothing before a format was set.
using OutputFormat = std::variant<std::monostate, codecs::Mp3Settings, codecs::WavSettings,
                                  codecs::VorbisSettings, WmaProfileNumber>;

/// Raises RunTimeFailure 5 for a format that can't be written.
std::shared_ptr<const codecs::EncoderRecipe> recipeOf(const OutputFormat &format);

} // namespace audiofile
