#pragma once

#include "engines/wma/FrameWriter.h"

#include <span>

namespace wma {

/// What a bit costs, in squared steps of error. By trial; fine steps in even noise would have 0.115.
inline constexpr float BitCost = 0.12F;

/// A coefficient's wish.
struct WantedLevel
{
    float size;   ///< in steps, without sign
    float weight; ///< what a squared step of error costs
};

/// Chooses the levels of coefficients so that bits and errors together cost least; gives that cost. `wanted`
/// are those that are coded; `code` is the one that their block and channel has.
float planLevels(std::span<const WantedLevel> wanted, int largest, const LevelCode &code,
                 std::vector<std::int16_t> &levels);

} // namespace wma
