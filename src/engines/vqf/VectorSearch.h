#pragma once

#include "engines/vqf/Frame.h"
#include "engines/vqf/Tables.h"

#include <span>

namespace vqf {

/// Two codebooks with their columns as rows, so that one instruction compares many entries.
struct SearchBooks
{
    SearchBooks(const std::array<Tables::Book, 2> &books, int columns);
    explicit SearchBooks(const std::array<Tables::PeakBook, 2> &books);

    int columns;
    alignas(64) float first[MaxVectorLength][BookSize];
    alignas(64) float second[MaxVectorLength][BookSize];
    float rms; ///< of the sum of two entries
};

/// The elements of one vector: what they should be, and what a squared error costs.
struct SearchVector
{
    int length;
    std::array<float, MaxVectorLength> target;
    std::array<float, MaxVectorLength> weight;
};

/// The pair of entries whose sum has the smallest weighted squared error, of all pairs. `signedSecond` false:
/// the second one has no sign. Uses what the processor offers.
PairIndex bestPair(const SearchBooks &books, const SearchVector &vector, bool signedSecond);
/// The same without anything that only some processors have.
PairIndex bestPairPlain(const SearchBooks &books, const SearchVector &vector, bool signedSecond);

/// An element of a pair's sum.
inline float pairValue(const SearchBooks &books, PairIndex pair, int element)
{
    const float first = books.first[element][entryOf(pair.first)];
    const float second = books.second[element][entryOf(pair.second)];
    return (isNegative(pair.first) ? -first : first) + (isNegative(pair.second) ? -second : second);
}

} // namespace vqf
