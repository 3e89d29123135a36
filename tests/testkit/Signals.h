#pragma once

#include <QtGlobal>
#include <vector>

namespace testkit {

/// Sound that has what music has: chords with overtones, beats, a hiss that dies away, and a left side that
/// isn't the right one. Interleaved, the same at each call.
std::vector<qint16> music(int rate, int channels, qsizetype frames);

/// Three steady tones, the same ones at every rate and in each channel.
std::vector<qint16> chord(int rate, int channels, qsizetype frames);

/// How far the difference lies below the sound, in dB, over the frames that both have from the start on.
double signalToNoise(const std::vector<qint16> &sound, const std::vector<qint16> &other);

} // namespace testkit
