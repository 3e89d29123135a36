#pragma once

#include "engines/cdrom/Drive.h"
#include "engines/images/SectorSource.h"

#include <QElapsedTimer>
#include <atomic>

namespace cdrom {

/// Reads a source as it comes, a failed read being tried once more, and no faster than a speed factor allows.
class DirectReader : public AudioReader
{
public:
    /// `speed` outlives the reader and may change meanwhile; 0 is unlimited. Playing reads without a limit.
    DirectReader(std::unique_ptr<SectorSource> source, ReadHooks hooks,
                 std::shared_ptr<const std::atomic<qint16>> speed);

    const DiscToc &toc() const override { return m_source->toc(); }
    void begin(qint32 first, qint32 last) override;
    ReadResult read(qint16 *samples, qint32 &count) override;

private:
    bool waitForTurn(qint32 count);

    std::unique_ptr<SectorSource> m_source;
    ReadHooks m_hooks;
    std::shared_ptr<const std::atomic<qint16>> m_speed;
    qint32 m_next = 0;
    qint32 m_last = 0;
    QElapsedTimer m_clock;
    double m_due = 0; ///< milliseconds on the clock before which nothing more is read
};

} // namespace cdrom
