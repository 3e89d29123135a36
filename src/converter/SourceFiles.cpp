#include "converter/SourceFiles.h"

#include "controls/DroppedPaths.h"
#include "converter/AudioFormats.h"
#include "settings/Paths.h"

#include <QFileInfo>
#include <algorithm>

namespace {

bool endsInOneOf(const QString &name, const QStringList &endings)
{
    return std::any_of(endings.begin(), endings.end(),
                       [&](const QString &ending) { return name.endsWith(ending, Qt::CaseInsensitive); });
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
            files += filesBelow(path, {AudioFormats::ending(sourceFormat)});
        else if (endsInOneOf(path, AudioFormats::endings()))
            files.append(path);
    }
    return files;
}
