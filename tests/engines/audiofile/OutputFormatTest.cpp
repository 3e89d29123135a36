#include "Pump.h"
#include "engines/audiofile/WmaProfiles.h"
#include "engines/codecs/Mp3Encoder.h"
#include "testkit/Printing.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <gtest/gtest.h>

namespace {

using audiofile::AudioFile;
using testkit::failureOf;

class OutputFormatTest : public ::testing::Test
{
protected:
    /// What the writer makes in its present format of the sound.
    testkit::Decoded written(const std::vector<qint16> &sound)
    {
        const QString target = folder.path(QStringLiteral("a"));
        writer.OpenWrite(target);
        EXPECT_EQ(writer.Status(), 0);
        writer.SetInputFormat(44100, 2);
        writer.WriteSamples({sound.begin(), sound.end()});
        writer.CloseFile();
        return testkit::decodeFile(target);
    }

    Folder folder;
    AudioFile writer;
};

TEST_F(OutputFormatTest, theTextsTellWhatOneGets)
{
    EXPECT_EQ(writer.FormatString(), QString());
    NCTMP3Options &mp3 = writer.MP3Options();
    EXPECT_EQ(writer.FormatString(), QString());
    mp3.setCBRBitRate(128);
    EXPECT_EQ(writer.FormatString(), QStringLiteral("MP3, 44100 Hz, Stereo, 128 kb/s CBR"));
    mp3.setSampleRate(22050);
    mp3.setCBRBitRate(320);
    mp3.setChannelMode(2);
    EXPECT_EQ(writer.FormatString(),
              QStringLiteral("MP3, 22050 Hz, Joint Stereo, 160 kb/s CBR (the nearest to 320 kb/s)"));
    mp3.setConstantBitRate(false);
    mp3.setVBRMaxBitRate(128);
    mp3.setVBRQuality(7);
    mp3.setChannelCount(1);
    EXPECT_EQ(writer.FormatString(), QStringLiteral("MP3, 22050 Hz, Mono, 8 to 128 kb/s VBR, quality 7"));
    mp3.setChannelCount(2);
    EXPECT_TRUE(writer.FormatString().contains(QStringLiteral("Joint Stereo")));
    writer.SetWAVFormat(48000, 1, 16);
    EXPECT_EQ(writer.FormatString(), QStringLiteral("WAV, 48000 Hz, Mono, 16 bits PCM"));
    writer.SetWAVFormat(48000, 2, 3);
    EXPECT_EQ(writer.FormatString(), QStringLiteral("WAV, 48000 Hz, Stereo, 3 bits IMA ADPCM"));
    writer.SetOGGFormat(44100, 2, 128);
    EXPECT_EQ(writer.FormatString(), QStringLiteral("OGG Vorbis, 44100 Hz, Stereo, about 128 kb/s"));
    writer.SetOGGFormat(44100, 2, 128, 96, 160);
    EXPECT_EQ(writer.FormatString(),
              QStringLiteral("OGG Vorbis, 44100 Hz, Stereo, 96 to 160 kb/s VBR, about 128 kb/s"));
    writer.SetOGGFormat(8000, 1, 128, 0, 0, 700);
    EXPECT_EQ(writer.FormatString(), QStringLiteral("OGG Vorbis, 8000 Hz, Mono, VBR, quality 7"));
    writer.SelectWMAProfile(39);
    EXPECT_EQ(writer.FormatString(), QStringLiteral("WMA, 44100 Hz, Stereo, 128 kb/s CBR, profile 39"));
    writer.SelectWMAProfile(4);
    EXPECT_EQ(writer.FormatString(), QStringLiteral("WMA, 8000 Hz, Mono, 6 kb/s CBR, profile 4"));
}

TEST_F(OutputFormatTest, eachRowOfTheWavPageIsWrittenOrHasNoText)
{
    const auto sound = testkit::chord(44100, 2, 8000);
    for (const int rate :
         {6000, 8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000, 88200, 96000}) {
        for (const int bits : {2, 3, 4, 5, 8, 16}) {
            for (const int channels : {1, 2}) {
                SCOPED_TRACE(testing::Message() << rate << " Hz, " << bits << " bits, " << channels);
                writer.SetWAVFormat(rate, channels, bits);
                const bool possible = bits >= 8 || rate <= 48000;
                EXPECT_EQ(writer.FormatString().isEmpty(), !possible);
                if (!possible) {
                    writer.OpenWrite(folder.path(QStringLiteral("a")));
                    EXPECT_LT(writer.Status(), 0);
                    continue;
                }
                const auto decoded = written(sound);
                EXPECT_EQ(decoded.rate, rate);
                EXPECT_EQ(decoded.channels, channels);
                EXPECT_EQ(decoded.bitsPerCode, bits);
                EXPECT_NEAR(decoded.seconds, 8000.0 / 44100, 1.0 / rate);
            }
        }
    }
}

TEST_F(OutputFormatTest, whatTheOggCheckAllowsIsWritten)
{
    const auto sound = testkit::music(44100, 2, 6000);
    int possible = 0;
    for (const int rate : {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000}) {
        for (const int bitRate : {8, 16, 24, 32, 48, 56, 64, 96, 112, 128, 160, 192, 224, 256, 320}) {
            for (const int channels : {1, 2}) {
                SCOPED_TRACE(testing::Message() << rate << " Hz, " << bitRate << " kb/s, " << channels);
                writer.SetOGGFormat(rate, channels, bitRate);
                EXPECT_EQ(writer.FormatString().isEmpty(),
                          !writer.CheckOGGFormat(rate, channels, bitRate, 0, 0));
                if (writer.FormatString().isEmpty() || bitRate % 32 != 0)
                    continue;
                ++possible;
                const auto decoded = written(sound);
                EXPECT_EQ(decoded.rate, rate);
                EXPECT_EQ(decoded.channels, channels);
                EXPECT_EQ(decoded.bitRate, bitRate * 1000);
            }
        }
    }
    EXPECT_GT(possible, 40);
    EXPECT_FALSE(writer.CheckOGGFormat(44100, 2, 128, 160, 96));
    EXPECT_TRUE(writer.CheckOGGFormat(44100, 2, 128, 128, 128));
    for (const qint16 quality : {0, 1000}) {
        writer.SetOGGFormat(44100, 2, 128, 0, 0, quality);
        EXPECT_EQ(written(sound).frames(), 6000);
    }
}

TEST_F(OutputFormatTest, eachWmaProfileIsWrittenAsItsTextSays)
{
    const auto sound = testkit::chord(44100, 2, 12'000);
    for (int profile = 1; profile <= audiofile::WmaProfileCount; ++profile) {
        SCOPED_TRACE(profile);
        writer.SelectWMAProfile(profile);
        const auto wanted = audiofile::wmaProfile(profile);
        EXPECT_TRUE(codecs::wmaFormatWritable(wanted));
        const auto decoded = written(sound);
        EXPECT_EQ(decoded.codec, QStringLiteral("wmav2"));
        EXPECT_EQ(decoded.rate, wanted.rate);
        EXPECT_EQ(decoded.channels, wanted.channels);
        EXPECT_EQ(decoded.bitRate, wanted.bitRate * 1000);
        EXPECT_TRUE(writer.FormatString().startsWith(
            QStringLiteral("WMA, %1 Hz, %2, %3 kb/s")
                .arg(decoded.rate)
                .arg(decoded.channels == 1 ? QStringLiteral("Mono") : QStringLiteral("Stereo"))
                .arg(decoded.bitRate / 1000)));
    }
    EXPECT_EQ(failureOf([&] { writer.SelectWMAProfile(0); }), RunTimeFailure::InvalidCall);
    EXPECT_EQ(failureOf([&] { writer.SelectWMAProfile(52); }), RunTimeFailure::InvalidCall);
}

TEST_F(OutputFormatTest, theMp3OptionsReachTheFile)
{
    const auto sound = testkit::music(44100, 2, 30'000);
    NCTMP3Options &mp3 = writer.MP3Options();
    mp3.setSampleRate(32000);
    mp3.setChannelCount(1);
    mp3.setCBRBitRate(96);
    const auto mono = written(sound);
    EXPECT_EQ(mono.rate, 32000);
    EXPECT_EQ(mono.channels, 1);
    EXPECT_EQ(mono.bitRate, 96'000);
    mp3.setChannelCount(2);
    mp3.setConstantBitRate(false);
    mp3.setVBRQuality(0);
    mp3.setWriteVBRHeader(true);
    mp3.setStrictMinBitRate(true);
    EXPECT_EQ(written(sound).frames(), 21'769);
    EXPECT_TRUE(folder.content(QStringLiteral("a")).left(100).contains("Xing"));
    mp3.setWriteVBRHeader(false);
    written(sound);
    EXPECT_FALSE(folder.content(QStringLiteral("a")).contains("Xing"));
    EXPECT_EQ(failureOf([&] { mp3.setSampleRate(6000); }), RunTimeFailure::InvalidCall);
    EXPECT_EQ(failureOf([&] { mp3.setChannelMode(5); }), RunTimeFailure::InvalidCall);
    EXPECT_EQ(failureOf([&] { mp3.setCBRQuality(10); }), RunTimeFailure::InvalidCall);
}

} // namespace
