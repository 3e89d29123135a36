#pragma once

#include <QString>

namespace files {

/// A name beside the target, hidden and of limited length, for a file that isn't whole yet. It tells the run
/// of the machine and the process that it belongs to; each call gives another one.
QString newPartName(const QString &target);

/// Removes the files of such names that processes left behind in a folder when they were killed. What
/// a living process still writes stays, and so does what another machine, or this one before it was started
/// anew, has written. A folder is looked through once a second at most.
void sweepParts(const QString &folder);

} // namespace files
