#pragma once

#include "engines/wma/Tables.h"

#include <string>
#include <vector>

namespace wma {

// What is measured, in the form of the tables that it becomes.

struct MeasuredCoefficients
{
    Code escape;
    Code end;
    std::vector<std::uint16_t> runs;
    std::vector<Code> symbols;
};

struct MeasuredBands
{
    int rate;
    int blockSize;
    int bands;
    std::vector<std::uint16_t> widths;
};

struct Measured
{
    std::array<std::array<MeasuredCoefficients, 2>, TablePairs> coefficients;
    decltype(Tables::exponents) exponents;
    decltype(Tables::noiseLevels) noiseLevels;
    std::vector<MeasuredBands> bands;
};

// Each measures a part from the decoder of this name, in this order; a std::runtime_error says what doesn't
// fit.
void measureCoefficients(const std::string &decoder, Measured &measured);
void measureExponents(const std::string &decoder, Measured &measured);
void measureBands(const std::string &decoder, Measured &measured);
void measureNoiseLevels(const std::string &decoder, Measured &measured);

} // namespace wma
