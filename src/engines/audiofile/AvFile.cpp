#include "engines/audiofile/AvFile.h"

#include "base/RegularFile.h"

#include <cstdio>
#include <ctime>

namespace audiofile {

namespace {

constexpr int MostTagsInFront = 32;
constexpr std::chrono::milliseconds MostWorkForHead{500};

/// Behind the ID3v2 tags at the start, of which no file has many.
qint64 startOfSound(QFile &file)
{
    qint64 start = 0;
    for (int tags = 0; tags < MostTagsInFront; ++tags) {
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
    return start;
}

std::chrono::nanoseconds workOfThread()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

AvFile::AvFile(const QString &path, std::stop_token stop) : m_stop(std::move(stop))
{
    openRegularFile(m_file, path);
    m_start = startOfSound(m_file);
    m_file.seek(m_start);
    if (m_file.read(4) == "OggS")
        m_pages.emplace(m_start);
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

AvFile::WorkLimit::WorkLimit(AvFile &file) : m_file(file)
{
    file.m_workEnd = workOfThread() + MostWorkForHead;
}

int AvFile::read(void *self, std::uint8_t *bytes, int count)
{
    auto &file = *static_cast<AvFile *>(self);
    const qint64 begin = file.m_file.pos();
    const qint64 got =
        file.m_stop.stop_requested() ? -1 : file.m_file.read(reinterpret_cast<char *>(bytes), count);
    if (got < 0) {
        file.m_failed = true;
        return AVERROR(EIO);
    }
    if (file.checkAsksTooMuch(begin, begin + got))
        return AVERROR_EXIT;
    return got > 0 ? static_cast<int>(got) : AVERROR_EOF;
}

bool AvFile::checkAsksTooMuch(qint64 begin, qint64 end)
{
    if (m_pages && m_pages->follow(m_file, begin, end))
        m_asksTooMuch = true;
    if (m_workEnd && workOfThread() > *m_workEnd)
        m_asksTooMuch = true;
    m_file.seek(end);
    return m_asksTooMuch;
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
