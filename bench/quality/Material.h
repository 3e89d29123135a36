#pragma once

#include "quality/Meter.h"

#include <string>

namespace quality {

/// Made-up sounds that ask different things of an encoder. Music is never without a faint noise at any
/// frequency, which encoders leave out; so these have one, but for the clicks in silence and the pieces of
/// the demo disc: their treble is empty, and shows what noise an encoder puts where there is none.
struct Material
{
    std::string name;
    bool tuned;  ///< settings were chosen by this one
    Pcm samples; ///< 44100 Hz
};

std::vector<Material> material(double seconds = 14);

} // namespace quality
