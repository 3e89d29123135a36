#include "disc/DiscWatch.h"

#include "base/DiscInfo.h"
#include "controls/DropDownList.h"
#include "controls/ReportListView.h"
#include "disc/TrackList.h"
#include "testkit/FakeCDRipperX.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"

#include <QTimer>
#include <gtest/gtest.h>

namespace {

class DiscWatchTest : public ::testing::Test
{
protected:
    DiscWatchTest()
    {
        tracks.setColumnCount(7);
        tracks.setCheckBoxes(true);
        engine.drives = {{}, {}};
        devices.addEntry(QStringLiteral("drive"));
        devices.setListIndex(0);
        devices.setClickHandler([this] { watch.cboDevices_Click(); });
        speeds.setClickHandler([this] { watch.cboSpeeds_Click(); });
        timer.start(200);
    }

    QString speedTexts() const
    {
        QStringList texts;
        for (int row = 0; row < speeds.count(); ++row)
            texts << speeds.itemText(row) + u'=' + QString::number(speeds.itemNumber(row));
        return texts.join(u' ');
    }

    TestDesktop system;
    FakeCDRipperX engine{system.log};
    DiscInfo disc;
    DropDownList devices, speeds;
    ReportListView tracks;
    QTimer timer;
    QString extension = QStringLiteral(".mp3");
    DiscWatch watch{engine,
                    disc,
                    system.dialogs,
                    nullptr,
                    {devices, speeds, tracks, timer},
                    [this] { return extension; },
                    [this] { system.log.add(QStringLiteral("offer")); }};
};

TEST_F(DiscWatchTest, aReadingFillsTheListAndTheRecord)
{
    engine.tracks = {{0, 15000, true}, {15000, 15000, true}, {30000, 7463, false}};
    disc.Album = QStringLiteral("kept");
    devices.setListIndex(0);
    EXPECT_EQ(disc.TrackOffsets, QStringLiteral("150|15150|30150"));
    EXPECT_EQ(disc.DiscSeconds, 502); // 37613 sectors are 501.507 seconds
    EXPECT_EQ(disc.Album, QStringLiteral("kept"));
    ASSERT_EQ(tracks.rowCount(), 3);
    QStringList row;
    for (int column = 0; column < 7; ++column)
        row << tracks.text(3, column);
    EXPECT_EQ(row.join(u'|'), QStringLiteral("|03|Track03.mp3|t30000|t37463|t7463|"));
    EXPECT_FALSE(tracks.isChecked(3));
    EXPECT_TRUE(timer.isActive());
    EXPECT_EQ(system.log.take(), (QStringList{QStringLiteral("SelectDrive 0"), QStringLiteral("SetSpeed 0"),
                                              QStringLiteral("offer")}));
    engine.tracks = {{32, 75, true}};
    extension = QStringLiteral(".ogg");
    watch.cboDevices_Click();
    EXPECT_EQ(disc.TrackOffsets, QStringLiteral("182"));
    EXPECT_EQ(tracks.text(1, SaveAsColumn), QStringLiteral("Track01.ogg"));
    EXPECT_EQ(disc.DiscSeconds, 3);
}

TEST_F(DiscWatchTest, halvesOfSecondsGoToTheEvenNeighbour)
{
    // 75 is odd, so that a true half can't come about; the nearest lengths round to both sides.
    for (const auto &[sectors, seconds] : std::vector<std::pair<qint32, qint32>>{{37, 2}, {38, 3}}) {
        engine.tracks = {{0, sectors, true}};
        watch.cboDevices_Click();
        EXPECT_EQ(disc.DiscSeconds, seconds);
    }
}

TEST_F(DiscWatchTest, theSpeedsDoubleToEightAndThenGoByFour)
{
    const std::pair<qint16, const char *> rows[] = {
        {3, "AUTO=0 1X=1 2X=2"},
        {24, "AUTO=0 1X=1 2X=2 4X=4 8X=8 12X=12 16X=16 20X=20 24X=24"},
        {0, "AUTO=0"},
    };
    for (const auto &[maximum, texts] : rows) {
        engine.maxSpeed = maximum;
        watch.cboDevices_Click();
        EXPECT_EQ(speedTexts(), QLatin1String(texts));
        EXPECT_EQ(speeds.listIndex(), 0);
    }
}

TEST_F(DiscWatchTest, aFailureEndsTheReadingAndTheWatch)
{
    engine.tracks = {{0, 100, true}, {100, 100, true}};
    engine.failAtTrackStart = 2;
    system.dialogs.expectWholeBox({.text = QStringLiteral("Error# 57 Device I/O error")});
    watch.cboDevices_Click();
    EXPECT_EQ(disc.DiscSeconds, 0); // and not what was counted until then
    EXPECT_FALSE(timer.isActive());
    EXPECT_FALSE(system.log.take().contains(QStringLiteral("offer")));
    engine.failAtTrackStart = 0;
    watch.cboDevices_Click(); // "Refresh" brings the watch back
    EXPECT_TRUE(timer.isActive());
}

TEST_F(DiscWatchTest, aDriveThatCannotBeSelectedKeepsItsOldSpeeds)
{
    watch.cboDevices_Click();
    engine.selectable = false;
    engine.maxSpeed = 1;
    watch.cboDevices_Click();
    EXPECT_EQ(speedTexts(), QStringLiteral("AUTO=0 1X=1 2X=2 4X=4 8X=8"));
    EXPECT_EQ(system.log.take().last(), QStringLiteral("offer"));
}

TEST_F(DiscWatchTest, aDiscThatComesBackIsReadOnceAndOneThatStaysIsNot)
{
    engine.tracks = {{0, 15000, true}};
    watch.cboDevices_Click();
    watch.Timer1_Timer();
    system.log.take();
    engine.status = CDRipperX::NoDisc;
    watch.Timer1_Timer();
    EXPECT_EQ(tracks.rowCount(), 0);
    EXPECT_EQ(disc.TrackOffsets, QStringLiteral("150"));
    engine.status = CDRipperX::DiscIdle;
    engine.discReady = false;
    watch.Timer1_Timer();
    watch.Timer1_Timer();
    EXPECT_EQ(system.log.take().filter(QStringLiteral("SelectDrive")).size(),
              2); // not ready: it is tried again
    engine.discReady = true;
    watch.Timer1_Timer();
    EXPECT_EQ(tracks.rowCount(), 1);
    system.log.take();
    watch.Timer1_Timer();
    EXPECT_TRUE(system.log.take().isEmpty());
}

} // namespace
