#pragma once

#include <condition_variable>
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

    explicit Workers(int threads);
    ~Workers();
    Workers(const Workers &) = delete;
    Workers &operator=(const Workers &) = delete;

    /// Calls `part` with 0 to parts - 1; returns when all have. The parts don't throw.
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
    bool m_ending = false;
    std::vector<std::thread> m_helpers;
};

} // namespace dsp
