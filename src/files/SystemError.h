#pragma once

#include "base/RunTimeFailure.h"

namespace files {

/// The failure that stands for an error number of the system: 61 for a full disk, 70 for what is forbidden,
/// 76 for a missing folder, 57 for a disk that fails, 75 for the rest.
RunTimeFailure failureOf(int systemError);

} // namespace files
