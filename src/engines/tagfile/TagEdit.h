#pragma once

#include "engines/common/OutputFile.h"
#include "engines/tagfile/TagFields.h"

#include <QIODevice>
#include <functional>

namespace engines {

/// Writes a file with its new tags. Empty where the file holds them already.
using TagEdit = std::function<void(ByteSink &out)>;

/// Copies a stretch of a file, `count` bytes from `begin` on. Raises failure 57 where it can't be read.
void copyBytes(QIODevice &file, qint64 begin, qint64 count, ByteSink &out);
void writeBytes(const QByteArray &bytes, ByteSink &out);

} // namespace engines
