#include "engines/tagfile/GenreNames.h"

#include "testkit/FakeNCTAudioInformation.h"

#include <QSet>
#include <gtest/gtest.h>

namespace {

TEST(GenreNamesTest, theListHasEveryNameOnceAndEachWhereTheTagsExpectIt)
{
    EXPECT_EQ(QSet<QStringView>(std::begin(GenreNames), std::end(GenreNames)).size(),
              NCTAudioInformation::GenreCount);
    // The ends of both lists, and the places at which lists in use differ.
    const std::pair<int, QStringView> landmarks[] = {
        {0, u"Blues"},       {12, u"Other"},        {17, u"Rock"},          {29, u"Jazz+Funk"},
        {40, u"AlternRock"}, {79, u"Hard Rock"},    {80, u"Folk"},          {85, u"Bebop"},
        {88, u"Celtic"},     {103, u"Opera"},       {125, u"Dance Hall"},   {126, u"Goa"},
        {133, u"Afro-Punk"}, {137, u"Heavy Metal"}, {144, u"Thrash Metal"}, {147, u"Synthpop"}};
    for (const auto &[index, name] : landmarks)
        EXPECT_EQ(GenreNames[index], name) << index;
}

TEST(GenreNamesTest, everySpellingInUseLeadsToItsNumber)
{
    for (qint16 i = 0; i < NCTAudioInformation::GenreCount; ++i)
        EXPECT_EQ(genreNumber(GenreNames[i].toString()), i);
    const std::pair<const char *, std::optional<qint16>> rows[] = {
        {"hip hop", 7},    {"HIP-HOP", 7},   {"Bebob", 85},      {"Jazz-Funk", 29}, {"17", 17},
        {"(17)", 17},      {"(17)Rock", 17}, {" 147 ", 147},     {"(148)", 148},    {"255", 255},
        {"Synthwave", {}}, {"", {}},         {"(RX)", {}},       {"()", {}},        {"(", {}},
        {"-1", {}},        {"256", {}},      {"99999999999", {}}};
    for (const auto &[text, number] : rows)
        EXPECT_EQ(genreNumber(QString::fromLatin1(text)), number) << text;
}

} // namespace
