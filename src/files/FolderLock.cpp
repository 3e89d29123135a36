#include "files/FolderLock.h"

#include "files/SystemError.h"

#include <QDeadlineTimer>
#include <cerrno>
#include <chrono>
#include <sys/file.h>
#include <thread>

using namespace std::chrono_literals;

files::FolderLock::FolderLock(const QString &folder) : m_folder(folder, O_RDONLY | O_DIRECTORY)
{
    if (!m_folder.isOpen() && errno != EACCES) // what can't be read may be written all the same
        throw failureOf(errno);
    const QDeadlineTimer patience(2s);
    while (m_folder.isOpen() && ::flock(m_folder.number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return;
        if (patience.hasExpired())
            throw RunTimeFailure(RunTimeFailure::PathFileAccessError,
                                 QStringLiteral("Another program keeps the folder locked"));
        std::this_thread::sleep_for(5ms);
    }
}
