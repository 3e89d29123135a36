#include "converter/OutputNames.h"

#include "base/Formats.h"
#include "base/Text.h"
#include "naming/Paths.h"

QString MakeOutputFileName(const QString &file, qint16 outputFormat, const QString &folder, QChar separator)
{
    const QString source = trimBlanks(file);
    if (source.isEmpty())
        return {};
    QString name = ExtractFile(source, separator);
    QString oldEnding = name.right(4).toLower();
    QString newEnding = Formats::ofConverter(outputFormat).extension;
    name = FileExtChange(name, oldEnding, newEnding);
    return withClosingSeparator(trimBlanks(folder), separator) + name;
}
