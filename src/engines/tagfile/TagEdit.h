#pragma once

#include "engines/tagfile/TagFields.h"
#include "files/ByteSink.h"

#include <QIODevice>
#include <functional>

namespace engines {

/// Writes a file with its new tags. Empty where the file holds them already.
using TagEdit = std::function<void(files::ByteSink &out)>;

/// Copies a stretch of a file, `count` bytes from `begin` on. Raises failure 57 where it can't be read.
void copyBytes(QIODevice &file, qint64 begin, qint64 count, files::ByteSink &out);
void writeBytes(const QByteArray &bytes, files::ByteSink &out);

} // namespace engines
