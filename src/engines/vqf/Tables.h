#pragma once

#include "engines/vqf/Format.h"

#include <cstdint>

namespace vqf {

/// The codebooks of the format, measured while the program is built from the decoder that the system has.
struct Tables
{
    using Book = std::array<std::array<std::int16_t, MaxVectorLength>, BookSize>;
    using PeakBook = std::array<std::array<std::int16_t, PeakVectorLength>, BookSize>;
    using LspRow = std::array<std::int16_t, LspOrder>; ///< units of 0.0001

    std::array<std::array<Book, 2>, BlockTypes> main;
    std::array<PeakBook, 2> peaks;
    /// Parts of 4096 that the spectral envelope has more than 1.
    std::array<std::array<std::array<std::int16_t, BarkColumns>, BookSize>, BlockTypes> bark;
    std::array<std::array<std::int16_t, MaxBands>, BlockTypes> bandWidths;
    std::array<LspRow, BookSize> lspFirst;
    std::array<LspRow, LspSecondSize> lspSecond;
    std::array<LspRow, 2> lspPredictor; ///< weights of the frame before
};

/// Null in a build for a system whose decoders don't know the format.
const Tables *measuredTables();

} // namespace vqf
