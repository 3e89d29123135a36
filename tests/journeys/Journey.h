#pragma once

#include "Program.h"
#include "demodisc/DemoDisc.h"
#include "platform/qt/QtDesktop.h"
#include "shell/frmMain.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <gtest/gtest.h>

/// The whole program with its real engines, worked by its controls' names. The desktop around it is a test's:
/// its own program folder, scripted dialogs, and the real event pump.
class Journey : public ::testing::Test
{
protected:
    ~Journey() override
    {
        if (auto main = program.mainWindow())
            main->unload();
    }

    /// Makes a disc image for the program's drives and gives its plan.
    demodisc::DiscPlan insert(const demodisc::DiscPlan &plan)
    {
        QDir().mkpath(system.paths.DiscsFolder);
        demodisc::write(plan, (system.paths.DiscsFolder + QStringLiteral("/demo.cue")).toStdString());
        return plan;
    }

    /// Starts the program; the disc is in its list afterwards.
    void start(int tracks)
    {
        if (!QFile::exists(system.settingsFile()))
            system.write(QStringLiteral("settings.ini"), "[Other]\nDownload FreeDB=False\n");
        program.start();
        if (tracks > 0) {
            ASSERT_TRUE(waitFor([&] { return list().rowCount() == tracks; }));
        }
    }

    frmMain &main() { return *program.mainWindow(); }
    ReportListView &list() { return *control<ReportListView>(main(), QStringLiteral("lvwTracks")); }
    QString folder() { return control<QLineEdit>(main(), QStringLiteral("txtOutputDirectory"))->text(); }
    void click(const char *name) { control<QAbstractButton>(main(), QLatin1String(name))->click(); }

    /// The files that lie in the output folder, hidden ones too.
    QStringList files() { return QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    /// Presses the start button; returns when the job's window is closed. The closing box is answered, and
    /// `during` runs each time that something in the job's window may have changed.
    void rip(const std::function<void(QWidget &job)> &during = {})
    {
        QTimer watch;
        watch.setInterval(5);
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            QWidget *job = QApplication::activeModalWidget();
            if (during && job)
                during(*job);
        });
        watch.start();
        click("cmdStartRipping");
    }

    void expectCompleted()
    {
        const QString completed = QStringLiteral("Audio CD Ripping Completed!");
        system.dialogs.expectWholeBox({.text = completed, .title = completed});
    }

    TestDesktop system;
    QtEventPump pump{system.end};
    Desktop desktop{system.dialogs, system.shell, pump,          system.clock,   system.version,
                    system.paths,   system.end,   system.border, system.registry};
    Program program{desktop};
};
