#include "engines/vqf/NoiseWeights.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <numbers>
#include <numeric>
#include <random>

namespace {

using namespace vqf;

using Sound = std::vector<float>; ///< of one side: a frame's region in the middle

Sound silence()
{
    return Sound(2 * FrameSize);
}

Sound noise(float amplitude, int begin = 0)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> any(-amplitude, amplitude);
    Sound sound = silence();
    for (std::size_t n = begin; n < sound.size(); ++n)
        sound[n] = any(random);
    return sound;
}

Sound withTone(Sound sound, double hertz, double amplitude)
{
    for (std::size_t n = 0; n < sound.size(); ++n)
        sound[n] += static_cast<float>(
            amplitude * std::sin(2 * std::numbers::pi * hertz / SampleRate * static_cast<double>(n)));
    return sound;
}

struct Weighed
{
    NoiseWeights::Spectrum weight, balance;

    /// What errors of left and right cost, by the definition for those of mid and side.
    double cost(int k, double left, double right) const
    {
        const double e = (left + right) / 2, f = (left - right) / 2;
        return weight[k] * (e * e + f * f + 2 * balance[k] * e * f);
    }

    /// The mean weight around a frequency in one block.
    double around(int window, double hertz, int block = 0) const
    {
        const TypeLayout &layout = Layouts[WindowShapes[window].type];
        const double width = SampleRate / 2.0 / layout.blockSize;
        const int begin = static_cast<int>(hertz / 1.02 / width),
                  end = static_cast<int>(hertz * 1.02 / width);
        const auto first = weight.begin() + block * layout.blockSize;
        return std::accumulate(first + begin, first + end + 1, 0.0) / (end + 1 - begin);
    }
};

Weighed weigh(int window, const Sound &left, const Sound &right)
{
    const auto weights = std::make_unique<NoiseWeights>();
    dsp::Workers workers(1);
    Sound mid = silence(), side = silence();
    for (std::size_t n = 0; n < mid.size(); ++n) {
        mid[n] = (left[n] + right[n]) / 2;
        side[n] = (left[n] - right[n]) / 2;
    }
    weights->listen({mid.data(), side.data()}, workers);
    Weighed weighed;
    weights->weigh(window, weighed.weight, &weighed.balance);
    return weighed;
}

double inDecibels(double ratio)
{
    return 10 * std::log10(ratio);
}

TEST(NoiseWeightsTest, aToneHidesNoiseBesideItAndNotFarFromIt)
{
    const Sound faint = noise(30), loud = withTone(faint, 3000, 15000);
    for (const int window : {0, 8, 2}) {
        const Weighed without = weigh(window, faint, faint), with = weigh(window, loud, loud);
        const auto change = [&](double hertz) {
            return inDecibels(with.around(window, hertz) / without.around(window, hertz));
        };
        EXPECT_LT(change(3000), -30) << window;
        EXPECT_LT(change(3200), change(2800)) << "tones hide more above than below them";
        for (const double hertz : {500.0, 1000.0, 9000.0, 15000.0})
            EXPECT_NEAR(change(hertz), 0, 0.5) << window << ", " << hertz;
    }
}

TEST(NoiseWeightsTest, errorsCostWhereTheyAreHeard)
{
    const Sound sound = noise(5000);
    for (const int window : {0, 8, 2}) {
        const Weighed onLeft = weigh(window, sound, silence()), onRight = weigh(window, silence(), sound);
        const Weighed onBoth = weigh(window, sound, sound);
        for (int k = 0; k < FrameSize; ++k) {
            ASSERT_GT(onLeft.cost(k, 0, 1), 1e3 * onLeft.cost(k, 1, 0)) << window << ", " << k;
            ASSERT_FLOAT_EQ(onLeft.cost(k, 1, 0), onRight.cost(k, 0, 1)) << window << ", " << k;
            ASSERT_EQ(onBoth.balance[k], 0) << window << ", " << k;
        }
    }
}

TEST(NoiseWeightsTest, errorsBeforeABurstCostMoreThanThoseInIt)
{
    constexpr int Begin = 3 * FrameSize / 4; // in the frame's region
    const Sound burst = noise(10000, FrameSize / 2 + Begin);
    for (const int window : {2, 8}) {
        const Weighed weighed = weigh(window, burst, burst);
        const TypeLayout &layout = Layouts[WindowShapes[window].type];
        const int first = Begin / layout.blockSize; // of the burst
        for (const double hertz : {400.0, 2000.0, 8000.0}) {
            const double within = weighed.around(window, hertz, first);
            for (int block = 0; block < first; ++block)
                EXPECT_GT(inDecibels(weighed.around(window, hertz, block) / within), 10) << window;
            for (int block = 1; block < layout.blocks; ++block)
                EXPECT_LE(weighed.around(window, hertz, block), weighed.around(window, hertz, block - 1));
        }
    }
}

TEST(NoiseWeightsTest, anySoundHasFiniteWeights)
{
    Sound square = silence(), click = silence();
    for (std::size_t n = 0; n < square.size(); ++n)
        square[n] = n / 50 % 2 ? 32767 : -32768;
    click[FrameSize] = 32767;
    const Sound tone = withTone(silence(), 100, 32767);
    for (const Sound &left : {silence(), noise(32768), square, click, tone}) {
        for (const Sound &right : {silence(), left}) {
            for (int window = 0; window < static_cast<int>(WindowShapes.size()); ++window) {
                const Weighed weighed = weigh(window, left, right);
                for (int k = 0; k < FrameSize; ++k) {
                    ASSERT_TRUE(std::isfinite(weighed.weight[k]) && weighed.weight[k] > 0) << k;
                    ASSERT_LE(std::abs(weighed.balance[k]), 1) << k;
                }
            }
        }
    }
}

} // namespace
