#include "EachFault.h"
#include "Program.h"
#include "controls/ReportListView.h"
#include "demodisc/DemoDisc.h"
#include "platform/qt/QtDesktop.h"
#include "shell/frmMain.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <QListWidget>
#include <QPlainTextEdit>
#include <QTimer>

namespace {

/// Presses the first button of every box, and notes what it said.
class NotedBoxes : public ScriptedDialogs
{
public:
    BoxAnswer messageBox(QWidget *owner, const MessageBox &box) override
    {
        texts.append(box.text);
        if (owner)
            atBox(*owner);
        return BoxAnswer::Ok;
    }

    QStringList texts;
    std::function<void(QWidget &owner)> atBox;
};

struct Format
{
    const char *ending;
    int index; ///< of rdFormat
};

void PrintTo(const Format &format, std::ostream *out)
{
    *out << format.ending;
}

class RipFaults : public ::testing::TestWithParam<Format>
{
protected:
    RipFaults()
    {
        boxes.atBox = [this](QWidget &job) { readWords(job); };
    }
    ~RipFaults() override
    {
        if (auto main = program.mainWindow())
            main->unload();
    }

    void start()
    {
        QDir().mkpath(system.paths.DiscsFolder);
        demodisc::write({.title = "Disc", .performer = "Nobody", .tracks = {{1, 40, "One"}, {2, 40, "Two"}}},
                        (system.paths.DiscsFolder + QStringLiteral("/demo.cue")).toStdString());
        system.write(QStringLiteral("settings.ini"), "[Other]\nDownload FreeDB=False\n");
        program.start();
        main = program.mainWindow().get();
        ASSERT_TRUE(waitFor([&] { return list().rowCount() == 2; }));
        control<QAbstractButton>(*main, QStringLiteral("rdFormat_%1").arg(GetParam().index))->click();
        folder = control<QLineEdit>(*main, QStringLiteral("txtOutputDirectory"))->text();
        QDir().mkpath(folder);
    }

    ReportListView &list() { return *control<ReportListView>(*main, QStringLiteral("lvwTracks")); }

    QString track(int number) const
    {
        return folder + QStringLiteral("Track0%1.").arg(number) + QLatin1StringView(GetParam().ending);
    }

    /// All that the job's window says.
    void readWords(QWidget &job)
    {
        const auto *log = job.findChild<QListWidget *>(QStringLiteral("lstStatus"));
        if (!log)
            return;
        words = control<QPlainTextEdit>(job, QStringLiteral("txtStatus"))->toPlainText().split(u'\n');
        for (int i = 0; i < log->count(); ++i)
            words.append(log->item(i)->text());
    }

    /// Rips both tracks. A job that can't go on is closed as a user closes it.
    void rip()
    {
        words.clear();
        boxes.texts.clear();
        list().setChecked(1, true);
        list().setChecked(2, true);
        QTimer watch;
        watch.setInterval(2);
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            QWidget *job = QApplication::activeModalWidget();
            if (!job)
                return;
            readWords(*job);
            if (!words.filter(QStringLiteral("can't be")).isEmpty() || !notStarted().isEmpty())
                control<QPushButton>(*job, QStringLiteral("cmdCancel"))->click();
        });
        watch.start();
        control<QAbstractButton>(*main, QStringLiteral("cmdStartRipping"))->click();
    }

    QStringList notStarted() const { return boxes.texts.filter(QStringLiteral("start")); }
    bool wasTold() const
    {
        static const QRegularExpression trouble(
            QStringLiteral("Error|Could Not|could not|can't be|Can not|Aborted"));
        return !(words + boxes.texts).filter(trouble).isEmpty();
    }

    TestDesktop system;
    NotedBoxes boxes;
    Border border{boxes, system.end};
    QtEventPump pump{system.end};
    Desktop desktop{boxes,        system.shell, pump,   system.clock,   system.version,
                    system.paths, system.end,   border, system.registry};
    Program program{desktop};
    frmMain *main = nullptr;
    QString folder;
    QStringList words;
};

TEST_P(RipFaults, eachTrackIsTheOldFileOrTheNewOneAndTroubleIsTold)
{
    ASSERT_NO_FATAL_FAILURE(start());
    rip();
    ASSERT_FALSE(wasTold()) << words.join(u'\n').toStdString();
    const QByteArray wanted[] = {contentOf(track(1)), contentOf(track(2))};
    ASSERT_GT(wanted[0].size(), 1000);
    withEachFault(
        folder.chopped(1),
        [&] {
            QFile::remove(track(2));
            QFile old(track(1));
            ASSERT_TRUE(old.open(QIODevice::WriteOnly));
            old.write("old");
        },
        [&] { rip(); },
        [&](bool failed) {
            const QByteArray first = contentOf(track(1));
            const QByteArray second = contentOf(track(2));
            EXPECT_TRUE(first == "old" || first.size() == wanted[0].size()) << first.size();
            EXPECT_TRUE(second == "no file" || second.size() == wanted[1].size()) << second.size();
            // What is missing is told. So may be what only may get lost, as when a folder can't be flushed.
            const bool whole = first != "old" && second != "no file";
            EXPECT_TRUE(whole || wasTold()) << (words + boxes.texts).join(u'\n').toStdString();
            EXPECT_TRUE(failed || (whole && !wasTold()));
            EXPECT_EQ(namesIn(folder).filter(QStringLiteral("part")), QStringList());
            // A VQF job that is ended leaves the WAV files that are no VQF files yet.
            QStringList names = namesIn(folder);
            if (QByteArray(GetParam().ending) == "vqf")
                names.removeIf([](const QString &name) { return name.endsWith(QStringLiteral(".wav")); });
            EXPECT_EQ(names.size(), second == "no file" ? 1 : 2);
            EXPECT_EQ(system.log.take().filter(QStringLiteral("end")), QStringList()); // it goes on
            EXPECT_TRUE(program.mainWindow());
        });
}

INSTANTIATE_TEST_SUITE_P(Formats, RipFaults,
                         ::testing::Values(Format{"mp3", 0}, Format{"wav", 1}, Format{"wma", 2},
                                           Format{"vqf", 3}, Format{"ogg", 4}),
                         [](const auto &info) { return std::string(info.param.ending); });

} // namespace
