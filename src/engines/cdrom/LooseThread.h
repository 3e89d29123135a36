#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <thread>

namespace cdrom {

/// A thread whose end is waited for only so long: a call into a drive may never return. What it runs must own
/// all that it uses.
class LooseThread
{
public:
    LooseThread() = default;
    explicit LooseThread(std::function<void()> run)
    {
        std::packaged_task<void()> task(std::move(run));
        m_end = task.get_future();
        m_thread = std::thread(std::move(task));
    }
    LooseThread(LooseThread &&) = default;
    LooseThread &operator=(LooseThread &&other) noexcept
    {
        std::swap(m_end, other.m_end);
        std::swap(m_thread, other.m_thread);
        return *this;
    }
    bool hasEnded() const
    {
        return !m_thread.joinable() || m_end.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }
    ~LooseThread() { end(std::chrono::milliseconds(500)); }

    /// Waits for the end; false: it didn't come, and the thread is left to itself.
    bool end(std::chrono::milliseconds atMost)
    {
        if (!m_thread.joinable())
            return true;
        const bool ended = m_end.wait_for(atMost) == std::future_status::ready;
        if (ended)
            m_thread.join();
        else
            m_thread.detach();
        return ended;
    }

private:
    std::future<void> m_end;
    std::thread m_thread;
};

} // namespace cdrom
