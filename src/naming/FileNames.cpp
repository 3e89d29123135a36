#include "naming/FileNames.h"

#include "base/Text.h"

namespace {

QString replacedByUnderscore(QString text, const QString &characters)
{
    for (const QChar character : characters)
        text.replace(character, u'_');
    return text;
}

} // namespace

QString MakeSafeFileName(const QString &name)
{
    return withoutNul(replacedByUnderscore(trimBlanks(name), QStringLiteral("|<>?*\\/\"")));
}

QString MakeTrackFileName(const QString &title, const QString &extension)
{
    const QString name = withoutNul(trimBlanks(title));
    return name.isEmpty() ? QString() : replacedByUnderscore(name, QStringLiteral("\\/|<>*?:")) + extension;
}

QStringList repeatedNames(const QStringList &names)
{
    QStringList repeated;
    for (qsizetype first = 0; first < names.size(); ++first) {
        for (qsizetype second = first + 1; second < names.size(); ++second) {
            if (names[first] == names[second])
                repeated.append(names[first]);
        }
    }
    return repeated;
}
