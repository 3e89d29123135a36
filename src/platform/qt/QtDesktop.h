#pragma once

#include "platform/Border.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/EventPump.h"
#include "platform/ProgramEnd.h"
#include "platform/ProgramPaths.h"
#include "platform/Registry.h"
#include "platform/Shell.h"
#include "platform/SystemVersion.h"
#include "platform/qt/QtDialogs.h"

/// The desktop's programs, started the way the desktop starts them.
class QtShell : public Shell
{
public:
    void open(const QString &target) override;
    void explore(const QString &folder) override;
    bool start(const QString &program, const QStringList &arguments) override;
    QString findProgram(const QString &name) const override;
    bool canOpen(const QString &file) const override;
};

class QtEventPump : public EventPump
{
public:
    explicit QtEventPump(const ProgramEnd &end) : m_end(end) {}
    void processEvents() override;

private:
    const ProgramEnd &m_end;
};

class QtClock : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

class QtSystemVersion : public SystemVersion
{
public:
    std::optional<WindowsVersionRecord> windowsVersion() const override;
    QString systemName() const override;
};

/// The registry of a system that has none.
class NoRegistry : public Registry
{
public:
    std::optional<RegistryValue> value(quint32, const QString &, const QString &) const override
    {
        return std::nullopt;
    }
};

/// The real parts of a Desktop, for a running QApplication.
class QtDesktop
{
public:
    explicit QtDesktop(const ProgramPaths &paths);

    const Desktop &desktop() const { return m_desktop; }

private:
    ProgramPaths m_paths;
    ProgramEnd m_end;
    QtDialogs m_dialogs;
    QtShell m_shell;
    QtEventPump m_pump;
    QtClock m_clock;
    QtSystemVersion m_version;
    Border m_border;
    NoRegistry m_registry;
    Desktop m_desktop;
};
