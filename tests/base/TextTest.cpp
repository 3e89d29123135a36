#include "base/Text.h"

#include "base/ColorNumber.h"
#include "testkit/Printing.h"

#include <gtest/gtest.h>

namespace {

TEST(Text, onlyTheBlankIsTrimmed)
{
    EXPECT_EQ(trimBlanks(QStringLiteral("  a b  ")), QStringLiteral("a b"));
    EXPECT_EQ(trimBlanks(QStringLiteral("\t a\u00a0 ")), QStringLiteral("\t a\u00a0"));
    EXPECT_EQ(trimBlanks(QStringLiteral("   ")), QString());
}

TEST(Text, anEmptyTextSplitsIntoNothing)
{
    EXPECT_TRUE(splitText(QString(), ListSeparator).isEmpty());
    EXPECT_EQ(splitText(QStringLiteral("a||b|"), ListSeparator),
              (QStringList{QStringLiteral("a"), QString(), QStringLiteral("b"), QString()}));
    EXPECT_EQ(splitText(QStringLiteral("a{;}#$b"), QStringLiteral("{;}#$")).size(), 2);
}

TEST(ColorNumber, redIsTheLowestByte)
{
    EXPECT_EQ(colorNumber(QColor(1, 2, 3)), 0x030201);
    EXPECT_EQ(colorFromNumber(0x00ff8040), QColor(0x40, 0x80, 0xff));
}

} // namespace
