#include "shell/frmMain.h"

#include "base/Deployment.h"
#include "controls/CommandBar.h"
#include "testkit/FakeCDRipperX.h"
#include "testkit/FakeEncoders.h"
#include "testkit/FakeNCTAudioInformation.h"
#include "testkit/Printing.h"
#include "testkit/TabOrder.h"
#include "testkit/TestDesktop.h"
#include "testkit/Ui.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

class frmMainTest : public ::testing::Test
{
protected:
    frmMainTest()
    {
        auto fakeEngine = std::make_unique<FakeCDRipperX>(system.log);
        engine = fakeEngine.get();
        engine->drives = {{QStringLiteral("/dev/sr0"), QStringLiteral("MAKER"), QStringLiteral("Model 5")}};
        engine->tracks = {{0, 15000}, {15000, 15000}, {30000, 15000}};
        parts.CDRipperX1 = std::move(fakeEngine);
        auto fakeMp3 = std::make_unique<FakeMP3Encoder>(system.log);
        fakeMp3->setObjectName(QStringLiteral("mp3"));
        parts.MP3EncoderX1 = std::move(fakeMp3);
        parts.WMAEncoderX1 = std::make_unique<FakeWMAEncoder>(system.log);
        parts.VorbisEncoderX1 = std::make_unique<FakeVorbisEncoder>(system.log);
        parts.AInfo = std::make_unique<FakeNCTAudioInformation>(system.log);
        parts.makeVEnc = [] { return nullptr; };
        system.write(QStringLiteral("settings.ini"), "[Other]\nDownload FreeDB=False\n");
    }

    /// Starts the program's main window, and drops what the start-up wrote into the log.
    void start()
    {
        form = makeForm<frmMain>(system.desktop(), std::move(parts));
        form->showModeless();
        startLog = system.log.take();
    }

    /// Starts on the system that the notice is about, and closes it where it comes.
    bool showsNoticeAtStart(const QByteArray &known)
    {
        system.version.record = {2, 6, 0, 0, {}};
        system.write(QStringLiteral("settings.ini"), "[Other]\nDownload FreeDB=False\nIKnow=" + known + "\n");
        bool shows = false;
        QTimer noticed;
        QObject::connect(&noticed, &QTimer::timeout, [&] {
            if (QWidget *notice = QApplication::activeModalWidget()) {
                shows = notice->objectName() == u"frmVista";
                notice->close();
            }
        });
        noticed.start(0);
        start();
        return shows;
    }

    template <typename Control>
    Control *at(const QString &name)
    {
        return control<Control>(*form, name);
    }

    void trigger(const char *array, int index)
    {
        at<QAction>(QStringLiteral("%1_%2").arg(QLatin1String(array)).arg(index))->trigger();
    }

    ReportListView &list() { return *at<ReportListView>(QStringLiteral("lvwTracks")); }
    QLineEdit &folder() { return *at<QLineEdit>(QStringLiteral("txtOutputDirectory")); }
    void pick(int format) { at<OptionButton>(QStringLiteral("rdFormat_%1").arg(format))->click(); }
    QString name(int row) { return list().text(row, SaveAsColumn); }

    TestDesktop system;
    MainWindowParts parts;
    FakeCDRipperX *engine = nullptr;
    std::shared_ptr<frmMain> form;
    QStringList startLog;
};

TEST_F(frmMainTest, theStartReadsTheFirstDiscAndThenTheSettings)
{
    start();
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Tonelift - Version ") + Deployment::ProductVersion);
    auto *devices = at<DropDownList>(QStringLiteral("cboDevices"));
    EXPECT_EQ(devices->currentText(), QStringLiteral("/dev/sr0: MAKER Model 5"));
    EXPECT_EQ(name(3), QStringLiteral("Track03.mp3"));
    EXPECT_EQ(startLog.mid(0, 3), (QStringList{QStringLiteral("SelectDrive 0"), QStringLiteral("SetSpeed 0"),
                                               QStringLiteral("mp3.QualityMode = 1")}));
    EXPECT_FALSE(
        startLog.filter(QStringLiteral("SetEncoder")).size()); // none is bound before the first choice
    EXPECT_EQ(folder().text(), system.folder() + QStringLiteral("/mp3/"));
    EXPECT_TRUE(QDir(folder().text()).exists());
    EXPECT_FALSE(QDir(system.folder() + QStringLiteral("/wma")).exists());
    EXPECT_FALSE(at<QAction>(QStringLiteral("mnuHelpSub_2"))->isVisible());
    EXPECT_TRUE(at<QAction>(QStringLiteral("mnuToolsSub_9"))->isChecked());
    EXPECT_TRUE(list().gridLines());
}

TEST_F(frmMainTest, theNoticeAboutTheSystemComesUntilItIsKnown)
{
    EXPECT_TRUE(showsNoticeAtStart("False"));
}

TEST_F(frmMainTest, aKnownNoticeDoesNotComeAgain)
{
    EXPECT_FALSE(showsNoticeAtStart("True"));
}

TEST_F(frmMainTest, withoutADriveItStartsWithoutAWord)
{
    engine->drives.clear();
    start();
    EXPECT_EQ(at<DropDownList>(QStringLiteral("cboDevices"))->count(), 0);
    EXPECT_EQ(at<DropDownList>(QStringLiteral("cboSpeeds"))->count(), 0);
    EXPECT_EQ(list().rowCount(), 0);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton); // nothing happens
    system.dialogs.expectWholeBox({.text = QStringLiteral("No tracks in the list to edit!")});
    trigger("mnuFileSub", 4);
    system.dialogs.expectBox(QStringLiteral("No tracks in the list to edit!"));
    trigger("Toolbar1", 2);
    system.dialogs.expectBox(
        QStringLiteral("No CD in the selected CD-ROM device, please insert an audio CD."));
    trigger("Toolbar1", 3);
    system.dialogs.expectBox(QStringLiteral("No tracks in the list to play!"));
    trigger("Toolbar1", 8);
    system.dialogs.expectBox(QStringLiteral("Please check some tracks from the list to extract!"));
    trigger("Toolbar1", 1);
}

TEST_F(frmMainTest, theFormatsStandBetweenTheFolderAndTheStart)
{
    start();
    QStringList captions;
    for (int format = 0; format < 5; ++format)
        captions.append(at<OptionButton>(QStringLiteral("rdFormat_%1").arg(format))->text());
    EXPECT_EQ(captions.join(u'|'), QStringLiteral("MP3|WAV|WMA|VQF|OGG Vorbis"));
    EXPECT_TRUE(tabOrder(*form).join(u' ').contains(
        QStringLiteral("cmdIE rdFormat_0 rdFormat_1 rdFormat_2 rdFormat_3 rdFormat_4 cmdStartRipping")));
}

TEST_F(frmMainTest, aFormatBindsItsEncoderRenamesTheRowsAndShowsItsFolder)
{
    start();
    folder().setText(QStringLiteral("/typed"));
    pick(3);
    EXPECT_EQ(system.log.take(), QStringList{QStringLiteral("UseEncoder False")});
    EXPECT_EQ(name(1), QStringLiteral("Track01.wav"));
    EXPECT_EQ(folder().text(), system.folder() + QStringLiteral("/vqf/"));
    pick(0);
    EXPECT_EQ(system.log.take(),
              (QStringList{QStringLiteral("SetEncoder mp3"), QStringLiteral("UseEncoder True")}));
    EXPECT_EQ(folder().text(), system.folder() + QStringLiteral("/mp3/")); // what was typed is gone
    form->discInfo().TrackTitles = QStringLiteral("One|Two");
    form->UpdateFileNamesWithTitles();
    EXPECT_EQ(name(2) + name(3), QStringLiteral("Two.mp3Track03.mp3"));
}

TEST_F(frmMainTest, aTrackIsRenamedByDoubleClickOrEntry)
{
    start();
    EXPECT_EQ(list().selectedRow(), 1); // a disc that was read can be played at once
    list().clearSelection();
    const QString prompt =
        QStringLiteral("Old tracks name is: \nTrack02.mp3\n\nPlease enter new tracks name: ");
    system.dialogs.expectBox(
        QStringLiteral("Please highlight the item that you want to edit the track's name!"));
    trigger("mnuFileSub", 4);
    list().selectRow(2);
    system.dialogs.expectInput(prompt, QStringLiteral("Track02.mp3"), QString()); // a cancel changes nothing
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(system.dialogs.lastInput().title, QStringLiteral("Rename tracks"));
    system.dialogs.expectInput(prompt, QStringLiteral("Track02.mp3"), QStringLiteral("  a: \"b\"?.xyz "));
    trigger("mnuFileSub", 4);
    EXPECT_EQ(name(2), QStringLiteral("a: _b__.xyz"));
}

TEST_F(frmMainTest, theTwoBoxesAreOneAndTheMenuLeavesThemAlone)
{
    start();
    auto *all = at<TickBox>(QStringLiteral("chkAll"));
    auto *all2 = at<TickBox>(QStringLiteral("chkAll2"));
    all2->click();
    EXPECT_TRUE(all->isTicked());
    EXPECT_TRUE(list().isChecked(1) && list().isChecked(3));
    trigger("mnuFileSub", 2);
    EXPECT_FALSE(list().isChecked(1));
    EXPECT_TRUE(all->isTicked());
    trigger("mnuFileSub", 1);
    EXPECT_TRUE(list().isChecked(2));
    trigger("mnuFileSub", 12); // a new reading: rows unchecked, whatever the boxes show
    EXPECT_FALSE(list().isChecked(2));
    EXPECT_TRUE(all2->isTicked());
}

TEST_F(frmMainTest, aFolderIsPickedMadeAndExplored)
{
    start();
    system.dialogs.expectFolder(system.folder() + QStringLiteral("/picked"));
    at<QPushButton>(QStringLiteral("cmdFolder"))->click();
    EXPECT_EQ(folder().text(), system.folder() + QStringLiteral("/picked/"));
    EXPECT_TRUE(QDir(folder().text()).exists());
    system.dialogs.expectFolder(QString());
    at<QPushButton>(QStringLiteral("cmdFolder"))->click();
    folder().setText(system.folder() + QStringLiteral("/typed"));
    at<QPushButton>(QStringLiteral("cmdIE"))->click();
    EXPECT_TRUE(QDir(folder().text()).exists());
    EXPECT_EQ(system.log.take().last(), QStringLiteral("explore ") + folder().text());
}

TEST_F(frmMainTest, aJobIsRefusedForRepeatedNamesAndRunsOtherwise)
{
    start();
    auto *timer = at<QTimer>(QStringLiteral("Timer1"));
    list().setText(2, SaveAsColumn, QStringLiteral("Track01.mp3"));
    system.dialogs.expectWholeBox(
        {.text = QStringLiteral("The following file name(s) are repeated in the list, \n"
                                "please change them before continue!\nTrack01.mp3"),
         .icon = BoxIcon::Critical});
    trigger("mnuFileSub", 3);
    list().setText(2, SaveAsColumn, QStringLiteral("Two.mp3"));
    list().setChecked(2, true);
    folder().setText(system.folder() + QStringLiteral("/new/deep/"));
    system.dialogs.expectBox(QStringLiteral("Audio CD Ripping Completed!"), BoxAnswer::Ok,
                             QStringLiteral("Audio CD Ripping Completed!"));
    QTimer::singleShot(0, form.get(), [&] {
        EXPECT_FALSE(timer->isActive());
        QWidget *job = QApplication::activeModalWidget();
        ASSERT_TRUE(job);
        EXPECT_EQ(job->objectName(), QStringLiteral("frmExtract"));
        fireTimer(control<QTimer>(*job, QStringLiteral("Timer1")));
        Q_EMIT engine->ExtractionPrepared();
        Q_EMIT engine->ExtractionComplete();
    });
    at<QPushButton>(QStringLiteral("cmdStartRipping"))->click();
    EXPECT_TRUE(timer->isActive());
    EXPECT_TRUE(QDir(folder().text()).exists());
    EXPECT_EQ(system.log.take(),
              (QStringList{QStringLiteral("SetEncoder mp3"), QStringLiteral("UseEncoder True"),
                           QStringLiteral("ClearTracks"),
                           QStringLiteral("AddTrack 2 %1Two.mp3 2").arg(folder().text()),
                           QStringLiteral("StartExtraction"), QStringLiteral("explore ") + folder().text()}));
}

TEST_F(frmMainTest, thePauseButtonFlipsWhateverIsPlaying)
{
    start();
    auto *button = at<QAction>(QStringLiteral("Toolbar1_9"));
    auto *entry = at<QAction>(QStringLiteral("mnuFileSub_7"));
    button->trigger();
    EXPECT_EQ(button->text() + entry->text(), QStringLiteral("Resum&Resume"));
    EXPECT_TRUE(button->isChecked());
    trigger("mnuFileSub", 8); // Stop doesn't touch it
    entry->trigger();
    EXPECT_EQ(button->text() + entry->text(), QStringLiteral("PauseP&ause"));
    EXPECT_FALSE(button->isChecked());
    list().selectRow(3);
    trigger("Toolbar1", 8);
    trigger("mnuFileSub", 6);
    trigger("Toolbar1", 6);
    trigger("mnuFileSub", 11);
    EXPECT_EQ(system.log.take(), (QStringList{QStringLiteral("PausePlay"), QStringLiteral("StopPlay"),
                                              QStringLiteral("ResumePlay"), QStringLiteral("PlayTrack 3"),
                                              QStringLiteral("PlayTrack 3"), QStringLiteral("EjectTray"),
                                              QStringLiteral("LoadTray")}));
    trigger("mnuFileSub", 12);
    list().clearSelection();
    system.dialogs.expectBox(QStringLiteral("Run-time error '91':\n\nObject variable not set"));
    trigger("mnuFileSub", 6);
}

TEST_F(frmMainTest, theFlatToolbarLastsAndABadNumberIsPassedOver)
{
    start();
    auto *bar = at<CommandBar>(QStringLiteral("Toolbar1"));
    trigger("mnuToolsSub", 9);
    EXPECT_EQ(bar->barStyle(), CommandBar::Standard);
    QFile file(system.settingsFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("[Advanced]\nToolbar_Style=0\n"));
    trigger("mnuToolsSub", 9);
    EXPECT_EQ(bar->barStyle(), CommandBar::Flat);
}

TEST_F(frmMainTest, everyCommandBearsItsCaptionAndShortcut)
{
    start();
    const auto captions = [&](const char *array, int count) {
        QStringList texts;
        for (int index = 1; index <= count; ++index) {
            const auto *action = at<QAction>(QStringLiteral("%1_%2").arg(QLatin1String(array)).arg(index));
            texts << (action->isSeparator() ? QStringLiteral("-") : action->text()) +
                         (action->shortcut().isEmpty() ? QString() : u'@' + action->shortcut().toString());
        }
        return texts.join(u'|');
    };
    EXPECT_EQ(captions("mnuFileSub", 14),
              QStringLiteral(
                  "&Check All Tracks|&Uncheck All Tracks|&Start Ripping|&Edit Track's File Name@Ctrl+E|-|"
                  "&Play@Ctrl+P|P&ause@Ctrl+A|S&top@Ctrl+S|-|&Eject CD-ROM|&Load CD-ROM|&Refresh|-|"
                  "E&xit@Ctrl+X"));
    EXPECT_EQ(
        captions("mnuToolsSub", 9),
        QStringLiteral("&Audio Converter Tool ...|-|&Download CD Information from %1...|"
                       "&Edit CD Tracks Information...|&Edit File's ID3 Tag(MP3/OGG)...|-|&Options ...|-|"
                       "&Flat Toolbar")
            .arg(Deployment::FreeDbName));
    EXPECT_EQ(captions("mnuHelpSub", 9),
              QStringLiteral("Help &Contents@F1|Having problems using on Windows Vista?|-|&Visit Website|"
                             "&Email Support|-|&Related Products|-|&About ..."));
    EXPECT_EQ(captions("Toolbar1", 17),
              QStringLiteral("Extract|Edit|FreeDB|-|Refresh|Eject|-|Play|Pause|Stop|-|"
                             "Convert|Options|Help|Home|-|Exit"));
    trigger("mnuHelpSub", 5);
    trigger("Toolbar1", 15);
    EXPECT_EQ(system.log.take(), (QStringList{QStringLiteral("open mailto:") + Deployment::SupportAddress,
                                              QStringLiteral("open ") + Deployment::WebAddress}));
}

TEST_F(frmMainTest, theEntryAsksBeforeClosingAndTheCloseBoxDoesNot)
{
    start();
    const MessageBox question{.text = QStringLiteral("Are you sure to close this program?"),
                              .icon = BoxIcon::Question,
                              .buttons = BoxButtons::YesNo,
                              .title = QStringLiteral("Close the program")};
    system.dialogs.expectWholeBox(question, BoxAnswer::No);
    trigger("mnuFileSub", 14);
    EXPECT_TRUE(form->isVisible());
    system.dialogs.expectWholeBox(question, BoxAnswer::Yes);
    trigger("Toolbar1", 17);
    EXPECT_FALSE(form->isVisible());
}

} // namespace
