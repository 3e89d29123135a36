#include "engines/cdrom/WaveHeader.h"

#include "base/RunTimeFailure.h"

#include <QtEndian>
#include <algorithm>

namespace cdrom {

namespace {

[[noreturn]] void fail(const QFile &file, const QString &what)
{
    throw RunTimeFailure(RunTimeFailure::DeviceIoError, file.fileName() + QStringLiteral(": ") + what);
}

bool isDiscFormat(const QByteArray &format)
{
    constexpr quint16 Pcm = 1;
    constexpr quint16 Extensible = 0xfffe;
    if (format.size() < 16)
        return false;
    const auto tag = qFromLittleEndian<quint16>(format.constData());
    return (tag == Pcm || tag == Extensible) && qFromLittleEndian<quint16>(format.constData() + 2) == 2 &&
           qFromLittleEndian<quint32>(format.constData() + 4) == 44100 &&
           qFromLittleEndian<quint16>(format.constData() + 14) == 16;
}

} // namespace

WaveData discAudioOf(QFile &file)
{
    const QByteArray riff = file.read(12);
    if (!riff.startsWith("RIFF") || !riff.endsWith("WAVE"))
        fail(file, QStringLiteral("this is no WAVE file"));
    bool known = false;
    for (;;) {
        const QByteArray chunk = file.read(8);
        if (chunk.size() < 8)
            fail(file, QStringLiteral("the WAVE file holds no samples"));
        const qint64 size = qFromLittleEndian<quint32>(chunk.constData() + 4);
        const qint64 start = file.pos();
        if (chunk.startsWith("fmt "))
            known = isDiscFormat(file.read(std::min<qint64>(size, 64)));
        if (chunk.startsWith("data")) {
            if (!known)
                fail(file, QStringLiteral("the samples aren't 44100 Hz, stereo, 16 bits"));
            // Programs that write into a pipe leave the size at 0 or all ones.
            const qint64 present = file.size() - start;
            return {start, size == 0 ? present : std::min(size, present)};
        }
        file.seek(start + size + size % 2);
    }
}

} // namespace cdrom
