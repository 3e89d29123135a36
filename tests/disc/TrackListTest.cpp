#include "disc/TrackList.h"

#include "controls/ReportListView.h"
#include "testkit/Printing.h"

#include <gtest/gtest.h>

namespace {

class TrackListTest : public ::testing::Test
{
protected:
    TrackListTest()
    {
        view.setColumnCount(7);
        view.setCheckBoxes(true);
    }

    void add(const QStringList &names)
    {
        for (const QString &name : names)
            view.addRow({QString(), QString(), name});
    }

    QStringList names() const
    {
        QStringList all;
        for (int row = 1; row <= tracks.count(); ++row)
            all << tracks.fileName(row);
        return all;
    }

    ReportListView view;
    TrackList tracks{view};
};

TEST_F(TrackListTest, aSwitchOfFormatChangesTheExtensionsAlone)
{
    add({QStringLiteral("a.b"), QStringLiteral("no point"), QStringLiteral(" x.MP3 "), QString()});
    tracks.RefreshTrackExtensions(QStringLiteral(".wma"));
    EXPECT_EQ(names(), (QStringList{QStringLiteral("a.wma"), QStringLiteral("no point.wma"),
                                    QStringLiteral("x.wma"), QStringLiteral(".wma")}));
}

TEST_F(TrackListTest, titlesNameTheRowsThatTheyReach)
{
    add({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4")});
    tracks.UpdateFileNamesWithTitles(QStringLiteral("  "), QStringLiteral(".ogg"));
    EXPECT_EQ(names().join(u'|'), QStringLiteral("1|2|3|4"));
    tracks.UpdateFileNamesWithTitles(QStringLiteral("AC/DC: Live?|  |日本 \"x\""), QStringLiteral(".ogg"));
    EXPECT_EQ(names(), (QStringList{QStringLiteral("AC_DC_ Live_.ogg"), QStringLiteral("2"),
                                    QStringLiteral("日本 \"x\".ogg"), QStringLiteral("4")}));
}

TEST_F(TrackListTest, eachPairOfEqualNamesIsNamed)
{
    add({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("A"), QStringLiteral("a"),
         QStringLiteral("b"), QStringLiteral("a")});
    EXPECT_EQ(tracks.FindRepeatedNames(), QStringLiteral("a\na\nb\na"));
    tracks.setFileName(4, QStringLiteral("c"));
    tracks.setFileName(6, QStringLiteral("d"));
    tracks.setFileName(5, QStringLiteral("e"));
    EXPECT_EQ(tracks.FindRepeatedNames(), QString());
    EXPECT_FALSE(tracks.AnyTrackChecked());
    view.setChecked(6, true);
    EXPECT_TRUE(tracks.AnyTrackChecked());
}

} // namespace
