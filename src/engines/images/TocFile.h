#pragma once

#include <QByteArray>
#include <QStringList>

namespace images {

/// The words of a ".toc" file, with its sector files as whole paths: libcdio looks for them in the current
/// folder only.
struct TocFile
{
    QByteArray text;
    QStringList files;

    /// Failure 57 where it can't be read, or names WAVE files, which libcdio takes for plain sectors.
    static TocFile read(const QString &path);
};

} // namespace images
