#include "Files.h"
#include "Pump.h"
#include "engines/codecs/WmaEncoder.h"
#include "testkit/Printing.h"
#include "testkit/Signals.h"

#include <cmath>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using audiofile::AudioFile;
using testkit::encode;
using testkit::failureOf;
using testkit::music;
using testkit::signalToNoise;

constexpr qsizetype SourceFrames = 60'000;

class SourcesTest : public ::testing::Test
{
protected:
    std::vector<qint16> read(const QByteArray &file, qint32 piece = 88200)
    {
        return readAll(reader, folder.put(QStringLiteral("a.file"), file), piece);
    }

    const Folder folder;
    const std::vector<qint16> sound = music(44100, 2, SourceFrames);
    const QByteArray mp3 = encode(*codecs::mp3Recipe({}), {}, sound);
    const QByteArray wav = encode(*codecs::wavRecipe(), {}, sound);
    const QByteArray wma = encode(*codecs::wmaRecipe({}), {}, sound);
    const QByteArray ogg = encode(*codecs::vorbisRecipe({}), {}, sound);
    AudioFile reader;
};

TEST_F(SourcesTest, onlyAFewSecondsAreReadAhead)
{
    constexpr qint64 Second = 176'400;
    const QString path =
        folder.put(QStringLiteral("a.wav"), wavFile(1, 44100, 2, 16, QByteArray(60 * Second, 1)));
    reader.OpenRead(path);
    AudioFile other;
    EXPECT_EQ(readAll(other, path).size(), 60U * 88200); // which gives a reader without bounds its time
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(file.size() - 50 * Second));
    file.write(QByteArray(50 * Second, 2));
    file.close();
    qint16 last = 0;
    for (QList<qint16> samples; !(samples = reader.ReadSamples(88200)).isEmpty();)
        last = samples.last();
    EXPECT_EQ(last, 0x0202) << "as the file is when its turn comes";
}

TEST_F(SourcesTest, theReaderTellsWhatItOpened)
{
    const struct
    {
        QByteArray file;
        const char *text;
    } rows[] = {{mp3, "MP3, 44100 Hz, Stereo, 128 kb/s"},
                {wav, "WAV, 44100 Hz, Stereo, 16 bits PCM"},
                {wma, "WMA, 44100 Hz, Stereo, 128 kb/s"},
                {ogg, "OGG Vorbis, 44100 Hz, Stereo, 128 kb/s"}};
    for (const auto &row : rows) {
        reader.OpenRead(folder.put(QStringLiteral("a"), row.file));
        EXPECT_EQ(reader.Status(), 0);
        EXPECT_EQ(reader.FormatString(), QString::fromLatin1(row.text));
        EXPECT_EQ(reader.SampleRate(), 44100);
        EXPECT_EQ(reader.ChannelCount(), 2);
        EXPECT_EQ(reader.SamplesPerSecond(), 88200);
        EXPECT_EQ(reader.DurationSeconds(), 1); // 1.36
    }
    reader.SelectWMAProfile(51);
    EXPECT_EQ(reader.FormatString(), QStringLiteral("WMA, 44100 Hz, Stereo, 160 kb/s CBR, profile 51"));
    reader.CloseFile();
    reader.CloseFile();
    EXPECT_EQ(reader.SampleRate(), 0);
    EXPECT_EQ(failureOf([&] { reader.ReadSamples(1); }), RunTimeFailure::InvalidCall);
}

TEST_F(SourcesTest, theSoundIsTheSameWhateverTheAmountsAskedFor)
{
    for (const QByteArray &file : {mp3, wav, wma, ogg}) {
        const auto whole = read(file);
        // WMA tells its length in milliseconds.
        EXPECT_NEAR(double(whole.size()), double(sound.size()), file == wma ? 46 : 0);
        EXPECT_GT(signalToNoise(sound, whole), 10);
        EXPECT_TRUE(read(file, 777) == whole);
        EXPECT_TRUE(read(file, 1'000'000) == whole);
        EXPECT_TRUE(reader.ReadSamples(10).isEmpty());
    }
}

TEST_F(SourcesTest, aReaderThatIsClosedEarlyOrOpenedAnewStopsItsThread)
{
    const QString path =
        folder.put(QStringLiteral("a"), encode(*codecs::wavRecipe(), {}, music(44100, 2, 441'000)));
    for (int i = 0; i < 20; ++i) {
        AudioFile other;
        other.OpenRead(path);
        reader.OpenRead(path);
        EXPECT_EQ(reader.ReadSamples(100).size(), 100);
    }
}

TEST_F(SourcesTest, whatIsNoSoundGivesANegativeStatus)
{
    QByteArray noise;
    for (quint32 i = 0, value = 1; i < 60'000; ++i)
        noise.append(char((value = value * 1664525 + 1013904223) >> 24));
    const QString missing = folder.path(QStringLiteral("missing.mp3"));
    for (const QString &path :
         {missing, folder.folder.path(), folder.put(QStringLiteral("empty.mp3"), {}),
          folder.put(QStringLiteral("text.mp3"), QByteArray("A letter to somebody.\n").repeated(500)),
          folder.put(QStringLiteral("noise.wav"), noise),
          folder.put(QStringLiteral("head.wav"), wav.left(20)),
          folder.put(QStringLiteral("head.ogg"), ogg.left(100)),
          folder.put(QStringLiteral("head.wma"), wma.left(60)),
          folder.put(QStringLiteral("list.mp3"), "#EXTM3U\n#EXT-X-TARGETDURATION:5\n#EXTINF:5,\na.mp3\n"),
          folder.put(QStringLiteral("rate0.wav"), wavFile(1, 0, 2, 16, QByteArray(4000, 'x'))),
          folder.put(QStringLiteral("tagonly.mp3"), QByteArray("ID3\x3\0\0\0\0\x7f\x7f", 10))}) {
        SCOPED_TRACE(path.toStdString());
        reader.OpenRead(path);
        EXPECT_LT(reader.Status(), 0);
        EXPECT_EQ(reader.FormatString(), QString());
        EXPECT_EQ(failureOf([&] { reader.ReadSamples(10); }), RunTimeFailure::InvalidCall);
        reader.CloseFile();
    }
}

TEST_F(SourcesTest, whatIsNoFileIsRefusedWithoutWaiting)
{
    const QString pipe = folder.path(QStringLiteral("pipe.mp3"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString &path : {pipe, QStringLiteral("/dev/zero"), QStringLiteral("/dev/random")}) {
        reader.OpenRead(path);
        EXPECT_EQ(reader.Status(), -RunTimeFailure::PathFileAccessError) << path.toStdString();
    }
}

TEST_F(SourcesTest, aFileWithoutSoundEndsAtOnce)
{
    for (const auto &recipe : {codecs::wavRecipe(), codecs::vorbisRecipe({})}) {
        EXPECT_TRUE(read(encode(*recipe, {}, {})).empty());
        EXPECT_EQ(reader.Status(), 0);
        EXPECT_EQ(reader.DurationSeconds(), 0);
    }
    EXPECT_EQ(read(encode(*codecs::wavRecipe(), {}, {1, 2})).size(), 2U);
    EXPECT_EQ(reader.DurationSeconds(), 1);
}

TEST_F(SourcesTest, truncatedFilesGiveWhatTheyHaveAndFaultsInTheMiddleArePassedOver)
{
    for (const QByteArray &file : {mp3, wav, wma, ogg}) {
        SCOPED_TRACE(file.mid(1, 2).toStdString());
        const auto half = read(file.left(file.size() / 2));
        EXPECT_EQ(reader.Status(), -RunTimeFailure::DeviceIoError); // known at the end
        EXPECT_GT(half.size(), sound.size() / 4);
        EXPECT_LT(half.size(), sound.size() * 3 / 4);
        QByteArray faulty = file;
        for (qsizetype i = file.size() / 2; i < file.size() / 2 + 700; ++i)
            faulty[i] = char(i * 31 + i / 7);
        const auto rest = read(faulty);
        EXPECT_GT(rest.size(), sound.size() / 2);
        EXPECT_LE(rest.size(), sound.size() + 10'000);
        EXPECT_GT(signalToNoise({sound.begin(), sound.begin() + 20'000}, rest), 8);
    }
}

TEST_F(SourcesTest, tagsMayStandInFrontOfEveryFormat)
{
    // Two tags, the first with a foot, together longer than what one looks at to recognise a format.
    const QByteArray first = QByteArray("ID3\x4\0\x10\0\0\x1\0", 10) + QByteArray(128, 'x') +
                             QByteArray("3DI\x4\0\x10\0\0\x1\0", 10);
    const QByteArray second = QByteArray("ID3\x3\0\0\0\x60\0\0", 10) + QByteArray(0x60 << 14, '\xff');
    for (const QByteArray &file : {mp3, wav, wma, ogg})
        EXPECT_TRUE(read(first + second + file) == read(file));
}

TEST_F(SourcesTest, joinedOggFilesAreReadToTheirEnd)
{
    const codecs::PcmFormat other{22050, 1};
    const auto lower = testkit::chord(22050, 1, 30'000);
    const QByteArray tail = encode(*codecs::vorbisRecipe({other, 64, 0, 0, {}}), other, lower);
    const auto joined = read(ogg + tail);
    EXPECT_NEAR(double(joined.size()), double(sound.size() + 4 * lower.size()), 1500);
    EXPECT_GT(signalToNoise(sound, joined), 10);
    // At one rate the joint is exact.
    auto twice = sound;
    twice.insert(twice.end(), sound.begin(), sound.end());
    const auto doubled = read(ogg + ogg);
    ASSERT_EQ(doubled.size(), twice.size());
    EXPECT_GT(signalToNoise(twice, doubled), 10);
}

TEST_F(SourcesTest, soundBehindALongFaultIsReadOn)
{
    const auto longer = music(44100, 2, 20 * 44100);
    for (const auto &recipe : {codecs::vorbisRecipe({}), codecs::mp3Recipe({})}) {
        QByteArray file = encode(*recipe, {}, longer);
        ASSERT_GT(file.size(), 200'000);
        file.replace(50'000, 100'000, QByteArray(100'000, '\0'));
        EXPECT_GT(read(file).size() * file.size(), longer.size() * (file.size() - 130'000));
    }
}

TEST_F(SourcesTest, oggSoundOnASinglePageKeepsItsBeginningAndItsLength)
{
    for (const qsizetype frames : {1, 2000, 12'345}) {
        const auto brief = music(44100, 2, frames);
        const QByteArray file = remadeOgg(encode(*codecs::vorbisRecipe({}), {}, brief), 65'000);
        const auto back = read(file);
        EXPECT_EQ(back.size(), brief.size());
        EXPECT_TRUE(frames < 2000 || signalToNoise(brief, back) > 8);
    }
}

TEST_F(SourcesTest, numbersOfMoreThanSixteenBitsAreRounded)
{
    QByteArray bits24;
    QByteArray bits32;
    QByteArray floats;
    const int values[] = {
        300 * 256 + 200, 300 * 256 + 100, -300 * 256 - 200, -256, 0x7fffff, -0x800000, 0, 257};
    for (const int value : values) {
        bits24 += bytesOf<qint32>(value).left(3);
        bits32 += bytesOf<qint32>(value * 256);
        const float scaled = float(value) / 0x800000;
        floats += QByteArray(reinterpret_cast<const char *>(&scaled), 4);
    }
    const std::vector<qint16> rounded = {301, 300, -301, -1, 32767, -32768, 0, 1};
    EXPECT_EQ(read(wavFile(1, 44100, 2, 24, bits24)), rounded);
    EXPECT_EQ(read(wavFile(1, 44100, 1, 24, bits24)), rounded);
    EXPECT_EQ(read(wavFile(1, 44100, 2, 32, bits32)), rounded);
    EXPECT_EQ(read(wavFile(3, 44100, 2, 32, floats)), rounded);
    EXPECT_EQ(read(wavFile(1, 44100, 1, 8, QByteArray("\x80\x81\xff\0", 4))),
              (std::vector<qint16>{0, 256, 32512, -32768}));
}

TEST_F(SourcesTest, moreThanTwoChannelsAreMixedToStereoAndHighRatesPass)
{
    QByteArray surround;
    for (int i = 0; i < 4000; ++i) {
        const auto tone = qint16(std::lrint(8000 * std::sin(i * 0.05)));
        for (const int channel : {0, 1, 2, 3, 4, 5}) // left, right, centre, low, back left, back right
            surround += bytesOf<qint16>(channel == 0 ? tone : qint16(0));
    }
    const auto mixed = read(wavFile(1, 48000, 6, 16, surround));
    EXPECT_EQ(reader.ChannelCount(), 2);
    EXPECT_EQ(reader.FormatString(), QStringLiteral("WAV, 48000 Hz, 6 Channels, 16 bits PCM"));
    ASSERT_EQ(mixed.size(), 8000U);
    qint64 left = 0;
    qint64 right = 0;
    for (std::size_t i = 0; i < mixed.size(); i += 2) {
        left += std::abs(mixed[i]);
        right += std::abs(mixed[i + 1]);
    }
    EXPECT_GT(left, 1000 * 4000);
    EXPECT_EQ(right, 0);
    const auto high = testkit::chord(192000, 2, 20'000);
    EXPECT_EQ(read(encode(*codecs::wavRecipe({{192000, 2}, 16}), {192000, 2}, high)), high);
    EXPECT_EQ(reader.SampleRate(), 192000);
}

TEST_F(SourcesTest, adpcmIsCutToItsLength)
{
    for (int bits = 2; bits <= 5; ++bits)
        EXPECT_EQ(read(encode(*codecs::wavRecipe({{44100, 2}, bits}), {}, sound)).size(), sound.size())
            << bits;
}

TEST_F(SourcesTest, aSourceThatVanishesEndsOrFailsCleanly)
{
    const QString path =
        folder.put(QStringLiteral("a.wav"), encode(*codecs::wavRecipe(), {}, music(44100, 2, 441'000)));
    reader.OpenRead(path);
    QFile file(path);
    ASSERT_TRUE(file.resize(1000));
    qsizetype values = 0;
    failureOf([&] {
        for (QList<qint16> samples; !(samples = reader.ReadSamples(88200)).isEmpty();)
            values += samples.size();
    });
    EXPECT_LT(values, 882'000);
}

} // namespace
