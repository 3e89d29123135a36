#include "engines/wma/LevelPlan.h"

#include "engines/wma/Streams.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

using namespace wma;

double costOf(const std::vector<WantedLevel> &wanted, const std::vector<std::int16_t> &levels,
              const LevelCode &code)
{
    double cost = 0;
    int run = 0;
    for (std::size_t n = 0; n < wanted.size(); ++n) {
        cost += wanted[n].weight * std::pow(wanted[n].size - levels[n], 2);
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
                std::vector<WantedLevel> wanted(8);
                for (WantedLevel &level : wanted)
                    level = {std::exponential_distribution<float>(1.5F)(random), random() % 2 ? 0.8F : 1.1F};
                double least = costOf(wanted, std::vector<std::int16_t>(wanted.size()), code);
                for (int number = 0; number < 6561; ++number) { // each zero, or rounded, or one less
                    std::vector<std::int16_t> levels;
                    for (int n = 0, left = number; n < 8; ++n, left /= 3)
                        levels.push_back(static_cast<std::int16_t>(
                            left % 3 == 0 ? 0 : std::max(std::lround(wanted[n].size) + left % 3 - 2, 1L)));
                    least = std::min(least, costOf(wanted, levels, code));
                }
                std::vector<std::int16_t> chosen;
                const float cost = planLevels(wanted, 511, code, chosen);
                EXPECT_NEAR(costOf(wanted, chosen, code), cost, 1e-3);
                EXPECT_LT(costOf(wanted, chosen, code), 1.1 * least);
                leastInAll += least;
                inAll += costOf(wanted, chosen, code);
            }
            EXPECT_LT(inAll, 1.002 * leastInAll);
        }
    }
}

} // namespace
