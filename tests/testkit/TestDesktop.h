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
#include "testkit/CallLog.h"
#include "testkit/ScriptedDialogs.h"

#include <QTemporaryDir>
#include <QTimeZone>
#include <map>

/// Writes each verb into the log: "open X", "explore X", "start X".
class FakeShell : public Shell
{
public:
    explicit FakeShell(CallLog &log) : m_log(log) {}

    void open(const QString &target) override { m_log.add(QStringLiteral("open ") + target); }
    void explore(const QString &folder) override { m_log.add(QStringLiteral("explore ") + folder); }
    bool start(const QString &program, const QStringList &arguments) override
    {
        if (starts)
            m_log.add((QStringList{QStringLiteral("start"), program} + arguments).join(u' '));
        return starts;
    }
    QString findProgram(const QString &name) const override { return programs.value(name); }
    bool canOpen(const QString &) const override { return opens; }

    QMap<QString, QString> programs; ///< path of each installed program
    bool opens = true;
    bool starts = true;

private:
    CallLog &m_log;
};

/// Handles no event by itself; its n-th call (from 1) runs the n-th action.
class ScriptedPump : public EventPump
{
public:
    void processEvents() override
    {
        const auto action = actions.find(++calls);
        if (action != actions.end())
            action->second();
    }

    std::map<int, std::function<void()>> actions;
    int calls = 0;
};

class FakeClock : public Clock
{
public:
    QDateTime now() const override { return present; }
    QDateTime present = QDateTime(QDate(2024, 3, 1), QTime(12, 0), QTimeZone::utc());
};

class FakeSystemVersion : public SystemVersion
{
public:
    std::optional<WindowsVersionRecord> windowsVersion() const override { return record; }
    QString systemName() const override { return name; }

    std::optional<WindowsVersionRecord> record;
    QString name = QStringLiteral("Test System 1");
};

/// Holds the values that a test puts into it, by "key\\name" below the local machine.
class FakeRegistry : public Registry
{
public:
    std::optional<RegistryValue> value(quint32 root, const QString &key, const QString &name) const override
    {
        const QString path = key + u'\\' + name;
        return root == LocalMachine && values.contains(path) ? std::optional(values[path]) : std::nullopt;
    }

    QMap<QString, RegistryValue> values;
};

/// A Desktop of doubles over a program folder of its own, which goes with it.
class TestDesktop
{
public:
    TestDesktop();
    /// Deletes the forms that wait for it: nothing of a window outlives its desktop.
    ~TestDesktop();

    const Desktop &desktop() const { return m_desktop; }
    QString folder() const { return paths.ProgramFolder; }
    QString settingsFile() const { return paths.SettingsFilePath(); }
    /// Puts a file into the program folder and gives its path.
    QString write(const QString &name, const QByteArray &content) const;

    CallLog log;
    ScriptedDialogs dialogs;
    FakeShell shell{log};
    ScriptedPump pump;
    FakeClock clock;
    FakeSystemVersion version;
    ProgramPaths paths;
    FakeRegistry registry;
    /// Ending the program is written into the log: "end N".
    ProgramEnd end{[this](int code) { log.add(QStringLiteral("end %1").arg(code)); }};
    Border border{dialogs, end};

private:
    QTemporaryDir m_folder;
    Desktop m_desktop;
};
