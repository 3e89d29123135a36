#pragma once

#include "engines/cdrom/CdioAccess.h"
#include "engines/cdrom/Drive.h"

#include <QElapsedTimer>
#include <cdio/paranoia/cdda.h>
#include <cdio/paranoia/paranoia.h>

namespace cdrom {

struct ParanoiaOptions
{
    qint16 speed = 0; ///< 0: as fast as it goes
    /// Asked after a failed read: whether there is no disc any more.
    std::function<bool()> discIsGone = [] { return false; };
    /// For tests: flags of the library that displace reads, and reads that fail.
    int jitter = 0;
    std::function<bool(qint32 first, qint32 count)> fails = {};
};

/// Reads each sector at least twice and puts the reads together where a drive doesn't place them well, by
/// libcdio-paranoia. Everything but the constructor runs on one thread.
///
/// A read error and its retries are reported as 4 and 5, a place that was given up as 6, after a 2 where no
/// read failed but no two fitted; the library's slowing down on bad places as 3.
///
/// The library fits reads together by their sound, so it takes the place of the very first read and of what
/// follows silence on trust. Such reads are repeated here until two are alike.
class ParanoiaReader : public AudioReader
{
public:
    /// Failure 57 where the disc can't be opened for its sound.
    ParanoiaReader(CdioHandle disc, DiscToc toc, ReadHooks hooks, ParanoiaOptions options);
    ~ParanoiaReader() override;
    ParanoiaReader(const ParanoiaReader &) = delete;
    ParanoiaReader &operator=(const ParanoiaReader &) = delete;

    const DiscToc &toc() const override { return m_toc; }
    void begin(qint32 first, qint32 last) override;
    ReadResult read(qint16 *samples, qint32 &count) override;

private:
    struct Free
    {
        void operator()(cdrom_paranoia_t *paranoia) const { cdio_paranoia_free(paranoia); }
    };
    using ReadAudio = long (*)(cdrom_drive_t *, void *, lsn_t, long);

    static long readAudio(cdrom_drive_t *drive, void *buffer, lsn_t first, long count);
    static void hear(long position, paranoia_cb_mode_t code);
    long readSettled(qint16 *samples, lsn_t first, long count);
    long readOnce(qint16 *samples, lsn_t first, long count);
    long settle(qint16 *samples, lsn_t first, long count);
    void hear(paranoia_cb_mode_t code, qint32 sector);
    /// Reports what may come thousands of times, ten times a second.
    void reportOften(qint32 code, qint32 value);
    long end(ReadResult result);

    const DiscToc m_toc;
    const ReadHooks m_hooks;
    const ParanoiaOptions m_options;
    cdrom_drive_t *m_drive = nullptr;
    std::unique_ptr<cdrom_paranoia_t, Free> m_paranoia;
    ReadAudio m_readAudio = nullptr; ///< the library's

    qint32 m_first = 0;        ///< of the span
    lsn_t m_behindSilence = 0; ///< sector before which the last read ended silently
    ReadResult m_result = ReadResult::Read;
    int m_failedReads = 0; ///< since the last good sector
    qint32 m_misfits = 0;
    QElapsedTimer m_sinceReport;
};

} // namespace cdrom
