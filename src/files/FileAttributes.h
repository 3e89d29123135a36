#pragma once

#include <QString>

namespace files {

/// Whether the file may be changed by its own permissions, without regard to a user who may do everything.
bool isWritable(const QString &path);
/// Gives an open file the owner, permissions and extended attributes of another one, as far as that is
/// possible.
void takeAttributes(const QString &from, int descriptor);

} // namespace files
