#pragma once

#include <QIODevice>

namespace engines {

/// What a WAVE file's header says of its samples, and where they lie.
struct WaveSound
{
    static constexpr int Pcm = 1, Float = 3;

    int coding = 0; ///< the one inside, where the header is of the extensible kind
    int channels = 0;
    qint64 rate = 0;  ///< in hertz
    int bits = 0;     ///< of a sample
    qint64 start = 0; ///< in bytes from the file's beginning
    qint64 size = 0;  ///< in bytes, no more than the file really holds
};

/// Goes through the chunks up to the samples. `file` is open and can seek; its place is undefined afterwards.
/// Failure 57, without the file's name, for one that is no WAVE file or holds no samples.
WaveSound findWaveSound(QIODevice &file);

} // namespace engines
