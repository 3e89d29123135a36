#include "engines/common/OutputFile.h"

#include "base/RunTimeFailure.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace engines {

namespace {

/// A name of fixed length beside the target, hidden, so that a target name of full length does no harm.
QString temporaryName(const QString &path)
{
    const quint32 number = QRandomGenerator::global()->generate();
    return QFileInfo(path).dir().filePath(
        QStringLiteral(".tonelift-%1.part").arg(number, 8, 16, QChar(u'0')));
}

#ifdef Q_OS_UNIX
/// Whether the target's name could be taken at all, asked before the work is done and not behind it.
int refusalOfName(const QString &path)
{
    if (QFile::encodeName(QFileInfo(path).fileName()).size() > 255)
        return ENAMETOOLONG;
    return QFileInfo(path).isDir() ? EISDIR : 0;
}
#else
int refusalOfName(const QString &path)
{
    return QFileInfo(path).isDir() ? EISDIR : 0;
}
#endif

RunTimeFailure failureOf(int systemError)
{
    const QString text = QString::fromLocal8Bit(std::strerror(systemError));
    switch (systemError) {
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
        return {RunTimeFailure::DiskFull, text};
    case EACCES:
    case EPERM:
    case EROFS:
        return {RunTimeFailure::PermissionDenied, text};
    case ENOENT:
    case ENOTDIR:
        return {RunTimeFailure::PathNotFound, text};
    case EIO:
        return {RunTimeFailure::DeviceIoError, text};
    default:
        return {RunTimeFailure::PathFileAccessError, text};
    }
}

} // namespace

OutputFile::OutputFile(const QString &path) : m_path(path)
{
    if (const int refusal = refusalOfName(path))
        fail(refusal);
    do {
        m_file.setFileName(temporaryName(path));
        errno = 0;
    } while (!m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly) && errno == EEXIST);
    if (!m_file.isOpen())
        fail(errno);
}

OutputFile::~OutputFile()
{
    if (m_committed)
        return;
    m_file.close();
    m_file.remove();
}

void OutputFile::write(const std::uint8_t *bytes, std::size_t count)
{
    errno = 0;
    if (m_file.write(reinterpret_cast<const char *>(bytes), static_cast<qint64>(count)) !=
        static_cast<qint64>(count))
        fail(errno);
    m_size = std::max<std::int64_t>(m_size, m_file.pos());
}

void OutputFile::seek(std::int64_t position)
{
    errno = 0;
    if (!m_file.seek(position))
        fail(errno);
}

void OutputFile::flush()
{
    errno = 0;
    if (!m_file.flush())
        fail(errno);
}

void OutputFile::commit()
{
    flush();
    bool ok = true;
#ifdef Q_OS_UNIX
    ok = ::fsync(m_file.handle()) == 0;
#endif
    if (!ok)
        fail(errno);
    m_file.close();
#ifdef Q_OS_UNIX
    ok = std::rename(QFile::encodeName(m_file.fileName()).constData(),
                     QFile::encodeName(m_path).constData()) == 0;
#else
    QFile::remove(m_path);
    ok = m_file.rename(m_path);
#endif
    if (!ok)
        fail(errno);
    m_committed = true;
}

void OutputFile::fail(int systemError) const
{
    throw failureOf(systemError);
}

} // namespace engines
