#include "base/Numbers.h"

#include "base/RunTimeFailure.h"
#include "base/SkipFailures.h"
#include "testkit/Printing.h"

#include <gtest/gtest.h>

namespace {

template <typename Conversion>
int failureOf(Conversion conversion)
{
    try {
        conversion();
    } catch (const RunTimeFailure &failure) {
        return failure.number();
    }
    return 0;
}

TEST(Numbers, halvesGoToTheEvenNeighbour)
{
    EXPECT_EQ(toInt32(0.5), 0);
    EXPECT_EQ(toInt32(1.5), 2);
    EXPECT_EQ(toInt32(2.5), 2);
    EXPECT_EQ(toInt32(-0.5), 0);
    EXPECT_EQ(toInt32(-1.5), -2);
    EXPECT_EQ(toInt32(2.4999), 2);
    EXPECT_EQ(toInt32(-2.6), -3);
    EXPECT_EQ(toInt16(QStringLiteral("3.5")), 4);
}

TEST(Numbers, textsWithBlanksSignsAndDecimalsAreNumbers)
{
    EXPECT_EQ(toInt32(QStringLiteral("  128 ")), 128);
    EXPECT_EQ(toInt32(QStringLiteral("-7")), -7);
    EXPECT_EQ(toInt32(QStringLiteral("+7")), 7);
    EXPECT_EQ(toInt32(QStringLiteral("1e3")), 1000);
    EXPECT_DOUBLE_EQ(toNumber(QStringLiteral("8.25")), 8.25);
}

TEST(Numbers, otherTextsAreTypeMismatches)
{
    for (const char *text : {"", " ", "abc", "12x", "1 2", "inf", "nan", "0x10", "1,5", "\t5", "--1",
                             "1."
                             "2.3"})
        EXPECT_EQ(failureOf([&] { toNumber(QString::fromLatin1(text)); }), 13) << text;
}

TEST(Numbers, whatDoesNotFitOverflows)
{
    EXPECT_EQ(failureOf([] { toInt16(QStringLiteral("32768")); }), 6);
    EXPECT_EQ(failureOf([] { toInt16(32767.5); }), 6);
    EXPECT_EQ(toInt16(QStringLiteral("-32768")), -32768);
    EXPECT_EQ(failureOf([] { toInt32(QStringLiteral("2147483648")); }), 6);
    EXPECT_EQ(failureOf([] { toNumber(QStringLiteral("1e999")); }), 6);
    EXPECT_EQ(failureOf([] { divide(0, 0); }), 11);
}

TEST(Numbers, yesAndNoAreWordsOrNumbers)
{
    EXPECT_TRUE(toYesNo(QStringLiteral("true")));
    EXPECT_FALSE(toYesNo(QStringLiteral(" FALSE ")));
    EXPECT_TRUE(toYesNo(QStringLiteral("-1")));
    EXPECT_FALSE(toYesNo(QStringLiteral("0")));
    EXPECT_TRUE(toYesNo(QStringLiteral("0.5")));
    EXPECT_EQ(failureOf([] { toYesNo(QStringLiteral("yes")); }), 13);
}

TEST(Numbers, writtenNumbersAreShort)
{
    EXPECT_EQ(numberText(8.25), QStringLiteral("8.25"));
    EXPECT_EQ(numberText(9), QStringLiteral("9"));
    EXPECT_EQ(numberText(16777215), QStringLiteral("16777215"));
    EXPECT_EQ(twoDigits(7), QStringLiteral("07"));
    EXPECT_EQ(twoDigits(123), QStringLiteral("123"));
}

TEST(SkipFailures, theStatementsAfterAFailingOneRun)
{
    QStringList ran;
    const auto callee = [&] {
        ran << QStringLiteral("callee begins");
        throw RunTimeFailure(RunTimeFailure::InvalidCall);
    };
    SkipFailures skip;
    skip([&] { callee(); });
    if (skip.condition([]() -> bool { throw RunTimeFailure(RunTimeFailure::ObjectNotSet); }))
        ran << QStringLiteral("inside the block");
    skip([&] { ran << QStringLiteral("next"); });
    EXPECT_EQ(ran, (QStringList{QStringLiteral("callee begins"), QStringLiteral("inside the block"),
                                QStringLiteral("next")}));
    EXPECT_FALSE(skip.condition([] { return false; }));
    EXPECT_THROW(skip([] { throw std::bad_alloc(); }), std::bad_alloc);
}

} // namespace
