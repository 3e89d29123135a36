#include "engines/vqf/EvenError.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

/// Weighted powers whose decibels are spread so far.
std::vector<float> spectrum(double spread)
{
    std::mt19937 random(6);
    std::normal_distribution<> normal;
    std::vector<float> powers(4096);
    for (float &power : powers)
        power = static_cast<float>(100 * std::pow(10, spread * normal(random) / 10));
    return powers;
}

/// Half a bit for each factor of 2 between what is there and what is left.
double bitsSpent(const std::vector<float> &powers, double error)
{
    double bits = 0;
    for (const float power : powers)
        bits += std::max(std::log2(power / error) / 2, 0.0);
    return bits;
}

TEST(EvenErrorTest, anySpectrumGetsTheSameBits)
{
    const std::vector<float> flat = spectrum(0);
    const double budget = bitsSpent(flat, vqf::evenError(flat));
    EXPECT_GT(budget, 0.25 * 4458);
    EXPECT_LT(budget, 4458) << "more than a frame has";
    for (const double spread : {1.0, 5.0, 10.0, 20.0}) {
        const std::vector<float> powers = spectrum(spread);
        EXPECT_NEAR(bitsSpent(powers, vqf::evenError(powers)), budget, 0.0015 * budget) << spread;
    }
}

TEST(EvenErrorTest, theErrorGrowsWithThePowers)
{
    for (const double spread : {0.0, 10.0}) {
        std::vector<float> powers = spectrum(spread);
        const float error = vqf::evenError(powers);
        for (const float factor : {0.01F, 1e4F, 1e8F}) {
            std::vector<float> scaled = powers;
            for (float &power : scaled)
                power *= factor;
            EXPECT_NEAR(vqf::evenError(scaled) / (factor * error), 1, 0.003) << factor;
        }
        std::reverse(powers.begin(), powers.end());
        EXPECT_FLOAT_EQ(vqf::evenError(powers), error);
    }
}

TEST(EvenErrorTest, silenceAndLoneTonesLeaveSomethingFinite)
{
    std::vector<float> powers(4096);
    const float silent = vqf::evenError(powers);
    EXPECT_GT(silent, 0);
    EXPECT_LT(silent, 1e-3F);
    powers[777] = 1e13F;
    const float lone = vqf::evenError(powers);
    EXPECT_GT(lone, 0);
    EXPECT_LT(lone, 1e-3F) << "there are bits enough for one tone";
}

} // namespace
