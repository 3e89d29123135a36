#include "engines/wma/LevelPlan.h"

#include "engines/wma/Streams.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

using namespace wma;

double costOf(const std::vector<float> &sizes, const std::vector<std::int16_t> &levels, const LevelCode &code)
{
    double cost = 0;
    int run = 0;
    for (std::size_t n = 0; n < sizes.size(); ++n) {
        cost += std::pow(sizes[n] - levels[n], 2);
        if (levels[n] > 0)
            cost += BitCost * code.bits(run, levels[n]);
        run = levels[n] > 0 ? 0 : run + 1;
    }
    return cost;
}

TEST(LevelPlanTest, otherLevelsHardlyEverCostLess)
{
    const Tables *tables = measuredTables();
    if (!tables)
        GTEST_SKIP() << "this system's libraries have no decoder for WMA";
    std::mt19937 random(2);
    for (const StreamKind &kind : {StreamKind{16000, 2, 16}, {44100, 2, 32}, {44100, 1, 48}}) {
        const FrameWriter writer(StreamFormat(kind), *tables);
        for (const bool midSide : {false, true}) {
            const LevelCode &code = writer.levelCode(midSide, 1);
            double inAll = 0, leastInAll = 0;
            for (int trial = 0; trial < 200; ++trial) {
                std::vector<float> sizes(8);
                for (float &size : sizes)
                    size = std::exponential_distribution<float>(1.5F)(random);
                double least = costOf(sizes, std::vector<std::int16_t>(sizes.size()), code);
                for (int number = 0; number < 6561; ++number) { // each zero, or rounded, or one less
                    std::vector<std::int16_t> levels;
                    for (int n = 0, left = number; n < 8; ++n, left /= 3)
                        levels.push_back(static_cast<std::int16_t>(
                            left % 3 == 0 ? 0 : std::max(std::lround(sizes[n]) + left % 3 - 2, 1L)));
                    least = std::min(least, costOf(sizes, levels, code));
                }
                std::vector<std::int16_t> chosen;
                planLevels(sizes, 511, code, chosen);
                EXPECT_LT(costOf(sizes, chosen, code), 1.05 * least);
                leastInAll += least;
                inAll += costOf(sizes, chosen, code);
            }
            EXPECT_LT(inAll, 1.0005 * leastInAll);
        }
    }
}

} // namespace
