#pragma once

#include "base/Text.h"

#include <QStringList>

/// How paths come into the list of sources.
namespace SourceFiles {

/// What the open dialog's selection may be long, in characters; a longer one is no selection.
inline constexpr qsizetype MaxFileSize = 10240;

/// The paths of the open dialog's selection. A single one stays as it is; of several, the folder stands once
/// before their names, so that they are joined anew, doubled separators becoming one. None where the
/// selection as a whole is longer than `MaxFileSize`.
QStringList selected(const QStringList &chosen, QChar separator = PathSeparator);

/// What a drop from the file manager adds: a file of any format that can be read, and of a folder all files
/// below it, in order of their paths, that have the ending of `sourceFormat` (a format code).
QStringList dropped(const QStringList &paths, qint16 sourceFormat);

} // namespace SourceFiles
