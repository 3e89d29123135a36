// Rips an image through the program's own windows and prints what that takes: each format in a process of its
// own, and the start-up. See usage() for the call.

#include "Measure.h"
#include "Program.h"
#include "base/Formats.h"
#include "demodisc/DemoDisc.h"
#include "headless/HeadlessDesktop.h"
#include "headless/RipJob.h"
#include "shell/frmMain.h"

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

/// The place of a format, such as "mp3", among the option buttons; -1: there is none.
int optionOf(const QString &format)
{
    const auto formats = Formats::all();
    const auto found = std::find_if(formats.begin(), formats.end(), [&](const Format &f) {
        return f.name.compare(format, Qt::CaseInsensitive) == 0;
    });
    return found == formats.end() ? -1 : static_cast<int>(found - formats.begin());
}

void usage()
{
    std::fputs(
        "Usage: bench_rip FOLDER [mp3|wav|wma|ogg|start]...\n"
        "\n"
        "Rips the disc image in FOLDER/discs (ten made-up minutes where there is none) to each format.\n"
        "Each line holds, between tabs: format, seconds, times real time, processor seconds, peak\n"
        "memory in MB, longest gap of the event loop in ms. The line \"start\" holds the median time\n"
        "from the program's call to its painted window in ms.\n",
        stderr);
}

QString programIn(const QString &folder)
{
    return QDir(folder).filePath(QStringLiteral("tonelift"));
}

qint64 nanosecondsNow()
{
    return std::chrono::steady_clock::now().time_since_epoch().count();
}

// ---- in the measured process ----

int rip(const QString &folder, const QString &format)
{
    const HeadlessDesktop system(programIn(folder));
    Program program(system.desktop());
    program.start();
    const std::shared_ptr<frmMain> window = program.mainWindow();
    RipJob job(*window, false);
    if (job.waitForTracks() == 0)
        return 1;
    job.choose(optionOf(format));
    const QStringList files = job.files();
    for (const QString &file : files)
        QFile::remove(file);

    LoopWatch loop;
    const double before = processorSeconds();
    job.rip();
    const double used = processorSeconds() - before;
    if (files.isEmpty() ||
        !std::all_of(files.begin(), files.end(), [](const QString &f) { return QFile::exists(f); }))
        return 1;
    std::printf("%s\t%.2f\t%.0f\t%.2f\t%.0f\t%.1f\n", qPrintable(format), job.seconds(),
                window->discInfo().DiscSeconds / job.seconds(), used, peakMegabytes(), loop.longestGap());
    window->unload();
    return 0;
}

/// Ends the program's start-up with the first painting of its main window.
class FirstPaint : public QObject
{
public:
    explicit FirstPaint(QObject &window) { window.installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !m_painted) {
            m_painted = true;
            QMetaObject::invokeMethod(
                qApp, [] { QApplication::exit(); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    bool m_painted = false;
};

int start(const QString &folder, qint64 called)
{
    const HeadlessDesktop system(programIn(folder));
    Program program(system.desktop());
    program.start();
    const FirstPaint paint(*program.mainWindow());
    QApplication::exec();
    std::printf("%.1f\n", static_cast<double>(nanosecondsNow() - called) / 1e6);
    program.mainWindow()->unload();
    return 0;
}

// ---- in the parent ----

QByteArray measured(const QStringList &arguments)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(),
                arguments + QStringList{QString::number(nanosecondsNow())});
    child.waitForFinished(-1);
    return child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0 ? child.readAllStandardOutput()
                                                                               : QByteArray();
}

void makeImage(const QString &folder)
{
    const QDir discs(QDir(folder).filePath(QStringLiteral("discs")));
    if (!discs.entryList({QStringLiteral("*.cue")}).isEmpty())
        return;
    QDir().mkpath(discs.path());
    demodisc::write(demodisc::longDisc(), discs.filePath(QStringLiteral("bench.cue")).toStdString());
}

int measureStart(const QString &folder)
{
    std::vector<double> times;
    for (int i = 0; i < 7; ++i)
        times.push_back(measured({QStringLiteral("--in"), folder, QStringLiteral("start")}).toDouble());
    std::sort(times.begin(), times.end());
    std::printf("start\t%.0f\n", times[times.size() / 2]);
    return times.front() > 0 ? 0 : 1;
}

int measureAll(const QString &folder, QStringList what)
{
    makeImage(folder);
    if (what.isEmpty()) {
        std::printf("# %s\n", qPrintable(machineName()));
        what = QStringList{QStringLiteral("start"), QStringLiteral("wav"), QStringLiteral("mp3"),
                           QStringLiteral("ogg"), QStringLiteral("wma")};
    }
    int result = 0;
    for (const QString &name : what) {
        if (name == QStringLiteral("start")) {
            result |= measureStart(folder);
            continue;
        }
        const QByteArray line = measured({QStringLiteral("--in"), folder, name});
        std::fputs(line.isEmpty() ? qPrintable(name + QStringLiteral("\tFAILED\n")) : line.constData(),
                   stdout);
        std::fflush(stdout);
        result |= line.isEmpty();
    }
    return result;
}

int inChild(const QString &folder, const QString &what, qint64 called)
{
    if (what == QStringLiteral("start"))
        return start(folder, called);
    return optionOf(what) < 0 ? 2 : rip(folder, what);
}

} // namespace

int main(int argc, char **argv)
{
    const bool child = argc == 5 && qstrcmp(argv[1], "--in") == 0;
    if (!child && (argc < 2 || argv[1][0] == '-')) {
        usage();
        return 2;
    }
    if (child) {
        chooseHeadlessPlatform();
        QApplication application(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        return inChild(QString::fromLocal8Bit(argv[2]), QString::fromLatin1(argv[3]),
                       QByteArray(argv[4]).toLongLong());
    }
    const QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const QString folder = QDir(arguments.takeFirst()).absolutePath();
    return measureAll(folder, arguments);
}
