#pragma once

#include <QString>

namespace engines {

/// Whether the file may be changed by its own permissions, without regard to a user who may do everything.
bool isWritable(const QString &path);
/// Gives a file the owner, permissions and extended attributes of another one, as far as that is possible.
void takeAttributes(const QString &from, const QString &to);

} // namespace engines
