#pragma once

#include <QFile>

namespace images {

/// The stretch of a WAVE file that holds its samples.
struct WaveData
{
    qint64 start = 0;
    qint64 size = 0;
};

/// The samples of a WAVE file that holds a disc's sound: 44100 Hz, stereo, 16 bits. Failure 57 for any other.
WaveData discAudioOf(QFile &file);

} // namespace images
