#include "settings/Folders.h"

#include "base/Deployment.h"
#include "base/RunTimeFailure.h"
#include "naming/Folders.h"
#include "platform/Dialogs.h"

void CreateDirectoryPath(Dialogs &dialogs, QWidget *owner, const QString &path, QChar separator)
{
    if (!makeFolders(path, separator)) {
        dialogs.messageBox(owner, {.text = QStringLiteral("Create directory error: ") + path,
                                   .icon = BoxIcon::Critical,
                                   .title = QStringLiteral("Error")});
    }
}

QString BrowseForFolder(Dialogs &dialogs, QWidget *owner)
{
    try {
        return dialogs.browseForFolder(owner, QStringLiteral("Please locate a directory"));
    } catch (const RunTimeFailure &failure) {
        ShowErrorReport(dialogs, owner, QStringLiteral("3004"), failure);
        return {};
    }
}

void ShowErrorReport(Dialogs &dialogs, QWidget *owner, const QString &place, const RunTimeFailure &failure)
{
    const QStringList lines = {
        QStringLiteral("Error occurs, the error information is as following"),
        QStringLiteral("Error Code: %1-%2").arg(place).arg(failure.number()),
        QStringLiteral("Error Decsription:") + failure.description(),
        QStringLiteral("Please report to ") + Deployment::ReportAddress,
    };
    dialogs.messageBox(owner, {.text = lines.join(QStringLiteral("\r\n")),
                               .icon = BoxIcon::Critical,
                               .title = QStringLiteral("Error information")});
}
