#include "engines/audiofile/ReadAhead.h"

#include "base/Thread.h"

#include <algorithm>

namespace audiofile {

ReadAhead::ReadAhead(std::unique_ptr<AudioSource> source)
    : m_source(std::move(source)),
      // Two seconds of sound: more than any reader takes at once, so that the next is being made meanwhile.
      m_mostValues(2 * static_cast<std::size_t>(m_source->format().rate) *
                   static_cast<std::size_t>(m_source->format().channels)),
      m_thread(startThread("file reader", [this](const auto &) { run(); }))
{}

ReadAhead::~ReadAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
    }
    m_changed.notify_all();
}

std::vector<qint16> ReadAhead::read(std::size_t count)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_ended || m_values.size() >= std::min(count, m_mostValues); });
    if (m_values.empty() && m_failure)
        std::rethrow_exception(m_failure);
    const auto end = m_values.begin() + std::ptrdiff_t(std::min(count, m_values.size()));
    std::vector<qint16> values(m_values.begin(), end);
    m_values.erase(m_values.begin(), end);
    m_changed.notify_all();
    return values;
}

void ReadAhead::run()
{
    std::exception_ptr failure;
    try {
        while (decodeSome()) {
        }
    } catch (...) {
        failure = std::current_exception();
    }
    const std::lock_guard lock(m_mutex);
    m_failure = failure;
    m_ended = true;
    m_changed.notify_all();
}

/// False: there is no more, or no more is wanted.
bool ReadAhead::decodeSome()
{
    const std::vector<qint16> values = m_source->read();
    std::unique_lock lock(m_mutex);
    m_values.insert(m_values.end(), values.begin(), values.end());
    m_changed.notify_all();
    m_changed.wait(lock, [&] { return m_stopped || m_values.size() < m_mostValues; });
    return !m_stopped && !values.empty();
}

} // namespace audiofile
