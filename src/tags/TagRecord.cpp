#include "tags/TagRecord.h"

#include "base/Text.h"

QString fixedText(const QString &text, qsizetype size)
{
    QString start = text.left(size);
    if (start.size() < text.size() && !start.isEmpty() && start.back().isHighSurrogate())
        start.chop(1);
    return trimBlanks(start);
}
