#include "engines/common/WaveSound.h"

#include "base/RunTimeFailure.h"

#include <QtEndian>
#include <algorithm>

namespace engines {

namespace {

constexpr qint64 ChunkHeadSize = 8; ///< of the file and of each chunk: a name and the size of what follows
/// Files of the world hold a dozen. Chunks of no length would make one of 4 GB take a minute.
constexpr int MostChunks = 1000;
constexpr quint16 Extensible = 0xfffe;

[[noreturn]] void fail(const QString &what)
{
    throw RunTimeFailure(RunTimeFailure::DeviceIoError, what);
}

quint16 word(const QByteArray &bytes, qsizetype place)
{
    return qFromLittleEndian<quint16>(bytes.constData() + place);
}

qint64 number(const QByteArray &bytes, qsizetype place)
{
    return qFromLittleEndian<quint32>(bytes.constData() + place);
}

void readFormat(const QByteArray &chunk, WaveSound &sound)
{
    if (chunk.size() < 16)
        return;
    sound.coding = word(chunk, 0);
    if (sound.coding == Extensible && chunk.size() >= 26)
        sound.coding = word(chunk, 24);
    sound.channels = word(chunk, 2);
    sound.rate = number(chunk, 4);
    sound.bits = word(chunk, 14);
}

/// Programs that can't go back to the header, or didn't live to do so, leave its sizes at 0 or all ones. A
/// size of 0 holds only in a header that was completed: one that knows the file's length.
qint64 soundSize(qint64 said, qint64 present, bool completed)
{
    return said == 0 && !completed ? present : std::min(said, present);
}

} // namespace

WaveSound findWaveSound(QIODevice &file)
{
    const QByteArray riff = file.read(ChunkHeadSize + 4);
    if (!riff.startsWith("RIFF") || !riff.endsWith("WAVE"))
        fail(QStringLiteral("this is no WAVE file"));
    WaveSound sound;
    for (int i = 0; i < MostChunks; ++i) {
        const QByteArray head = file.read(ChunkHeadSize);
        if (head.size() < ChunkHeadSize)
            break;
        const qint64 size = number(head, 4);
        const qint64 start = file.pos();
        if (head.startsWith("data")) {
            sound.start = start;
            sound.size = soundSize(size, std::max<qint64>(file.size() - start, 0),
                                   file.size() == ChunkHeadSize + number(riff, 4));
            return sound;
        }
        if (head.startsWith("fmt "))
            readFormat(file.read(std::min<qint64>(size, 64)), sound);
        // A chunk of an odd size is filled up with a byte.
        const qint64 next = start + size + size % 2;
        if (next > file.size() || !file.seek(next))
            break;
    }
    fail(QStringLiteral("the WAVE file holds no samples"));
}

} // namespace engines
