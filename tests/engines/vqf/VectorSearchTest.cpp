#include "engines/vqf/VectorSearch.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using namespace vqf;

struct Books
{
    const char *name;
    SearchBooks books;
    int length;
    bool signedSecond;
};

std::vector<Books> allBooks()
{
    const Tables &tables = *measuredTables();
    std::vector<Books> all{{"peaks", SearchBooks(tables.peaks), PeakVectorLength, true}};
    const std::array<const char *, BlockTypes> names{"short", "medium", "long"};
    for (const BlockType type : {Short, Medium, Long}) {
        const int longest = Layouts[type].vectorLength;
        const SearchBooks books(tables.main[type], longest);
        all.push_back({names[type], books, longest, true});
        all.push_back({names[type], books, longest - 1, true});
        all.push_back({names[type], books, longest - 1, false});
    }
    return all;
}

/// Elements that cost the same, that differ by a dozen orders of magnitude, or of which some don't matter.
class RandomVectors
{
public:
    SearchVector next(const Books &of)
    {
        SearchVector vector{of.length, {}, {}};
        const double spread = m_spread(m_random), reach = std::exp2(6 * m_spread(m_random));
        for (int n = 0; n < of.length; ++n) {
            vector.target[n] = static_cast<float>(of.books.rms * reach * m_normal(m_random));
            vector.weight[n] = static_cast<float>(std::pow(10, 6 * spread * m_either(m_random)));
            if (spread < 0.5 && m_spread(m_random) < 0.2)
                vector.weight[n] = 0;
        }
        return vector;
    }

private:
    std::mt19937 m_random{11};
    std::normal_distribution<> m_normal;
    std::uniform_real_distribution<> m_spread{0, 1};
    std::uniform_real_distribution<> m_either{-1, 1};
};

double costOf(const Books &of, const SearchVector &vector, PairIndex pair)
{
    double cost = 0;
    for (int n = 0; n < vector.length; ++n) {
        const double off = static_cast<double>(vector.target[n]) - pairValue(of.books, pair, n);
        cost += vector.weight[n] * off * off;
    }
    return cost;
}

/// What the search's single precision may miss the cost of a pair by.
double roundingOf(const Books &of, const SearchVector &vector, PairIndex pair)
{
    double magnitude = 0;
    for (int n = 0; n < vector.length; ++n) {
        const double entries = std::abs(of.books.first[n][entryOf(pair.first)]) +
                               std::abs(of.books.second[n][entryOf(pair.second)]);
        magnitude += vector.weight[n] * entries * (entries + 2 * std::abs(vector.target[n]));
    }
    return magnitude * (vector.length + 4) * std::numeric_limits<float>::epsilon() / 2;
}

PairIndex bestOfAll(const Books &of, const SearchVector &vector)
{
    PairIndex best;
    double least = std::numeric_limits<double>::max();
    for (int first = 0; first < 2 * BookSize; ++first) {
        for (int second = 0; second < (of.signedSecond ? 2 : 1) * BookSize; ++second) {
            const PairIndex pair{static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(second)};
            const double cost = costOf(of, vector, pair);
            if (cost < least) {
                best = pair;
                least = cost;
            }
        }
    }
    return best;
}

TEST(VectorSearchTest, noPairCostsLessThanTheOneFound)
{
    RandomVectors vectors;
    for (const Books &of : allBooks()) {
        for (int n = 0; n < 60; ++n) {
            const SearchVector vector = vectors.next(of);
            const PairIndex best = bestOfAll(of, vector);
            for (const auto search : {bestPair, bestPairPlain}) {
                const PairIndex found = search(of.books, vector, of.signedSecond);
                ASSERT_TRUE(of.signedSecond || !isNegative(found.second));
                ASSERT_LE(costOf(of, vector, found) - costOf(of, vector, best),
                          roundingOf(of, vector, found) + roundingOf(of, vector, best))
                    << of.name << ", length " << of.length << ", vector " << n
                    << (search == bestPairPlain ? ", plain" : "");
            }
        }
    }
}

TEST(VectorSearchTest, sumsOfEntriesAreFoundAgain)
{
    std::mt19937 random(2);
    for (const Books &of : allBooks()) {
        for (int n = 0; n < 200; ++n) {
            const PairIndex pair{static_cast<std::uint8_t>(random() % 128),
                                 static_cast<std::uint8_t>(random() % (of.signedSecond ? 128 : 64))};
            SearchVector vector{of.length, {}, {}};
            for (int element = 0; element < of.length; ++element) {
                vector.target[element] = pairValue(of.books, pair, element);
                vector.weight[element] = 1;
            }
            for (const auto search : {bestPair, bestPairPlain})
                ASSERT_LE(costOf(of, vector, search(of.books, vector, of.signedSecond)),
                          2 * roundingOf(of, vector, pair))
                    << of.name << ", length " << of.length;
        }
    }
}

} // namespace
