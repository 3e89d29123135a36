#include "engines/images/Disc.h"

#include "testkit/Printing.h"

#include <gtest/gtest.h>

namespace {

using namespace images;

/// A disc from offsets as the service counts them, with the lead-in.
DiscToc discOf(const std::vector<qint32> &offsets, qint32 leadOut)
{
    DiscToc toc;
    for (const qint32 offset : offsets)
        toc.tracks.push_back({offset - LeadInSectors, 0, 1, true, false});
    toc.leadOut = leadOut - LeadInSectors;
    setLengths(toc);
    return toc;
}

TEST(DiscTest, freeDbIdsAreThoseOfTheService)
{
    EXPECT_EQ(
        freeDbId(discOf({150, 18901, 39738, 59557, 79152, 100126, 124833, 147278, 166336, 182560}, 206535)),
        QStringLiteral("830abf0a"));
    EXPECT_EQ(freeDbId(discOf({150}, 150 + 75)), QStringLiteral("02000101"));
    EXPECT_EQ(freeDbId({}), QStringLiteral("00000000"));
}

TEST(DiscTest, theLastTrackOfASessionEndsBeforeItsLeadOut)
{
    DiscToc toc{{{0, 0, 1, true, false}, {20000, 0, 1, true, false}, {60000, 0, 2, false, false}}, 70000};
    setLengths(toc);
    EXPECT_EQ(toc.tracks[0].length, 20000);
    EXPECT_EQ(toc.tracks[1].length, 40000 - 11400);
    EXPECT_EQ(toc.tracks[2].length, 10000);
    // Starts at 2, 268 and 802 seconds: digits' sum 2 + 16 + 10; 935 - 2 seconds to the end of the last
    // session.
    EXPECT_EQ(freeDbId(toc), QStringLiteral("1c03a503"));
}

TEST(DiscTest, timesAreHoursMinutesAndSeconds)
{
    const std::pair<qint32, const char *> rows[] = {
        {0, "00:00:00"},         {74, "00:00:00"},           {75, "00:00:01"}, {75 * 3599 + 74, "00:59:59"},
        {75 * 3600, "01:00:00"}, {75 * 360000, "100:00:00"}, {-1, "00:00:00"}, {-75, "-00:00:01"},
    };
    for (const auto &[sectors, text] : rows)
        EXPECT_EQ(timeOf(sectors), QString::fromLatin1(text)) << sectors;
}

} // namespace
