#pragma once

#include <QString>
#include <QStringList>

/// The desktop's verbs. What comes of them isn't told, but for `start`.
class Shell
{
public:
    virtual ~Shell() = default;

    /// Opens a file, a web address or a "mailto:" address with the program meant for it.
    virtual void open(const QString &target) = 0;
    /// Shows a folder in the file browser.
    virtual void explore(const QString &folder) = 0;
    /// Starts a program by itself; false where that fails.
    virtual bool start(const QString &program, const QStringList &arguments) = 0;
    /// The full path of a program in the search path; empty where it isn't installed.
    virtual QString findProgram(const QString &name) const = 0;
    /// Whether the desktop has a program that opens this kind of file.
    virtual bool canOpen(const QString &file) const = 0;
};
