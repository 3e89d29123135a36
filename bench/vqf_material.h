#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Made-up sounds that ask different things of an encoder.
struct Material
{
    std::string name;
    bool tuned;                        ///< settings were chosen by this one
    std::vector<std::int16_t> samples; ///< 44100 Hz, left and right in turn
};

std::vector<Material> vqfMaterial();
