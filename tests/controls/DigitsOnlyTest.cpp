#include "controls/DigitsOnly.h"

#include "testkit/Printing.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace {

TEST(DigitsOnlyTest, keysOfOtherCharactersAreSwallowed)
{
    QLineEdit box;
    new DigitsOnly(&box);
    QTest::keyClicks(&box, QStringLiteral("1a9 -9.8x7"));
    EXPECT_EQ(box.text(), QStringLiteral("19987"));
    QTest::keyClick(&box, Qt::Key_Backspace);
    QTest::keyClick(&box, Qt::Key_Home);
    QTest::keyClick(&box, Qt::Key_Delete);
    EXPECT_EQ(box.text(), QStringLiteral("998"));

    box.selectAll(); // a swallowed key leaves the selected text alone
    QTest::keyClick(&box, Qt::Key_B);
    EXPECT_EQ(box.text(), QStringLiteral("998"));
}

TEST(DigitsOnlyTest, onlyDigitsArePasted)
{
    QLineEdit box;
    new DigitsOnly(&box);
    QGuiApplication::clipboard()->setText(QStringLiteral("12ab"));
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box.text(), QString());
    QGuiApplication::clipboard()->setText(QStringLiteral("34"));
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box.text(), QStringLiteral("34"));

    box.setText(QStringLiteral("c. 1998"));
    EXPECT_EQ(box.text(), QStringLiteral("c. 1998"));
}

} // namespace
