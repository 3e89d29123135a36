#pragma once

#include "engines/codecs/Encoder.h"
#include "testkit/MemorySink.h"

#include <vector>

namespace testkit {

/// The file that a recipe makes of the samples, handed over in pieces of this many frames; of as many threads
/// as there are cores where no number is given.
inline QByteArray encode(const codecs::EncoderRecipe &recipe, const codecs::PcmFormat &format,
                         const std::vector<qint16> &samples, qsizetype pieceFrames = 10000, int threads = 0)
{
    MemorySink sink;
    const auto encoder = recipe.create(format, sink, threads);
    const qsizetype frames = qsizetype(samples.size()) / format.channels;
    for (qsizetype at = 0; at < frames; at += pieceFrames)
        encoder->encode(samples.data() + at * format.channels, std::min(pieceFrames, frames - at));
    encoder->finish();
    return sink.content();
}

/// The number of the failure that a call raises; 0 without one.
template <typename Call>
int failureOf(Call &&call)
{
    try {
        call();
    } catch (const RunTimeFailure &failure) {
        return failure.number();
    }
    return 0;
}

} // namespace testkit
