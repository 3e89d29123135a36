#pragma once

#include "base/LooseThread.h"
#include "engines/audiofile/AudioSource.h"

#include <condition_variable>
#include <exception>
#include <mutex>

namespace audiofile {

/// Opens a source and lets it decode in a thread of its own, ahead of its reader by a bounded amount. What
/// comes out is the source's sound and, at its place, the source's failure. A thread that hangs in its file,
/// which may lie on the net, is left behind. The public side is for one thread.
class ReadAhead
{
public:
    using Open = std::function<std::unique_ptr<AudioSource>(std::stop_token)>;
    /// Called every few milliseconds while the thread is waited for; false gives up. Where it is empty, the
    /// wait takes as long as it takes.
    using GoOn = std::function<bool()>;

    /// Raises the failures of `open`, 7 where no thread can be started, 57 where the wait was given up.
    ReadAhead(Open open, const GoOn &goOn);
    /// Waits for a moment at most.
    ~ReadAhead() { m_thread.end(Patience); }
    ReadAhead(const ReadAhead &) = delete;
    ReadAhead &operator=(const ReadAhead &) = delete;

    const codecs::PcmFormat &format() const { return m_shared->format; }
    int seconds() const { return m_shared->seconds; }
    const QString &description() const { return m_shared->description; }

    /// So many values, or fewer, and in the end none; none, too, where the wait was given up.
    std::vector<qint16> read(std::size_t count, const GoOn &goOn);
    /// Whether the source has come to its end, and not in good order.
    bool wasDamaged() const;

private:
    static constexpr std::chrono::milliseconds Patience{10};

    struct Shared
    {
        void run(const Open &open, const std::stop_token &stop);
        bool decodeSome(AudioSource &source, const std::stop_token &stop);
        std::size_t mostValues() const;

        // What the source says of itself, once it is open.
        bool opened = false;
        codecs::PcmFormat format;
        int seconds = 0;
        QString description;

        mutable std::mutex mutex; ///< for all but what doesn't change once the source is open
        std::condition_variable_any changed;
        std::vector<qint16> values;
        bool ended = false;
        bool damaged = false;
        std::exception_ptr failure;
    };

    template <typename Condition>
    bool await(std::unique_lock<std::mutex> &lock, Condition condition, const GoOn &goOn);

    const std::shared_ptr<Shared> m_shared = std::make_shared<Shared>();
    LooseThread m_thread;
};

} // namespace audiofile
