#include "engines/common/WaveSound.h"

#include "base/RunTimeFailure.h"
#include "testkit/Printing.h"
#include "testkit/WaveFile.h"

#include <QBuffer>
#include <gtest/gtest.h>

using engines::WaveSound;

namespace {

QByteArray format(int coding, const QByteArray &more = {})
{
    return wavFormat(coding, 44100, 2, 16, more);
}

QByteArray wave(const QByteArray &chunks, std::optional<quint32> size = {})
{
    return chunk("RIFF", "WAVE" + chunks, size);
}

WaveSound soundOf(const QByteArray &bytes)
{
    QBuffer file;
    file.setData(bytes);
    file.open(QIODevice::ReadOnly);
    return engines::findWaveSound(file);
}

TEST(WaveSound, chunksBeforeTheSamplesArePassedOver)
{
    const QByteArray odd = chunk("LIST", "abc") + '\0'; // filled up
    const WaveSound sound =
        soundOf(wave(chunk("JUNK", {}) + odd + format(1) + odd + chunk("data", "12345678") + odd));
    EXPECT_EQ(sound.coding, WaveSound::Pcm);
    EXPECT_EQ(sound.channels, 2);
    EXPECT_EQ(sound.rate, 44100);
    EXPECT_EQ(sound.bits, 16);
    EXPECT_EQ(sound.start, 12 + 8 + 12 + 24 + 12 + 8);
    EXPECT_EQ(sound.size, 8);
}

TEST(WaveSound, theExtensibleKindTellsTheCodingInside)
{
    const auto extensible = [](quint16 inside) {
        return format(0xfffe, bytesOf(quint16(22)) + bytesOf(quint16(16)) + bytesOf(quint32(3)) +
                                  bytesOf(inside) + QByteArray(14, 'x'));
    };
    EXPECT_EQ(soundOf(wave(extensible(1) + chunk("data", {}))).coding, WaveSound::Pcm);
    EXPECT_EQ(soundOf(wave(extensible(3) + chunk("data", {}))).coding, WaveSound::Float);
    // One that is cut off before it says what is inside.
    EXPECT_EQ(soundOf(wave(format(0xfffe) + chunk("data", {}))).coding, 0xfffe);
}

TEST(WaveSound, sizesThatWereNeverFilledInAreThoseOfTheFile)
{
    struct Case
    {
        const char *what;
        std::optional<quint32> riffSize, dataSize;
        qint64 expected;
    };
    const Case cases[] = {
        {"as it is", {}, {}, 8},
        {"zeros", 0, 0, 8},
        {"zeros from before the first samples", 36, 0, 8},
        {"ones", 0xffffffff, 0xffffffff, 8},
        {"more than there is", {}, 100, 8},
        {"less than there is", {}, 4, 4},
        {"no samples, but a chunk behind them", {}, 0, 0},
    };
    for (const Case &row : cases)
        EXPECT_EQ(soundOf(wave(format(1) + chunk("data", "12345678", row.dataSize), row.riffSize)).size,
                  row.expected)
            << row.what;
}

TEST(WaveSound, otherFilesFailAndSayWhy)
{
    const std::pair<QByteArray, const char *> cases[] = {
        {"", "no WAVE file"},
        {"RIFF", "no WAVE file"},
        {chunk("RIFF", "AVI " + format(1) + chunk("data", "1234")), "no WAVE file"},
        {wave({}), "no samples"},
        {wave(format(1)), "no samples"},
        {wave(format(1) + "data\4"), "no samples"},
        {wave(chunk("JUNK", {}, 0xffffffff) + chunk("data", "1234")), "no samples"},
    };
    for (const auto &[bytes, reason] : cases) {
        try {
            soundOf(bytes);
            ADD_FAILURE() << bytes.toStdString();
        } catch (const RunTimeFailure &failure) {
            EXPECT_EQ(failure.number(), RunTimeFailure::DeviceIoError);
            EXPECT_TRUE(failure.description().contains(QLatin1String(reason))) << bytes.toStdString();
        }
    }
}

TEST(WaveSound, chunksOfNoLengthAreNotFollowedForever)
{
    QByteArray chunks;
    for (int i = 0; i < 5000; ++i)
        chunks += chunk("JUNK", {});
    EXPECT_THROW(soundOf(wave(chunks + format(1) + chunk("data", "1234"))), RunTimeFailure);
}

} // namespace
