#include "engines/cdrom/SectorPipe.h"

namespace cdrom {

bool SectorPipe::push(PipeItem item)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_cut || m_items.size() < m_capacity; });
    if (m_cut)
        return false;
    m_items.push_back(std::move(item));
    m_changed.notify_all();
    return true;
}

std::optional<PipeItem> SectorPipe::pop()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_cut || m_closed || !m_items.empty(); });
    if (m_cut || m_items.empty())
        return std::nullopt;
    PipeItem item = std::move(m_items.front());
    m_items.pop_front();
    m_changed.notify_all();
    return item;
}

void SectorPipe::close()
{
    const std::lock_guard lock(m_mutex);
    m_closed = true;
    m_changed.notify_all();
}

void SectorPipe::cut()
{
    const std::lock_guard lock(m_mutex);
    m_cut = true;
    m_changed.notify_all();
}

} // namespace cdrom
