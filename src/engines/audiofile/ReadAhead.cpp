#include "engines/audiofile/ReadAhead.h"

#include "base/RunTimeFailure.h"

#include <algorithm>

namespace audiofile {

ReadAhead::ReadAhead(Open open, const GoOn &goOn)
    : m_thread("file reader", [shared = m_shared, open = std::move(open)](const std::stop_token &stop) {
          shared->run(open, stop);
      })
{
    std::unique_lock lock(m_shared->mutex);
    if (!await(
            lock, [&] { return m_shared->opened || m_shared->ended; }, goOn)) {
        m_thread.end(Patience);
        throw RunTimeFailure(RunTimeFailure::DeviceIoError, QStringLiteral("The file wasn't waited for"));
    }
    if (!m_shared->opened)
        std::rethrow_exception(m_shared->failure);
}

std::vector<qint16> ReadAhead::read(std::size_t count, const GoOn &goOn)
{
    Shared &shared = *m_shared;
    std::unique_lock lock(shared.mutex);
    const std::size_t enough = std::min(count, shared.mostValues());
    if (!await(
            lock, [&] { return shared.ended || shared.values.size() >= enough; }, goOn))
        return {};
    if (shared.values.empty() && shared.failure)
        std::rethrow_exception(shared.failure);
    const auto end = shared.values.begin() + std::ptrdiff_t(std::min(count, shared.values.size()));
    std::vector<qint16> values(shared.values.begin(), end);
    shared.values.erase(shared.values.begin(), end);
    shared.changed.notify_all();
    return values;
}

bool ReadAhead::wasDamaged() const
{
    const std::lock_guard lock(m_shared->mutex);
    return m_shared->ended && m_shared->damaged;
}

/// False: the wait was given up, and the lock is open.
template <typename Condition>
bool ReadAhead::await(std::unique_lock<std::mutex> &lock, Condition condition, const GoOn &goOn)
{
    constexpr std::chrono::milliseconds Step(5);
    if (!goOn)
        m_shared->changed.wait(lock, condition);
    while (goOn && !m_shared->changed.wait_for(lock, Step, condition)) {
        lock.unlock();
        if (!goOn())
            return false;
        lock.lock();
    }
    return true;
}

void ReadAhead::Shared::run(const Open &open, const std::stop_token &stop)
{
    std::exception_ptr caught;
    bool faults = false;
    try {
        const std::unique_ptr<AudioSource> source = open(stop);
        {
            const std::lock_guard lock(mutex);
            format = source->format();
            seconds = source->seconds();
            description = source->description();
            opened = true;
            changed.notify_all();
        }
        while (decodeSome(*source, stop))
            continue;
        faults = source->isDamaged();
    } catch (...) {
        caught = std::current_exception();
    }
    const std::lock_guard lock(mutex);
    failure = caught;
    damaged = faults;
    ended = true;
    changed.notify_all();
}

/// False: there is no more, or no more is wanted.
bool ReadAhead::Shared::decodeSome(AudioSource &source, const std::stop_token &stop)
{
    const std::vector<qint16> decoded = source.read();
    std::unique_lock lock(mutex);
    values.insert(values.end(), decoded.begin(), decoded.end());
    changed.notify_all();
    return !decoded.empty() && changed.wait(lock, stop, [&] { return values.size() < mostValues(); });
}

/// The reader takes a second at a time; so the next one is being made meanwhile.
std::size_t ReadAhead::Shared::mostValues() const
{
    return 2 * static_cast<std::size_t>(format.rate) * static_cast<std::size_t>(format.channels);
}

} // namespace audiofile
