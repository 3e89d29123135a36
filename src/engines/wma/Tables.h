#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace wma {

/// A word of a prefix code.
struct Code
{
    std::uint32_t bits = 0;
    std::uint8_t length = 0;
};

/// The code of coefficients: symbols are a run of zeros and the level behind it.
struct CoefficientCode
{
    Code escape;
    Code end;
    std::span<const std::uint16_t> runs; ///< of each level from 1 on: runs 0 to this one less 1 have a symbol
    std::span<const Code> symbols;       ///< by level, then by run
};

/// How the coefficients of a block divide into bands with an exponent each.
struct BandList
{
    int rate;
    int blockSize;
    int bands;                             ///< all, those above the coded coefficients included
    std::span<const std::uint16_t> widths; ///< of those that begin among the coded coefficients; the last one
                                           ///< reaches to the end of the block
};

inline constexpr int TablePairs = 3;
inline constexpr int LargestExponentStep = 60;
inline constexpr int LargestNoiseStep = 18;

/// The codes of the format, measured while the program is built from the decoder that the system has.
struct Tables
{
    std::array<std::array<CoefficientCode, 2>, TablePairs> coefficients;
    std::array<Code, 2 * LargestExponentStep + 1> exponents; ///< of the difference to the band before
    std::array<Code, 2 * LargestNoiseStep + 1> noiseLevels;  ///< of the difference to the band before
    std::span<const BandList> bands;
};

/// Null in a build for a system whose decoders don't know the format.
const Tables *measuredTables();

} // namespace wma
