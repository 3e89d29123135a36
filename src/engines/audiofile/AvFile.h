#pragma once

#include "engines/codecs/AvHandles.h"

#include <QFile>

namespace audiofile {

/// Lets libavformat read a file. ID3 tags at its start are hidden: they stand before files of every format,
/// and only MP3's reader expects them.
class AvFile
{
public:
    /// Failure 53 for a missing file, 75 for one that can't be read.
    explicit AvFile(const QString &path);
    ~AvFile();
    AvFile(const AvFile &) = delete;
    AvFile &operator=(const AvFile &) = delete;

    AVIOContext *context() const { return m_context; }
    /// At the start of what the context reads, as long as it hasn't read. Whoever reads it goes back there.
    QIODevice &file() { return m_file; }
    /// Whether reading met a fault of the device.
    bool failed() const { return m_failed; }

private:
    static int read(void *self, std::uint8_t *bytes, int count);
    static std::int64_t seek(void *self, std::int64_t offset, int whence);

    QFile m_file;
    qint64 m_start = 0;
    AVIOContext *m_context = nullptr;
    bool m_failed = false;
};

} // namespace audiofile
