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
    int code = 0;
    {
        Program program(system.desktop());
        // From inside the event loop, so that a failure during the start-up can end the program.
        QTimer::singleShot(0, &application, [&] { system.desktop().border.run([&] { program.start(); }); });
        code = QApplication::exec();
    }
    // Windows are deleted by the event loop; those that were open at its end, and what they were writing, are
    // cleared away here.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return code;
}
