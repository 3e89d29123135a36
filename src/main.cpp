#include "Program.h"
#include "platform/qt/QtDesktop.h"

#include <QApplication>
#include <QIcon>
#include <QTimer>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tonelift"));
    QApplication::setDesktopFileName(QStringLiteral("tonelift"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/tonelift.svg")));

    const QtDesktop system(ProgramPaths::of(QApplication::applicationFilePath()));
    Program program(system.desktop());
    // From inside the event loop, so that a failure during the start-up can end the program.
    QTimer::singleShot(0, &application, [&] { system.desktop().border.run([&] { program.start(); }); });
    return QApplication::exec();
}
