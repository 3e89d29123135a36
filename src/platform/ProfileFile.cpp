#include "platform/ProfileFile.h"

#include "base/Log.h"
#include "files/FolderLock.h"
#include "files/SystemError.h"

#include <QFileInfo>
#include <cerrno>

namespace {

/// Nothing where there is no such file.
QByteArray readAll(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    QFile file(path);
    // A pipe or a device would keep the reader waiting.
    if (!info.isFile())
        throw files::failureOf(EISDIR);
    errno = 0;
    if (!file.open(QIODevice::ReadOnly))
        throw files::failureOf(errno);
    QByteArray content = file.readAll();
    if (file.error() != QFile::NoError)
        throw RunTimeFailure(RunTimeFailure::DeviceIoError, file.errorString());
    return content;
}

bool isOpenToOthers(const QString &path)
{
    constexpr QFile::Permissions Others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    return QFile::permissions(path) & Others;
}

void replace(const QString &path, const ProfileFile::Edit &edit)
{
    const QString target = files::behindLinks(path);
    const files::FolderLock lock(QFileInfo(target).path());
    const QByteArray before = readAll(target);
    Profile profile(before);
    const files::Access access = edit(profile);
    const QByteArray after = profile.content();
    const bool betrays = access == files::Access::OwnerOnly && isOpenToOthers(target);
    if (after == before && !betrays)
        return;
    if (!profile.isFaithful())
        throw RunTimeFailure(RunTimeFailure::PathFileAccessError,
                             QStringLiteral("The file's text is damaged"));
    files::WholeFile file(target, access);
    file.write(reinterpret_cast<const std::uint8_t *>(after.constData()),
               static_cast<std::size_t>(after.size()));
    file.flush();
    if (readAll(file.temporaryPath()) != after)
        throw RunTimeFailure(RunTimeFailure::DeviceIoError);
    file.commit();
}

} // namespace

Profile ProfileFile::read(const QString &path)
{
    try {
        return Profile(readAll(path));
    } catch (const RunTimeFailure &failure) {
        qCWarning(logSettings).noquote() << path << "isn't read:" << failure.what();
        return Profile({});
    }
}

void ProfileFile::change(const QString &path, const Edit &edit)
{
    traced(logSettings, path, [&] { replace(path, edit); });
}
