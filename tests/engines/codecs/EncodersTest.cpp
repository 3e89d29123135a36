#include "engines/codecs/Mp3Encoder.h"
#include "engines/codecs/VorbisEncoder.h"
#include "engines/codecs/WavEncoder.h"
#include "engines/codecs/WmaEncoder.h"
#include "testkit/Encoding.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

using codecs::Mp3Settings;
using codecs::PcmFormat;
using testkit::decode;
using testkit::encode;
using testkit::failureOf;
using testkit::music;
using testkit::signalToNoise;

constexpr PcmFormat CdFormat;

struct Row
{
    const char *name;
    std::shared_ptr<const codecs::EncoderRecipe> recipe;
    double leastSnr; ///< dB over music from a CD
    bool exactLength = true;
    double secondsOff = 0.0011; ///< of the header; MP3's counts whole frames
};

Mp3Settings variableMp3()
{
    Mp3Settings settings;
    settings.variable = true;
    settings.variableQuality = 4;
    return settings;
}

codecs::VorbisSettings limitedVorbis()
{
    codecs::VorbisSettings settings;
    settings.minBitRate = 112;
    settings.maxBitRate = 160;
    return settings;
}

std::vector<Row> allEncoders()
{
    return {
        {"mp3 cbr", codecs::mp3Recipe({}), 12, true, 0.05},
        {"mp3 vbr", codecs::mp3Recipe(variableMp3()), 12, true, 0.05},
        {"ogg", codecs::vorbisRecipe({}), 10},
        {"ogg limited", codecs::vorbisRecipe(limitedVorbis()), 10},
        {"wma", codecs::wmaRecipe({}), 12, false},
        {"wav", codecs::wavRecipe({}), 200},
        {"wav 8", codecs::wavRecipe({CdFormat, 8}), 30},
        {"wav 4", codecs::wavRecipe({CdFormat, 4}), 20, false},
        {"wav 3", codecs::wavRecipe({CdFormat, 3}), 15, false},
    };
}

TEST(EncodersTest, theSoundComesBackInItsPlaceWithItsLength)
{
    for (const Row &row : allEncoders()) {
        for (const qsizetype frames : {100'000, 1, 0, 575, 2048, 2049}) {
            SCOPED_TRACE(testing::Message() << row.name << ", " << frames << " frames");
            const auto sound = music(44100, 2, frames);
            const auto decoded = decode(encode(*row.recipe, CdFormat, sound));
            EXPECT_TRUE(decoded.clean);
            if (row.exactLength)
                EXPECT_EQ(decoded.frames(), frames);
            else
                EXPECT_GE(decoded.frames(), frames);
            EXPECT_LT(decoded.frames(), frames + 4097);
            if (frames < 1000)
                continue;
            EXPECT_EQ(decoded.rate, 44100);
            EXPECT_EQ(decoded.channels, 2);
            EXPECT_NEAR(decoded.seconds, double(frames) / 44100, row.secondsOff);
            EXPECT_GT(signalToNoise(sound, decoded.samples), row.leastSnr);
        }
    }
}

} // namespace
