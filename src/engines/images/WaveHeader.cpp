#include "engines/images/WaveHeader.h"

#include "base/RunTimeFailure.h"
#include "engines/common/WaveSound.h"

namespace images {

namespace {

[[noreturn]] void fail(const QFile &file, const QString &what)
{
    throw RunTimeFailure(RunTimeFailure::DeviceIoError, file.fileName() + QStringLiteral(": ") + what);
}

} // namespace

WaveData discAudioOf(QFile &file)
{
    engines::WaveSound sound;
    try {
        sound = engines::findWaveSound(file);
    } catch (const RunTimeFailure &failure) {
        fail(file, failure.description());
    }
    if (sound.coding != engines::WaveSound::Pcm || sound.channels != 2 || sound.rate != 44100 ||
        sound.bits != 16)
        fail(file, QStringLiteral("the samples aren't 44100 Hz, stereo, 16 bits"));
    return {sound.start, sound.size};
}

} // namespace images
