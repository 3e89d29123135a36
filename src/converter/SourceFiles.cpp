#include "converter/SourceFiles.h"

#include "base/Formats.h"
#include "controls/DroppedPaths.h"
#include "naming/Paths.h"

#include <QFileInfo>

namespace {

bool canBeRead(const QString &path)
{
    const Format *const format = Formats::ofFile(path);
    return format && format->convertCode != ConvertNone;
}

} // namespace

QStringList SourceFiles::selected(const QStringList &chosen, QChar separator)
{
    if (chosen.size() < 2)
        return chosen.value(0).size() > MaxFileSize ? QStringList() : chosen;
    qsizetype length = ExtractPath(chosen.first(), separator).size();
    QStringList paths;
    for (QString path : chosen) {
        length += ExtractFile(path, separator).size() + 1;
        paths.append(path.replace(QString(2, separator), QString(separator)));
    }
    return length > MaxFileSize ? QStringList() : paths;
}

QStringList SourceFiles::dropped(const QStringList &paths, qint16 sourceFormat)
{
    QStringList files;
    for (const QString &path : paths) {
        if (QFileInfo(path).isDir())
            files += filesBelow(path, {Formats::ofConverter(sourceFormat).extension});
        else if (canBeRead(path))
            files.append(path);
    }
    return files;
}
