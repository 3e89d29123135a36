#include "base/RunTimeFailure.h"
#include "controls/DropDownList.h"
#include "controls/OptionButton.h"
#include "controls/ReportListView.h"
#include "controls/TickBox.h"
#include "testkit/Printing.h"
#include "testkit/Ui.h"

#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

/// Counts clicks as a window would hear them: from code by the handler, from the user by the signal.
template <typename Control>
struct Clicks
{
    explicit Clicks(Control &control)
    {
        control.setClickHandler([this] { ++fromCode; });
        QObject::connect(&control, &Control::userClicked, &control, [this] { ++fromUser; });
    }
    int fromCode = 0;
    int fromUser = 0;
};

TEST(DropDownList, choosingRunsTheClickEveryTime)
{
    DropDownList list;
    Clicks clicks(list);
    list.addEntry(QStringLiteral("AUTO"), 0);
    list.addEntry(QStringLiteral("4X"), 4);
    EXPECT_EQ(list.listIndex(), -1); // adding chooses nothing
    list.setListIndex(1);
    list.setListIndex(1);
    EXPECT_EQ(clicks.fromCode, 2);
    EXPECT_EQ(list.chosenNumber(), 4);
    list.setListIndex(-1);
    EXPECT_EQ(clicks.fromCode, 2);
    EXPECT_THROW(list.chosenNumber(), RunTimeFailure);
    EXPECT_THROW(list.setListIndex(2), RunTimeFailure);
    list.show();
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(clicks.fromUser, 1);
    EXPECT_EQ(clicks.fromCode, 2);
    list.clearEntries();
    list.addEntry(QStringLiteral("8X"), 8);
    EXPECT_EQ(list.listIndex(), -1); // nor does filling it again
}

TEST(DropDownList, theFirstRowWithTheNumberIsChosenAndNoneLeavesAll)
{
    DropDownList list;
    Clicks clicks(list);
    for (int number : {5, 7, 7})
        list.addEntry(QString::number(number), number);
    list.chooseNumber(7);
    EXPECT_EQ(list.listIndex(), 1);
    list.chooseNumber(7.5);
    EXPECT_EQ(list.listIndex(), 1);
    EXPECT_EQ(clicks.fromCode, 1);
}

TEST(DropDownList, aFailingHandlerReachesTheCodeThatChooses)
{
    DropDownList list;
    list.addEntry(QStringLiteral("a"));
    list.setClickHandler([] { throw RunTimeFailure(RunTimeFailure::DeviceIoError); });
    EXPECT_THROW(list.setListIndex(0), RunTimeFailure);
    EXPECT_EQ(list.listIndex(), 0);
}

TEST(TickBox, onlyAChangeRunsTheClick)
{
    TickBox box;
    Clicks clicks(box);
    box.setTicked(true);
    box.setTicked(true);
    EXPECT_EQ(clicks.fromCode, 1);
    box.click();
    EXPECT_EQ(clicks.fromUser, 1);
    EXPECT_FALSE(box.isTicked());
}

TEST(OptionButton, becomingSelectedRunsTheClick)
{
    QWidget group;
    OptionButton one(&group);
    OptionButton two(&group);
    Clicks onesClicks(one);
    Clicks twosClicks(two);
    one.select();
    one.select();
    two.click();
    two.click();
    one.select();
    EXPECT_EQ(onesClicks.fromCode, 2);
    EXPECT_EQ(twosClicks.fromUser, 1);
    EXPECT_FALSE(two.isSelected());
}

TEST(ReportListView, rowsCountFromOneAndMissingOnesFail)
{
    ReportListView list;
    list.setColumnCount(3);
    list.setCheckBoxes(true);
    EXPECT_EQ(list.addRow({QString(), QStringLiteral("01"), QStringLiteral("Träck.mp3")}), 1);
    EXPECT_EQ(list.addRow({QString(), QStringLiteral("02")}), 2);
    EXPECT_FALSE(list.isChecked(1));
    list.setChecked(2, true);
    EXPECT_TRUE(list.isChecked(2));
    EXPECT_EQ(list.selectedRow(), 0);
    list.selectRow(2);
    EXPECT_EQ(list.selectedRow(), 2);
    EXPECT_THROW(list.text(0, 1), RunTimeFailure);
    EXPECT_THROW(list.setText(3, 1, QString()), RunTimeFailure);
    list.setBackColor(0x102030);
    list.setForeColor(0xffffff);
    EXPECT_EQ(list.backColor(), 0x102030);
    EXPECT_EQ(list.foreColor(), 0xffffff);
}

TEST(ReportListView, aDoubleClickOnTheListIsHeardWithAndWithoutRows)
{
    ReportListView list;
    int heard = 0;
    QObject::connect(&list, &ReportListView::listDoubleClicked, &list, [&] { ++heard; });
    list.show();
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
    list.addRow({QStringLiteral("x")});
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(heard, 2);
}

} // namespace
