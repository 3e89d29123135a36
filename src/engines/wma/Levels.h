#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace wma {

/// To 0.0002, for normal positive numbers; loops of it vectorise.
inline float fastLog2(float x)
{
    const auto bits = std::bit_cast<std::uint32_t>(x);
    const auto exponent = static_cast<float>(static_cast<std::int32_t>(bits >> 23) - 127);
    const float m = std::bit_cast<float>((bits & 0x7fffffU) | 0x3f800000U); // 1 to 2
    return exponent + (m - 1) * (1 + (m - 2) * ((-0.0803073F * m + 0.3973080F) * m - 0.7550740F));
}

/// Of a power.
inline float decibels(float power)
{
    return 3.0102999F * fastLog2(power);
}

/// The amplitude of a level in dB.
inline float amplitude(float level)
{
    return std::exp2(level * 0.16609640F);
}

} // namespace wma
