#include "tags/TagRecord.h"

#include "base/Text.h"

QString fixedText(const QString &text, qsizetype size)
{
    QString start = text.left(size);
    if (start.size() < text.size() && !start.isEmpty() && start.back().isHighSurrogate())
        start.chop(1);
    return trimBlanks(start);
}

QString meantText(const QString &shown, const QString &whole, qsizetype size)
{
    return whole.size() > size && fixedText(whole, size) == shown ? whole : shown;
}
