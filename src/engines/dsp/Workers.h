#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace dsp {

/// Runs the parts of one task on several threads, the caller's being one of them. Which part runs where is
/// not fixed; parts that write to different places give the same result on any number of threads.
class Workers
{
public:
    using Part = std::function<void(int part)>;

    /// With fewer threads than told where the system has no more.
    explicit Workers(int threads);
    ~Workers();
    Workers(const Workers &) = delete;
    Workers &operator=(const Workers &) = delete;

    int threads() const { return static_cast<int>(m_helpers.size()) + 1; }
    /// Calls `part` with 0 to parts - 1; returns when all have. What a part throws first is thrown from here,
    /// once all that had begun have ended; further ones don't begin.
    void run(int parts, const Part &part);

private:
    void help();
    void work(std::unique_lock<std::mutex> &lock);

    std::mutex m_mutex;
    std::condition_variable m_wanted;
    std::condition_variable m_done;
    const Part *m_part = nullptr;
    int m_parts = 0;
    int m_next = 0;
    int m_running = 0;
    std::exception_ptr m_failure;
    bool m_ending = false;
    std::vector<std::jthread> m_helpers;
};

} // namespace dsp
