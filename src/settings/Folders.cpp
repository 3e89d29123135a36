#include "settings/Folders.h"

#include "base/Deployment.h"
#include "base/RunTimeFailure.h"
#include "base/Text.h"
#include "platform/Dialogs.h"

#include <QDir>
#include <QFileInfo>

void CreateDirectoryPath(Dialogs &dialogs, QWidget *owner, const QString &path, QChar separator)
{
    // A root has no drive letter as its first level where the separator is "/".
    QString cur = separator == u'/' && path.startsWith(separator) ? QString(separator) : QString();
    for (const QString &piece : splitText(path, separator)) {
        if (trimBlanks(piece).isEmpty())
            continue;
        cur += piece + separator;
        if (!QFileInfo(cur).isDir() && !QDir().mkdir(cur)) {
            dialogs.messageBox(owner, {.text = QStringLiteral("Create directory error: ") + path,
                                       .icon = BoxIcon::Critical,
                                       .title = QStringLiteral("Error")});
            return;
        }
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
