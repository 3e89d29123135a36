#pragma once

#include "engines/audiofile/OggWalk.h"
#include "engines/codecs/AvHandles.h"

#include <QFile>
#include <chrono>
#include <stop_token>

namespace audiofile {

/// Lets libavformat read a file. ID3 tags at its start are hidden: they stand before files of every format,
/// and only MP3's reader expects them. Reading ends at what would keep the library at work without end.
class AvFile
{
public:
    /// Failure 53 for a missing file, 75 for one that can't be read or is no regular file. Once a stop is
    /// requested, each reading fails.
    AvFile(const QString &path, std::stop_token stop);
    ~AvFile();
    AvFile(const AvFile &) = delete;
    AvFile &operator=(const AvFile &) = delete;

    AVIOContext *context() const { return m_context; }
    /// At the start of what the context reads, as long as it hasn't read. Whoever reads it goes back there.
    QIODevice &file() { return m_file; }
    /// Whether reading met a fault of the device.
    bool failed() const { return m_failed; }
    /// Whether it ended before the file did, since the file asks for too much.
    bool asksTooMuch() const { return m_asksTooMuch; }
    /// Whether the pages of an Ogg file that were read follow each other to the end of the last stream. True
    /// for any other file.
    bool isWhole() const { return !m_pages || m_pages->isWhole(); }

    /// While it lives, reading ends when the thread has worked for longer than any file's head deserves. Time
    /// in which the thread waits for the disk doesn't count.
    class WorkLimit
    {
    public:
        explicit WorkLimit(AvFile &file);
        ~WorkLimit() { m_file.m_workEnd.reset(); }
        WorkLimit(const WorkLimit &) = delete;
        WorkLimit &operator=(const WorkLimit &) = delete;

    private:
        AvFile &m_file;
    };

private:
    static int read(void *self, std::uint8_t *bytes, int count);
    static std::int64_t seek(void *self, std::int64_t offset, int whence);
    bool checkAsksTooMuch(qint64 begin, qint64 end);

    QFile m_file;
    const std::stop_token m_stop;
    qint64 m_start = 0;
    AVIOContext *m_context = nullptr;
    bool m_failed = false;
    bool m_asksTooMuch = false;
    std::optional<OggWalk> m_pages;
    std::optional<std::chrono::nanoseconds> m_workEnd; ///< in time of the thread's work
};

} // namespace audiofile
