#include "engines/cdrom/Player.h"

#include "base/Log.h"
#include "base/RunTimeFailure.h"

#include <QEventLoop>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace cdrom {

namespace {

constexpr std::chrono::milliseconds FeedInterval{20};
constexpr qint32 PlayedSectors = 25;
/// Unreadable blocks in a row after which a track is left.
constexpr int MostLost = 4;

/// The samples of a track, block by block; what can't be read is silent.
class TrackFeed
{
public:
    TrackFeed(std::unique_ptr<AudioReader> reader, const DiscTrack &track)
        : m_reader(std::move(reader)), m_next(track.start), m_end(track.start + track.length)
    {
        m_reader->begin(m_next, m_end - 1);
    }

    /// Gives the output what it takes. False: the track is at its end.
    bool feed(AudioOutput &output)
    {
        for (qsizetype room = output.room(); room > 0; room = output.room()) {
            if (m_taken == m_frames && !readBlock())
                return false;
            const qsizetype taken =
                output.write(m_samples.data() + 2 * m_taken, std::min(room, m_frames - m_taken));
            if (taken == 0)
                break;
            m_taken += taken;
        }
        return true;
    }

private:
    bool readBlock()
    {
        qint32 count = std::min(PlayedSectors, m_end - m_next);
        if (count <= 0 || m_lost == MostLost)
            return false;
        m_samples.assign(static_cast<std::size_t>(count) * SamplesPerSector, 0);
        const ReadResult result = m_reader->read(m_samples.data(), count);
        m_next += count;
        if (result == ReadResult::Lost) {
            ++m_lost;
            m_reader->begin(m_next, m_end - 1);
        } else if (result != ReadResult::Read) {
            return false;
        } else {
            m_lost = 0;
        }
        m_frames = qsizetype(count) * FramesPerSector;
        m_taken = 0;
        return true;
    }

    std::unique_ptr<AudioReader> m_reader;
    std::vector<qint16> m_samples;
    qsizetype m_frames = 0; ///< in the block
    qsizetype m_taken = 0;  ///< of them by the output
    qint32 m_next;
    qint32 m_end;
    int m_lost = 0; ///< blocks in a row
};

} // namespace

struct Player::Work
{
    explicit Work(MakeOutput make) : makeOutput(std::move(make)) {}

    void run();
    void play(const std::shared_ptr<Drive> &from, const DiscTrack &track, quint64 number);
    /// Whether the track of that number is still the one.
    bool isWanted(quint64 number);

    const MakeOutput makeOutput;
    std::mutex mutex;
    std::condition_variable changed;
    std::shared_ptr<Drive> drive;
    DiscTrack track;
    quint64 number = 0; ///< counts the tracks asked for
    State state = State::Idle;
    bool quitting = false;
};

void Player::Work::run()
{
    std::unique_lock lock(mutex);
    for (quint64 played = 0;;) {
        changed.wait(lock, [&] { return quitting || (number != played && state != State::Idle); });
        if (quitting)
            return;
        played = number;
        const std::shared_ptr<Drive> from = drive;
        const DiscTrack wanted = track;
        lock.unlock();
        try {
            play(from, wanted, played);
        } catch (const std::exception &failure) { // no disc, or none that can be read
            qCWarning(logDrive).noquote() << from->texts().address << "can't be played:" << failure.what();
        }
        lock.lock();
        if (number == played)
            state = State::Idle;
    }
}

bool Player::Work::isWanted(quint64 asked)
{
    const std::lock_guard lock(mutex);
    return !quitting && number == asked && state != State::Idle;
}

void Player::Work::play(const std::shared_ptr<Drive> &from, const DiscTrack &wanted, quint64 asked)
{
    ReadHooks hooks;
    hooks.stopped = [this, asked] { return !isWanted(asked); };
    TrackFeed feed(from->openReader(ReadFor::Playing, hooks), wanted);
    QEventLoop events; // the sound system's objects want one
    const std::unique_ptr<AudioOutput> output = makeOutput();
    bool fed = false;
    std::unique_lock lock(mutex);
    for (State last = State::Playing;;) {
        if (quitting || number != asked || state == State::Idle)
            return;
        const bool turned = std::exchange(last, state) != state;
        lock.unlock();
        if (turned)
            output->setPaused(last == State::Paused);
        if (!output->works())
            return;
        if (last == State::Playing) {
            fed = fed || !feed.feed(*output);
            if (fed && output->isDry())
                return;
        }
        events.processEvents();
        lock.lock();
        changed.wait_for(lock, FeedInterval, [&] { return quitting || number != asked || state != last; });
    }
}

Player::Player(MakeOutput makeOutput) : m_work(std::make_shared<Work>(std::move(makeOutput))) {}

Player::~Player()
{
    const std::lock_guard lock(m_work->mutex);
    m_work->quitting = true;
    m_work->changed.notify_all();
}

void Player::play(std::shared_ptr<Drive> drive, const DiscTrack &track)
{
    {
        const std::lock_guard lock(m_work->mutex);
        m_work->drive = std::move(drive);
        m_work->track = track;
        ++m_work->number;
        m_work->state = State::Playing;
        m_work->changed.notify_all();
    }
    try {
        if (m_thread.hasEnded())
            m_thread = LooseThread("player", [work = m_work](const auto &) { work->run(); });
    } catch (const RunTimeFailure &failure) {
        qCWarning(logDrive) << "Nothing is played:" << failure.what();
        stop(); // there is nothing to hear, as without a disc
    }
}

void Player::change(State from, State to)
{
    const std::lock_guard lock(m_work->mutex);
    if (m_work->state == from)
        m_work->state = to;
    m_work->changed.notify_all();
}

void Player::pause()
{
    change(State::Playing, State::Paused);
}

void Player::resume()
{
    change(State::Paused, State::Playing);
}

void Player::stop()
{
    const std::lock_guard lock(m_work->mutex);
    m_work->state = State::Idle;
    m_work->changed.notify_all();
}

Player::State Player::state() const
{
    const std::lock_guard lock(m_work->mutex);
    return m_work->state;
}

} // namespace cdrom
