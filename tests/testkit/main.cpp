#include "testkit/Logged.h"

#include <QApplication>
#include <QLocale>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cstdio>
#include <gtest/gtest.h>

namespace {

/// A warning of Qt is a fault of ours and fails the running test. The program's own log is kept for the test
/// to look at.
void takeMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
    if (QByteArrayView(context.category).startsWith("tonelift.")) {
        keepLogged(context.category, message);
        return;
    }
    // The offscreen platform says of itself that it can't pass on size hints; that is no fault.
    const bool ofPlatform = message.startsWith(QStringLiteral("This plugin does not support"));
    if ((type == QtWarningMsg || type == QtCriticalMsg) && !ofPlatform)
        ADD_FAILURE() << "Qt warns: " << message.toStdString();
    if (type == QtFatalMsg)
        std::abort();
}

} // namespace

int main(int argc, char **argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    QTemporaryDir home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("HOME", home.path().toUtf8());
    for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        qunsetenv(name);
    qputenv("XDG_RUNTIME_DIR", home.path().toUtf8());
    qputenv("TZ", "UTC");
    qputenv("LC_ALL", "C.UTF-8");
    QStandardPaths::setTestModeEnabled(false);
    QLocale::setDefault(QLocale::c());
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    qInstallMessageHandler(takeMessage);
    const int result = RUN_ALL_TESTS();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return result;
}
