#include "engines/tagfile/TagEdit.h"

#include "base/RunTimeFailure.h"
#include "engines/tagfile/AudioKind.h"

#include <QFileDevice>
#include <algorithm>

namespace engines {

void writeBytes(const QByteArray &bytes, files::ByteSink &out)
{
    out.write(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
              static_cast<std::size_t>(bytes.size()));
}

void copyBytes(QIODevice &file, qint64 begin, qint64 count, files::ByteSink &out)
{
    constexpr qint64 Chunk = 1 << 20;
    constexpr qint64 LargeChunk = 16 * Chunk; ///< of what the system does by itself
    const auto *source = qobject_cast<const QFileDevice *>(&file);
    const int descriptor = source ? source->handle() : -1;
    while (count > 0) {
        qint64 done = descriptor < 0 ? 0 : out.takeOver(descriptor, begin, std::min(LargeChunk, count));
        if (done == 0) {
            const QByteArray bytes = bytesAt(file, begin, std::min(Chunk, count));
            if (bytes.isEmpty())
                throw RunTimeFailure(RunTimeFailure::DeviceIoError);
            writeBytes(bytes, out);
            done = bytes.size();
        }
        begin += done;
        count -= done;
    }
}

} // namespace engines
