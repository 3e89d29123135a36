#pragma once

#include "engines/wma/FrameWriter.h"

#include <span>

namespace wma {

/// Squared steps of error that a bit is worth. By trial; fine quantisers of even noise would have 0.115.
inline constexpr float BitCost = 0.12F;

/// Chooses the levels of coefficients so that bits and errors together cost least. `sizes` are theirs in
/// quantiser steps, without sign, of those that are coded; `code` is the one that their block and channel
/// has.
void planLevels(std::span<const float> sizes, int largest, const LevelCode &code,
                std::vector<std::int16_t> &levels);

} // namespace wma
