#include "engines/codecs/Mp3Encoder.h"
#include "engines/codecs/VorbisEncoder.h"
#include "engines/codecs/WavEncoder.h"
#include "engines/codecs/WmaEncoder.h"
#include "testkit/Encoding.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <cmath>
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

TEST(EncodersTest, theBytesDependOnTheSoundAlone)
{
    const auto sound = music(44100, 2, 30'011);
    for (const Row &row : allEncoders()) {
        SCOPED_TRACE(row.name);
        const QByteArray whole = encode(*row.recipe, CdFormat, sound, 30'011);
        for (const qsizetype piece : {1, 577, 4096})
            EXPECT_TRUE(encode(*row.recipe, CdFormat, sound, piece) == whole) << piece;
        QByteArray files[4];
        std::vector<std::thread> threads;
        for (QByteArray &file : files)
            threads.emplace_back([&] { file = encode(*row.recipe, CdFormat, sound, 588); });
        for (std::thread &thread : threads)
            thread.join();
        for (const QByteArray &file : files)
            EXPECT_TRUE(file == whole);
    }
}

TEST(EncodersTest, aFullDiskFailsWhereverItStrikes)
{
    const auto sound = music(44100, 2, 30'000);
    for (const Row &row : allEncoders()) {
        const qsizetype size = encode(*row.recipe, CdFormat, sound).size();
        for (const qint64 room : {qint64(0), qint64(43), qint64(4000), qint64(size / 2), qint64(size - 1)}) {
            SCOPED_TRACE(testing::Message() << row.name << ", room for " << room);
            EXPECT_EQ(failureOf([&] {
                          testkit::MemorySink disk(room);
                          const auto encoder = row.recipe->create(CdFormat, disk);
                          encoder->encode(sound.data(), 30'000);
                          encoder->finish();
                      }),
                      RunTimeFailure::DiskFull);
        }
    }
}

TEST(EncodersTest, theChannelsKeepTheirSides)
{
    auto sound = music(44100, 2, 60'000);
    for (std::size_t i = 1; i < sound.size(); i += 2)
        sound[i] = 0;
    for (const Row &row : allEncoders()) {
        SCOPED_TRACE(row.name);
        const auto decoded = decode(encode(*row.recipe, CdFormat, sound));
        EXPECT_GT(signalToNoise(sound, decoded.samples), std::min(row.leastSnr, 25.0));
    }
}

struct Change
{
    PcmFormat from;
    PcmFormat to;
};

TEST(EncodersTest, anotherRateOrChannelCountChangesNeitherPlaceNorLength)
{
    for (const Change &change :
         {Change{{44100, 1}, {44100, 2}}, Change{{44100, 2}, {44100, 1}}, Change{{48000, 2}, {44100, 2}},
          Change{{8000, 1}, {96000, 2}}, Change{{44100, 2}, {8000, 1}}, Change{{192000, 2}, {11025, 2}}}) {
        SCOPED_TRACE(testing::Message() << change.from.rate << '/' << change.from.channels << " to "
                                        << change.to.rate << '/' << change.to.channels);
        const auto recipe = codecs::wavRecipe({change.to, 16});
        for (const qsizetype frames : {70'001, 3, 0}) {
            const auto sound = testkit::chord(change.from.rate, change.from.channels, frames);
            const auto decoded = decode(encode(*recipe, change.from, sound));
            EXPECT_EQ(decoded.frames(), std::llround(double(frames) * change.to.rate / change.from.rate));
            if (frames == 70'001) {
                EXPECT_GT(signalToNoise(testkit::chord(change.to.rate, change.to.channels, decoded.frames()),
                                        decoded.samples),
                          50);
            }
            EXPECT_TRUE(encode(*recipe, change.from, sound, 61) == encode(*recipe, change.from, sound));
        }
    }
}

} // namespace
