#include "engines/dsp/Workers.h"

#include "base/Log.h"
#include "base/Thread.h"

#include <utility>

namespace dsp {

Workers::Workers(int threads)
{
    try {
        for (int n = 1; n < threads; ++n)
            m_helpers.push_back(startThread("encoder part", [this](const auto &) { help(); }));
    } catch (const std::exception &failure) {
        qCWarning(logProgram) << "Encoding goes on with" << this->threads() << "threads:" << failure.what();
    }
}

Workers::~Workers()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_wanted.notify_all();
}

void Workers::run(int parts, const Part &part)
{
    std::unique_lock lock(m_mutex);
    m_part = &part;
    m_parts = parts;
    m_next = 0;
    m_wanted.notify_all();
    work(lock);
    m_done.wait(lock, [this] { return m_running == 0; });
    m_part = nullptr;
    if (m_failure)
        std::rethrow_exception(std::exchange(m_failure, nullptr));
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
        std::exception_ptr failure;
        try {
            (*m_part)(part);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        if (failure) {
            m_next = m_parts;
            if (!m_failure)
                m_failure = failure;
        }
        --m_running;
    }
    if (m_running == 0)
        m_done.notify_one();
}

} // namespace dsp
