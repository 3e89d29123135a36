// Starts the program's windows on a platform without a display, rips the disc in its first drive to MP3
// through them, and tells what came of it.

#include "Program.h"
#include "headless/HeadlessDesktop.h"
#include "headless/RipJob.h"
#include "shell/frmMain.h"

#include <QApplication>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <cstdio>

namespace {

void say(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

/// Length, codec and tags as another program reads them; empty where it can't.
QString description(const QString &file)
{
    QProcess probe;
    probe.start(QStringLiteral("ffprobe"),
                {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-of"), QStringLiteral("json"),
                 QStringLiteral("-show_format"), file});
    if (!probe.waitForFinished() || probe.exitCode() != 0)
        return {};
    const QJsonObject format =
        QJsonDocument::fromJson(probe.readAllStandardOutput())[QStringLiteral("format")].toObject();
    const QJsonObject tags = format[QStringLiteral("tags")].toObject();
    QStringList parts = {
        QStringLiteral("%1 s").arg(format[QStringLiteral("duration")].toString().toDouble(), 7, 'f', 2),
        QStringLiteral("%1 kb/s").arg(format[QStringLiteral("bit_rate")].toString().toInt() / 1000)};
    for (auto tag = tags.begin(); tag != tags.end(); ++tag)
        parts += tag.key() + u'=' + tag.value().toString();
    return parts.join(QStringLiteral("  "));
}

QString save(const QPixmap &picture, const QString &name, const QString &folder)
{
    const QString path = QDir(folder).filePath(name);
    return picture.save(path) ? path : QStringLiteral("(could not be written: %1)").arg(path);
}

int run(const Desktop &desktop, const QString &pictures)
{
    Program program(desktop);
    program.start();
    const std::shared_ptr<frmMain> window = program.mainWindow();
    RipJob job(*window);

    if (job.waitForTracks() == 0) {
        say(QStringLiteral("The first drive holds no disc with tracks."));
        return 1;
    }
    job.enterTitles(QStringLiteral("A Disc"), QStringLiteral("An Artist"), QStringLiteral("2024"));
    job.choose(0);
    const QStringList files = job.files();
    for (const QString &file : files)
        QFile::remove(file); // what is there afterwards was made by this run
    const QPixmap before = window->grab();
    job.rip();
    for (const QString &box : job.boxes())
        say(QStringLiteral("The program said: ") + box);

    int failed = 0;
    for (const QString &file : files) {
        const QString about = description(file);
        failed += about.isEmpty();
        say(file + u'\n' + QStringLiteral("    ") +
            (about.isEmpty() ? QStringLiteral("NOT THERE OR UNREADABLE") : about));
    }
    say(QStringLiteral("Pictures: %1, %2")
            .arg(save(before, QStringLiteral("main-window.png"), pictures),
                 save(job.picture(), QStringLiteral("ripping.png"), pictures)));
    say(QStringLiteral("%1 of %2 tracks ripped.").arg(files.size() - failed).arg(files.size()));
    window->unload();
    return failed || files.isEmpty() ? 1 : 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fputs("Usage: rip_headless PROGRAM FOLDER\n\n"
                   "Rips the disc in the first drive of the program PROGRAM and puts pictures into FOLDER.\n",
                   stderr);
        return 2;
    }
    chooseHeadlessPlatform();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QString pictures = QDir(QString::fromLocal8Bit(argv[2])).absolutePath();
    QDir().mkpath(pictures);

    const HeadlessDesktop system(QString::fromLocal8Bit(argv[1]));
    const Desktop &desktop = system.desktop();
    int result = 1;
    desktop.border.run([&] { result = run(desktop, pictures); });
    return result;
}
