#include "files/WholeFile.h"

#include "files/FileAttributes.h"
#include "files/PartNames.h"
#include "files/SystemError.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <sys/file.h>
#include <sys/stat.h>

namespace files {

namespace {

constexpr std::size_t BufferSize = 1 << 16;
constexpr std::int64_t BlockSize = 4096; ///< of most file systems
constexpr int MostLinks = 40;
constexpr qsizetype LongestName = 255; // bytes

void check(bool succeeded)
{
    if (!succeeded)
        throw failureOf(errno);
}

/// Asked before the work is done and not behind it: whether the target's name can be taken at all.
void checkTarget(const QString &path)
{
    const QFileInfo target(path);
    if (QFile::encodeName(target.fileName()).size() > LongestName)
        throw failureOf(ENAMETOOLONG);
    if (target.exists() && !target.isFile())
        throw failureOf(EISDIR);
}

QString folderOf(const QString &path)
{
    return QFileInfo(path).path();
}

/// Where an open file without a name is found.
QString descriptorPath(const Descriptor &file)
{
    return QStringLiteral("/proc/self/fd/%1").arg(file.number());
}

/// A file without a name; not open where the system or the file system has none.
Descriptor openNameless(const QString &folder, mode_t mode)
{
#ifdef O_TMPFILE
    if (::access("/proc/self/fd", X_OK) == 0)
        return {folder, O_TMPFILE | O_RDWR, mode};
#endif
    errno = EOPNOTSUPP;
    return {};
}

/// Says that the part belongs to a living process. False where it was swept away just before.
bool lockPart(const Descriptor &part)
{
    ::flock(part.number(), LOCK_EX);
    struct stat status
    {};
    return ::fstat(part.number(), &status) != 0 || status.st_nlink > 0;
}

/// What comes at a place of a file: a hole or data, and how much of it.
struct Stretch
{
    bool isHole;
    std::int64_t count;
};

/// The file's own place, which its owner reads on from, stays as it is.
Stretch stretchAt(int descriptor, std::int64_t begin, std::int64_t count)
{
    const off_t place = ::lseek(descriptor, 0, SEEK_CUR);
    errno = 0;
    const off_t data = ::lseek(descriptor, begin, SEEK_DATA);
    const bool endsInHole = data < 0 && errno == ENXIO;
    const off_t hole = data == begin ? ::lseek(descriptor, begin, SEEK_HOLE) : -1;
    ::lseek(descriptor, place, SEEK_SET);
    if (endsInHole)
        return {true, count};
    if (data > begin)
        return {true, std::min<std::int64_t>(count, data - begin)};
    return {false, hole > begin ? std::min<std::int64_t>(count, hole - begin) : count};
}

} // namespace

QString behindLinks(const QString &path)
{
    QFileInfo file(path);
    for (int i = 0; file.isSymLink(); ++i) {
        if (i == MostLinks)
            throw failureOf(ELOOP);
        file.setFile(file.symLinkTarget());
    }
    return file.filePath();
}

WholeFile::WholeFile(const QString &path, Access access) : m_path(behindLinks(path))
{
    checkTarget(m_path);
    const QString folder = folderOf(m_path);
    sweepParts(folder);
    const mode_t mode = access == Access::OwnerOnly ? 0600 : 0666;
    m_file = openNameless(folder, mode);
    if (!m_file.isOpen() && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL))
        openNamed(mode);
    check(m_file.isOpen());
    lockPart(m_file);
    takeAttributes(m_path, m_file.number());
    if (access == Access::OwnerOnly)
        ::fchmod(m_file.number(), mode);
}

WholeFile::~WholeFile()
{
    if (!m_part.isEmpty())
        ::unlink(QFile::encodeName(m_part).constData());
}

void WholeFile::openNamed(mode_t mode)
{
    QString part;
    do {
        part = newPartName(m_path);
        m_file = Descriptor(part, O_CREAT | O_EXCL | O_RDWR, mode);
    } while (m_file.isOpen() ? !lockPart(m_file) : errno == EEXIST);
    if (m_file.isOpen())
        m_part = part;
}

QString WholeFile::temporaryPath() const
{
    return m_part.isEmpty() ? descriptorPath(m_file) : m_part;
}

void WholeFile::write(const std::uint8_t *bytes, std::size_t count)
{
    m_flushed = false;
    if (m_buffer.size() + count > BufferSize)
        writeBuffer();
    if (count > BufferSize)
        writeThrough(bytes, count);
    else
        m_buffer.insert(m_buffer.end(), bytes, bytes + count);
    m_size = std::max(m_size, m_position + static_cast<std::int64_t>(m_buffer.size()));
}

std::int64_t WholeFile::takeOver(int descriptor, std::int64_t begin, std::int64_t count)
{
    m_flushed = false;
    writeBuffer();
    const Stretch next = stretchAt(descriptor, begin, count);
    if (next.isHole) {
        m_position += next.count;
        m_size = std::max(m_size, m_position);
        check(::ftruncate(m_file.number(), m_size) == 0);
        return next.count;
    }
    // Whole blocks at the same place of theirs can be shared; up to there they are copied.
    std::int64_t wanted = next.count;
    if (const std::int64_t within = begin % BlockSize; within > 0 && within == m_position % BlockSize)
        wanted = std::min(wanted, BlockSize - within);
    off_t from = begin;
    off_t to = m_position;
    const ssize_t taken =
        ::copy_file_range(descriptor, &from, m_file.number(), &to, static_cast<std::size_t>(wanted), 0);
    if (taken <= 0) {
        check(taken == 0 || errno == EXDEV || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP ||
              errno == EINTR || errno == EPERM);
        return 0;
    }
    m_position += taken;
    m_size = std::max(m_size, m_position);
    return taken;
}

void WholeFile::seek(std::int64_t position)
{
    writeBuffer();
    m_position = position;
}

void WholeFile::writeBuffer()
{
    writeThrough(m_buffer.data(), m_buffer.size());
    m_buffer.clear();
}

void WholeFile::writeThrough(const std::uint8_t *bytes, std::size_t count)
{
    while (count > 0) {
        errno = 0;
        const ssize_t written = ::pwrite(m_file.number(), bytes, count, m_position);
        if (written < 0 && errno == EINTR)
            continue;
        check(written > 0);
        m_position += written;
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
}

void WholeFile::flush()
{
    if (m_flushed)
        return;
    writeBuffer();
    check(::fsync(m_file.number()) == 0);
    m_flushed = true;
}

void WholeFile::commit()
{
    flush();
    // Before the name changes, so that nothing but a failing disk can fail behind that. A folder that can't
    // be read can't be flushed either.
    const Descriptor folder(folderOf(m_path), O_RDONLY | O_DIRECTORY);
    check(folder.isOpen() || errno == EACCES);
    takeName();
    if (folder.isOpen())
        check(::fsync(folder.number()) == 0 || errno == EINVAL);
}

void WholeFile::takeName()
{
    const QByteArray target = QFile::encodeName(m_path);
    if (m_part.isEmpty()) {
        const QByteArray nameless = descriptorPath(m_file).toLatin1();
        const auto linkTo = [&](const QByteArray &name) {
            return ::linkat(AT_FDCWD, nameless.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) ==
                   0;
        };
        if (linkTo(target))
            return;
        // A name that is taken can't be linked to; it can be renamed to.
        QString part;
        do {
            check(errno == EEXIST);
            part = newPartName(m_path);
        } while (!linkTo(QFile::encodeName(part)));
        m_part = part;
    }
    check(std::rename(QFile::encodeName(m_part).constData(), target.constData()) == 0);
    m_part.clear();
}

} // namespace files
