#include "engines/cdrom/CdioAccess.h"

#include "base/RunTimeFailure.h"

#include <QFile>
#include <QtEndian>
#include <cdio/logging.h>
#include <mutex>

namespace cdrom {

namespace {

void silence(cdio_log_level_t, const char *) {}

/// The library's own log handler prints and ends the process, and its level is all that keeps two threads
/// that log at a time from aborting.
void prepareLibrary()
{
    static std::once_flag once;
    std::call_once(once, [] {
        cdio_log_set_handler(silence);
        cdio_loglevel_default = CDIO_LOG_ASSERT;
        cdio_init();
    });
}

[[noreturn]] void fail(const char *what)
{
    throw RunTimeFailure(RunTimeFailure::DeviceIoError, QString::fromLatin1(what));
}

} // namespace

CdioHandle openCdio(const QString &path, driver_id_t driver)
{
    prepareLibrary();
    CdioHandle disc(cdio_open(QFile::encodeName(path).constData(), driver));
    if (!disc)
        fail("The disc can't be opened.");
    return disc;
}

DiscToc tocOf(CdIo_t *disc)
{
    const track_t first = cdio_get_first_track_num(disc);
    const track_t count = cdio_get_num_tracks(disc);
    if (first == CDIO_INVALID_TRACK || count == CDIO_INVALID_TRACK || count == 0 || count > MaxTracks)
        fail("The disc has no readable table of contents.");
    lsn_t lastSession = 0;
    if (cdio_get_last_session(disc, &lastSession) != DRIVER_OP_SUCCESS)
        lastSession = 0;
    DiscToc toc;
    for (int number = first; number < first + count; ++number) {
        const auto track = static_cast<track_t>(number);
        DiscTrack entry;
        entry.start = cdio_get_track_lsn(disc, track);
        entry.session = lastSession > 0 && entry.start >= lastSession ? 2 : 1;
        entry.audio = cdio_get_track_format(disc, track) == TRACK_FORMAT_AUDIO;
        entry.mayBeCopied = cdio_get_track_copy_permit(disc, track) == CDIO_TRACK_FLAG_TRUE;
        toc.tracks.push_back(entry);
    }
    toc.leadOut = cdio_get_track_lsn(disc, CDIO_CDROM_LEADOUT_TRACK);
    setLengths(toc);
    for (const DiscTrack &track : toc.tracks)
        if (track.start < 0 || track.length <= 0)
            fail("The disc's table of contents makes no sense.");
    return toc;
}

CdioSource::CdioSource(const QString &path, driver_id_t driver, SampleOrder order)
    : m_disc(openCdio(path, driver)), m_toc(tocOf(m_disc.get())), m_order(order)
{}

bool CdioSource::read(qint32 first, qint32 count, qint16 *samples)
{
    if (cdio_read_audio_sectors(m_disc.get(), samples, first, static_cast<uint32_t>(count)) !=
        DRIVER_OP_SUCCESS)
        return false;
    const qsizetype amount = qsizetype(count) * SamplesPerSector;
    if (m_order == SampleOrder::BigEndian)
        qFromBigEndian<qint16>(samples, amount, samples);
    else
        qFromLittleEndian<qint16>(samples, amount, samples);
    return true;
}

} // namespace cdrom
