#include "files/FileAttributes.h"

#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>
#include <unistd.h>

#ifdef Q_OS_LINUX
#include <sys/xattr.h>
#endif

namespace files {

namespace {

#ifdef Q_OS_LINUX
/// Access lists and the attributes of programs.
void takeExtendedAttributes(const char *from, int descriptor)
{
    const ssize_t size = ::listxattr(from, nullptr, 0);
    if (size <= 0)
        return;
    QByteArray names(size, '\0');
    const ssize_t length = ::listxattr(from, names.data(), static_cast<size_t>(names.size()));
    if (length <= 0)
        return;
    names.resize(length);
    for (const QByteArray &name : names.split('\0')) {
        const ssize_t valueSize = name.isEmpty() ? -1 : ::getxattr(from, name.constData(), nullptr, 0);
        if (valueSize < 0)
            continue;
        QByteArray value(valueSize, '\0');
        if (::getxattr(from, name.constData(), value.data(), static_cast<size_t>(value.size())) == valueSize)
            ::fsetxattr(descriptor, name.constData(), value.constData(), static_cast<size_t>(value.size()),
                        0);
    }
}
#endif

} // namespace

bool isWritable(const QString &path)
{
    constexpr QFile::Permissions Anybody = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    const QFileInfo file(path);
    return file.isWritable() && (file.permissions() & Anybody);
}

void takeAttributes(const QString &from, int descriptor)
{
    const QByteArray source = QFile::encodeName(from);
    struct stat status
    {};
    if (::stat(source.constData(), &status) != 0)
        return;
    // The owner comes first, since a change of owner takes special permissions away.
    if (::fchown(descriptor, status.st_uid, status.st_gid) != 0 &&
        ::fchown(descriptor, static_cast<uid_t>(-1), status.st_gid) != 0) {
        // not ours to give: the file belongs to who changed it
    }
    ::fchmod(descriptor, status.st_mode & 07777);
#ifdef Q_OS_LINUX
    takeExtendedAttributes(source.constData(), descriptor);
#endif
}

} // namespace files
