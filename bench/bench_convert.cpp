// Converts a four-minute file between pairs of formats with the converter's component and, by turns, with
// command-line tools at the same settings; then a batch of ten files, which the tool does two at a time.
// Prints the best of each side's times and the ratios, below 1 where the component is better, and the longest
// gap that the component left an event loop.

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
constexpr int BatchFiles = 10;

struct Format
{
    QString name;
    QStringList ffmpeg; ///< how ffmpeg is told to write it
    void (*choose)(NCTAudioFile &file);
};

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(u' ');
}

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
    static const std::array<Format, 4> list{{
        {QStringLiteral("mp3"), words("-c:a libmp3lame -b:a 128k -compression_level 5 -joint_stereo 0"),
         chooseMp3},
        {QStringLiteral("wav"), words("-c:a pcm_s16le"),
         [](NCTAudioFile &file) { file.SetWAVFormat(Rate, 2, 16); }},
        {QStringLiteral("wma"), words("-c:a wmav2 -b:a 128k"),
         [](NCTAudioFile &file) { file.SelectWMAProfile(14); }},
        {QStringLiteral("ogg"), words("-c:a libvorbis -b:a 128k"),
         [](NCTAudioFile &file) { file.SetOGGFormat(Rate, 2, 128); }},
    }};
    return list;
}

/// A command-line tool that converts a file, too.
struct Tool
{
    QString name;
    QStringList beforeSource;
    QStringList beforeTarget;
};

void run(const QString &program, const QStringList &arguments)
{
    if (QProcess::execute(program, arguments) != 0)
        throw RunTimeFailure(57, program + QStringLiteral(" failed"));
}

std::vector<Tool> toolsFor(const QString &from, const Format &to)
{
    std::vector<Tool> tools = {{QStringLiteral("ffmpeg"), words("-v error -y -i"), to.ffmpeg}};
    if (from == QStringLiteral("wav") && to.name == QStringLiteral("mp3"))
        tools.push_back({QStringLiteral("lame"), words("--quiet --noreplaygain --cbr -b 128 -m s -q 5"), {}});
    if (from == QStringLiteral("wav") && to.name == QStringLiteral("ogg"))
        tools.push_back({QStringLiteral("oggenc"), words("-Q -b 128"), words("-o")});
    return tools;
}

/// As the converter's pump does it, between the events of its windows.
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
         samples = reader.ReadSamples(block)) {
        writer.WriteSamples(samples);
        QCoreApplication::processEvents();
    }
    writer.CloseFile();
    reader.CloseFile();
}

/// The least that a piece of work took in several runs.
struct Times
{
    double seconds = 1e9;
    double processor = 1e9;

    /// `processorNow` is the clock that the work moves.
    template <typename Work>
    void take(double (*processorNow)(), Work work)
    {
        const double before = processorNow();
        QElapsedTimer clock;
        clock.start();
        work();
        seconds = std::min(seconds, static_cast<double>(clock.nsecsElapsed()) / 1e9);
        processor = std::min(processor, processorNow() - before);
    }
};

/// One of the component's and any number of the tools' pieces of work, by turns.
class Race
{
public:
    template <typename Work>
    void runOwn(Work work)
    {
        LoopWatch watch;
        m_own.take(processorSeconds, work);
        QCoreApplication::processEvents();
        m_gap = std::max(m_gap, watch.longestGap());
    }

    template <typename Work>
    void runTool(const QString &name, Work work)
    {
        m_tools[name].take(childrensProcessorSeconds, work);
    }

    static void printHead()
    {
        std::printf("# %s\n%-10s %-8s %8s %8s %6s %8s %8s %6s %8s\n", qPrintable(machineName()), "what",
                    "tool", "own s", "tool s", "ratio", "own cpu", "tool cpu", "ratio", "gap ms");
    }

    void print(const QString &what) const
    {
        for (const auto &[name, tool] : m_tools.asKeyValueRange())
            std::printf("%-10s %-8s %8.2f %8.2f %6.2f %8.2f %8.2f %6.2f %8.1f\n", qPrintable(what),
                        qPrintable(name), m_own.seconds, tool.seconds, m_own.seconds / tool.seconds,
                        m_own.processor, tool.processor, m_own.processor / tool.processor, m_gap);
        std::fflush(stdout);
    }

private:
    Times m_own;
    QMap<QString, Times> m_tools;
    double m_gap = 0;
};

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

void racePair(const QDir &folder, int rounds, const Format &from, const Format &to)
{
    const QString source = folder.filePath(QStringLiteral("source.") + from.name);
    const QString target = folder.filePath(QStringLiteral("target.") + to.name);
    Race race;
    for (int round = 0; round < rounds; ++round) {
        race.runOwn([&] { convert(source, target, to); });
        for (const Tool &tool : toolsFor(from.name, to))
            race.runTool(tool.name, [&] {
                run(tool.name,
                    tool.beforeSource + QStringList{source} + tool.beforeTarget + QStringList{target});
            });
    }
    race.print(from.name + u'-' + to.name);
}

/// Ten times the same file, whose encoding takes as long each time.
void raceBatch(const QDir &folder, int rounds, const Format &to)
{
    const QString source = folder.filePath(QStringLiteral("source.wav"));
    const auto target = [&](const QString &number) {
        return folder.filePath(QStringLiteral("batch%1.%2").arg(number, to.name));
    };
    // xargs puts the number of a file in the target's place.
    const QStringList ffmpeg = QStringList{QStringLiteral("ffmpeg")} + words("-nostdin -v error -y -i") +
                               QStringList{source} + to.ffmpeg + QStringList{target(QStringLiteral("%"))};
    const QString twoAtATime = QStringLiteral("seq %1 | xargs -P 2 -I % \"$@\"").arg(BatchFiles);
    Race race;
    for (int round = 0; round < rounds; ++round) {
        race.runOwn([&] {
            for (int i = 1; i <= BatchFiles; ++i)
                convert(source, target(QString::number(i)), to);
        });
        race.runTool(QStringLiteral("ffmpeg"), [&] {
            run(QStringLiteral("sh"),
                QStringList{QStringLiteral("-c"), twoAtATime, QStringLiteral("sh")} + ffmpeg);
        });
    }
    race.print(QStringLiteral("10x ") + to.name);
}

void runAll(const QDir &folder, int rounds, const QStringList &wanted)
{
    writeMusic(folder.filePath(QStringLiteral("source.wav")));
    for (const Format &format : formats()) {
        if (format.name != QStringLiteral("wav"))
            convert(folder.filePath(QStringLiteral("source.wav")),
                    folder.filePath(QStringLiteral("source.") + format.name), format);
    }
    Race::printHead();
    for (const Format &from : formats())
        for (const Format &to : formats())
            if (wanted.isEmpty() || wanted.contains(from.name + u'-' + to.name))
                racePair(folder, rounds, from, to);
    for (const Format &to : formats())
        if (wanted.isEmpty() || wanted.contains(QStringLiteral("batch-") + to.name))
            raceBatch(folder, rounds, to);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 2) {
        std::fputs("Usage: bench_convert FOLDER [ROUNDS [WHAT]...]\n"
                   "WHAT is a pair of formats, such as wav-mp3, or batch-mp3; without any it is all.\n",
                   stderr);
        return 2;
    }
    QDir folder(QString::fromLocal8Bit(argv[1]));
    folder.mkpath(QStringLiteral("."));
    try {
        runAll(folder, argc > 2 ? std::max(1, atoi(argv[2])) : 3, QCoreApplication::arguments().mid(3));
    } catch (const RunTimeFailure &failure) {
        std::fprintf(stderr, "bench_convert: %s\n", qPrintable(failure.description()));
        return 1;
    }
}
