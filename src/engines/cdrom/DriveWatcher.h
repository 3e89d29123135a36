#pragma once

#include "base/LooseThread.h"
#include "engines/cdrom/Drive.h"

#include <chrono>
#include <memory>

namespace cdrom {

/// What is known of a drive's disc.
struct DiscView
{
    Medium medium = Medium::None;
    std::shared_ptr<const DiscToc> toc; ///< null: no readable disc
    quint64 disc = 0;                   ///< counts the discs seen, so that each has another number; 0: none
};

/// Watches one drive from a thread of its own, so that questions about its disc are answered at once whatever
/// the drive does. A thread that hangs in its drive is left behind. Where none can be started the drive has
/// no disc, and each question tries again. All operations belong to one thread.
class DriveWatcher
{
public:
    explicit DriveWatcher(std::shared_ptr<Drive> drive);
    ~DriveWatcher();
    DriveWatcher(const DriveWatcher &) = delete;
    DriveWatcher &operator=(const DriveWatcher &) = delete;

    /// What the last look saw.
    DiscView view();
    /// Looks now, and waits for that no longer than told.
    DiscView look(std::chrono::milliseconds atMost);
    /// Has the tray moved, and returns at once.
    void moveTray(bool open);

private:
    struct Watch;
    /// False: no thread can be started.
    bool isWatching();

    std::shared_ptr<Watch> m_watch;
    LooseThread m_thread;
    bool m_toldTrouble = false;
};

} // namespace cdrom
