#pragma once

#include "platform/qt/QtDesktop.h"

/// To be called before the application object is made: chooses the platform without a display, unless the
/// environment names another, and drops what that platform says of itself.
void chooseHeadlessPlatform();

/// The real parts of a Desktop but for the shell: nothing opens beside the program.
class HeadlessDesktop
{
public:
    /// For the program `executable`, which needs not exist: its folder counts.
    explicit HeadlessDesktop(const QString &executable);

    const Desktop &desktop() const { return m_desktop; }

private:
    class NoShell : public Shell
    {
    public:
        void open(const QString &) override {}
        void explore(const QString &) override {}
        bool start(const QString &, const QStringList &) override { return false; }
        QString findProgram(const QString &) const override { return {}; }
        bool canOpen(const QString &) const override { return false; }
    };

    QtDesktop m_real;
    NoShell m_shell;
    Desktop m_desktop;
};
