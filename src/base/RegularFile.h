#pragma once

#include <QFile>

/// Opens a file that a user named, for reading. A pipe, a device or a socket would keep
/// its reader waiting, for ever perhaps, and is refused without waiting for anything. Failure 53 for
/// a missing file, 75 for one that can't be read or is no regular file. Any thread; a file on the net may
/// still keep it waiting.
void openRegularFile(QFile &file, const QString &path,
                     QIODevice::OpenMode mode = QIODevice::ReadOnly | QIODevice::Unbuffered);
