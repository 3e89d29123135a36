// Tells by its exit code whether any drive holds a disc, the machine's or one of a folder of disc images.

#include "engines/cdrom/CdEngine.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <cstdio>

namespace {

bool holdsDisc(CdEngine &engine, qint16 drive)
{
    constexpr int SpinUp = 5000; // milliseconds that a drive may take to find its disc
    engine.SelectDrive(drive);
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < SpinUp; QThread::msleep(20)) {
        QCoreApplication::processEvents();
        if (engine.DiscReady())
            return true;
        if (engine.DriveStatus() == CDRipperX::NoDisc && clock.elapsed() > SpinUp / 2)
            return false;
    }
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("Usage: disc_present FOLDER\n\nSucceeds where a drive of this machine, or a disc image in "
                   "FOLDER, "
                   "holds a disc.\n",
                   stderr);
        return 2;
    }
    QCoreApplication application(argc, argv);
    CdEngine engine(QString::fromLocal8Bit(argv[1]));
    for (qint16 drive = 0; drive < engine.DriveCount(); ++drive) {
        if (holdsDisc(engine, drive))
            return 0;
    }
    return 1;
}
