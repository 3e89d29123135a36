#include "engines/audiofile/AvFile.h"

#include "base/RunTimeFailure.h"

#include <cstdio>

namespace audiofile {

namespace {

/// Behind all ID3v2 tags at the start.
qint64 startOfSound(QFile &file)
{
    qint64 start = 0;
    for (;;) {
        file.seek(start);
        const QByteArray head = file.read(10);
        if (head.size() < 10 || !head.startsWith("ID3"))
            return start;
        // Four times seven bits, without this head and the one that may be repeated as foot.
        qint64 size = 0;
        for (int i = 6; i < 10; ++i)
            size = (size << 7) | (head[i] & 0x7f);
        const bool foot = (head[5] & 0x10) != 0;
        start += 10 + size + (foot ? 10 : 0);
    }
}

} // namespace

AvFile::AvFile(const QString &path) : m_file(path)
{
    if (!m_file.exists())
        throw RunTimeFailure(RunTimeFailure::FileNotFound);
    if (!m_file.open(QIODevice::ReadOnly))
        throw RunTimeFailure(RunTimeFailure::PathFileAccessError, m_file.errorString());
    m_start = startOfSound(m_file);
    m_file.seek(m_start);
    constexpr int BufferBytes = 65536;
    auto *buffer = static_cast<unsigned char *>(av_malloc(BufferBytes));
    m_context = avio_alloc_context(buffer, BufferBytes, 0, this, &AvFile::read, nullptr, &AvFile::seek);
}

AvFile::~AvFile()
{
    av_freep(&m_context->buffer);
    avio_context_free(&m_context);
}

int AvFile::read(void *self, std::uint8_t *bytes, int count)
{
    auto &file = *static_cast<AvFile *>(self);
    const qint64 got = file.m_file.read(reinterpret_cast<char *>(bytes), count);
    if (got < 0) {
        file.m_failed = true;
        return AVERROR(EIO);
    }
    return got > 0 ? static_cast<int>(got) : AVERROR_EOF;
}

std::int64_t AvFile::seek(void *self, std::int64_t offset, int whence)
{
    auto &file = *static_cast<AvFile *>(self);
    const std::int64_t size = std::max<std::int64_t>(file.m_file.size() - file.m_start, 0);
    if (whence == AVSEEK_SIZE)
        return size;
    if (whence == SEEK_CUR)
        offset += file.m_file.pos() - file.m_start;
    else if (whence == SEEK_END)
        offset += size;
    return offset >= 0 && file.m_file.seek(file.m_start + offset) ? offset : AVERROR(EINVAL);
}

} // namespace audiofile
