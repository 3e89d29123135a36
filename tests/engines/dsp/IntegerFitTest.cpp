#include "engines/dsp/IntegerFit.h"

#include <gtest/gtest.h>

namespace {

TEST(IntegerFitTest, findsTheIntegersBehindMeasuredValues)
{
    const std::vector<int> integers{-29030, 12,    7001,  28479, -1,     15000, 333, 0,
                                    9,      17171, -8080, 4243,  -26001, 10,    271, -3141};
    std::vector<double> values;
    double error = 1e-9;
    for (const int integer : integers) {
        values.push_back(integer * 0.000123456 + error);
        error = -error;
    }
    EXPECT_EQ(dsp::fitIntegers(values, 33000), integers);
    EXPECT_EQ(dsp::fitIntegers(values, 20000), std::nullopt);
}

TEST(IntegerFitTest, takesTheSmallestIntegers)
{
    EXPECT_EQ(dsp::fitIntegers(std::vector<double>{0.5, -1, 1.5}, 100), (std::vector<int>{1, -2, 3}));
    EXPECT_EQ(dsp::fitIntegers(std::vector<double>{0, 0}, 100), (std::vector<int>{0, 0}));
}

} // namespace
