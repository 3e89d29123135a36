#include "engines/cdrom/DriveWatcher.h"

#include "base/Log.h"
#include "base/RunTimeFailure.h"

#include <condition_variable>
#include <mutex>
#include <optional>

namespace cdrom {

namespace {

constexpr std::chrono::milliseconds Interval{100};
/// A disc whose contents can't be read is asked that often and then left alone.
constexpr int Attempts = 3;

} // namespace

struct DriveWatcher::Watch
{
    explicit Watch(std::shared_ptr<Drive> watched) : drive(std::move(watched)) {}

    void run();
    void see(const MediumState &state);

    const std::shared_ptr<Drive> drive;

    std::mutex mutex;
    std::condition_variable wake;   ///< of the watching thread
    std::condition_variable looked; ///< a look was finished
    DiscView view;
    quint64 looksAsked = 1;
    quint64 looksDone = 0;
    std::optional<bool> trayAsked;
    bool stopping = false;

    // The watching thread's alone.
    MediumState last;
    int attemptsLeft = 0;
    quint64 discs = 0;
};

void DriveWatcher::Watch::run()
{
    std::unique_lock lock(mutex);
    while (!stopping) {
        const quint64 asked = looksAsked;
        const std::optional<bool> tray = std::exchange(trayAsked, std::nullopt);
        lock.unlock();
        try {
            if (tray)
                drive->moveTray(*tray);
            see(drive->medium());
        } catch (const std::exception &) {
            see({});
        }
        lock.lock();
        looksDone = asked;
        looked.notify_all();
        wake.wait_for(lock, Interval, [&] { return stopping || trayAsked || looksAsked > looksDone; });
    }
}

/// Tells another disc from the same one behind a moment of silence, and reads each disc's contents once.
void DriveWatcher::Watch::see(const MediumState &state)
{
    DiscView next = view; // written by this thread alone
    next.medium = state.medium;
    const bool came = state.medium == Medium::Present && last.medium != Medium::Present;
    if (state.medium == Medium::None) {
        next = {};
    } else if (state.medium == Medium::Present) {
        const bool other = state.stamp != last.stamp;
        if (came || other)
            attemptsLeft = Attempts;
        if (came || other || (!next.toc && attemptsLeft > 0)) {
            --attemptsLeft;
            std::shared_ptr<const DiscToc> toc;
            try {
                toc = std::make_shared<const DiscToc>(drive->readToc());
                attemptsLeft = 0;
            } catch (const RunTimeFailure &failure) { // no readable disc
                qCWarning(logDrive).noquote()
                    << drive->texts().address << "has no readable disc:" << failure.what();
            }
            const bool same = !other && toc && next.toc && *toc == *next.toc;
            if (!same)
                next.disc = toc ? ++discs : 0;
            next.toc = toc;
        }
    }
    // While it is busy the drive may have the same disc still; only a look at the contents tells.
    if (state.medium != Medium::Busy)
        last.stamp = state.stamp;
    last.medium = state.medium;
    const std::lock_guard lock(mutex);
    view = next;
}

DriveWatcher::DriveWatcher(std::shared_ptr<Drive> drive) : m_watch(std::make_shared<Watch>(std::move(drive)))
{
    isWatching();
}

DriveWatcher::~DriveWatcher()
{
    const std::lock_guard lock(m_watch->mutex);
    m_watch->stopping = true;
    m_watch->wake.notify_all();
}

bool DriveWatcher::isWatching()
{
    try {
        if (m_thread.hasEnded())
            m_thread = LooseThread("drive watcher", [watch = m_watch](const auto &) { watch->run(); });
        return true;
    } catch (const RunTimeFailure &failure) {
        if (!std::exchange(m_toldTrouble, true))
            qCWarning(logDrive).noquote()
                << m_watch->drive->texts().address << "isn't watched:" << failure.what();
        return false;
    }
}

DiscView DriveWatcher::view()
{
    if (!isWatching())
        return {};
    const std::lock_guard lock(m_watch->mutex);
    return m_watch->view;
}

DiscView DriveWatcher::look(std::chrono::milliseconds atMost)
{
    if (!isWatching())
        return {};
    std::unique_lock lock(m_watch->mutex);
    const quint64 mine = ++m_watch->looksAsked;
    m_watch->wake.notify_all();
    m_watch->looked.wait_for(lock, atMost, [&] { return m_watch->looksDone >= mine; });
    return m_watch->view;
}

void DriveWatcher::moveTray(bool open)
{
    isWatching();
    const std::lock_guard lock(m_watch->mutex);
    m_watch->trayAsked = open;
    m_watch->wake.notify_all();
}

} // namespace cdrom
