#pragma once

#include "engines/cdrom/Drive.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <vector>

namespace cdrom {

/// What the reading thread tells the writing one.
struct PipeItem
{
    enum class Kind {
        TrackBegins, ///< `value` is the track's place in the queue
        Sectors,     ///< `samples`, whole sectors
        Report,      ///< `code` and `value` of ExtractionStatus
        TrackEnds,   ///< `code` is 1 where all of it was read
    };

    Kind kind = Kind::Report;
    qint32 code = 0;
    qint32 value = 0;
    std::vector<qint16> samples;
};

/// A queue between two threads whose sectors are bounded. Any thread may end it.
class SectorPipe
{
public:
    explicit SectorPipe(std::size_t capacity) : m_capacity(capacity) {}

    /// Waits for room. False: the pipe was cut, and the item is gone.
    bool push(PipeItem item);
    /// Waits for an item. None: the pipe was closed and is empty, or was cut.
    std::optional<PipeItem> pop();

    /// Nothing will follow.
    void close();
    /// Ends both sides at once; what is in the pipe is lost.
    void cut();

private:
    const std::size_t m_capacity;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<PipeItem> m_items;
    bool m_closed = false;
    bool m_cut = false;
};

} // namespace cdrom
