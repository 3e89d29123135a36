#include "engines/codecs/Mp3Component.h"
#include "testkit/Encoding.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using codecs::Mp3Component;
using codecs::Mp3Settings;
using testkit::encode;
using testkit::failureOf;

/// What the heads of an MP3 file's frames say.
struct Frames
{
    std::set<int> bitRates;
    std::set<int> rates;
    std::set<int> modes;      ///< 0 stereo, 1 joint stereo, 2 dual channel, 3 mono
    std::set<int> extensions; ///< of joint stereo: 2 for middle and side
    int count = 0;
    bool whole = false; ///< frame follows on frame up to the end
};

Frames framesOf(const QByteArray &file)
{
    Frames frames;
    qsizetype at = 0;
    while (at + 4 <= file.size()) {
        const auto byte = [&](int i) { return int(static_cast<unsigned char>(file[at + i])); };
        if (byte(0) != 0xff || (byte(1) & 0xe6) != 0xe2)
            return frames;
        const bool mpeg1 = (byte(1) & 0x18) == 0x18;
        const bool mpeg25 = (byte(1) & 0x18) == 0;
        const int base[] = {44100, 48000, 32000};
        const int rate = base[(byte(2) >> 2) & 3] / (mpeg1 ? 1 : mpeg25 ? 4 : 2);
        // By the tables of the format; MPEG 2.5 has the rates of MPEG 2.
        const int rates1[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
        const int rates2[] = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
        const int *const rates = mpeg1 ? rates1 : rates2;
        const int bitRate = rates[byte(2) >> 4];
        // The first frame is the tag's and has a rate of its own.
        if (frames.count++ > 0)
            frames.bitRates.insert(bitRate);
        frames.rates.insert(rate);
        frames.modes.insert(byte(3) >> 6);
        frames.extensions.insert((byte(3) >> 4) & 3);
        at += (mpeg1 ? 144000 : 72000) * bitRate / rate + ((byte(2) >> 1) & 1);
    }
    frames.whole = at == file.size();
    return frames;
}

QByteArray fileOf(const Mp3Settings &settings)
{
    return encode(*codecs::mp3Recipe(settings), {}, testkit::music(44100, 2, 66'150));
}

TEST(Mp3EncoderTest, eachConstantBitRateStandsInTheFramesAndTheLengthComesBack)
{
    const auto sound = testkit::music(44100, 2, 66'150);
    Mp3Component component;
    for (const int bitRate : codecs::mp3BitRates(44100)) {
        SCOPED_TRACE(bitRate);
        component.setCBRBitRate(bitRate);
        const QByteArray file = encode(*component.recipe(), {}, sound);
        const Frames frames = framesOf(file);
        EXPECT_TRUE(frames.whole);
        EXPECT_EQ(frames.bitRates, std::set{bitRate});
        EXPECT_EQ(frames.rates.size(), 1U);
        const auto decoded = testkit::decode(file);
        // The length stands in a tag, for which the frames of the lowest rates are too small.
        const qint64 due = std::llround(66'150.0 * decoded.rate / 44100);
        EXPECT_GE(decoded.frames(), due);
        EXPECT_LE(decoded.frames(), file.left(300).contains("Info") ? due : due + 1500);
        EXPECT_TRUE(bitRate < 64 || file.left(300).contains("Info"));
        EXPECT_TRUE(bitRate < 112 || decoded.rate == 44100);
    }
}

TEST(Mp3EncoderTest, aVariableBitRateVariesWithinItsLimits)
{
    Mp3Settings settings;
    settings.variable = true;
    const Frames free = framesOf(fileOf(settings));
    EXPECT_TRUE(free.whole);
    EXPECT_GT(free.bitRates.size(), 3U);
    settings.minBitRate = 112;
    settings.maxBitRate = 160;
    settings.strictMinBitRate = true;
    const QByteArray limited = fileOf(settings);
    EXPECT_TRUE(limited.left(200).contains("Xing"));
    const Frames frames = framesOf(limited);
    EXPECT_GE(*frames.bitRates.begin(), 112);
    EXPECT_LE(*frames.bitRates.rbegin(), 160);
    settings.variableHeader = false;
    EXPECT_FALSE(fileOf(settings).contains("Xing"));
    settings.minBitRate = 192;
    EXPECT_EQ(failureOf([&] { codecs::mp3Recipe(settings); }), RunTimeFailure::InvalidCall);
}

TEST(Mp3EncoderTest, everyChannelModeIsWrittenAsChosen)
{
    const auto modes = [](Mp3Settings::ChannelMode mode) {
        Mp3Settings settings;
        settings.channelMode = mode;
        return framesOf(fileOf(settings));
    };
    EXPECT_EQ(modes(Mp3Settings::Stereo).modes, std::set{0});
    EXPECT_EQ(modes(Mp3Settings::JointStereo).modes, std::set{1});
    EXPECT_TRUE(modes(Mp3Settings::ForcedJointStereo).extensions.contains(2));
    EXPECT_FALSE(modes(Mp3Settings::ForcedJointStereo).extensions.contains(1));
    EXPECT_EQ(modes(Mp3Settings::DualChannel).modes, std::set{2});
    EXPECT_EQ(modes(Mp3Settings::Mono).modes, std::set{3});
}

TEST(Mp3EncoderTest, eachRateTakesTheNearestBitRateThatItKnows)
{
    EXPECT_EQ(codecs::nearestMp3BitRate(44100, 8), 32);
    EXPECT_EQ(codecs::nearestMp3BitRate(22050, 320), 160);
    EXPECT_EQ(codecs::nearestMp3BitRate(8000, 320), 64);
    EXPECT_EQ(codecs::nearestMp3BitRate(48000, 24), 32);
    for (const int rate : {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000}) {
        for (const int bitRate : {8, 48, 320}) {
            SCOPED_TRACE(testing::Message() << rate << " Hz, " << bitRate << " kb/s");
            Mp3Settings settings;
            settings.rate = rate;
            settings.bitRate = bitRate;
            const Frames frames = framesOf(fileOf(settings));
            EXPECT_TRUE(frames.whole);
            EXPECT_EQ(frames.rates, std::set{rate});
            EXPECT_EQ(frames.bitRates, std::set{codecs::nearestMp3BitRate(rate, bitRate)});
        }
    }
}

TEST(Mp3EncoderTest, studioSoundsBetterThanNormal)
{
    const auto sound = testkit::music(44100, 2, 200'000);
    const auto quality = [&](int mode) {
        Mp3Component component;
        component.setQualityMode(mode);
        return testkit::signalToNoise(sound, testkit::decode(encode(*component.recipe(), {}, sound)).samples);
    };
    EXPECT_GT(quality(0), quality(1));
}

TEST(Mp3EncoderTest, theComponentRefusesWhatItCannotTakeAndKeepsWhatItHad)
{
    Mp3Component component;
    component.setVBRMaxBitRate(160);
    component.setEncodingMethod(1);
    for (const auto &call : std::initializer_list<std::function<void()>>{
             [&] { component.setCBRBitRate(100); }, [&] { component.setVBRMaxBitRate(0); },
             [&] { component.setVBRMinBitRate(8); }, [&] { component.setVBRQuality(10); },
             [&] { component.setEncodingMethod(2); }, [&] { component.setQualityMode(-1); },
             [&] { component.setChannelMode(4); }, [&] { component.setVBRMode(0); }})
        EXPECT_EQ(failureOf(call), RunTimeFailure::InvalidCall);
    EXPECT_EQ(component.VBRMaxBitRate(), 160);
    EXPECT_EQ(component.VBRMinBitRate(), 32);
    EXPECT_EQ(component.EncodingMethod(), 1);
    component.setVBRMode(3);
    component.setVBRQuality(9);
    EXPECT_TRUE(dynamic_cast<codecs::EncoderSource *>(component.innerObject()));
}

} // namespace
