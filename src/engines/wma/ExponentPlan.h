#pragma once

#include "engines/wma/FrameWriter.h"

#include <span>

namespace wma {

/// A band's wish.
struct WantedExponent
{
    float step;     ///< dB
    float coarsest; ///< dB, where all coefficients are zero
    int live;       ///< coefficients that this step doesn't make zero
};

/// Chooses the exponents of a channel so that their steps come near the wanted ones for few bits. What counts
/// is the differences: the first live band gets the exponent that costs least. The bands behind `wanted`, up
/// to `bands`, get the last one's.
std::array<std::int8_t, MaxBands> planExponents(std::span<const WantedExponent> wanted, int bands,
                                                const FrameWriter &writer);

/// What the errors of other exponents cost, in bits, where the largest one's step is `gain`.
float exponentErrors(std::span<const WantedExponent> wanted,
                     const std::array<std::int8_t, MaxBands> &exponents, float gain, int largest);

} // namespace wma
