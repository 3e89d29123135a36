#pragma once

#include "engines/codecs/AvHandles.h"
#include "files/ByteSink.h"

#include <exception>

namespace codecs {

/// Lets libavformat write to a ByteSink. The sink's failure can't pass through the library: it is kept, the
/// library sees an error, and `check` raises it afterwards.
class AvSink
{
public:
    explicit AvSink(files::ByteSink &sink);
    ~AvSink();
    AvSink(const AvSink &) = delete;
    AvSink &operator=(const AvSink &) = delete;

    AVIOContext *context() const { return m_context; }
    /// `checkAv`, with a failure of the sink before the library's.
    int check(int result, const char *what) const;

private:
#if LIBAVFORMAT_VERSION_MAJOR < 61
    using Bytes = std::uint8_t *;
#else
    using Bytes = const std::uint8_t *;
#endif
    static int write(void *self, Bytes bytes, int count);
    static std::int64_t seek(void *self, std::int64_t offset, int whence);

    files::ByteSink &m_sink;
    AVIOContext *m_context;
    std::int64_t m_position = 0;
    std::int64_t m_size = 0;
    std::exception_ptr m_failure;
};

} // namespace codecs
