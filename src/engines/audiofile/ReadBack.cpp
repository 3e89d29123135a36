#include "engines/audiofile/ReadBack.h"

#include "base/RunTimeFailure.h"
#include "engines/audiofile/AudioSource.h"

namespace audiofile {

void checkReadBack(const QString &path, const codecs::PcmFormat &input, qint64 frames)
{
    // Lengths are told in milliseconds by some formats, and up to a whole block by others.
    constexpr double LeastMissing = 0.01;
    constexpr double MostAdded = 0.5;
    if (frames == 0)
        return; // of no sound some formats make no file that could be read
    AudioSource source(path);
    qint64 values = 0;
    for (std::vector<qint16> some; !(some = source.read()).empty();)
        values += qint64(some.size());
    const double given = double(frames) / input.rate;
    const double made = double(values) / source.format().channels / source.format().rate;
    if (source.isDamaged() || made < given - LeastMissing || made > given + MostAdded)
        throw RunTimeFailure(RunTimeFailure::DeviceIoError,
                             QStringLiteral("What was written couldn't be read back"));
}

} // namespace audiofile
