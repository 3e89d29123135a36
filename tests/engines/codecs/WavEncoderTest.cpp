#include "engines/codecs/WavEncoder.h"

#include "testkit/Encoding.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <QtEndian>
#include <gtest/gtest.h>

namespace {

using codecs::WavSettings;
using testkit::encode;
using testkit::failureOf;

quint32 number32(const QByteArray &file, qsizetype at)
{
    return qFromLittleEndian<quint32>(file.constData() + at);
}

TEST(WavEncoderTest, theHeaderTellsTheSizesAndOddDataIsFilledUp)
{
    const std::vector<qint16> sound = {0, 1, -32768, 32767, 127};
    const QByteArray mono = encode(*codecs::wavRecipe({{8000, 1}, 8}), {8000, 1}, sound);
    EXPECT_EQ(mono.mid(44), QByteArray("\x80\x80\x00\xff\x80\x00", 6));
    EXPECT_EQ(number32(mono, 4), 42U);
    EXPECT_EQ(number32(mono, 40), 5U);
    const QByteArray stereo = encode(*codecs::wavRecipe(), {}, {1, -2, 3, -4});
    EXPECT_EQ(stereo, QByteArray("RIFF\x2c\0\0\0WAVEfmt \x10\0\0\0\1\0\2\0\x44\xac\0\0\x10\xb1\2\0\4\0\x10\0"
                                 "data\x8\0\0\0\1\0\xfe\xff\3\0\xfc\xff",
                                 52));
}

TEST(WavEncoderTest, adpcmBlocksDecodeAtEachNumberOfBitsAndTellTheLength)
{
    const double leastSnr[] = {8, 15, 20, 26};
    for (int bits = 2; bits <= 5; ++bits) {
        for (const codecs::PcmFormat format : {codecs::PcmFormat{8000, 1}, {22050, 2}, {48000, 2}}) {
            SCOPED_TRACE(testing::Message() << bits << " bits, " << format.rate << " Hz");
            const auto sound = testkit::music(format.rate, format.channels, 20'001);
            const QByteArray file = encode(*codecs::wavRecipe({format, bits}), format, sound);
            const auto decoded = testkit::decode(file);
            EXPECT_EQ(decoded.codec, QStringLiteral("adpcm_ima_wav"));
            EXPECT_EQ(decoded.bitsPerCode, bits);
            EXPECT_EQ(decoded.channels, format.channels);
            EXPECT_GE(decoded.frames(), 20'001);
            EXPECT_LT(decoded.frames(), 20'001 + 32);
            EXPECT_EQ(number32(file, 48), 20'001U);
            EXPECT_GT(testkit::signalToNoise(sound, decoded.samples), leastSnr[bits - 2]);
        }
    }
}

TEST(WavEncoderTest, whatAWavFileCannotHoldFails)
{
    testkit::MemorySink disk(testkit::MemorySink::Endless, 0);
    const auto encoder = codecs::wavRecipe()->create({}, disk);
    const std::vector<qint16> silence(32 << 20);
    const auto write = [&] { encoder->encode(silence.data(), 16 << 20); };
    for (int i = 0; i < 63; ++i)
        ASSERT_EQ(failureOf(write), 0);
    EXPECT_EQ(failureOf(write), RunTimeFailure::Overflow);
}

TEST(WavEncoderTest, whatTheFormatHasNotIsRefused)
{
    for (const WavSettings &settings :
         {WavSettings{{88200, 2}, 4}, {{44100, 2}, 6}, {{44100, 2}, 24}, {{44100, 3}, 16}, {{0, 2}, 16}}) {
        EXPECT_FALSE(codecs::wavFormatExists(settings));
        EXPECT_EQ(failureOf([&] { codecs::wavRecipe(settings); }), RunTimeFailure::InvalidCall);
    }
    EXPECT_TRUE(codecs::wavFormatExists({{96000, 2}, 8}));
    EXPECT_TRUE(codecs::wavFormatExists({{48000, 1}, 2}));
}

} // namespace
