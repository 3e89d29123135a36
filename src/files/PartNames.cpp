#include "files/PartNames.h"

#include "files/Descriptor.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QHash>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <mutex>
#include <sys/file.h>

namespace files {

namespace {

constexpr qint64 SweepInterval = 1000; // ms; many files in a large folder aren't to be quadratic work

/// A text of the machine's own for each of its starts; empty where the system has none.
const QString &thisStart()
{
    static const QString start = [] {
        QFile file(QStringLiteral("/proc/sys/kernel/random/boot_id"));
        return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()).trimmed().remove(u'-')
                                              : QString();
    }();
    return start;
}

const QString Prefix = QStringLiteral(".tonelift-");
const QString Suffix = QStringLiteral(".part");

/// Whose owner is gone: the owner holds a lock, which the system takes off it in any case. Where there are no
/// such locks, the number of the process in the name decides.
bool isForsaken(const QString &path, const QString &process)
{
    const Descriptor part(path, O_RDWR | O_NOFOLLOW | O_NONBLOCK);
    if (!part.isOpen())
        return false;
    if (::flock(part.number(), LOCK_EX | LOCK_NB) == 0)
        return true;
    return errno != EWOULDBLOCK && ::kill(process.toInt(), 0) != 0 && errno == ESRCH;
}

bool isDue(const QString &folder)
{
    static std::mutex mutex;
    static QHash<QString, QElapsedTimer> sinceSwept;
    const std::lock_guard lock(mutex);
    QElapsedTimer &since = sinceSwept[folder];
    if (since.isValid() && !since.hasExpired(SweepInterval))
        return false;
    since.start();
    return true;
}

} // namespace

QString newPartName(const QString &target)
{
    static std::atomic<unsigned> count = 0;
    return QFileInfo(target).dir().filePath(Prefix + thisStart() +
                                            QStringLiteral("-%1-%2").arg(::getpid()).arg(++count) + Suffix);
}

void sweepParts(const QString &folder)
{
    if (thisStart().isEmpty() || !isDue(folder))
        return;
    const QDir dir(folder);
    const QString ofThisStart = Prefix + thisStart() + u'-';
    for (const QString &name : dir.entryList({ofThisStart + u'*' + Suffix}, QDir::Files | QDir::Hidden)) {
        const QString process = name.mid(ofThisStart.size()).section(u'-', 0, 0);
        if (isForsaken(dir.filePath(name), process))
            QFile::remove(dir.filePath(name));
    }
}

} // namespace files
