#include "base/RegularFile.h"

#include "base/RunTimeFailure.h"

#include <QFileInfo>
#include <cerrno>
#include <cstring>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

[[noreturn]] void fail(const QString &reason)
{
    throw RunTimeFailure(RunTimeFailure::PathFileAccessError, reason);
}

} // namespace

void openRegularFile(QFile &file, const QString &path, QIODevice::OpenMode mode)
{
    file.setFileName(path);
#ifdef Q_OS_UNIX
    // Asked behind the opening, since what the path leads to may change before it.
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0 && (errno == ENOENT || errno == ENOTDIR))
        throw RunTimeFailure(RunTimeFailure::FileNotFound);
    if (descriptor < 0)
        fail(QString::fromLocal8Bit(std::strerror(errno)));
    struct stat about = {};
    if (::fstat(descriptor, &about) != 0 || !S_ISREG(about.st_mode)) {
        ::close(descriptor);
        fail(QStringLiteral("This is no regular file"));
    }
    if (!file.open(descriptor, mode, QFile::AutoCloseHandle)) {
        ::close(descriptor);
        fail(file.errorString());
    }
#else
    if (!file.exists())
        throw RunTimeFailure(RunTimeFailure::FileNotFound);
    if (!QFileInfo(path).isFile() || !file.open(mode))
        fail(file.errorString());
#endif
}
