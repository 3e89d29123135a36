#include "controls/DroppedPaths.h"

#include <QDir>
#include <QDirIterator>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <algorithm>

QStringList localPaths(const QMimeData *data)
{
    QStringList paths;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            paths.append(QDir::toNativeSeparators(url.toLocalFile()));
    }
    return paths;
}

/// Copying is all that is offered: a file manager must not take a "moved" file away.
void acceptPaths(QDropEvent *event)
{
    if (localPaths(event->mimeData()).isEmpty() || !(event->possibleActions() & Qt::CopyAction)) {
        event->ignore();
    } else {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

QStringList filesBelow(const QString &folder, const QStringList &endings)
{
    QStringList files;
    QDirIterator walk(folder, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString file = walk.next();
        const auto endsIn = [&](const QString &ending) { return file.endsWith(ending, Qt::CaseInsensitive); };
        if (std::any_of(endings.begin(), endings.end(), endsIn))
            files.append(QDir::toNativeSeparators(file));
    }
    files.sort();
    return files;
}
