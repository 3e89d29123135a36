#include "OptionsFixture.h"
#include "testkit/TabOrder.h"
#include "testkit/faults/Faults.h"

#include <cerrno>

namespace {

/// The whole file as Default and OK leave it; %1 is the program folder.
const char *const AfterDefault =
    "[MP3 Settings]\n"
    "MP3_QualityMode=1\nMP3_EncodingMethod=0\nMP3_CBR_BitRate=128\nMP3_VBR_Quality=0\n"
    "MP3_VBR_MaxBitRate=320\nMP3_VBR_MinBitRate=32\nMP3_ChannelMode=0\n"
    "[WMA Settings]\n"
    "WMA_BitRate=128\nWMA_SampleRate=0\nWMA_EncodeStereo=True\nWMA_EnableDRM=False\n"
    "[OGG Settings]\n"
    "OGG_UseAdvanced=0\nOGG_BitRate=128\nOGG_MaxBitRate=0\nOGG_MinBitRate=0\n"
    "[Directories]\n"
    "MP3_Output_Directory=%1/mp3/\nWAV_Output_Directory=%1/wav/\n"
    "WMA_Output_Directory=%1/wma/\nVQF_Output_Directory=%1/vqf/\n"
    "OGG_Output_Directory=%1/ogg/\n"
    "[Advanced]\n"
    "GridLines=True\nBackColor=16777215\nForeColor=0\nFontBold=False\nFontItalic=False\n"
    "FontName=MS Sans Serif\nFontSize=8.25\nFontStrikethrough=False\nFontUnderline=False\n"
    "[Other]\n"
    "SaveID3=True\nOpen Explorer=True\nDownload FreeDB=True\n";

/// Every value differs from its default.
const char *const NothingDefault =
    "[MP3 Settings]\nMP3_QualityMode=0\nMP3_EncodingMethod=1\nMP3_CBR_BitRate=320\nMP3_VBR_Quality=9\n"
    "MP3_VBR_MaxBitRate=256\nMP3_VBR_MinBitRate=40\nMP3_ChannelMode=3\n"
    "[WMA Settings]\nWMA_BitRate=160\nWMA_SampleRate=6\nWMA_EncodeStereo=True\nWMA_EnableDRM=True\n"
    "[OGG Settings]\nOGG_UseAdvanced=1\nOGG_BitRate=192\nOGG_MaxBitRate=256\nOGG_MinBitRate=96\n"
    "[Directories]\nMP3_Output_Directory=/m\xc3\xbcsik/a "
    "b/\nWAV_Output_Directory=/w\nWMA_Output_Directory=/x/\n"
    "VQF_Output_Directory=/v/\nOGG_Output_Directory=/o/\n"
    "[Advanced]\nGridLines=False\nBackColor=3355443\nForeColor=16776960\nFontBold=True\nFontItalic=True\n"
    "FontName=DejaVu Serif\nFontSize=11\nFontStrikethrough=True\nFontUnderline=True\n"
    "[Other]\nSaveID3=False\nOpen Explorer=False\nDownload FreeDB=False\n";

TEST_F(OptionsTest, defaultThenOkWritesTheWholeTable)
{
    for (const QByteArray &before : {QByteArray(), QByteArray(NothingDefault)}) {
        writeIni(before);
        open([&] {
            press("cmdDefault");
            EXPECT_EQ(ini(), QString::fromUtf8(before)); // only the controls are reset
            expectSaved();
            press("cmdOK");
        });
        EXPECT_EQ(ini(), QString::fromLatin1(AfterDefault).arg(system.folder()));
    }
}

TEST_F(OptionsTest, whatIsStoredComesUpAndIsSavedAsItWas)
{
    // What this window doesn't show stays, too.
    const QByteArray stored = QByteArray(NothingDefault) + "IKnow=True\n[Proxy]\nTimeout=5\n";
    writeIni(stored);
    open([&] {
        EXPECT_EQ(preview()->foreColor(), 16776960);
        EXPECT_FALSE(box("chkGridLine")->isTicked());
        expectSaved();
        press("cmdSave");
        EXPECT_TRUE(isOpen());
        EXPECT_EQ(system.log.calls(), QStringList()); // Save leaves the encoders alone
    });
    EXPECT_EQ(ini(), QString::fromUtf8(stored));
}

TEST_F(OptionsTest, aSaveThatFailsSaysWhyAndLeavesTheFileAlone)
{
    writeIni(NothingDefault);
    const std::pair<int, const char *> failures[] = {
        {ENOSPC, "the disk is full"}, {EROFS, "permission denied"}, {EIO, "the disk reports an error"}};
    for (const auto &[error, reason] : failures) {
        for (const char *button : {"cmdSave", "cmdOK"}) {
            open([&, button = button, error = error, reason = reason] {
                press("cmdDefault");
                system.dialogs.expectWholeBox(
                    {.text =
                         QStringLiteral("The settings can't be saved: %1.").arg(QLatin1StringView(reason)),
                     .icon = BoxIcon::Exclamation});
                faults::arm(system.folder().toStdString(), faults::Call::Flush, 1, error);
                press(button);
                EXPECT_TRUE(faults::disarm());
            });
            EXPECT_EQ(ini(), QString::fromUtf8(NothingDefault));
        }
    }
}

TEST_F(OptionsTest, cancelEscapeAndTheCloseBoxWriteNothing)
{
    writeIni(NothingDefault);
    const Action ways[] = {[&] { press("cmdCancel"); }, [&] { QTest::keyClick(form, Qt::Key_Escape); },
                           [&] { form->close(); }};
    for (const Action &way : ways) {
        open([&] {
            press("cmdDefault");
            system.log.take();
            way();
            EXPECT_FALSE(isOpen());
            EXPECT_EQ(system.log.calls(), QStringList());
        });
    }
    EXPECT_EQ(ini(), QString::fromUtf8(NothingDefault));
}

TEST_F(OptionsTest, aFileWrittenByHandIsTakenAsFarAsItMakesSense)
{
    writeIni(
        "[mp3 SETTINGS]\nmp3_qualitymode=2\nMP3_EncodingMethod=2\nMP3_CBR_BitRate=100\nMP3_VBR_Quality=abc\n"
        "MP3_VBR_MaxBitRate= 256.0 \nMP3_VBR_MinBitRate=\nMP3_ChannelMode=9\n"
        "[MP3 Settings]\nMP3_CBR_BitRate=320\n" // the first of two sections counts
        "[WMA Settings]\nWMA_BitRate=1e400\nWMA_SampleRate=99\nWMA_EncodeStereo=maybe\nWMA_EnableDRM=yes\n"
        "[OGG Settings]\nOGG_UseAdvanced=2\nOGG_BitRate=127.9\nOGG_MaxBitRate=9999999999\nOGG_MinBitRate=-1\n"
        "[Advanced]\nGridLines=2\nBackColor=red\nForeColor=255\nFontSize=x\nFontName=\nFontBold=?\n"
        "[Other]\nSaveID3=abc\nOpen Explorer=0\nDownload FreeDB=fAlSe\n");
    open([&] {
        EXPECT_TRUE(option("optStudio")->isSelected()); // only 1 means Normal
        EXPECT_TRUE(option("optVBR")->isSelected());
        EXPECT_EQ(chosen("cboCBRRate"), QStringLiteral("128kb/s"));
        EXPECT_EQ(at<QSlider>("sldVBRLevel")->value(), 0);
        EXPECT_EQ(chosen("cboVBRMax"), QStringLiteral("256kb/s"));
        EXPECT_EQ(chosen("cboVBRMin"), QStringLiteral("32kb/s"));
        EXPECT_EQ(chosen("cboChannelMode"), QStringLiteral("Stereo"));
        EXPECT_EQ(chosen("cboBitRate"), QStringLiteral("128kb/s"));
        EXPECT_EQ(chosen("cboSampleRates"), QStringLiteral("8000Hz"));
        EXPECT_TRUE(option("optStereo")->isSelected());
        EXPECT_FALSE(box("chkUseAdvanced")->isTicked());
        EXPECT_EQ(chosen("cboNominalBitRate"), QStringLiteral("128kb/s"));
        EXPECT_EQ(chosen("cboMaxBitRate"), QStringLiteral("Default"));
        EXPECT_TRUE(box("chkGridLine")->isTicked());
        EXPECT_EQ(preview()->foreColor(), 255);
        EXPECT_TRUE(box("chkSaveID3")->isTicked());
        EXPECT_FALSE(box("chkExplore")->isTicked());
        EXPECT_FALSE(box("chkDownload")->isTicked());
    });
}

TEST_F(OptionsTest, onlyTheChosenPageIsShownAndEnabled)
{
    open([&] {
        auto *tabs = at<QTabBar>("tbsOptions");
        const auto expectShown = [&](int chosen) {
            for (int i = 0; i < 6; ++i) {
                const auto *page = control<QWidget>(*form, QStringLiteral("picOptions_%1").arg(i));
                EXPECT_EQ(page->isVisible(), i == chosen) << i;
                EXPECT_EQ(page->isEnabled(), i == chosen) << i;
            }
        };
        expectShown(0);
        tabs->setCurrentIndex(3);
        expectShown(3);
        // Ctrl+Tab goes round from wherever the focus is, and nothing goes back.
        at<QLineEdit>("txtWAVDirectory")->setFocus();
        for (const int next : {4, 5, 0, 1}) {
            QTest::keyClick(form->focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
            expectShown(next);
            QTest::keyClick(form->focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
            expectShown(next);
        }
        EXPECT_EQ(tabs->tabText(3), QStringLiteral("Output Folders"));
        EXPECT_EQ(tabs->tabData(3).toString(), QStringLiteral("Other"));
        EXPECT_EQ(tabs->tabToolTip(5), QString());
    });
}

TEST_F(OptionsTest, theTabKeyGoesThroughThePagesAndThenToTheButtons)
{
    open([&] {
        EXPECT_EQ(
            tabOrder(*form).join(u' '),
            QStringLiteral(
                "tbsOptions optCBR cboCBRRate optVBR cboVBRMin cboVBRMax sldVBRLevel optNormal optStudio "
                "cboChannelMode cboBitRate cboSampleRates chkEnableDRM optStereo optMono cboNominalBitRate "
                "chkUseAdvanced cboMinBitRate cboMaxBitRate txtMP3Folder cmdMP3Folder txtWAVDirectory "
                "cmdWAVFolder txtWMADirectory cmdWMAFolder txtVQFDirectory cmdVQFFolder txtOGGDirectory "
                "cmdOGGFolder chkGridLine cmdBackColor cmdForeColor cmdFont lvwTracks chkExplore chkSaveID3 "
                "chkDownload cmdDefault cmdSave cmdOK cmdCancel"));
    });
}

TEST_F(OptionsTest, aPickedFolderEndsInOneSeparatorAndACancelChangesNothing)
{
    const std::pair<const char *, const char *> rows[] = {{"cmdMP3Folder", "txtMP3Folder"},
                                                          {"cmdWAVFolder", "txtWAVDirectory"},
                                                          {"cmdWMAFolder", "txtWMADirectory"},
                                                          {"cmdVQFFolder", "txtVQFDirectory"},
                                                          {"cmdOGGFolder", "txtOGGDirectory"}};
    open([&] {
        for (const auto &[button, text] : rows) {
            const QString picked = QStringLiteral("/\u97f3\u697d/") + QLatin1String(button);
            system.dialogs.expectFolder(picked);
            press(button);
            EXPECT_EQ(at<QLineEdit>(text)->text(), picked + u'/');
            system.dialogs.expectFolder(QString());
            press(button);
            EXPECT_EQ(at<QLineEdit>(text)->text(), picked + u'/');
        }
        system.dialogs.expectFolder(QStringLiteral("/"));
        press("cmdMP3Folder");
        EXPECT_EQ(at<QLineEdit>("txtMP3Folder")->text(), QStringLiteral("/"));
    });
}

TEST_F(OptionsTest, aClearedFolderFallsBackToItsDefault)
{
    writeIni("[Directories]\nMP3_Output_Directory=/a/\nOGG_Output_Directory=/o\n");
    open([&] {
        at<QLineEdit>("txtMP3Folder")->setText(QStringLiteral("   "));
        expectSaved();
        press("cmdSave");
    });
    EXPECT_FALSE(ini().contains(QStringLiteral("MP3_Output_Directory")));
    open([&] {
        EXPECT_EQ(at<QLineEdit>("txtMP3Folder")->text(), system.folder() + QStringLiteral("/mp3/"));
        EXPECT_EQ(at<QLineEdit>("txtOGGDirectory")->text(), QStringLiteral("/o")); // as it was typed
    });
}

TEST_F(OptionsTest, thePreviewIsTheModelOfTheAppearancePage)
{
    open([&] {
        ASSERT_EQ(preview()->rowCount(), 8);
        EXPECT_EQ(preview()->text(1, 1) + preview()->text(8, 2) + preview()->text(8, 5),
                  QStringLiteral("01Track08.mp300:00:00"));
        system.dialogs.expectColor(0xffffff, 0x102030);
        press("cmdBackColor");
        EXPECT_EQ(preview()->backColor(), 0x102030);
        system.dialogs.expectColor(0, 0xf0f0f0);
        press("cmdForeColor");
        system.dialogs.expectColor(0xf0f0f0, Dialogs::ColorCancelled);
        press("cmdForeColor");
        EXPECT_EQ(preview()->foreColor(), 0xf0f0f0);
        press("chkGridLine");
        EXPECT_FALSE(preview()->gridLines());

        QFont font(QStringLiteral("DejaVu Serif"));
        font.setPointSizeF(10.5);
        font.setWeight(QFont::Bold);
        font.setUnderline(true);
        system.dialogs.expectFont(FontChoice{font, 0xff});
        press("cmdFont");
        expectSaved();
        press("cmdSave");
    });
    EXPECT_TRUE(ini().contains(QStringLiteral(
        "[Advanced]\nGridLines=False\nBackColor=1056816\nForeColor=255\nFontBold=True\nFontItalic=False\n"
        "FontName=DejaVu Serif\nFontSize=10\nFontStrikethrough=False\nFontUnderline=True\n")))
        << ini().toStdString();
}

TEST_F(OptionsTest, theFontDialogIsOfferedAWholeSizeAndItsCancelChangesNothing)
{
    struct Row
    {
        double chosen;
        const char *stored;
    };
    open([&] {
        press("cmdDefault");
        const QFont before = preview()->font();
        system.dialogs.expectFont(std::nullopt);
        press("cmdFont");
        EXPECT_EQ(preview()->font(), before);
        EXPECT_EQ(system.dialogs.lastFont().font.pointSizeF(), 8);
        for (const Row &row : {Row{9, "9"}, Row{9.5, "10"}, Row{8.46, "8"}, Row{9.46, "10"}, Row{0.2, "1"}}) {
            FontChoice choice{before, 0};
            choice.font.setPointSizeF(row.chosen);
            system.dialogs.expectFont(choice);
            press("cmdFont");
            EXPECT_EQ(preview()->font().pointSizeF(), QByteArray(row.stored).toDouble()) << row.chosen;
        }
    });
}

} // namespace
