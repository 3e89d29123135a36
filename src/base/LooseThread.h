#pragma once

#include "base/Thread.h"

#include <chrono>
#include <future>
#include <optional>

/// A thread whose end is waited for only so long: a call into a drive or a file on the net may never return.
/// What it runs must own all that it uses. All operations belong to one thread.
class LooseThread
{
public:
    /// How long its end is waited for; nothing: as long as it takes.
    using Patience = std::optional<std::chrono::milliseconds>;
    static constexpr std::chrono::milliseconds UsualPatience{500};

    LooseThread() = default;
    /// As `startThread`.
    LooseThread(const char *name, std::function<void(std::stop_token)> run);
    LooseThread(LooseThread &&) = default;
    LooseThread &operator=(LooseThread &&other) noexcept
    {
        std::swap(m_end, other.m_end);
        std::swap(m_thread, other.m_thread);
        return *this;
    }
    ~LooseThread() { end(UsualPatience); }

    bool hasEnded() const
    {
        return !m_thread.joinable() || m_end.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }
    void requestStop() { m_thread.request_stop(); }
    /// Asks for the end and waits for it; false: it didn't come, and the thread is left to itself.
    bool end(Patience atMost);

private:
    std::future<void> m_end;
    std::jthread m_thread;
};
