#include "engines/dsp/Mdct.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>

namespace {

std::vector<double> noise(int count)
{
    std::mt19937 random(1);
    std::vector<double> samples(count);
    for (double &sample : samples)
        sample = static_cast<double>(random()) / 4294967296.0 - 0.5;
    return samples;
}

TEST(MdctTest, isTheTransformOfItsDefinition)
{
    for (const int size : {8, 128, 512}) {
        const std::vector<double> samples = noise(2 * size);
        std::vector<double> cosines(size), sines(size);
        dsp::Mdct<double> transform(size);
        transform.forward(samples.data(), cosines.data());
        transform.forwardSine(samples.data(), sines.data());
        for (int k = 0; k < size; ++k) {
            double cosine = 0, sine = 0;
            for (int n = 0; n < 2 * size; ++n) {
                const double angle = std::numbers::pi / size * (n + 0.5 + size / 2.0) * (k + 0.5);
                cosine += samples[n] * std::cos(angle);
                sine += samples[n] * std::sin(angle);
            }
            ASSERT_NEAR(cosines[k], cosine, 1e-9) << size << ", " << k;
            ASSERT_NEAR(std::abs(sines[k]), std::abs(sine), 1e-9) << size << ", " << k;
        }
    }
}

TEST(MdctTest, overlappingBlocksOfDifferentSlopesGiveTheSamplesBack)
{
    constexpr int Size = 64;
    const std::vector<int> slopes{64, 16, 16, 64, 2, 64}; // at the borders of five blocks
    const std::vector<double> samples = noise(6 * Size);
    std::vector<double> sum(samples.size());
    dsp::Mdct<double> transform(Size);
    for (int block = 0; block < 5; ++block) {
        const auto window = [&](std::vector<double> &part) {
            dsp::applyLeftSlope(part.data(), Size, slopes[block]);
            dsp::applyRightSlope(part.data(), Size, slopes[block + 1]);
        };
        const auto start = samples.begin() + block * Size;
        std::vector<double> part(start, start + 2 * Size), coefficients(Size);
        window(part);
        transform.forward(part.data(), coefficients.data());
        transform.inverse(coefficients.data(), part.data());
        window(part);
        for (int n = 0; n < 2 * Size; ++n)
            sum[block * Size + n] += part[n] * 2 / Size;
    }
    for (int n = Size; n < 5 * Size; ++n)
        ASSERT_NEAR(sum[n], samples[n], 1e-12) << n;
}

} // namespace
