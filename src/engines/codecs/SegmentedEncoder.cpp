#include "engines/codecs/SegmentedEncoder.h"

#include "base/Thread.h"

#include <algorithm>
#include <chrono>

namespace codecs {

namespace {

/// How long a caller waits at most while it hands over a piece's length of sound, bit by bit.
constexpr std::chrono::microseconds PausePerPiece{1'200'000};

} // namespace

SegmentedEncoder::SegmentedEncoder(std::shared_ptr<const PieceCodec> codec, int channels,
                                   files::ByteSink &output, int threads)
    : m_codec(std::move(codec)),
      m_plan(m_codec->plan()),
      m_channels(channels),
      m_threadLimit(m_plan.inOrder ? 1 : static_cast<std::size_t>(std::max(threads, 1))),
      m_joiner(m_codec->joiner(output))
{}

SegmentedEncoder::~SegmentedEncoder()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_cancelled = true;
        m_waiting.clear();
    }
    m_jobsChanged.notify_all();
}

qint64 SegmentedEncoder::pendingFrames() const
{
    return static_cast<qint64>(m_samples.size()) / m_channels - m_warmUp;
}

void SegmentedEncoder::encode(const qint16 *samples, qsizetype frames)
{
    // A piece is cut off only when enough stands behind it that the last one can't become too short.
    const qsizetype given = frames;
    const qint64 enough = m_plan.length + m_plan.lookAhead + m_plan.shortestTail();
    while (frames > 0) {
        const qsizetype taken = std::min<qsizetype>(frames, enough - pendingFrames());
        m_samples.insert(m_samples.end(), samples, samples + taken * m_channels);
        samples += taken * m_channels;
        frames -= taken;
        if (pendingFrames() == enough)
            cut(m_plan.length, false);
    }
    emitFinished(m_threadLimit + 1);
    ease(given);
}

void SegmentedEncoder::finish()
{
    cut(pendingFrames(), true);
    emitFinished(0);
    m_joiner->finish();
}

void SegmentedEncoder::cut(qint64 frames, bool last)
{
    Piece piece;
    piece.number = m_number++;
    piece.begin = m_begin;
    piece.frames = frames;
    piece.warmUp = m_warmUp;
    piece.last = last;
    if (last) {
        piece.samples = std::move(m_samples);
    } else {
        const auto count = [this](qint64 n) { return static_cast<std::ptrdiff_t>(n * m_channels); };
        piece.samples.assign(m_samples.begin(),
                             m_samples.begin() + count(m_warmUp + frames + m_plan.lookAhead));
        const qint64 nextWarmUp = std::min(m_plan.warmUp, m_begin + frames);
        m_samples.erase(m_samples.begin(), m_samples.begin() + count(m_warmUp + frames - nextWarmUp));
        m_warmUp = nextWarmUp;
        m_begin += frames;
    }
    hand(std::move(piece));
}

void SegmentedEncoder::hand(Piece piece)
{
    emitFinished(m_threadLimit);
    auto job = std::make_shared<Job>();
    job->piece = std::move(piece);
    const std::scoped_lock lock(m_mutex);
    m_open.push_back(job);
    try {
        if (m_threads.size() < std::min(m_threadLimit, m_open.size()))
            m_threads.push_back(startThread("encoder", [this](const auto &) { work(); }));
    } catch (const std::exception &) {
        if (m_threads.empty()) {
            job->failure = std::current_exception();
            job->done = true;
            return;
        }
    }
    m_waiting.push_back(job);
    m_jobsChanged.notify_one();
}

/// Puts out the pieces whose turn has come, and waits while more than `mostOpen` are open.
void SegmentedEncoder::emitFinished(std::size_t mostOpen)
{
    for (;;) {
        std::shared_ptr<Job> job;
        {
            std::unique_lock lock(m_mutex);
            if (m_open.empty())
                return;
            if (m_open.size() > mostOpen)
                waitForFirst(lock);
            if (!m_open.front()->done)
                return;
            job = std::move(m_open.front());
            m_open.pop_front();
        }
        if (job->failure)
            std::rethrow_exception(job->failure);
        m_joiner->add(*job->encoded);
    }
}

/// A caller that is faster than the encoders waits a little at each call, in proportion to its frames, rather
/// than long at that which completes a piece: it may be a window.
void SegmentedEncoder::ease(qint64 frames)
{
    std::unique_lock lock(m_mutex);
    if (m_open.size() > m_threadLimit)
        m_jobDone.wait_for(lock, PausePerPiece * frames / m_plan.length,
                           [this] { return m_open.front()->done; });
}

void SegmentedEncoder::waitForFirst(std::unique_lock<std::mutex> &lock)
{
    constexpr std::chrono::milliseconds Step(20);
    while (!m_jobDone.wait_for(lock, Step, [this] { return m_open.front()->done; })) {
        if (!m_whileWaiting)
            continue;
        lock.unlock();
        m_whileWaiting();
        lock.lock();
    }
}

void SegmentedEncoder::work()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_jobsChanged.wait(lock, [this] { return m_cancelled || !m_waiting.empty(); });
        if (m_cancelled)
            return;
        const std::shared_ptr<Job> job = std::move(m_waiting.front());
        m_waiting.pop_front();
        lock.unlock();
        try {
            job->encoded = m_codec->encode(std::move(job->piece), m_cancelled);
        } catch (...) {
            job->failure = std::current_exception();
        }
        lock.lock();
        job->done = true;
        m_jobDone.notify_all();
    }
}

} // namespace codecs
