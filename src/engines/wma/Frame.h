#pragma once

#include "engines/wma/Layout.h"

#include <array>
#include <cstdint>
#include <vector>

namespace wma {

inline constexpr float ExponentLevel = 1.25F; ///< dB that exponents are steps of
inline constexpr int StartExponent = 36;      ///< what the first band's is coded against
inline constexpr int LowestExponent = -60, HighestExponent = 95;
inline constexpr int LowestNoiseLevel = -19, HighestNoiseLevel = 108; ///< dB

/// The fields of a block that belong to one channel.
struct ChannelFields
{
    bool coded = false;
    std::array<std::int8_t, MaxBands> exponents{};
    std::array<bool, MaxBands> isNoise{};            ///< of the noise bands, counted from the first of them
    std::array<std::int8_t, MaxBands> noiseLevels{}; ///< of those that are noise
    std::vector<std::int16_t> levels;                ///< quantised coefficients, codedEnd of them
};

struct BlockFields
{
    int halvings = 0;
    bool midSide = false;
    int gain = 1; ///< total gain: the step of the band with the largest exponent, in dB, from 1 on
    bool newExponents = true; ///< else those of the block before hold on; full blocks always have new ones
    std::array<ChannelFields, MaxChannels> channels;

    bool isCoded() const { return channels[0].coded || channels[1].coded; }
};

/// A row of blocks whose sizes add up to the frame's.
using Frame = std::vector<BlockFields>;

/// The largest level that can be coded with this total gain.
int largestLevel(int gain);

} // namespace wma
