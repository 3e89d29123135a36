#pragma once

#include "engines/codecs/Encoder.h"
#include "quality/Meter.h"

#include <QByteArray>
#include <QString>

namespace quality {

/// A file and what it took to make it.
struct Encoded
{
    QByteArray file;
    double seconds = 0;          ///< of the clock
    double processorSeconds = 0; ///< of all threads
};

Encoded encode(const codecs::EncoderRecipe &recipe, const Pcm &samples, const codecs::PcmFormat &format = {});

/// By the system's decoder, as stereo at that rate. `ending` is the file's, as ".mp3".
DecodedPcm decode(const QByteArray &file, const QString &ending, int rate = 44100);

/// Decodes and compares with the original, moved by the delay that the decoded sound has.
Quality measure(Meter &meter, const Pcm &original, const QByteArray &file, const QString &ending,
                int rate = 44100);

} // namespace quality
