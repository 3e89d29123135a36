#pragma once

#include "quality/Meter.h"

#include <string>

namespace quality {

/// Made-up sounds that ask different things of an encoder.
struct Material
{
    std::string name;
    bool tuned;  ///< settings were chosen by this one
    Pcm samples; ///< 44100 Hz
};

std::vector<Material> material();

} // namespace quality
