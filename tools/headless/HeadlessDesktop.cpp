#include "headless/HeadlessDesktop.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <cstdio>
#include <cstdlib>

namespace {

void tellWhatMatters(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const bool ofPlatform = message.startsWith(QStringLiteral("This plugin does not support")) ||
                            message.startsWith(QStringLiteral("QStandardPaths: XDG_RUNTIME_DIR"));
    if (!ofPlatform)
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
    if (type == QtFatalMsg)
        std::abort();
}

} // namespace

void chooseHeadlessPlatform()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(tellWhatMatters);
}

HeadlessDesktop::HeadlessDesktop(const QString &executable)
    : m_real(ProgramPaths::of(QFileInfo(executable).absoluteFilePath())),
      m_desktop{m_real.desktop().dialogs,       m_shell,
                m_real.desktop().pump,          m_real.desktop().clock,
                m_real.desktop().systemVersion, m_real.desktop().paths,
                m_real.desktop().end,           m_real.desktop().border,
                m_real.desktop().registry}
{}
