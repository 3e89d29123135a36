#include "engines/codecs/PcmConverter.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

TEST(PcmConverterTest, aVeryLowRateComesInSmallPiecesAndKeepsItsSound)
{
    constexpr int Seconds = 60;
    codecs::PcmConverter converter({20, 1}, {44100, 2});
    std::vector<qint16> made;
    std::size_t most = 0;
    const std::vector<qint16> second(20, 8000);
    const auto take = [&](std::span<const qint16> piece) {
        most = std::max(most, piece.size());
        made.insert(made.end(), piece.begin(), piece.end());
    };
    for (int i = 0; i < Seconds; ++i)
        take(converter.convert(second.data(), 20));
    take(converter.finish());
    EXPECT_EQ(made.size(), std::size_t(Seconds * 44100 * 2));
    EXPECT_LT(most, std::size_t(8 * 44100 * 2));
    const auto [low, high] = std::minmax_element(made.begin() + 400'000, made.end() - 400'000);
    EXPECT_NEAR(*low, 8000, 20);
    EXPECT_NEAR(*high, 8000, 20);
}

} // namespace
