#include "ConverterFixture.h"
#include "base/Deployment.h"
#include "converter/WmaProfiles.h"

#include <QLineEdit>

namespace {

class StepsTest : public ConverterFixture
{};

TEST_F(StepsTest, theWindowStartsWithItsLookTheProfilesAndItsFirstStep)
{
    bool askedAgain = false;
    atPass(1, [&] { // the one pass of the start: the window is the one instance already
        askedAgain = true;
        EXPECT_EQ(system.log.take(),
                  (QStringList{u"FileW.ExtendedFormats = True"_s, u"FileR.ExtendedFormats = True"_s}));
        EXPECT_FALSE(slot.form()->styleSheet().isEmpty());
        EXPECT_EQ(control<DropDownList>(*slot.form(), u"cboWMASettings"_s)->count(), 0);
    });
    window = slot.form().get();
    window->showModeless();
    EXPECT_TRUE(askedAgain);
    const QStringList calls = system.log.take();
    ASSERT_EQ(calls.size(), 2 + 51 * 2);
    EXPECT_EQ(calls.mid(0, 4),
              (QStringList{u"FileW.ExtendedFormats = True"_s, u"FileR.ExtendedFormats = True"_s,
                           u"FileR.SelectWMAProfile(1)"_s, u"FileR.FormatString -> Profile 1"_s}));
    EXPECT_EQ(calls.mid(102),
              (QStringList{u"FileR.SelectWMAProfile(51)"_s, u"FileR.FormatString -> Profile 51"_s}));
    EXPECT_EQ(window->windowTitle(), u"Audio Converter for Tonelift - Step 1: Choose Source File Format"_s);
    EXPECT_EQ(shownFrames(), QStringList{u"frmSrcFmt"_s});
    EXPECT_FALSE(isEnabled(u"cmdLast"_s));
    EXPECT_TRUE(isEnabled(u"cmdNext"_s));
    EXPECT_FALSE(window->isModal());
    EXPECT_EQ(get<QWidget>(u"cmdAdd"_s)->cursor().shape(), Qt::PointingHandCursor);
    EXPECT_EQ(get<QLineEdit>(u"txtFolder"_s)->text(), system.folder() + u"/output"_s);
    EXPECT_EQ(text(u"lblSrcNote"_s), text(u"lblOutNote"_s));
    EXPECT_EQ(text(u"lblOutNote"_s),
              u"If you need to convert WMA format, please download WMFdist.exe from "_s +
                  Deployment::WmfDistAddress + u" and install it to you computer"_s);
}

TEST_F(StepsTest, eachStepShowsItsFrameAndGoesBackWithoutUndoingAnything)
{
    struct Page
    {
        QString option, frame, caption;
    };
    const Page pages[] = {{u"rdDesMP3"_s, u"frmMP3Set"_s, u"Step 4: Set MP3 Settings"_s},
                          {u"rdDesWAV"_s, u"frmWAVSet"_s, u"Step 4: Set WAV Settings"_s},
                          {u"rdDesWMA"_s, u"frmWMASet"_s, u"Step 4: Set WMA Settings"_s},
                          {u"rdDesOGG"_s, u"frmOggSet"_s, u"Step 4: Set OGG Settings"_s}};
    open();
    press(u"cmdNext"_s);
    EXPECT_EQ(shownFrames(), QStringList{u"frmSource"_s});
    EXPECT_FALSE(isEnabled(u"cmdNext"_s));
    EXPECT_TRUE(isEnabled(u"cmdLast"_s));
    EXPECT_EQ(window->focusWidget()->objectName(), u"cmdAdd"_s); // never the button that quits
    add({u"/a.mp3"_s});
    press(u"cmdNext"_s);
    for (const Page &page : pages) {
        EXPECT_EQ(shownFrames(), QStringList{u"frmOutFmt"_s});
        choose(page.option);
        press(u"cmdNext"_s);
        EXPECT_EQ(shownFrames(), QStringList{page.frame});
        EXPECT_EQ(window->windowTitle(), u"Audio Converter for Tonelift - "_s + page.caption);
        press(u"cmdLast"_s);
    }
    for (int step = 3; step < 6; ++step)
        press(u"cmdNext"_s);
    EXPECT_EQ(shownFrames(), QStringList{u"frmConvert"_s});
    EXPECT_EQ(nextCaption(), u"&Convert"_s);
    press(u"cmdLast"_s);
    EXPECT_EQ(shownFrames(), QStringList{u"frmOtherSet"_s});
    EXPECT_EQ(nextCaption(), u"&Next >>"_s);
    for (int step = 5; step > 1; --step)
        press(u"cmdLast"_s);
    EXPECT_FALSE(isEnabled(u"cmdLast"_s));
    press(u"cmdNext"_s);
    EXPECT_TRUE(isEnabled(u"cmdNext"_s)); // the rows are still there
    EXPECT_EQ(rows(), QStringList{u"/a.mp3"_s});
}

TEST_F(StepsTest, aSourceOfMp3OrWavProposesTheOtherOneAsOutput)
{
    open();
    EXPECT_TRUE(get<OptionButton>(u"rdDesWAV"_s)->isSelected());
    choose(u"rdSrcWAV"_s);
    EXPECT_TRUE(get<OptionButton>(u"rdDesMP3"_s)->isSelected());
    get<OptionButton>(u"rdSrcMP3"_s)->click();
    EXPECT_TRUE(get<OptionButton>(u"rdDesWAV"_s)->isSelected());
    choose(u"rdDesOGG"_s);
    choose(u"rdSrcWMA"_s);
    choose(u"rdSrcOGG"_s);
    EXPECT_TRUE(get<OptionButton>(u"rdDesOGG"_s)->isSelected());
}

TEST_F(StepsTest, anImpossibleFormatHoldsTheUserOnItsPage)
{
    open();
    goToLastStep({u"/a.mp3"_s});
    for (int step = 6; step > 4; --step)
        press(u"cmdLast"_s);
    writer->impossible = QStringList{u"SetWAVFormat(6000, 2, 5)"_s};
    pick(u"cboWAVFrequency"_s, 0);
    pick(u"cboWAVBits"_s, 3);
    system.dialogs.expectWholeBox({.text = u"The WAV settings is not valid, please reset it to continue!"_s,
                                   .icon = BoxIcon::Critical});
    press(u"cmdNext"_s);
    EXPECT_EQ(shownFrames(), QStringList{u"frmWAVSet"_s});
    press(u"cmdLast"_s);
    choose(u"rdDesOGG"_s);
    press(u"cmdNext"_s);
    system.log.take();
    writer->oggPossible = false;
    system.dialogs.expectWholeBox(
        {.text = u"The OGG Vorbis settings is not valid, please reset it to continue!"_s,
         .icon = BoxIcon::Critical});
    press(u"cmdNext"_s);
    EXPECT_EQ(shownFrames(), QStringList{u"frmOggSet"_s});
    EXPECT_EQ(system.log.take(), QStringList{u"FileW.CheckOGGFormat(44100, 2, 128, 0, 0) -> False"_s});
    tick(u"chkOGGEncoder"_s); // the quality mode is never tested
    press(u"cmdNext"_s);
    EXPECT_EQ(shownFrames(), QStringList{u"frmOtherSet"_s});
}

TEST_F(StepsTest, theFolderIsMadeOnLeavingTheFifthStepAndAFailureHoldsNobody)
{
    open();
    goToLastStep({u"/a.mp3"_s});
    EXPECT_TRUE(QFileInfo(system.folder() + u"/output"_s).isDir());
    press(u"cmdLast"_s);
    system.dialogs.expectFolder(u"  "_s);
    press(u"cmdFolder"_s);
    EXPECT_EQ(get<QLineEdit>(u"txtFolder"_s)->text(), system.folder() + u"/output"_s);
    const QString blocked = system.write(u"file"_s, "x") + u"/deeper"_s;
    system.dialogs.expectFolder(blocked + u' ');
    press(u"cmdFolder"_s);
    EXPECT_EQ(get<QLineEdit>(u"txtFolder"_s)->text(), blocked);
    system.dialogs.expectBox(u"Create directory error: "_s + blocked, BoxAnswer::Ok, u"Error"_s);
    press(u"cmdNext"_s);
    EXPECT_EQ(shownFrames(), QStringList{u"frmConvert"_s});
}

TEST_F(StepsTest, theLastStepShowsWhatWillBeDoneEachTimeItIsEntered)
{
    open();
    goToLastStep({u"/a.mp3"_s, u"/b.mp3"_s});
    const auto shown = [this] {
        return QStringList{text(u"skTotalFiles"_s),    text(u"skConvertedFiles"_s),
                           text(u"skInputFormat"_s),   text(u"skOutputFormat"_s),
                           text(u"skFolder"_s),        text(u"skOutputFormatString"_s),
                           text(u"skConvertingFile"_s)};
    };
    EXPECT_EQ(shown(), (QStringList{u"2"_s, u"0"_s, u"MP3"_s, u"WAV"_s, system.folder() + u"/output"_s,
                                    u"SetWAVFormat(44100, 2, 16)"_s, QString()}));
    for (int step = 6; step > 4; --step)
        press(u"cmdLast"_s);
    pick(u"cboWAVBits"_s, 4);
    press(u"cmdNext"_s);
    press(u"cmdNext"_s);
    EXPECT_EQ(text(u"skOutputFormatString"_s), u"SetWAVFormat(44100, 2, 8)"_s);
    EXPECT_EQ(text(u"lblCurPer"_s) + text(u"lblTotalPer"_s), u"0%0%"_s);
}

TEST_F(StepsTest, enterGoesOnAndEscapeDoesNothing)
{
    open();
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(window->isVisible());
    get<QPushButton>(u"cmdQuit"_s)->setFocus();
    QTest::keyClick(get<QPushButton>(u"cmdQuit"_s), Qt::Key_Return);
    EXPECT_EQ(shownFrames(), QStringList{u"frmSource"_s});
}

TEST_F(StepsTest, helpAndTheInstallersOpenOutsideAndTheirTextKeepsNoFocus)
{
    const QString help = system.write(u"tonelift.chm"_s, "x");
    open();
    goToLastStep({u"/a.mp3"_s}, u"rdDesWMA"_s);
    press(u"cmdLast"_s);
    press(u"cmdLast"_s);
    ASSERT_TRUE(waitFor([this] { return window->isActiveWindow(); }));
    system.log.take();
    press(u"cmdHelp"_s);
    QTest::mouseClick(get<LinkText>(u"txtWMF9"_s), Qt::LeftButton);
    EXPECT_EQ(window->focusWidget()->objectName(), u"cmdNext"_s);
    QTest::mouseClick(get<LinkText>(u"txtWMF7"_s), Qt::LeftButton);
    EXPECT_EQ(system.log.take(), (QStringList{u"open "_s + help, u"open "_s + Deployment::WmfDistAddress,
                                              u"open "_s + Deployment::WmfDist7Address}));
    EXPECT_TRUE(Deployment::WmfDistAddress.endsWith(u"/download/wmfdist.exe"_s));
    EXPECT_TRUE(Deployment::WmfDist7Address.endsWith(u"/download/wmfdist7.exe"_s));
    EXPECT_TRUE(get<QWidget>(u"txtWMF7"_s)->isHidden());
}

TEST_F(StepsTest, theAboutBoxIsModalAndItsLinksOpenOutside)
{
    open();
    QTimer::singleShot(0, window, [&] {
        QWidget *box = QApplication::activeModalWidget();
        ASSERT_TRUE(box && waitFor([box] { return box->isActiveWindow(); }));
        EXPECT_EQ(box->windowTitle(), u"About Audio Converter for Tonelift ..."_s);
        EXPECT_EQ(control<QLabel>(*box, u"skinVer"_s)->text(), u"Version "_s + Deployment::ProductVersion);
        QTest::mouseClick(control<LinkText>(*box, u"txtWebsite"_s), Qt::LeftButton);
        QTest::mouseClick(control<LinkText>(*box, u"txtSupport"_s), Qt::LeftButton);
        EXPECT_EQ(box->focusWidget()->objectName(), u"OKButton"_s);
        control<QPushButton>(*box, u"OKButton"_s)->click();
    });
    press(u"cmdAbout"_s);
    EXPECT_EQ(system.log.take(), (QStringList{u"open "_s + Deployment::WebAddress,
                                              u"open mailto:"_s + Deployment::SupportAddress}));
}

TEST_F(StepsTest, quitUnloadsTheWindowWithWhatItOwnsAndAnotherOneStartsAfresh)
{
    open();
    choose(u"rdSrcOGG"_s);
    press(u"cmdNext"_s);
    press(u"cmdQuit"_s);
    EXPECT_FALSE(slot.isLoaded());
    deleteUnloaded();
    EXPECT_FALSE(window);
    EXPECT_FALSE(reader);
    EXPECT_FALSE(writer);
    open();
    EXPECT_EQ(shownFrames(), QStringList{u"frmSrcFmt"_s});
    EXPECT_TRUE(get<OptionButton>(u"rdSrcMP3"_s)->isSelected());
}

} // namespace
