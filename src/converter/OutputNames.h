#pragma once

#include "base/Text.h"

/// The path that a source is converted to: its name in `folder`, the last four characters replaced by the
/// ending of the output format (a format code), whether or not they are an extension. Empty where the trimmed
/// source is.
QString MakeOutputFileName(const QString &file, qint16 outputFormat, const QString &folder,
                           QChar separator = PathSeparator);
