#include "engines/codecs/VorbisComponent.h"
#include "testkit/Encoding.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <gtest/gtest.h>

namespace {

using codecs::VorbisSettings;
using testkit::encode;
using testkit::failureOf;

struct Wish
{
    codecs::PcmFormat format;
    int nominal;
    int minimum;
    int maximum;
    bool possible;
};

TEST(VorbisEncoderTest, theLibraryDecidesWhatIsPossible)
{
    for (const Wish &wish : {Wish{{44100, 2}, 128, 0, 0, true},
                             {{44100, 2}, 8, 0, 0, false},
                             {{44100, 2}, 0, 0, 0, true},
                             {{44100, 2}, 128, 96, 160, true},
                             {{44100, 2}, 128, 160, 96, false},
                             {{44100, 2}, 128, 160, 0, false},
                             {{44100, 2}, 128, 0, 96, false},
                             {{44100, 2}, 0, 0, 128, true},
                             {{8000, 1}, 16, 0, 0, true},
                             {{8000, 1}, 320, 0, 0, false},
                             {{44100, 3}, 128, 0, 0, false},
                             {{0, 2}, 128, 0, 0, false}}) {
        SCOPED_TRACE(testing::Message() << wish.format.rate << ' ' << wish.nominal << ' ' << wish.minimum
                                        << ' ' << wish.maximum);
        const VorbisSettings settings{wish.format, wish.nominal, wish.minimum, wish.maximum, {}};
        EXPECT_EQ(codecs::vorbisFormatExists(settings), wish.possible);
        EXPECT_EQ(failureOf([&] { codecs::vorbisRecipe(settings); }),
                  wish.possible ? 0 : RunTimeFailure::InvalidCall);
    }
}

TEST(VorbisEncoderTest, ratesAndQualitiesShowInTheSize)
{
    const auto sound = testkit::music(44100, 2, 200'000);
    const auto size = [&](const VorbisSettings &settings) {
        return encode(*codecs::vorbisRecipe(settings), {}, sound).size();
    };
    EXPECT_LT(size({{}, 64, 0, 0, {}}), size({{}, 128, 0, 0, {}}));
    EXPECT_LT(size({{}, 128, 0, 0, {}}), size({{}, 256, 0, 0, {}}));
    EXPECT_LT(size({{}, 128, 0, 0, 100}), size({{}, 128, 0, 0, 900}));
    // Held within limits, the real rate comes near to them.
    const double seconds = 200'000.0 / 44100;
    EXPECT_GT(double(size({{}, 192, 192, 0, {}})) * 8 / seconds / 1000, 170);
    EXPECT_LT(double(size({{}, 64, 0, 64, {}})) * 8 / seconds / 1000, 75);
    const auto decoded = testkit::decode(encode(*codecs::vorbisRecipe({{}, 192, 0, 0, {}}), {}, sound));
    EXPECT_EQ(decoded.bitRate, 192'000);
}

TEST(VorbisEncoderTest, theComponentMakesARecipeOfWhatItHolds)
{
    codecs::VorbisComponent component;
    component.setNominalBitRate(0);
    const auto sound = testkit::music(44100, 2, 50'000);
    const auto decoded = testkit::decode(encode(*component.recipe(), {}, sound));
    EXPECT_EQ(decoded.codec, QStringLiteral("vorbis"));
    EXPECT_EQ(decoded.frames(), 50'000);
    component.setMinBitRate(160);
    component.setMaxBitRate(96);
    EXPECT_EQ(failureOf([&] { component.recipe(); }), RunTimeFailure::InvalidCall);
    EXPECT_EQ(failureOf([&] { component.setNominalBitRate(-1); }), RunTimeFailure::InvalidCall);
    EXPECT_TRUE(dynamic_cast<codecs::EncoderSource *>(component.innerObject()));
}

} // namespace
