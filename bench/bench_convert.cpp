// Converts a four-minute file between each pair of formats with the converter's component and, by turns, with
// ffmpeg at the same settings, and prints both times.

#include "Measure.h"
#include "base/RunTimeFailure.h"
#include "demodisc/DemoDisc.h"
#include "engines/audiofile/AudioFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr int Rate = 44100;
constexpr int Seconds = 240;

struct Format
{
    QString name;
    QStringList ffmpeg; ///< how ffmpeg is told to write it
    void (*choose)(NCTAudioFile &file);
};

void chooseMp3(NCTAudioFile &file)
{
    NCTMP3Options &mp3 = file.MP3Options();
    mp3.setSampleRate(Rate);
    mp3.setConstantBitRate(true);
    mp3.setCBRQuality(5);
    mp3.setCBRBitRate(128);
    mp3.setChannelCount(2);
    mp3.setChannelMode(1);
}

const std::array<Format, 4> &formats()
{
    static const auto list = [] {
        const auto options = [](const char *text) { return QString::fromLatin1(text).split(u' '); };
        return std::array<Format, 4>{{
            {QStringLiteral("mp3"), options("-c:a libmp3lame -b:a 128k -compression_level 5 -joint_stereo 0"),
             chooseMp3},
            {QStringLiteral("wav"), options("-c:a pcm_s16le"),
             [](NCTAudioFile &file) { file.SetWAVFormat(Rate, 2, 16); }},
            {QStringLiteral("wma"), options("-c:a wmav2 -b:a 128k"),
             [](NCTAudioFile &file) { file.SelectWMAProfile(14); }},
            {QStringLiteral("ogg"), options("-c:a libvorbis -b:a 128k"),
             [](NCTAudioFile &file) { file.SetOGGFormat(Rate, 2, 128); }},
        }};
    }();
    return list;
}

/// As the converter's pump does it: a second of audio at a time.
void convert(const QString &source, const QString &target, const Format &format)
{
    audiofile::AudioFile reader;
    audiofile::AudioFile writer;
    format.choose(writer);
    reader.OpenRead(source);
    writer.OpenWrite(target);
    if (reader.Status() < 0 || writer.Status() < 0)
        throw RunTimeFailure(57, QStringLiteral("can't open %1 or %2").arg(source, target));
    writer.SetInputFormat(reader.SampleRate(), reader.ChannelCount());
    const qint32 block = reader.SampleRate() * reader.ChannelCount();
    for (QList<qint16> samples = reader.ReadSamples(block); !samples.isEmpty();
         samples = reader.ReadSamples(block))
        writer.WriteSamples(samples);
    writer.CloseFile();
    reader.CloseFile();
}

bool convertByFfmpeg(const QString &source, const QString &target, const Format &format)
{
    const QStringList before = {
        QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y"), QStringLiteral("-i"), source,
        QStringLiteral("-vn")};
    return QProcess::execute(QStringLiteral("ffmpeg"), before + format.ffmpeg + QStringList{target}) == 0;
}

template <typename Work>
double secondsOf(Work work)
{
    QElapsedTimer clock;
    clock.start();
    work();
    return static_cast<double>(clock.nsecsElapsed()) / 1e9;
}

/// The file that all others come from.
void writeMusic(const QString &path)
{
    audiofile::AudioFile writer;
    writer.SetWAVFormat(Rate, 2, 16);
    writer.OpenWrite(path);
    writer.SetInputFormat(Rate, 2);
    for (int piece = 1; piece <= 4; ++piece) {
        const auto samples = demodisc::render({piece, Seconds / 4 * demodisc::SectorsPerSecond, {}});
        writer.WriteSamples(QList<qint16>(samples.begin(), samples.end()));
    }
    writer.CloseFile();
}

void run(const QDir &folder, int rounds)
{
    writeMusic(folder.filePath(QStringLiteral("source.wav")));
    for (const Format &format : formats()) {
        if (format.name != QStringLiteral("wav"))
            convert(folder.filePath(QStringLiteral("source.wav")),
                    folder.filePath(QStringLiteral("source.") + format.name), format);
    }
    std::printf("# %s\n%-12s %10s %12s %10s %7s %10s\n", qPrintable(machineName()), "pair", "seconds",
                "x real time", "ffmpeg s", "ratio", "cpu s");
    for (const Format &from : formats()) {
        for (const Format &to : formats()) {
            const QString source = folder.filePath(QStringLiteral("source.") + from.name);
            const QString target = folder.filePath(QStringLiteral("target.") + to.name);
            double own = 1e9;
            double other = 1e9;
            double processor = 1e9;
            for (int round = 0; round < rounds; ++round) {
                const double before = processorSeconds();
                own = std::min(own, secondsOf([&] { convert(source, target, to); }));
                processor = std::min(processor, processorSeconds() - before);
                bool converted = false;
                other = std::min(other, secondsOf([&] { converted = convertByFfmpeg(source, target, to); }));
                if (!converted)
                    throw RunTimeFailure(57, QStringLiteral("ffmpeg failed"));
            }
            std::printf("%-12s %10.2f %12.0f %10.2f %7.2f %10.2f\n", qPrintable(from.name + u'-' + to.name),
                        own, Seconds / own, other, own / other, processor);
            std::fflush(stdout);
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 2 || argc > 3) {
        std::fputs("Usage: bench_convert FOLDER [ROUNDS]\n", stderr);
        return 2;
    }
    QDir folder(QString::fromLocal8Bit(argv[1]));
    folder.mkpath(QStringLiteral("."));
    try {
        run(folder, argc == 3 ? std::max(1, atoi(argv[2])) : 3);
    } catch (const RunTimeFailure &failure) {
        std::fprintf(stderr, "bench_convert: %s\n", qPrintable(failure.description()));
        return 1;
    }
}
