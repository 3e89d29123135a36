#include "Pump.h"
#include "base/Thread.h"
#include "testkit/FakeNCTAudioFile.h"
#include "testkit/Logged.h"
#include "testkit/Printing.h"
#include "testkit/Signals.h"

#include <gtest/gtest.h>

namespace {

using testkit::failureOf;

constexpr qint64 ContractFrames = 70'000;

/// What each implementation of the contract must do, the double of the windows' tests as well as the engine.
class AudioFileContract : public ::testing::TestWithParam<bool>
{
protected:
    AudioFileContract()
    {
        const codecs::PcmFormat format{22050, 1};
        source =
            folder.put(QStringLiteral("a.wav"), testkit::encode(*codecs::wavRecipe({format, 16}), format,
                                                                testkit::music(22050, 1, ContractFrames)));
        if (GetParam()) {
            file = std::make_unique<audiofile::AudioFile>();
            return;
        }
        auto fake = std::make_unique<FakeNCTAudioFile>(log, QStringLiteral("File"));
        fake->sources[source] = {22050, 1, ContractFrames, 3};
        file = std::move(fake);
    }

    Folder folder;
    QString source;
    CallLog log;
    std::unique_ptr<NCTAudioFile> file;
};

TEST_P(AudioFileContract, aSourceIsReadToItsEndAndEndsAgainAndAgain)
{
    file->CloseFile();
    EXPECT_EQ(failureOf([&] { file->ReadSamples(10); }), RunTimeFailure::InvalidCall);
    file->OpenRead(source);
    EXPECT_GE(file->Status(), 0);
    EXPECT_FALSE(file->FormatString().isEmpty());
    EXPECT_EQ(file->SampleRate(), 22050);
    EXPECT_EQ(file->ChannelCount(), 1);
    EXPECT_EQ(file->SamplesPerSecond(), 22050);
    EXPECT_EQ(file->DurationSeconds(), 3);
    qint64 values = 0;
    for (QList<qint16> samples; !(samples = file->ReadSamples(22050)).isEmpty();) {
        EXPECT_LE(samples.size(), 22050);
        values += samples.size();
    }
    EXPECT_EQ(values, ContractFrames);
    EXPECT_TRUE(file->ReadSamples(22050).isEmpty());
    file->CloseFile();
    file->CloseFile();
}

TEST_P(AudioFileContract, whatCannotBeOpenedShowsInTheStatusAlone)
{
    file->OpenRead(source);
    file->OpenRead(folder.path(QStringLiteral("missing.wav")));
    EXPECT_LT(file->Status(), 0);
    EXPECT_TRUE(file->FormatString().isEmpty());
    EXPECT_EQ(failureOf([&] { file->ReadSamples(10); }), RunTimeFailure::InvalidCall);
    file->CloseFile();
    EXPECT_EQ(failureOf([&] { file->WriteSamples({1, 2}); }), RunTimeFailure::InvalidCall);
}

TEST_P(AudioFileContract, theTextFollowsTheFormatThatWasSetLast)
{
    EXPECT_TRUE(file->FormatString().isEmpty());
    QStringList texts;
    const auto note = [&] { texts.append(file->FormatString()); };
    file->SelectWMAProfile(1);
    note();
    file->SelectWMAProfile(51);
    note();
    file->SetWAVFormat(44100, 2, 16);
    note();
    file->SetOGGFormat(44100, 2, 128);
    note();
    file->SetOGGFormat(44100, 2, 128, 96, 160);
    note();
    file->SetOGGFormat(44100, 2, 128, 0, 0, 700);
    note();
    file->OpenRead(source);
    note();
    EXPECT_FALSE(texts.contains(QString()));
    EXPECT_EQ(texts.removeDuplicates(), 0);
}

TEST_P(AudioFileContract, aTargetTakesWhatItIsGivenUntilItIsClosed)
{
    file->SetWAVFormat(22050, 1, 16);
    file->OpenWrite(folder.path(QStringLiteral("b.wav")));
    EXPECT_GE(file->Status(), 0);
    file->SetInputFormat(22050, 1);
    file->WriteSamples({1, 2, 3});
    file->WriteSamples({});
    file->CloseFile();
    EXPECT_EQ(failureOf([&] { file->WriteSamples({1, 2}); }), RunTimeFailure::InvalidCall);
}

INSTANTIATE_TEST_SUITE_P(DoubleAndEngine, AudioFileContract, ::testing::Bool(),
                         [](const auto &row) { return row.param ? "engine" : "testDouble"; });

TEST(AudioFileTest, whereThereIsNoThreadTheStatusAndTheFailureSayIt)
{
    const Folder folder;
    const QString source = folder.put(
        QStringLiteral("a.wav"), testkit::encode(*codecs::wavRecipe({{8000, 1}, 16}), {8000, 1}, {1, 2, 3}));
    const QString target = folder.path(QStringLiteral("b.wav"));
    audiofile::AudioFile file;
    file.SetWAVFormat(8000, 1, 16);
    file.OpenWrite(target);
    {
        const ThreadShortage shortage(0);
        EXPECT_EQ(failureOf([&] { file.CloseFile(); }), RunTimeFailure::OutOfMemory);
        file.OpenRead(source);
        EXPECT_EQ(file.Status(), -RunTimeFailure::OutOfMemory);
    }
    EXPECT_FALSE(QFileInfo::exists(target));
    const QStringList logged = takeLogged("tonelift.convert");
    ASSERT_EQ(logged.size(), 2);
    EXPECT_TRUE(logged[0].startsWith(target)) << logged[0].toStdString();
    EXPECT_TRUE(logged[1].startsWith(source)) << logged[1].toStdString();
    file.OpenRead(source);
    EXPECT_EQ(file.Status(), 0);
}

} // namespace
