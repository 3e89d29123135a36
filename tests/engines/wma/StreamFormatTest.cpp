#include "engines/wma/StreamFormat.h"

#include "engines/wma/Tables.h"

#include <gtest/gtest.h>

namespace {

using namespace wma;

struct Row
{
    int rate, channels, kilobits;
    int frameSize, noiseHertz, pair, carryBits; ///< noiseHertz is 0 for none
};

TEST(StreamFormatTest, featuresFollowFromRateAndBitRate)
{
    constexpr Row rows[] = {
        {8000, 1, 5, 512, 2000, 2, 10},     {8000, 1, 6, 512, 2600, 2, 10},
        {8000, 1, 8, 512, 0, 2, 11},        {8000, 2, 12, 512, 2600, 2, 10},
        {11025, 1, 8, 512, 3859, 2, 10},    {11025, 1, 10, 512, 3859, 2, 10},
        {16000, 1, 10, 512, 4000, 2, 10},   {16000, 1, 12, 512, 4000, 2, 10},
        {16000, 1, 16, 512, 4000, 2, 11},   {16000, 2, 16, 512, 2400, 2, 10},
        {16000, 2, 20, 512, 4000, 2, 10},   {22050, 1, 16, 1024, 7717, 2, 11},
        {22050, 1, 20, 1024, 7717, 2, 11},  {22050, 2, 20, 1024, 7717, 2, 10},
        {22050, 2, 22, 1024, 7717, 2, 11},  {22050, 2, 32, 1024, 0, 2, 11},
        {32000, 1, 20, 2048, 9600, 0, 12},  {32000, 1, 32, 2048, 11200, 1, 13},
        {32000, 2, 32, 2048, 11200, 1, 12}, {32000, 2, 40, 2048, 11200, 1, 12},
        {32000, 2, 48, 2048, 0, 2, 12},     {44100, 1, 32, 2048, 0, 1, 12},
        {44100, 1, 48, 2048, 0, 1, 13},     {44100, 2, 32, 2048, 8820, 0, 11},
        {44100, 2, 48, 2048, 0, 1, 12},     {44100, 2, 64, 2048, 0, 2, 12},
        {44100, 2, 80, 2048, 0, 2, 12},     {44100, 2, 96, 2048, 0, 2, 13},
        {44100, 2, 128, 2048, 0, 2, 13},    {44100, 2, 160, 2048, 0, 2, 13},
        {48000, 2, 96, 2048, 0, 2, 13},     {48000, 2, 128, 2048, 0, 2, 13},
        {48000, 2, 160, 2048, 0, 2, 13},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.rate << " Hz, " << row.kilobits << " kb/s");
        const StreamFormat format(row.rate, row.channels, row.kilobits * 1000);
        EXPECT_EQ(format.frameSize(), row.frameSize);
        EXPECT_EQ(format.blockSize(format.halvings()), SmallestBlock);
        EXPECT_EQ(format.hasNoise(), row.noiseHertz > 0);
        if (format.hasNoise()) {
            const double hertz = 0.5 * format.noiseBegin(0) * row.rate / row.frameSize;
            EXPECT_NEAR(hertz, row.noiseHertz, row.rate / 2.0 / row.frameSize);
        }
        EXPECT_EQ(format.tablePair(), row.pair);
        EXPECT_EQ(format.carryBits(), row.carryBits);
    }
    const StreamFormat format(44100, 2, 96000);
    EXPECT_EQ(format.packetBytes(), 2229 - 17 - 30);
    EXPECT_EQ(format.filePacketBytes(), 2229);
    EXPECT_EQ(format.codedEnd(0), 1864);
    EXPECT_EQ(format.sizeBits(), 3);
    EXPECT_EQ(format.header(), (std::array<std::uint8_t, 10>{0, 0x20, 0, 0, 0x1f, 0, 0, 0, 0, 0}));
}

TEST(TablesTest, everyBlockHasABandList)
{
    const Tables *tables = measuredTables();
    if (!tables)
        GTEST_SKIP() << "this system's libraries have no decoder for WMA";
    for (const int rate : {8000, 11025, 16000, 22050, 32000, 44100, 48000}) {
        const StreamFormat format(rate, 1, rate);
        for (int halvings = 0; halvings <= format.halvings(); ++halvings) {
            int lists = 0;
            for (const BandList &list : tables->bands)
                lists += list.rate == rate && list.blockSize == format.blockSize(halvings);
            EXPECT_EQ(lists, 1) << rate << ' ' << format.blockSize(halvings);
        }
    }
}

} // namespace
