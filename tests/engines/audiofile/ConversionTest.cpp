#include "Pump.h"
#include "engines/codecs/WmaEncoder.h"
#include "testkit/FullDisk.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <gtest/gtest.h>

namespace {

using audiofile::AudioFile;
using testkit::encode;
using testkit::failureOf;
using testkit::music;
using testkit::signalToNoise;

constexpr qsizetype Frames = 100'000;

struct Format
{
    const char *ending;
    std::shared_ptr<const codecs::EncoderRecipe> recipe; ///< of the source
    void (*choose)(AudioFile &writer);
    bool exact; ///< its length comes back to the sample
};

std::vector<Format> formats()
{
    return {{"mp3", codecs::mp3Recipe({}), [](AudioFile &writer) { writer.MP3Options().setCBRBitRate(192); },
             true},
            {"wav", codecs::wavRecipe(), [](AudioFile &writer) { writer.SetWAVFormat(44100, 2, 16); }, true},
            {"wma", codecs::wmaRecipe({}), [](AudioFile &writer) { writer.SelectWMAProfile(51); }, false},
            {"ogg", codecs::vorbisRecipe({}), [](AudioFile &writer) { writer.SetOGGFormat(44100, 2, 192); },
             true}};
}

TEST(ConversionTest, eachOfTheSixteenPairsKeepsTheSoundItsPlaceAndItsLength)
{
    const Folder folder;
    const auto sound = music(44100, 2, Frames);
    AudioFile reader;
    AudioFile writer;
    for (const Format &from : formats()) {
        const QString source = folder.put(QStringLiteral("source"), encode(*from.recipe, {}, sound));
        const QString target = folder.path(QStringLiteral("a 'ü' \"日本\" target"));
        for (const Format &to : formats()) {
            SCOPED_TRACE(testing::Message() << from.ending << " to " << to.ending);
            to.choose(writer);
            ASSERT_TRUE(pump(reader, source, writer, target));
            const auto decoded = testkit::decodeFile(target);
            EXPECT_EQ(decoded.rate, 44100);
            EXPECT_EQ(decoded.channels, 2);
            // A WMA file tells its length in milliseconds, and decodes to whole frames.
            const qsizetype slack = (from.exact ? 0 : 23) + (to.exact ? 0 : 2 * 2048);
            EXPECT_GE(decoded.frames(), Frames - (from.exact ? 0 : 23));
            EXPECT_LE(decoded.frames(), Frames + slack);
            EXPECT_GT(signalToNoise(sound, decoded.samples), 10);
        }
    }
}

TEST(ConversionTest, sixteenBitsOfTheSameRatePassUntouched)
{
    const Folder folder;
    AudioFile reader;
    AudioFile writer;
    for (const codecs::PcmFormat format : {codecs::PcmFormat{44100, 2}, {8000, 1}, {96000, 2}}) {
        auto sound = music(format.rate, format.channels, Frames);
        sound[0] = -32768;
        sound[1] = 32767;
        const QByteArray file = encode(*codecs::wavRecipe({format, 16}), format, sound);
        writer.SetWAVFormat(format.rate, format.channels, 16);
        ASSERT_TRUE(pump(reader, folder.put(QStringLiteral("a.wav"), file), writer,
                         folder.path(QStringLiteral("b.wav"))));
        EXPECT_TRUE(folder.content(QStringLiteral("b.wav")) == file);
    }
}

TEST(ConversionTest, theSourceMayBeTheTarget)
{
    const Folder folder;
    const QString file = folder.put(QStringLiteral("a.wav"),
                                    encode(*codecs::wavRecipe(), {}, testkit::chord(44100, 2, Frames)));
    AudioFile reader;
    AudioFile writer;
    writer.SetWAVFormat(22050, 1, 16);
    ASSERT_TRUE(pump(reader, file, writer, file));
    const auto decoded = testkit::decodeFile(file);
    EXPECT_EQ(decoded.frames(), Frames / 2);
    EXPECT_GT(signalToNoise(testkit::chord(22050, 1, Frames / 2), decoded.samples), 50);
    EXPECT_EQ(folder.names(), QStringList(QStringLiteral("a.wav")));
}

TEST(ConversionTest, closingInTheMiddleLeavesWhatWasWrittenSoFar)
{
    const Folder folder;
    const auto sound = music(44100, 2, 30'000);
    AudioFile writer;
    for (const Format &to : formats()) {
        SCOPED_TRACE(to.ending);
        to.choose(writer);
        const QString target = folder.path(QString::fromLatin1(to.ending));
        writer.OpenWrite(target);
        writer.SetInputFormat(44100, 2);
        writer.WriteSamples({sound.begin(), sound.end()});
        EXPECT_FALSE(QFile::exists(target));
        writer.CloseFile();
        const auto decoded = testkit::decodeFile(target);
        EXPECT_TRUE(decoded.frames() == 30'000 || (!to.exact && decoded.frames() > 30'000));
        writer.OpenWrite(target);
        writer.CloseFile();
        EXPECT_LE(testkit::decodeFile(target).frames(), to.exact ? 0 : 2048);
        EXPECT_GT(QFile(target).size(), 40);
    }
}

TEST(ConversionTest, whatIsNotClosedNeverTakesItsNameAndAnOldFileStays)
{
    const Folder folder;
    const QString target = folder.put(QStringLiteral("a.wav"), "old");
    {
        AudioFile writer;
        writer.SetWAVFormat(44100, 2, 16);
        writer.OpenWrite(target);
        writer.WriteSamples({1, 2, 3, 4});
        // The row failed, and the job went on with the next one.
        writer.OpenWrite(folder.path(QStringLiteral("b.wav")));
        writer.WriteSamples({1, 2});
    }
    EXPECT_EQ(folder.names(), QStringList(QStringLiteral("a.wav")));
    EXPECT_EQ(folder.content(QStringLiteral("a.wav")), "old");
}

TEST(ConversionTest, aTargetThatCannotBeFinishedFailsAndLeavesNothing)
{
    const Folder folder;
    const QString target = folder.path(QStringLiteral("a.wav"));
    AudioFile writer;
    writer.SetWAVFormat(44100, 2, 16);
    writer.OpenWrite(target);
    writer.WriteSamples({1, 2});
    ASSERT_TRUE(QDir().mkdir(target));
    EXPECT_EQ(failureOf([&] { writer.CloseFile(); }), RunTimeFailure::PathFileAccessError);
    EXPECT_EQ(failureOf([&] { writer.WriteSamples({1, 2}); }), RunTimeFailure::InvalidCall);
    EXPECT_EQ(failureOf([&] { writer.CloseFile(); }), 0);
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST(ConversionTest, whatCouldNotBeWrittenWholeIsNoFileEvenIfThereIsRoomAgain)
{
    const Folder folder;
    AudioFile writer;
    writer.SetWAVFormat(44100, 2, 16);
    writer.OpenWrite(folder.path(QStringLiteral("a.wav")));
    const QList<qint16> second(88200, 1);
    writer.WriteSamples(second);
    {
        const testkit::FullDisk full(100'000);
        EXPECT_NE(failureOf([&] { writer.WriteSamples(second); }), 0);
    }
    EXPECT_EQ(failureOf([&] { writer.WriteSamples(second); }), RunTimeFailure::InvalidCall);
    writer.CloseFile();
    EXPECT_TRUE(folder.names().isEmpty());
}

/// By what name this process reaches the file that is being written into a folder; it may have none there.
QString fileInTheMaking(const Folder &folder)
{
    const QDir open(QStringLiteral("/proc/self/fd"));
    for (const QString &number : open.entryList(QDir::Files | QDir::System)) {
        const QString target = QFile::symLinkTarget(open.filePath(number));
        if (target.startsWith(folder.folder.path() + u'/'))
            return open.filePath(number);
    }
    return {};
}

TEST(ConversionTest, anOlderFileGivesWayOnlyToOneThatCanBeReadBack)
{
    constexpr qint64 Place = 100'000;
    constexpr qint64 Bytes = 20'000;
    const Folder folder;
    const auto sound = testkit::chord(44100, 2, 5 * 44100);
    const QList<qint16> samples(sound.begin(), sound.end());
    for (const bool spoiled : {false, true}) {
        SCOPED_TRACE(spoiled);
        const QString target = folder.put(QStringLiteral("a.mp3"), "old");
        AudioFile writer;
        writer.MP3Options().setCBRBitRate(192);
        writer.OpenWrite(target);
        writer.SetInputFormat(44100, 2);
        QFile made(fileInTheMaking(folder));
        ASSERT_TRUE(made.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        for (int i = 0; i < 20 && made.size() < Place + Bytes; ++i)
            writer.WriteSamples(samples);
        ASSERT_GT(made.size(), Place + Bytes);
        if (spoiled) {
            made.seek(Place);
            made.write(QByteArray(Bytes, '\0'));
        }
        EXPECT_EQ(failureOf([&] { writer.CloseFile(); }), spoiled ? RunTimeFailure::DeviceIoError : 0);
        EXPECT_EQ(folder.content(QStringLiteral("a.mp3")) == "old", spoiled);
        EXPECT_EQ(folder.names(), QStringList(QStringLiteral("a.mp3")));
    }
}

TEST(ConversionTest, placesThatTakeNoFileGiveANegativeStatus)
{
    const Folder folder;
    AudioFile writer;
    writer.OpenWrite(folder.path(QStringLiteral("a.wav")));
    EXPECT_LT(writer.Status(), 0); // no format
    writer.SetWAVFormat(44100, 2, 16);
    writer.OpenWrite(folder.path(QStringLiteral("missing/a.wav")));
    EXPECT_LT(writer.Status(), 0);
    writer.OpenWrite(folder.folder.path());
    EXPECT_LT(writer.Status(), 0);
    writer.OpenWrite(folder.path(QStringLiteral("a.wav")));
    EXPECT_EQ(writer.Status(), 0);
}

} // namespace
