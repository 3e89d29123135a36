#pragma once

#include <QIODevice>

namespace audiofile {

/// Whether the sound of an ASF file is encrypted, as its header tells: there is an object about keys, or
/// a stream that is marked so. False for any other file. The header begins at `start`; the file's place
/// moves.
bool isProtectedAsf(QIODevice &file);

} // namespace audiofile
