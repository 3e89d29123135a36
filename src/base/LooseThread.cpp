#include "base/LooseThread.h"

LooseThread::LooseThread(const char *name, std::function<void(std::stop_token)> run)
{
    const auto work = std::make_shared<std::packaged_task<void(std::stop_token)>>(std::move(run));
    m_end = work->get_future();
    m_thread = startThread(name, [work](const std::stop_token &stop) { (*work)(stop); });
}

bool LooseThread::end(Patience atMost)
{
    if (!m_thread.joinable())
        return true;
    m_thread.request_stop();
    const bool ended = !atMost || m_end.wait_for(*atMost) == std::future_status::ready;
    if (ended)
        m_thread.join();
    else
        m_thread.detach();
    return ended;
}
