#include "engines/tagfile/TagEdit.h"

#include "base/RunTimeFailure.h"

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
    file.seek(begin);
    while (count > 0) {
        const QByteArray bytes = file.read(std::min(Chunk, count));
        if (bytes.isEmpty())
            throw RunTimeFailure(RunTimeFailure::DeviceIoError);
        writeBytes(bytes, out);
        count -= bytes.size();
    }
}

} // namespace engines
