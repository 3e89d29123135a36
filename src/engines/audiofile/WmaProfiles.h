#pragma once

#include "engines/codecs/WmaFormats.h"

namespace audiofile {

inline constexpr int WmaProfileCount = 51;

/// The sound of a profile, 1 to 51.
codecs::WmaSettings wmaProfile(int number);

} // namespace audiofile
