#include "engines/vqf/VectorSearch.h"

#include <bit>
#include <cmath>
#include <limits>

namespace vqf {

namespace {

// Vectors of the compiler: eight lanes in one register or in two, as the function's target has them.
constexpr int Lanes = 8;
constexpr int Groups = BookSize / Lanes;
using Floats = float __attribute__((vector_size(4 * Lanes)));
using Ints = int __attribute__((vector_size(4 * Lanes)));

#define ALWAYS_INLINE inline __attribute__((always_inline))

ALWAYS_INLINE void load(Floats &out, const float *from)
{
    out = *reinterpret_cast<const Floats *>(from);
}

/// What the entries of one codebook have in common with the vector: the weighted product with the target and
/// the weighted square.
struct Products
{
    Floats target[Groups];
    Floats square[Groups];
};

template <int Length>
ALWAYS_INLINE void multiply(const float (&book)[MaxVectorLength][BookSize], const SearchVector &vector,
                            Products &products)
{
    for (int group = 0; group < Groups; ++group) {
        Floats target{}, square{};
        for (int n = 0; n < Length; ++n) {
            Floats entries;
            load(entries, &book[n][group * Lanes]);
            const Floats weighted = entries * vector.weight[n];
            target += weighted * vector.target[n];
            square += weighted * entries;
        }
        products.target[group] = target;
        products.square[group] = square;
    }
}

/// Puts the better pair of each lane into the best ones. The cost of a pair leaves out what all pairs have in
/// common: with products A and B with the target, squares AA and BB and the product C of both entries it is
/// AA + BB - 2 max(|A + B| - C, |A - B| + C) over the four pairs of signs.
template <bool SignedSecond>
ALWAYS_INLINE void compare(float product, float square, const Floats &products, const Floats &squares,
                           const Floats &common, int pair, Floats &bestCost, Ints &bestPair)
{
    Floats same = product + products, opposite = products - product;
    if constexpr (SignedSecond) {
        const Ints withoutSign = Ints{} + 0x7fffffff;
        same = reinterpret_cast<Floats>(reinterpret_cast<Ints>(same) & withoutSign);
        opposite = reinterpret_cast<Floats>(reinterpret_cast<Ints>(opposite) & withoutSign);
    }
    same -= common;
    opposite += common;
    const Floats gain = same > opposite ? same : opposite;
    const Floats cost = square + squares - 2.0F * gain;
    const Ints better = cost < bestCost;
    bestCost = better ? cost : bestCost;
    bestPair = better ? Ints{} + pair : bestPair;
}

template <int Length, bool SignedSecond>
ALWAYS_INLINE void search(const SearchBooks &books, const SearchVector &vector, PairIndex &found)
{
    constexpr int Step = 4; // groups at a time; with two entries each they fill the registers
    Products first, second;
    multiply<Length>(books.first, vector, first);
    multiply<Length>(books.second, vector, second);
    const auto *firstTarget = reinterpret_cast<const float *>(first.target);
    const auto *firstSquare = reinterpret_cast<const float *>(first.square);
    Floats bestCost = Floats{} + std::numeric_limits<float>::max();
    Ints bestPair{};
    for (int entry = 0; entry < BookSize; entry += 2) {
        float weighted[2][Length];
        for (int n = 0; n < Length; ++n) {
            weighted[0][n] = vector.weight[n] * books.first[n][entry];
            weighted[1][n] = vector.weight[n] * books.first[n][entry + 1];
        }
        for (int group = 0; group < Groups; group += Step) {
            Floats common[2][Step] = {};
            for (int n = 0; n < Length; ++n) {
                for (int g = 0; g < Step; ++g) {
                    Floats entries;
                    load(entries, &books.second[n][(group + g) * Lanes]);
                    common[0][g] += entries * weighted[0][n];
                    common[1][g] += entries * weighted[1][n];
                }
            }
            for (int g = 0; g < Step; ++g) {
                for (int e = 0; e < 2; ++e)
                    compare<SignedSecond>(firstTarget[entry + e], firstSquare[entry + e],
                                          second.target[group + g], second.square[group + g], common[e][g],
                                          (entry + e) * Groups + group + g, bestCost, bestPair);
            }
        }
    }
    int best = 0;
    for (int lane = 1; lane < Lanes; ++lane)
        if (bestCost[lane] < bestCost[best])
            best = lane;
    const int firstEntry = bestPair[best] / Groups;
    const int secondEntry = bestPair[best] % Groups * Lanes + best;
    const float a = firstTarget[firstEntry];
    const float b = reinterpret_cast<const float *>(second.target)[secondEntry];
    float common = 0;
    for (int n = 0; n < Length; ++n)
        common += vector.weight[n] * books.first[n][firstEntry] * books.second[n][secondEntry];
    bool firstNegative, secondNegative;
    if constexpr (SignedSecond) {
        const bool sameSigns = std::abs(a + b) - common > std::abs(a - b) + common;
        firstNegative = sameSigns ? a + b < 0 : a - b < 0;
        secondNegative = firstNegative == sameSigns;
    } else {
        firstNegative = b - a + common > a + b - common;
        secondNegative = false;
    }
    found.first = static_cast<std::uint8_t>(firstEntry | (firstNegative ? 64 : 0));
    found.second = static_cast<std::uint8_t>(secondEntry | (secondNegative ? 64 : 0));
}

ALWAYS_INLINE void searchAny(const SearchBooks &books, const SearchVector &vector, bool signedSecond,
                             PairIndex &found)
{
    switch (vector.length) {
    case 9:
        return search<9, true>(books, vector, found);
    case 13:
        return signedSecond ? search<13, true>(books, vector, found)
                            : search<13, false>(books, vector, found);
    case 14:
        return signedSecond ? search<14, true>(books, vector, found)
                            : search<14, false>(books, vector, found);
    case 15:
        return search<15, true>(books, vector, found);
    }
}

using Search = PairIndex (*)(const SearchBooks &, const SearchVector &, bool);

#ifdef __x86_64__
__attribute__((target("avx2,fma"))) PairIndex searchAvx2(const SearchBooks &books, const SearchVector &vector,
                                                         bool signedSecond)
{
    PairIndex found;
    searchAny(books, vector, signedSecond, found);
    return found;
}
#endif

Search chosenSearch()
{
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
        return searchAvx2;
#endif
    return bestPairPlain;
}

template <typename Books>
float fill(SearchBooks &search, const Books &books)
{
    double power = 0;
    for (int n = 0; n < search.columns; ++n) {
        for (int entry = 0; entry < BookSize; ++entry) {
            const double first = books[0][entry][n], second = books[1][entry][n];
            search.first[n][entry] = static_cast<float>(first);
            search.second[n][entry] = static_cast<float>(second);
            power += first * first + second * second;
        }
    }
    return static_cast<float>(std::sqrt(power / (search.columns * BookSize)));
}

} // namespace

SearchBooks::SearchBooks(const std::array<Tables::Book, 2> &books, int columns)
    : columns(columns), first{}, second{}, rms(fill(*this, books))
{}

SearchBooks::SearchBooks(const std::array<Tables::PeakBook, 2> &books)
    : columns(PeakVectorLength), first{}, second{}, rms(fill(*this, books))
{}

PairIndex bestPairPlain(const SearchBooks &books, const SearchVector &vector, bool signedSecond)
{
    PairIndex found;
    searchAny(books, vector, signedSecond, found);
    return found;
}

PairIndex bestPair(const SearchBooks &books, const SearchVector &vector, bool signedSecond)
{
    static const Search search = chosenSearch();
    return search(books, vector, signedSecond);
}

} // namespace vqf
