#include "platform/ProgramPaths.h"

#include "base/Text.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

bool isSystemFolder(const QString &folder)
{
    for (const char *root :
         {"/usr", "/bin", "/sbin", "/opt", "/lib", "/Applications", "/snap", "/nix", "/gnu"}) {
        const QString path = QLatin1String(root);
        if (folder == path || folder.startsWith(path + u'/'))
            return true;
    }
    return folder.startsWith(QStringLiteral("C:/Program Files"), Qt::CaseInsensitive);
}

QString userFolder(QStandardPaths::StandardLocation location, const QString &name)
{
    return QDir(QStandardPaths::writableLocation(location)).filePath(name);
}

} // namespace

ProgramPaths ProgramPaths::of(const QString &executable)
{
    const QFileInfo file(executable);
    const QString folder = file.absolutePath();
    ProgramPaths paths;
    paths.ProgramBaseName = file.completeBaseName();
    paths.ExecutableFolder = QDir::toNativeSeparators(folder);
    if (!isSystemFolder(folder) && QFileInfo(folder).isWritable()) {
        paths.ProgramFolder = paths.SettingsFolder = paths.ExecutableFolder;
        paths.DiscsFolder = QDir::toNativeSeparators(QDir(folder).filePath(QStringLiteral("discs")));
        return paths;
    }
    const QString name = QStringLiteral("tonelift");
    paths.ProgramFolder = QDir::toNativeSeparators(userFolder(QStandardPaths::MusicLocation, name));
    paths.SettingsFolder = QDir::toNativeSeparators(userFolder(QStandardPaths::GenericConfigLocation, name));
    paths.DiscsFolder = QDir::toNativeSeparators(
        userFolder(QStandardPaths::GenericDataLocation, name + QStringLiteral("/discs")));
    QDir().mkpath(paths.SettingsFolder);
    return paths;
}

QString ProgramPaths::SettingsFilePath() const
{
    return SettingsFolder + PathSeparator + QStringLiteral("settings.ini");
}
