#pragma once

#include <span>

namespace vqf {

/// What a frame's bits leave where they are spent as weights ask for: the weighted power of the error is then
/// the same at all coefficients, but for those whose own weighted power is less anyway and which get no bits.
/// `weighted` are the coefficients' weighted powers, those of both channels; a multiple of 16.
float evenError(std::span<const float> weighted);

} // namespace vqf
