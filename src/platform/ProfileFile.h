#pragma once

#include "files/WholeFile.h"
#include "platform/Profile.h"

#include <functional>

/// Profile files on the disk. Every call opens the file anew.
namespace ProfileFile {

/// What the file holds: no line where it is missing or can't be read.
Profile read(const QString &path);

/// Changes a profile, and says who may read the file that holds it then.
using Edit = std::function<files::Access(Profile &profile)>;

/// Does several changes as one: the file is replaced as a whole, under a lock that other runs of the program
/// heed, or it stays as it was. What stays the same isn't written; a missing file comes into being. Raises
/// the failures of writing, and 75 for text that the file's encoding can't keep.
void change(const QString &path, const Edit &edit);

} // namespace ProfileFile
