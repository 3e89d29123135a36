#include "naming/Paths.h"

QString ExtractPath(const QString &sFile, QChar separator)
{
    return sFile.left(sFile.lastIndexOf(separator) + 1);
}

QString ExtractFile(const QString &sFile, QChar separator)
{
    return sFile.mid(sFile.lastIndexOf(separator) + 1);
}

QString ExtractExt(const QString &sFile)
{
    const qsizetype point = sFile.lastIndexOf(u'.');
    return point < 0 ? QString() : sFile.mid(point);
}

QString FileExtChange(QString &sFile, QString &sEx1, QString &sEx2)
{
    for (QString *text : {&sFile, &sEx1, &sEx2})
        *text = trimBlanks(*text);
    if (sFile.right(sEx1.size()).toUpper() == sEx1.toUpper())
        return sFile.left(sFile.size() - sEx1.size()) + sEx2;
    return sFile + sEx2;
}

QString JoinPathFile(const QString &sPath, const QString &sFile, QChar separator)
{
    const QString path = trimBlanks(sPath);
    return path.isEmpty() ? sFile : withClosingSeparator(path, separator) + sFile;
}

QString withClosingSeparator(const QString &path, QChar separator)
{
    return path.endsWith(separator) ? path : path + separator;
}
