#include "engines/codecs/WmaComponent.h"
#include "testkit/Encoding.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <gtest/gtest.h>

namespace {

using codecs::WmaComponent;
using testkit::encode;
using testkit::failureOf;

constexpr int BitRates[] = {5, 6, 8, 10, 12, 16, 20, 22, 32, 40, 48, 64, 80, 96, 128, 160};

TEST(WmaEncoderTest, whatIsSaidToBeSupportedIsWrittenAndNothingElse)
{
    int supported = 0;
    for (int index = -1; index <= 7; ++index) {
        for (const int bitRate : BitRates) {
            for (const bool stereo : {false, true}) {
                SCOPED_TRACE(testing::Message() << index << ", " << bitRate << " kb/s, " << stereo);
                WmaComponent component;
                const bool exists = index >= 0 && index <= 6;
                EXPECT_EQ(failureOf([&] { component.setWMASampleRateIndex(index); }),
                          exists ? 0 : RunTimeFailure::InvalidCall);
                if (!exists) {
                    EXPECT_FALSE(component.IsFormatSupported(index, bitRate, stereo));
                    continue;
                }
                component.setWMABitRate(bitRate);
                component.setWMAStereo(stereo);
                if (!component.IsFormatSupported(index, bitRate, stereo)) {
                    EXPECT_EQ(failureOf([&] { component.recipe(); }), RunTimeFailure::InvalidCall);
                    continue;
                }
                ++supported;
                EXPECT_TRUE(stereo ? component.IsStereoSupported(bitRate)
                                   : component.IsMonoSupported(bitRate));
                const int rate = codecs::WmaRates[static_cast<std::size_t>(index)];
                const auto sound = testkit::chord(44100, 2, 30'000);
                const auto decoded = testkit::decode(encode(*component.recipe(), {}, sound));
                EXPECT_EQ(decoded.codec, QStringLiteral("wmav2"));
                EXPECT_EQ(decoded.rate, rate);
                EXPECT_EQ(decoded.channels, stereo ? 2 : 1);
                EXPECT_EQ(decoded.bitRate, bitRate * 1000);
                EXPECT_NEAR(decoded.seconds, 30'000.0 / 44100, 0.0011);
                EXPECT_GT(
                    testkit::signalToNoise(testkit::chord(rate, decoded.channels, 30'000LL * rate / 44100),
                                           decoded.samples),
                    10);
            }
        }
    }
    // Of the 33 combinations of the format those from 24 kb/s on.
    EXPECT_EQ(supported, 17);
}

TEST(WmaEncoderTest, theQuestionsForABitRateLookAtAllSampleRates)
{
    const WmaComponent component;
    EXPECT_TRUE(component.IsStereoSupported(40));
    EXPECT_FALSE(component.IsMonoSupported(40));
    EXPECT_TRUE(component.IsMonoSupported(48));
    EXPECT_FALSE(component.IsStereoSupported(24));
    EXPECT_FALSE(component.IsStereoSupported(20));
    EXPECT_FALSE(component.IsMonoSupported(5));
}

TEST(WmaEncoderTest, theTableHoldsTheLowRatesThatWaitForAnEncoder)
{
    EXPECT_TRUE(codecs::wmaFormatExists({8000, 1, 5}));
    EXPECT_TRUE(codecs::wmaFormatExists({22050, 2, 22}));
    EXPECT_FALSE(codecs::wmaFormatExists({8000, 2, 5}));
    EXPECT_FALSE(codecs::wmaFormatExists({48000, 1, 96}));
}

TEST(WmaEncoderTest, protectionIsRefusedWhenAJobAsksForTheRecipe)
{
    WmaComponent component;
    component.setWMAEnableDRM(true);
    EXPECT_EQ(failureOf([&] { component.recipe(); }), RunTimeFailure::InvalidCall);
    component.setWMAEnableDRM(false);
    EXPECT_EQ(failureOf([&] { component.recipe(); }), 0);
    EXPECT_TRUE(dynamic_cast<codecs::EncoderSource *>(component.innerObject()));
}

TEST(WmaEncoderTest, aFileHasLittleFilling)
{
    const auto sound = testkit::music(44100, 2, 441'000);
    for (const int bitRate : {64, 96, 160}) {
        const auto file = encode(*codecs::wmaRecipe({44100, 2, bitRate}), {}, sound);
        EXPECT_LT(double(file.size()) * 8 / 10 / 1000, 1.11 * bitRate) << bitRate;
    }
}

} // namespace
