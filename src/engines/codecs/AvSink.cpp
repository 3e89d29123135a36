#include "engines/codecs/AvSink.h"

#include <algorithm>
#include <cstdio>

namespace codecs {

AvSink::AvSink(files::ByteSink &sink) : m_sink(sink)
{
    constexpr int BufferBytes = 32768;
    auto *buffer = static_cast<unsigned char *>(av_malloc(BufferBytes));
    m_context = avio_alloc_context(buffer, BufferBytes, 1, this, nullptr, &AvSink::write, &AvSink::seek);
}

AvSink::~AvSink()
{
    av_freep(&m_context->buffer);
    avio_context_free(&m_context);
}

int AvSink::check(int result, const char *what) const
{
    if (m_failure)
        std::rethrow_exception(m_failure);
    return checkAv(result, what);
}

int AvSink::write(void *self, Bytes bytes, int count)
{
    auto &sink = *static_cast<AvSink *>(self);
    if (sink.m_failure)
        return AVERROR(EIO);
    try {
        sink.m_sink.write(bytes, static_cast<std::size_t>(count));
    } catch (...) {
        sink.m_failure = std::current_exception();
        return AVERROR(EIO);
    }
    sink.m_position += count;
    sink.m_size = std::max(sink.m_size, sink.m_position);
    return count;
}

std::int64_t AvSink::seek(void *self, std::int64_t offset, int whence)
{
    auto &sink = *static_cast<AvSink *>(self);
    if (whence == AVSEEK_SIZE)
        return sink.m_size;
    if (whence == SEEK_CUR)
        offset += sink.m_position;
    else if (whence == SEEK_END)
        offset += sink.m_size;
    if (sink.m_failure)
        return AVERROR(EIO);
    try {
        sink.m_sink.seek(offset);
    } catch (...) {
        sink.m_failure = std::current_exception();
        return AVERROR(EIO);
    }
    return sink.m_position = offset;
}

} // namespace codecs
