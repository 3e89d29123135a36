#pragma once

#include "engines/cdrom/Drive.h"

#include <vector>

namespace cdrom {

/// A drive of the machine, as the system knows it without touching the drive.
struct DriveNode
{
    QString path; ///< by which it is opened
    DriveTexts texts;
    qint16 speed = 0; ///< highest factor; 0: unknown
};

/// The machine's drives. On Linux `root` is where the system's own files lie, and no drive is opened for it;
/// elsewhere libcdio asks the drives.
std::vector<DriveNode> driveNodes(const QString &root = QStringLiteral("/"));

/// Whether there is a disc in the drive. May take as long as another command on that drive hangs.
Medium mediumAt(const QString &path);

} // namespace cdrom
