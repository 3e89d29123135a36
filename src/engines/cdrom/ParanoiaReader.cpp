#include "engines/cdrom/ParanoiaReader.h"

#include "base/RunTimeFailure.h"
#include "components/CDRipperX.h"

#include <algorithm>
#include <cerrno>

namespace cdrom {

namespace {

constexpr int MaxRetries = 20;
constexpr int MostLooks = 6; ///< at a read whose place is uncertain
constexpr qint64 ReportInterval = 100;

/// Silence across which the library sees no more what belongs together, in samples; and how much sound it
/// needs for that.
constexpr qsizetype LongSilence = 1000;

struct Silence
{
    bool within = false;
    bool nearEnd = false;
};

/// The long silences of a read.
Silence silenceIn(const qint16 *samples, long sectors)
{
    Silence silence;
    const qsizetype count = sectors * SamplesPerSector;
    qsizetype run = 0;
    for (qsizetype i = 0; i < count; ++i) {
        run = samples[i] == 0 ? run + 1 : 0;
        if (run < LongSilence)
            continue;
        silence.within = true;
        silence.nearEnd = count - i <= LongSilence;
    }
    silence.nearEnd = silence.nearEnd || run > 0;
    return silence;
}

/// The library's callbacks carry no pointer of ours; they come on the thread that reads.
thread_local ParanoiaReader *reading = nullptr;

} // namespace

ParanoiaReader::ParanoiaReader(CdioHandle disc, DiscToc toc, ReadHooks hooks, ParanoiaOptions options)
    : m_toc(std::move(toc)), m_hooks(std::move(hooks)), m_options(std::move(options))
{
    m_drive = cdio_cddap_identify_cdio(disc.get(), CDDA_MESSAGE_FORGETIT, nullptr);
    if (!m_drive)
        throw RunTimeFailure(RunTimeFailure::DeviceIoError);
    disc.release(); // goes with m_drive
    cdio_cddap_verbose_set(m_drive, CDDA_MESSAGE_FORGETIT, CDDA_MESSAGE_FORGETIT);
    // Every drive gives little-endian samples. Not told, the library guesses from the sound: it walks through
    // silence for it, and behind a scratch at the start it guesses wrong.
    m_drive->bigendianp = 0;
    if (cdio_cddap_open(m_drive) != 0 || !m_drive->opened) {
        cdio_cddap_close(m_drive);
        throw RunTimeFailure(RunTimeFailure::DeviceIoError, QStringLiteral("The disc can't be opened."));
    }
    // A failed read is repeated by paranoia anyway; repeating each repetition takes minutes for one sector.
    m_drive->error_retry = 0;
    m_drive->i_test_flags = m_options.jitter;
    m_readAudio = std::exchange(m_drive->read_audio, &ParanoiaReader::readAudio);
    if (m_options.speed > 0)
        cdio_cddap_speed_set(m_drive, m_options.speed);
    m_sinceReport.start();
}

ParanoiaReader::~ParanoiaReader()
{
    if (m_options.speed > 0)
        cdio_cddap_speed_set(m_drive, 0);
    m_paranoia.reset();
    cdio_cddap_close(m_drive);
}

void ParanoiaReader::begin(qint32 first, qint32 last)
{
    reading = this;
    m_first = first;
    m_behindSilence = -1;
    m_result = ReadResult::Read;
    m_failedReads = 0;
    m_misfits = 0;
    // Afresh for each span: after an ended one the library keeps what it gave up.
    m_paranoia.reset(cdio_paranoia_init(m_drive));
    cdio_paranoia_modeset(m_paranoia.get(), PARANOIA_MODE_FULL ^ PARANOIA_MODE_NEVERSKIP);
    cdio_paranoia_seek(m_paranoia.get(), first, SEEK_SET);
    // Without a range it reads on to the end of the disc.
    cdio_paranoia_set_range(m_paranoia.get(), first, last);
}

ReadResult ParanoiaReader::read(qint16 *samples, qint32 &count)
{
    for (qint32 i = 0; i < count; ++i) {
        const qint16 *sector =
            m_hooks.stopped()
                ? nullptr
                : cdio_paranoia_read_limited(m_paranoia.get(), &ParanoiaReader::hear, MaxRetries);
        if (m_result != ReadResult::Read)
            return m_result;
        if (!sector)
            return m_hooks.stopped() ? ReadResult::Stopped : ReadResult::Lost;
        std::copy_n(sector, SamplesPerSector, samples + qsizetype(i) * SamplesPerSector);
        m_failedReads = 0;
    }
    return ReadResult::Read;
}

long ParanoiaReader::readAudio(cdrom_drive_t *, void *buffer, lsn_t first, long count)
{
    return reading->readSettled(static_cast<qint16 *>(buffer), first, count);
}

/// Ends the library's reading: this error is the only one at which it stops.
long ParanoiaReader::end(ReadResult result)
{
    m_result = result;
    errno = ENOMEDIUM;
    return -1;
}

long ParanoiaReader::readSettled(qint16 *samples, lsn_t first, long count)
{
    long result = readOnce(samples, first, count);
    if (result <= 0 || !samples)
        return result;
    const bool follows = first == std::exchange(m_behindSilence, -1);
    if (first <= m_first || follows || silenceIn(samples, result).within)
        result = settle(samples, first, result);
    if (result > 0 && silenceIn(samples, result).nearEnd)
        m_behindSilence = first + static_cast<lsn_t>(result);
    return result;
}

/// Repeats a read until two are alike.
long ParanoiaReader::settle(qint16 *samples, lsn_t first, long count)
{
    std::vector<std::vector<qint16>> seen;
    for (int looks = 1; looks < MostLooks; ++looks) {
        seen.emplace_back(samples, samples + count * SamplesPerSector);
        const long again = readOnce(samples, first, count);
        if (m_result != ReadResult::Read)
            return again;
        if (again != count) {
            std::copy(seen.back().begin(), seen.back().end(), samples);
            break;
        }
        const auto isAlike = [samples](const std::vector<qint16> &other) {
            return std::equal(other.begin(), other.end(), samples);
        };
        if (std::any_of(seen.begin(), seen.end(), isAlike))
            break;
    }
    return count;
}

long ParanoiaReader::readOnce(qint16 *samples, lsn_t first, long count)
{
    if (m_hooks.stopped())
        return end(ReadResult::Stopped);
    if (m_result != ReadResult::Read)
        return end(m_result);
    long result = -1;
    errno = EIO;
    if (!m_options.fails || !m_options.fails(first, static_cast<qint32>(count)))
        result = m_readAudio(m_drive, samples, first, count);
    if (result < 0 && m_options.discIsGone())
        return end(ReadResult::NoDisc);
    return result;
}

void ParanoiaReader::hear(long position, paranoia_cb_mode_t code)
{
    reading->hear(code, static_cast<qint32>(position / SamplesPerSector));
}

void ParanoiaReader::hear(paranoia_cb_mode_t code, qint32 sector)
{
    switch (code) {
    case PARANOIA_CB_READERR:
        switch (++m_failedReads) {
        case 1:
            m_hooks.report(CDRipperX::ReadFailed, sector);
            break;
        case 2: // that it is tried again is told once in any case, whatever was reported just before
            m_hooks.report(CDRipperX::RetryingRead, sector);
            break;
        default:
            reportOften(CDRipperX::RetryingRead, sector);
        }
        break;
    case PARANOIA_CB_SKIP:
        if (m_result != ReadResult::Read)
            break;
        if (m_failedReads == 0)
            m_hooks.report(CDRipperX::JitterNotCorrected, ++m_misfits);
        m_hooks.report(CDRipperX::RetryFailed, sector);
        m_result = ReadResult::Lost;
        break;
    case PARANOIA_CB_OVERLAP:
    case PARANOIA_CB_DRIFT:
        reportOften(CDRipperX::SpeedAdjusted, 0);
        break;
    default:
        break;
    }
}

void ParanoiaReader::reportOften(qint32 code, qint32 value)
{
    if (m_sinceReport.elapsed() < ReportInterval)
        return;
    m_sinceReport.start();
    m_hooks.report(code, value);
}

} // namespace cdrom
