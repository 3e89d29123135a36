#include "engines/images/TocFile.h"

#include "base/RunTimeFailure.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace images {

namespace {

constexpr qint64 LongestToc = 1 << 20;

} // namespace

TocFile TocFile::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > LongestToc)
        throw RunTimeFailure(RunTimeFailure::DeviceIoError, path + QStringLiteral(" can't be read."));
    const QString words = QString::fromUtf8(file.read(LongestToc));
    static const QRegularExpression name(QStringLiteral("(FILE\\s+)\"([^\"\\n]*)\""));
    const QDir folder = QFileInfo(path).absoluteDir();
    TocFile toc;
    QString text;
    qsizetype done = 0;
    for (auto match = name.globalMatch(words); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const QString target = folder.filePath(found.captured(2));
        if (target.endsWith(QStringLiteral(".wav"), Qt::CaseInsensitive))
            throw RunTimeFailure(RunTimeFailure::DeviceIoError,
                                 target + QStringLiteral(" is no file of sectors."));
        toc.files.append(target);
        text += words.mid(done, found.capturedStart() - done) + found.captured(1) + u'"' + target + u'"';
        done = found.capturedEnd();
    }
    toc.text = (text + words.mid(done)).toUtf8();
    return toc;
}

} // namespace images
