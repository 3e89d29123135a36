#include "engines/dsp/Workers.h"

namespace dsp {

Workers::Workers(int threads)
{
    for (int n = 1; n < threads; ++n)
        m_helpers.emplace_back([this] { help(); });
}

Workers::~Workers()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_wanted.notify_all();
    for (std::thread &helper : m_helpers)
        helper.join();
}

void Workers::run(int parts, const Part &part)
{
    if (m_helpers.empty()) {
        for (int n = 0; n < parts; ++n)
            part(n);
        return;
    }
    std::unique_lock lock(m_mutex);
    m_part = &part;
    m_parts = parts;
    m_next = 0;
    m_wanted.notify_all();
    work(lock);
    m_done.wait(lock, [this] { return m_running == 0; });
    m_part = nullptr;
}

void Workers::help()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wanted.wait(lock, [this] { return m_ending || (m_part && m_next < m_parts); });
        if (m_ending)
            return;
        work(lock);
    }
}

void Workers::work(std::unique_lock<std::mutex> &lock)
{
    while (m_next < m_parts) {
        const int part = m_next++;
        ++m_running;
        lock.unlock();
        (*m_part)(part);
        lock.lock();
        --m_running;
    }
    if (m_running == 0)
        m_done.notify_one();
}

} // namespace dsp
