#include "settings/Paths.h"

#include "base/Text.h"

namespace {

QString replacedByUnderscore(QString text, const QString &characters)
{
    for (const QChar character : characters)
        text.replace(character, u'_');
    return text;
}

} // namespace

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

QString MakeSafeFileName(const QString &name)
{
    return withoutNul(replacedByUnderscore(trimBlanks(name), QStringLiteral("|<>?*\\/\"")));
}

QString MakeTrackFileName(const QString &title, const QString &extension)
{
    const QString name = withoutNul(trimBlanks(title));
    return name.isEmpty() ? QString() : replacedByUnderscore(name, QStringLiteral("\\/|<>*?:")) + extension;
}
