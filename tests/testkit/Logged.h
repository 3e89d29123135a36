#pragma once

#include <QStringList>

/// What the program logged in a category, such as "tonelift.rip", since this was last asked. The whole
/// program's.
QStringList takeLogged(const char *category);

/// Called by the message handler, from any thread.
void keepLogged(const char *category, const QString &message);
