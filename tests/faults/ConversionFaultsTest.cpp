#include "EachFault.h"
#include "base/RunTimeFailure.h"
#include "engines/audiofile/AudioFile.h"
#include "engines/codecs/WavEncoder.h"
#include "testkit/Encoding.h"
#include "testkit/Printing.h"
#include "testkit/Signals.h"

#include <QTemporaryDir>

namespace {

using audiofile::AudioFile;

/// A second of sound, and the files that conversions make of it.
class ConversionFaults : public ::testing::Test
{
protected:
    static void put(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    /// Converts as the window does; whether all was well.
    static bool convert(const QString &from, const QString &to,
                        const std::function<void(AudioFile &)> &format)
    {
        AudioFile reader;
        AudioFile writer;
        try {
            format(writer);
            reader.OpenRead(from);
            if (reader.Status() < 0)
                return false;
            writer.OpenWrite(to);
            if (writer.Status() < 0)
                return false;
            writer.SetInputFormat(reader.SampleRate(), reader.ChannelCount());
            for (;;) {
                const QList<qint16> samples = reader.ReadSamples(reader.SamplesPerSecond());
                if (samples.isEmpty())
                    break;
                writer.WriteSamples(samples);
            }
            writer.CloseFile();
            return true;
        } catch (const RunTimeFailure &) {
            return false;
        }
    }

    const QTemporaryDir folder;
    const QString source = folder.filePath(QStringLiteral("source.wav"));
    const QByteArray sound = testkit::encode(*codecs::wavRecipe(), {}, testkit::music(44100, 2, 30'000));
};

TEST_F(ConversionFaults, aFileIsMadeWholeOrNotAtAllAndThatIsTold)
{
    const std::pair<const char *, std::function<void(AudioFile &)>> formats[] = {
        {"mp3", [](AudioFile &file) { file.MP3Options().setCBRBitRate(128); }},
        {"wav", [](AudioFile &file) { file.SetWAVFormat(22050, 1, 16); }},
        {"wma", [](AudioFile &file) { file.SelectWMAProfile(20); }},
        {"ogg", [](AudioFile &file) { file.SetOGGFormat(44100, 2, 128); }},
    };
    for (const auto &row : formats) {
        const char *const ending = row.first;
        const std::function<void(AudioFile &)> &format = row.second;
        SCOPED_TRACE(ending);
        const QString target = folder.filePath(QStringLiteral("target.") + QLatin1StringView(ending));
        put(source, sound);
        ASSERT_TRUE(convert(source, target, format));
        const QByteArray whole = contentOf(target);
        for (const QByteArray &old : {QByteArray("no file"), QByteArray("old")}) {
            bool done = false;
            withEachFault(
                folder.path(),
                [&] {
                    QFile::remove(target);
                    if (old != "no file")
                        put(target, old);
                },
                [&] { done = convert(source, target, format); },
                [&](bool failed) {
                    EXPECT_TRUE(failed || done);
                    const QByteArray now = contentOf(target);
                    EXPECT_TRUE(now == old || now.size() == whole.size()) << now.size();
                    EXPECT_TRUE(now != old || !done);
                    EXPECT_EQ(namesIn(folder.path()).size(), now == "no file" ? 1 : 2);
                    EXPECT_EQ(contentOf(source), sound);
                });
        }
        QFile::remove(target);
    }
}

TEST_F(ConversionFaults, aFileThatBecomesItselfAnewIsTheOldOrTheNewOne)
{
    const auto format = [](AudioFile &file) { file.SetWAVFormat(22050, 1, 16); };
    put(source, sound);
    ASSERT_TRUE(convert(source, source, format));
    const QByteArray whole = contentOf(source);
    bool done = false;
    withEachFault(
        folder.path(), [&] { put(source, sound); }, [&] { done = convert(source, source, format); },
        [&](bool failed) {
            EXPECT_TRUE(failed || done);
            EXPECT_TRUE(contentOf(source) == whole || (failed && contentOf(source) == sound));
            EXPECT_EQ(namesIn(folder.path()).size(), 1);
        });
}

} // namespace
