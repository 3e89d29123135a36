#include "platform/qt/QtDesktop.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QOperatingSystemVersion>
#include <QProcess>
#include <QStandardPaths>
#include <QSysInfo>
#include <QUrl>

void QtShell::open(const QString &target)
{
    const bool isAddress =
        target.contains(QStringLiteral("://")) || target.startsWith(QStringLiteral("mailto:"));
    QDesktopServices::openUrl(isAddress ? QUrl(target) : QUrl::fromLocalFile(target));
}

void QtShell::explore(const QString &folder)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(folder).absoluteFilePath()));
}

bool QtShell::start(const QString &program, const QStringList &arguments)
{
    return QProcess::startDetached(program, arguments);
}

QString QtShell::findProgram(const QString &name) const
{
    return QStandardPaths::findExecutable(name);
}

bool QtShell::canOpen(const QString &file) const
{
#ifdef Q_OS_LINUX
    // The desktop's own word: the program registered for the file's type, if any.
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("filetype"), file});
    if (!query.waitForFinished(2000) || query.exitCode() != 0)
        return false;
    const QString type = QString::fromUtf8(query.readAllStandardOutput()).trimmed();
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"), type});
    return query.waitForFinished(2000) && !query.readAllStandardOutput().trimmed().isEmpty();
#else
    return QFileInfo::exists(file);
#endif
}

void QtEventPump::processEvents()
{
    QCoreApplication::processEvents();
    m_end.unwindIfEnding();
}

std::optional<WindowsVersionRecord> QtSystemVersion::windowsVersion() const
{
    const QOperatingSystemVersion version = QOperatingSystemVersion::current();
    if (version.type() != QOperatingSystemVersion::Windows)
        return {};
    return WindowsVersionRecord{
        2, version.majorVersion(), version.minorVersion(), version.microVersion(), {}};
}

QString QtSystemVersion::systemName() const
{
    return QSysInfo::prettyProductName();
}

QtDesktop::QtDesktop(const ProgramPaths &paths)
    : m_paths(paths),
      m_end([](int code) { QCoreApplication::exit(code); }),
      m_dialogs(m_end),
      m_pump(m_end),
      m_border(m_dialogs, m_end),
      m_desktop{m_dialogs, m_shell, m_pump, m_clock, m_version, m_paths, m_end, m_border, m_registry}
{}
