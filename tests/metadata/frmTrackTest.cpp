#include "metadata/frmTrack.h"

#include "controls/DropDownList.h"
#include "metadata/MetadataFixture.h"

namespace {

class frmTrackTest : public MetadataFixture<frmTrack>
{
protected:
    frmTrackTest()
    {
        host.names = QStringList{QStringLiteral("Track01.mp3"), QStringLiteral(" Own name.ogg.WAV "),
                                 QStringLiteral("Track03.mp3")};
    }

    void open() { show(makeForm<frmTrack>(system.desktop(), frmTrack::Parts{host, disc, AInfo})); }

    void fillIn()
    {
        type("txtAlbum", QStringLiteral(" Album "));
        type("txtArtist", QStringLiteral(" Artist "));
        type("txtYear", QStringLiteral("1999"));
    }
};

TEST_F(frmTrackTest, aFreshDiscShowsTheFileNamesWithoutTheirExtension)
{
    open();
    EXPECT_EQ(titles(), (QStringList{QStringLiteral("1 Track01"), QStringLiteral("2 Own name.ogg"),
                                     QStringLiteral("3 Track03")}));
    EXPECT_EQ(at<DropDownList>("cboGenre")->count(), 148);
    EXPECT_EQ(at<DropDownList>("cboGenre")->listIndex(), 0);
}

TEST_F(frmTrackTest, theRecordIsShown)
{
    disc = {.Album = QStringLiteral("A"),
            .Artist = QStringLiteral("B"),
            .GenreIndex = 147,
            .Year = QStringLiteral("2001"),
            .Comment = QStringLiteral("C"),
            .TrackTitles = QStringLiteral("One|"),
            .SaveToFiles = false,
            .DiscSeconds = 0,
            .TrackOffsets = {}};
    open();
    EXPECT_EQ(titles(), (QStringList{QStringLiteral("1 One"), QStringLiteral("2 Own name.ogg"),
                                     QStringLiteral("3 Track03")}));
    EXPECT_EQ(text("txtAlbum") + text("txtArtist") + text("txtYear") + text("txtComment"),
              QStringLiteral("AB2001C"));
    EXPECT_EQ(at<DropDownList>("cboGenre")->listIndex(), 147);
    EXPECT_FALSE(at<TickBox>("chkID3")->isTicked()); // whatever was chosen at an earlier visit
}

TEST_F(frmTrackTest, missingTextsAreRefusedInTurnAndNothingIsWritten)
{
    open();
    const std::pair<const char *, const char *> rows[] = {{"txtAlbum", "Please enter Album text"},
                                                          {"txtArtist", "Please enter Artist text"},
                                                          {"txtYear", "Please enter Year text"}};
    for (const auto &[box, refusal] : rows) {
        type(box, QStringLiteral("  "));
        system.dialogs.expectWholeBox({.text = QString::fromLatin1(refusal)});
        click("OKButton");
        EXPECT_TRUE(window->isVisible());
        type(box, QStringLiteral("1"));
    }
    EXPECT_EQ(disc.Album + disc.TrackTitles, QString());
    EXPECT_EQ(system.log.calls(), QStringList());
}

TEST_F(frmTrackTest, okWritesEverythingBack)
{
    disc.TrackTitles = QStringLiteral(" padded |Track 2");
    disc.SaveToFiles = false;
    open();
    fillIn();
    type("txtComment", QStringLiteral(" c "));
    at<DropDownList>("cboGenre")->setListIndex(17);
    system.dialogs.expectInput(QStringLiteral("Please enter the title of tracks 3:"),
                               QStringLiteral("Track03"), QStringLiteral("  Third  title "));
    clickTitle(3);
    EXPECT_EQ(system.dialogs.lastInput().title, QStringLiteral("enter title of tracks 3"));
    click("OKButton");

    EXPECT_TRUE(window->isUnloaded());
    EXPECT_EQ(disc.Album, QStringLiteral("Album"));
    EXPECT_EQ(disc.Artist, QStringLiteral("Artist"));
    EXPECT_EQ(disc.Year, QStringLiteral("1999"));
    EXPECT_EQ(disc.Comment, QStringLiteral("c"));
    EXPECT_EQ(disc.GenreIndex, 17);
    EXPECT_EQ(disc.TrackTitles, QStringLiteral(" padded |Track 2|Third  title"));
    EXPECT_TRUE(disc.SaveToFiles);
    EXPECT_EQ(system.log.take(), QStringList{QStringLiteral("UpdateFileNamesWithTitles")});
}

TEST_F(frmTrackTest, theTickKeepsTheRecordOutOfTheFilesForThisTimeOnly)
{
    for (const bool tick : {true, false}) {
        open();
        fillIn();
        at<TickBox>("chkID3")->setTicked(tick);
        click("OKButton");
        EXPECT_EQ(disc.SaveToFiles, !tick);
    }
}

TEST_F(frmTrackTest, cancelEscapeAndTheCloseBoxWriteNothing)
{
    const std::function<void()> ways[] = {[&] { click("cmdCancel"); },
                                          [&] { QTest::keyClick(window.get(), Qt::Key_Escape); },
                                          [&] { window->close(); }};
    for (const auto &leave : ways) {
        open();
        fillIn();
        leave();
        EXPECT_TRUE(window->isUnloaded());
        EXPECT_EQ(disc.Album + disc.TrackTitles, QString());
    }
}

TEST_F(frmTrackTest, anEmptyTitleLeavesTheRow)
{
    open();
    for (const char *answer : {"", "   "}) {
        system.dialogs.expectInput(QStringLiteral("Please enter the title of tracks 1:"),
                                   QStringLiteral("Track01"), QString::fromLatin1(answer));
        clickTitle(1);
    }
    system.dialogs.expectInput(QStringLiteral("Please enter the title of tracks 1:"),
                               QStringLiteral("Track01"), QStringLiteral("By key"));
    QTest::keyClick(at<ReportListView>("ListView1"), Qt::Key_Return);
    EXPECT_EQ(titles().constFirst(), QStringLiteral("1 By key"));
    EXPECT_TRUE(window->isVisible()); // the key didn't press "OK"
}

TEST_F(frmTrackTest, theYearTakesFourDigits)
{
    open();
    QTest::keyClicks(at<QLineEdit>("txtYear"), QStringLiteral("c19x99 7"));
    EXPECT_EQ(text("txtYear"), QStringLiteral("1999"));
    EXPECT_EQ(at<QLineEdit>("txtAlbum")->maxLength(), 100);
    EXPECT_EQ(at<QLineEdit>("txtComment")->maxLength(), 255);
}

} // namespace
