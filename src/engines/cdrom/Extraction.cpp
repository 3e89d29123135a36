#include "engines/cdrom/Extraction.h"

#include "base/Log.h"
#include "base/RunTimeFailure.h"
#include "components/CDRipperX.h"
#include "files/WholeFile.h"

#include <QElapsedTimer>
#include <new>

namespace cdrom {

namespace {

constexpr qint32 BlockSectors = 27;
constexpr std::size_t PipeBlocks = 128;  ///< 8 MB, three quarters of a minute of sound
constexpr qint64 ProgressInterval = 100; ///< milliseconds

/// Ends the wait for an encoder.
struct Cancelled
{};

} // namespace

/// The file of one track while it is written.
class Extraction::TrackFile
{
public:
    explicit TrackFile(const QueuedTrack &queued) : m_queued(queued), m_output(queued.file)
    {
        m_clock.start();
    }

    void open(const codecs::EncoderRecipe &recipe, std::function<void()> whileWaiting)
    {
        m_encoder = recipe.create(codecs::PcmFormat{}, m_output);
        m_encoder->whileWaiting(std::move(whileWaiting));
    }

    void encode(const std::vector<qint16> &samples)
    {
        m_encoder->encode(samples.data(), static_cast<qsizetype>(samples.size() / 2));
        m_sectors += static_cast<qint32>(samples.size() / SamplesPerSector);
    }

    void finish()
    {
        if (m_sectors != m_queued.track.length)
            throw RunTimeFailure(RunTimeFailure::DeviceIoError);
        m_encoder->finish();
        m_encoder.reset();
    }

    void commit() { m_output.commit(); }

    /// Whether progress should be told now.
    bool progressIsDue()
    {
        if (m_clock.elapsed() < ProgressInterval || m_sectors == m_queued.track.length)
            return false;
        m_clock.restart();
        return true;
    }

    qint32 sector() const { return m_queued.track.start + m_sectors - 1; }

private:
    const QueuedTrack &m_queued;
    files::WholeFile m_output;
    std::unique_ptr<codecs::Encoder> m_encoder;
    qint32 m_sectors = 0;
    QElapsedTimer m_clock;
};

Extraction::Extraction(ExtractionPlan plan, std::function<void(const ExtractionEvent &)> post)
    : m_plan(std::move(plan)), m_post(std::move(post)), m_pipe(PipeBlocks)
{}

Extraction::~Extraction() = default;

void Extraction::cancel()
{
    m_cancelled = true;
    m_pipe.cut();
}

void Extraction::report(qint32 code, qint32 value)
{
    m_pipe.push({PipeItem::Kind::Report, code, value, {}});
}

ReadHooks Extraction::hooks()
{
    return {[this](qint32 code, qint32 value) { report(code, value); },
            [this] { return m_cancelled || m_givenUp == m_reading; }};
}

void Extraction::read()
{
    try {
        const std::unique_ptr<AudioReader> reader = m_plan.drive->openReader(ReadFor::Extraction, hooks());
        if (reader->toc() != *m_plan.toc)
            throw RunTimeFailure(RunTimeFailure::DeviceIoError);
        for (std::size_t i = 0; i < m_plan.tracks.size() && !m_cancelled; ++i)
            if (!readTrack(*reader, i))
                break;
    } catch (const RunTimeFailure &failure) {
        qCWarning(logRip).noquote() << m_plan.drive->texts().address << "can't be read:" << failure.what();
        report(CDRipperX::DriveFailed);
    } catch (const std::exception &failure) {
        qCWarning(logRip).noquote() << m_plan.drive->texts().address << "can't be read:" << failure.what();
        report(CDRipperX::BufferFailed);
    }
    m_pipe.close();
}

/// False: there is no disc any more.
bool Extraction::readTrack(AudioReader &reader, std::size_t index)
{
    const QueuedTrack &queued = m_plan.tracks[index];
    m_reading = static_cast<int>(index);
    m_pipe.push({PipeItem::Kind::TrackBegins, 0, m_reading, {}});
    ReadResult result = ReadResult::Lost;
    try {
        result = readSectors(reader, queued);
    } catch (const std::bad_alloc &) {
        report(CDRipperX::BufferFailed);
    }
    if (result == ReadResult::Lost || result == ReadResult::NoDisc)
        qCWarning(logRip).noquote() << queued.file << "given up: its sectors can't be read";
    m_pipe.push({PipeItem::Kind::TrackEnds, result == ReadResult::Read ? 1 : 0, 0, {}});
    if (result == ReadResult::NoDisc)
        report(CDRipperX::DriveFailed);
    return result != ReadResult::NoDisc;
}

ReadResult Extraction::readSectors(AudioReader &reader, const QueuedTrack &queued)
{
    reader.begin(queued.track.start, queued.lastSector());
    for (qint32 sector = queued.track.start; sector <= queued.lastSector();) {
        PipeItem block{PipeItem::Kind::Sectors, 0, sector, {}};
        qint32 count = std::min(BlockSectors, queued.lastSector() - sector + 1);
        block.samples.resize(static_cast<std::size_t>(count) * SamplesPerSector);
        const ReadResult result = reader.read(block.samples.data(), count);
        if (result != ReadResult::Read)
            return result;
        block.samples.resize(static_cast<std::size_t>(count) * SamplesPerSector);
        sector += count;
        if (!m_pipe.push(std::move(block)))
            break;
    }
    return ReadResult::Read;
}

void Extraction::postStatus(qint32 code, qint32 value)
{
    m_post({ExtractionEvent::Kind::Status, code, value});
}

void Extraction::write()
{
    m_post({ExtractionEvent::Kind::Prepared});
    try {
        while (const std::optional<PipeItem> item = m_pipe.pop())
            take(*item);
    } catch (const Cancelled &) {
        // What an encoder still worked on is dropped with its file.
    } catch (const std::exception &failure) {
        qCWarning(logRip) << "Extraction ended:" << failure.what();
        m_pipe.cut();
        giveUp(CDRipperX::BufferFailed);
    }
    m_file.reset();
    m_post({ExtractionEvent::Kind::Complete});
}

void Extraction::take(const PipeItem &item)
{
    switch (item.kind) {
    case PipeItem::Kind::TrackBegins:
        beginTrack(static_cast<std::size_t>(item.value));
        break;
    case PipeItem::Kind::Sectors:
        encode(item.samples);
        break;
    case PipeItem::Kind::Report:
        postStatus(item.code, item.value);
        break;
    case PipeItem::Kind::TrackEnds:
        endTrack(item.code == 1);
        break;
    }
}

/// Does a step of the present track's file. A failure gives the track up, with the code that is told of it; a
/// lack of memory has its own, and a refusal may have. False then.
template <typename Step>
bool Extraction::attempt(qint32 code, Step step, std::optional<qint32> ifRefused)
{
    try {
        step();
        return true;
    } catch (const std::exception &) {
        const RunTimeFailure failure = RunTimeFailure::ofCaught();
        qCWarning(logRip).noquote() << m_plan.tracks[static_cast<std::size_t>(m_writing)].file
                                    << "given up:" << failure.what();
        if (failure.number() == RunTimeFailure::OutOfMemory)
            code = CDRipperX::BufferFailed;
        else if (failure.number() == RunTimeFailure::InvalidCall)
            code = ifRefused.value_or(code);
        giveUp(code);
        return false;
    }
}

void Extraction::beginTrack(std::size_t index)
{
    const QueuedTrack &queued = m_plan.tracks[index];
    m_writing = static_cast<int>(index);
    m_post({ExtractionEvent::Kind::TrackStarted, m_writing});
    if (!attempt(CDRipperX::CreateFailed, [&] { m_file = std::make_unique<TrackFile>(queued); }))
        return;
    const auto endIfCancelled = [this] {
        if (m_cancelled)
            throw Cancelled();
    };
    attempt(
        CDRipperX::WriteFailed, [&] { m_file->open(*m_plan.recipe, endIfCancelled); },
        CDRipperX::BufferFailed);
}

void Extraction::encode(const std::vector<qint16> &samples)
{
    if (!m_file || !attempt(CDRipperX::WriteFailed, [&] { m_file->encode(samples); }))
        return;
    if (m_file->progressIsDue())
        postStatus(CDRipperX::Progress, m_file->sector());
}

void Extraction::endTrack(bool whole)
{
    if (!m_file)
        return;
    if (!whole) {
        m_file.reset();
        postStatus(CDRipperX::FileAborted);
        return;
    }
    if (!attempt(CDRipperX::WriteFailed, [&] { m_file->finish(); }))
        return;
    // Whoever divides by the length of a track of one sector would divide by nothing.
    const QueuedTrack &queued = m_plan.tracks[static_cast<std::size_t>(m_writing)];
    if (queued.track.length > 1)
        postStatus(CDRipperX::Progress, queued.lastSector());
    if (!attempt(CDRipperX::CloseFailed, [&] { m_file->commit(); }))
        return;
    m_file.reset();
    m_post({ExtractionEvent::Kind::TrackFinished});
}

/// Ends the present track with that trouble; a file begun for it goes.
void Extraction::giveUp(qint32 code)
{
    m_givenUp = m_writing;
    postStatus(code);
    if (m_file)
        postStatus(CDRipperX::FileAborted);
    m_file.reset();
}

} // namespace cdrom
