#pragma once

#include "engines/codecs/WmaFormats.h"

namespace audiofile {

inline constexpr int WmaProfileCount = 51;

/// What the sound of a profile, 1 to 51, is to be.
codecs::WmaSettings wmaProfile(int number);
/// The same with the nearest bit rate that can be written.
codecs::WmaSettings writableWmaProfile(int number);

} // namespace audiofile
