#include "engines/codecs/WmaEncoder.h"

#include "engines/codecs/WmaComponent.h"
#include "engines/wma/StreamFormat.h"
#include "quality/Meter.h"
#include "testkit/Encoding.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <algorithm>
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

TEST(WmaEncoderTest, littleOfTheErrorsIsHeard)
{
    const auto sound = testkit::music(44100, 2, 110'250);
    const auto decoded = testkit::decode(encode(*codecs::wmaRecipe({44100, 2, 128}), {}, sound)).samples;
    EXPECT_LT(quality::Meter().measure(sound, {decoded.begin(), decoded.end()}, 0).noiseToMask, -6);
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

class WmaFileTest : public testing::TestWithParam<codecs::WmaSettings>
{
protected:
    static QByteArray encodeMusic(int seconds)
    {
        const auto [rate, channels, bitRate] = GetParam();
        const auto sound = testkit::music(rate, channels, qsizetype(seconds) * rate);
        return encode(*codecs::wmaRecipe(GetParam()), {rate, channels}, sound, 100'000);
    }
};

class WmaFileSizeTest : public WmaFileTest
{};

TEST_P(WmaFileSizeTest, isThatOfTheBitRateContainerAndAll)
{
    const int seconds = GetParam().rate < 32000 ? 60 : 20;
    const double due = 1000.0 * GetParam().bitRate * seconds / 8;
    const auto size = static_cast<double>(encodeMusic(seconds).size());
    // Beside full packets there is only a head, and one that need not be full.
    constexpr int Head = 700;
    EXPECT_LT(size, 1.004 * due + Head + wma::StreamFormat(GetParam()).filePacketBytes());
    EXPECT_GT(size, 0.996 * due);
}

class WmaFileSeekTest : public WmaFileTest
{};

TEST_P(WmaFileSeekTest, soundsTheSameBehindASeek)
{
    const wma::StreamFormat format(GetParam());
    const auto file = encodeMusic(12);
    const auto whole = testkit::decode(file);
    const double frame = double(format.frameSize()) / format.rate();
    // Files are searched by their own packets, some of which last for seconds.
    const double reach = frame * format.framesPerPacket() * (format.packetsPerFilePacket() + 2);
    for (const double from : {0.5, 3.0, 7.3, 11.0}) {
        SCOPED_TRACE(from);
        const auto part = testkit::decode(file, from);
        EXPECT_TRUE(part.clean);
        // A decoder drops its first two frames, and one begun before the place isn't put out.
        ASSERT_LE(part.begin, from + 3 * frame);
        ASSERT_GT(part.begin, from - reach);
        // The next ones lack what comes before them.
        const qsizetype dropped = 3 * qsizetype(format.frameSize()) * part.channels;
        ASSERT_GT(qsizetype(part.samples.size()), dropped);
        const auto begin = whole.samples.end() - (qsizetype(part.samples.size()) - dropped);
        const auto found = double(begin - whole.samples.begin() - dropped) / part.channels / part.rate;
        EXPECT_NEAR(found, part.begin, 1.05 * frame);
        // Noise that stands in for sound is another one each time.
        const double agreement = testkit::signalToNoise({begin, whole.samples.end()},
                                                        {part.samples.begin() + dropped, part.samples.end()});
        EXPECT_GT(agreement, format.hasNoise() ? 10 : 120);
    }
}

constexpr auto KindName = [](const auto &info) {
    return std::to_string(info.param.rate) + (info.param.channels == 2 ? "s" : "m") +
           std::to_string(info.param.bitRate);
};
INSTANTIATE_TEST_SUITE_P(AllKinds, WmaFileSizeTest, testing::ValuesIn(wma::StreamKinds), KindName);
constexpr codecs::WmaSettings Some[] = {{8000, 1, 5},   {8000, 1, 8},   {11025, 1, 10}, {16000, 2, 16},
                                        {22050, 2, 32}, {32000, 2, 40}, {44100, 2, 32}, {44100, 2, 64},
                                        {44100, 1, 48}, {48000, 2, 160}};
INSTANTIATE_TEST_SUITE_P(SomeKinds, WmaFileSeekTest, testing::ValuesIn(Some), KindName);

} // namespace
