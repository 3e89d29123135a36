#include "settings/HelpPages.h"

#include "naming/Paths.h"
#include "platform/Desktop.h"
#include "platform/ProgramPaths.h"
#include "platform/Shell.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace {

const QString FirstPage = QStringLiteral("index.html");

/// Writes the compiled-in pages anew, so that they are always this program's own. Gives their folder.
QString writtenOutPages()
{
    const QDir target(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                      QStringLiteral("/tonelift/help"));
    target.mkpath(QStringLiteral("."));
    const QDir pages(QStringLiteral(":/help"));
    for (const QString &name : pages.entryList(QDir::Files)) {
        QFile page(pages.filePath(name));
        QFile copy(target.filePath(name));
        if (page.open(QIODevice::ReadOnly) && copy.open(QIODevice::WriteOnly))
            copy.write(page.readAll());
    }
    return QDir::toNativeSeparators(target.path());
}

} // namespace

void openHelp(const Desktop &desktop)
{
    Q_INIT_RESOURCE(help);
    const QString &beside = desktop.paths.ExecutableFolder;
    const QString book = JoinPathFile(beside, QStringLiteral("tonelift.chm"));
    if (QFile::exists(book) && desktop.shell.canOpen(book))
        return desktop.shell.open(book);
    const QString page = JoinPathFile(JoinPathFile(beside, QStringLiteral("help")), FirstPage);
    desktop.shell.open(QFile::exists(page) ? page : JoinPathFile(writtenOutPages(), FirstPage));
}
