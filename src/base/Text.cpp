#include "base/Text.h"

QString trimBlanks(const QString &text)
{
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text[first] == u' ')
        ++first;
    while (last > first && text[last - 1] == u' ')
        --last;
    return text.mid(first, last - first);
}

QString withoutNul(QString text)
{
    return text.remove(QChar(u'\0'));
}

QStringList splitText(const QString &text, const QString &separator)
{
    return text.isEmpty() ? QStringList() : text.split(separator);
}
