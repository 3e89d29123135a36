#pragma once

#include "engines/audiofile/AudioSource.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

namespace audiofile {

/// Lets a source decode in a thread of its own, ahead of its reader by a bounded amount. What comes out is
/// the source's sound and, at its place, the source's failure. The public side is for one thread.
class ReadAhead
{
public:
    /// Raises a RunTimeFailure (7) where no thread can be started.
    explicit ReadAhead(std::unique_ptr<AudioSource> source);
    /// Waits for no more than the decoding of one packet.
    ~ReadAhead();
    ReadAhead(const ReadAhead &) = delete;
    ReadAhead &operator=(const ReadAhead &) = delete;

    const AudioSource &source() const { return *m_source; }
    /// So many values, or fewer, and in the end none.
    std::vector<qint16> read(std::size_t count);

private:
    void run();
    bool decodeSome();

    const std::unique_ptr<AudioSource> m_source;
    const std::size_t m_mostValues;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<qint16> m_values;
    bool m_ended = false;
    bool m_stopped = false;
    std::exception_ptr m_failure;
    std::jthread m_thread; // starts last
};

} // namespace audiofile
