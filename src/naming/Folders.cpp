#include "naming/Folders.h"

#include <QDir>
#include <QFileInfo>

bool makeFolders(const QString &path, QChar separator)
{
    // A root has no drive letter as its first level where the separator is "/".
    QString cur = separator == u'/' && path.startsWith(separator) ? QString(separator) : QString();
    for (const QString &piece : splitText(path, separator)) {
        if (trimBlanks(piece).isEmpty())
            continue;
        cur += piece + separator;
        if (!QFileInfo(cur).isDir() && !QDir().mkdir(cur))
            return false;
    }
    return true;
}
