#pragma once

#include "engines/cdrom/SectorPipe.h"
#include "engines/codecs/Encoder.h"

#include <atomic>
#include <optional>

namespace cdrom {

struct QueuedTrack
{
    DiscTrack track;
    QString file;
    qint32 tag = 0;

    qint32 lastSector() const { return track.start + track.length - 1; }
};

/// Everything that a rip needs, fixed at its start.
struct ExtractionPlan
{
    std::shared_ptr<Drive> drive;
    std::shared_ptr<const DiscToc> toc; ///< of the disc for which the tracks were queued
    std::vector<QueuedTrack> tracks;
    std::shared_ptr<const codecs::EncoderRecipe> recipe;
};

struct ExtractionEvent
{
    enum class Kind { Prepared, TrackStarted, Status, TrackFinished, Complete };

    Kind kind = Kind::Status;
    qint32 code = 0;  ///< of a status; of a start the track's place in the plan
    qint32 value = 0; ///< of a status
};

/// The work of one rip, in two threads that the owner provides: one reads the tracks in order, ahead of the
/// other, which encodes them into files. Both may outlive their owner, when a drive hangs.
///
/// A track whose file or sectors fail, or that lacks memory, is given up and the next one goes on; its file
/// appears only when all samples went into it.
class Extraction
{
public:
    /// `post` is called from both threads.
    Extraction(ExtractionPlan plan, std::function<void(const ExtractionEvent &)> post);

    ~Extraction();

    const ExtractionPlan &plan() const { return m_plan; }

    /// The reading thread.
    void read();
    /// The writing thread; the last event, Complete, means that it leaves no unfinished file.
    void write();
    /// Ends both threads soon. Any thread.
    void cancel();

private:
    class TrackFile;

    bool readTrack(AudioReader &reader, std::size_t index);
    ReadResult readSectors(AudioReader &reader, const QueuedTrack &queued);
    ReadHooks hooks();
    void report(qint32 code, qint32 value = 0);

    void take(const PipeItem &item);
    template <typename Step>
    bool attempt(qint32 code, Step step, std::optional<qint32> ifRefused = {});
    void beginTrack(std::size_t index);
    void encode(const std::vector<qint16> &samples);
    void endTrack(bool whole);
    void giveUp(qint32 code);
    void postStatus(qint32 code, qint32 value = 0);

    const ExtractionPlan m_plan;
    const std::function<void(const ExtractionEvent &)> m_post;
    SectorPipe m_pipe;
    std::atomic<bool> m_cancelled = false;
    std::atomic<int> m_givenUp = -1; ///< the track that the writer wants no more of
    int m_reading = 0;               ///< the reading thread's track
    int m_writing = 0;               ///< the writing thread's track
    std::unique_ptr<TrackFile> m_file;
};

} // namespace cdrom
