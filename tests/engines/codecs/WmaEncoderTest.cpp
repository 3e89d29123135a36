#include "engines/codecs/WmaComponent.h"
#include "testkit/Encoding.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <span>

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
                EXPECT_TRUE(decoded.clean);
                EXPECT_EQ(decoded.warnings, 0);
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
    EXPECT_EQ(supported, 33);
}

TEST(WmaEncoderTest, theQuestionsForABitRateLookAtAllSampleRates)
{
    const WmaComponent component;
    EXPECT_TRUE(component.IsStereoSupported(40));
    EXPECT_FALSE(component.IsMonoSupported(40));
    EXPECT_TRUE(component.IsMonoSupported(48));
    EXPECT_FALSE(component.IsStereoSupported(24));
    EXPECT_TRUE(component.IsStereoSupported(20));
    EXPECT_TRUE(component.IsMonoSupported(5));
    EXPECT_FALSE(component.IsStereoSupported(5));
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

TEST(WmaEncoderTest, aLongFileHasItsBitRate)
{
    constexpr int Seconds = 180;
    for (const codecs::WmaSettings &settings :
         {codecs::WmaSettings{8000, 1, 5}, {16000, 2, 16}, {44100, 2, 96}}) {
        SCOPED_TRACE(testing::Message() << settings.rate << " Hz, " << settings.bitRate << " kb/s");
        const auto sound =
            testkit::music(settings.rate, settings.channels, qsizetype(Seconds) * settings.rate);
        const auto file =
            encode(*codecs::wmaRecipe(settings), {settings.rate, settings.channels}, sound, 100'000);
        const double share = double(file.size()) * 8 / Seconds / 1000 / settings.bitRate;
        // The container's own bytes weigh more the less there is to hold.
        EXPECT_LT(share, settings.bitRate < 12 ? 1.10 : settings.bitRate < 20 ? 1.06 : 1.04);
        EXPECT_GT(share, 0.99);
    }
}

TEST(WmaEncoderTest, behindASeekTheSoundIsTheSame)
{
    const auto sound = testkit::music(44100, 2, 441'000);
    const auto file = encode(*codecs::wmaRecipe({44100, 2, 64}), {}, sound);
    const auto whole = testkit::decode(file);
    for (const double from : {0.5, 2.0, 5.3, 9.5}) {
        SCOPED_TRACE(from);
        const auto part = testkit::decode(file, from);
        EXPECT_TRUE(part.clean);
        ASSERT_LE(part.begin, from);
        ASSERT_GT(part.begin, from - 0.5);
        // The first frames lack what comes before them; a frame begun before the place isn't heard at all.
        constexpr std::ptrdiff_t Dropped = 2 * 3 * 2048;
        ASSERT_GT(part.samples.size(), Dropped + 4096U);
        const auto rest = std::span(part.samples).subspan(Dropped);
        const auto place = std::search(whole.samples.begin(), whole.samples.end(), rest.begin(), rest.end());
        EXPECT_EQ(whole.samples.end() - place, std::ptrdiff_t(rest.size()));
        EXPECT_NEAR(double(place - whole.samples.begin() - Dropped) / 2 / 44100, part.begin, 0.048);
    }
}

} // namespace
