#pragma once

#include "files/Descriptor.h"

namespace files {

/// Keeps other runs of the program from changing a folder's files for as long as it lives. The system takes
/// the lock off whoever ends, so none outlives its owner. Where a file system has no locks there is none.
class FolderLock
{
public:
    /// Waits up to two seconds for another run. Failure 75 where that keeps it for longer, and the failures
    /// of `failureOf` where the folder can't be opened.
    explicit FolderLock(const QString &folder);

private:
    Descriptor m_folder;
};

} // namespace files
