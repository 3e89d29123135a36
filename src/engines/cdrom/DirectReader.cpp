#include "engines/cdrom/DirectReader.h"

#include "components/CDRipperX.h"

#include <QThread>
#include <algorithm>

namespace cdrom {

namespace {

constexpr qint32 LargestRead = 27;

} // namespace

DirectReader::DirectReader(std::unique_ptr<SectorSource> source, ReadHooks hooks,
                           std::shared_ptr<const std::atomic<qint16>> speed)
    : m_source(std::move(source)), m_hooks(std::move(hooks)), m_speed(std::move(speed))
{
    m_clock.start();
}

void DirectReader::begin(qint32 first, qint32 last)
{
    m_next = first;
    m_last = last;
}

ReadResult DirectReader::read(qint16 *samples, qint32 &count)
{
    count = std::min({count, LargestRead, m_last - m_next + 1});
    if (!waitForTurn(count) || m_hooks.stopped())
        return ReadResult::Stopped;
    if (!m_source->read(m_next, count, samples)) {
        m_hooks.report(CDRipperX::ReadFailed, m_next);
        m_hooks.report(CDRipperX::RetryingRead, m_next);
        if (!m_source->read(m_next, count, samples)) {
            m_hooks.report(CDRipperX::RetryFailed, m_next);
            return ReadResult::Lost;
        }
    }
    m_next += count;
    return ReadResult::Read;
}

/// False: asked to stop meanwhile.
bool DirectReader::waitForTurn(qint32 count)
{
    constexpr double LongestNap = 20;
    const qint16 speed = m_speed ? m_speed->load() : qint16(0);
    if (speed <= 0)
        return true;
    for (double left = m_due - double(m_clock.elapsed()); left > 0;
         left = m_due - double(m_clock.elapsed())) {
        if (m_hooks.stopped())
            return false;
        QThread::msleep(static_cast<unsigned long>(std::min(left, LongestNap)) + 1);
    }
    m_due = std::max(m_due, double(m_clock.elapsed())) + count * 1000.0 / (SectorsPerSecond * speed);
    return true;
}

} // namespace cdrom
