#pragma once

#include "engines/codecs/Pieces.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>

namespace codecs {

/// Encodes one stream on several threads, a piece on each. The bytes are the same for any number of them.
///
/// At most one piece more than there are threads is open at a time, in work or waiting for its turn; so
/// memory is bounded, and `encode` may run ahead of the encoders by that. A failure shows at the call at
/// which its piece's turn comes, `finish` at the latest. Where the system has fewer threads than told, those
/// that there are do the work; it fails (7) where there is none. Destroying it stops the threads within a
/// frame of the codec.
class SegmentedEncoder final : public Encoder
{
public:
    SegmentedEncoder(std::shared_ptr<const PieceCodec> codec, int channels, files::ByteSink &output,
                     int threads);
    ~SegmentedEncoder() override;

    void encode(const qint16 *samples, qsizetype frames) override;
    void finish() override;
    void whileWaiting(std::function<void()> call) override { m_whileWaiting = std::move(call); }

private:
    struct Job
    {
        Piece piece;
        std::unique_ptr<EncodedPiece> encoded;
        std::exception_ptr failure;
        bool done = false;
    };

    qint64 pendingFrames() const;
    void cut(qint64 frames, bool last);
    void hand(Piece piece);
    void emitFinished(std::size_t mostOpen);
    void waitForFirst(std::unique_lock<std::mutex> &lock);
    void ease(qint64 frames);
    void work();

    const std::shared_ptr<const PieceCodec> m_codec;
    const PiecePlan m_plan;
    const int m_channels;
    const std::size_t m_threadLimit;
    const std::unique_ptr<PieceJoiner> m_joiner;
    std::function<void()> m_whileWaiting;

    std::vector<qint16> m_samples; ///< from the next piece's warm-up on
    qint64 m_begin = 0;            ///< of the next piece
    qint64 m_warmUp = 0;           ///< frames of `m_samples` in front of it
    qint64 m_number = 0;

    std::atomic<bool> m_cancelled = false;
    std::mutex m_mutex;
    std::condition_variable m_jobsChanged; ///< a job waits, or all are to end
    std::condition_variable m_jobDone;
    std::deque<std::shared_ptr<Job>> m_open;    ///< in the order of the stream
    std::deque<std::shared_ptr<Job>> m_waiting; ///< of those, the ones that no thread has taken
    std::vector<std::jthread> m_threads;
};

} // namespace codecs
