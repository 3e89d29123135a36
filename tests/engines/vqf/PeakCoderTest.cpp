#include "engines/vqf/PeakCoder.h"

#include "engines/vqf/Layout.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace {

using namespace vqf;

constexpr float Level = 100; // of the noise

/// Faint noise and nothing but that, at levels that expect it.
class PeakCoderTest : public testing::Test
{
protected:
    PeakCoderTest() { m_weight.fill(1); }

    void fillWithNoise()
    {
        std::uniform_real_distribution<float> any(-Level, Level);
        for (ChannelWork &channel : *m_channels) {
            channel.curve.fill(1);
            channel.level.fill(Level);
            channel.peaks.fill(0);
            for (float &wanted : channel.wanted)
                wanted = any(m_random);
        }
    }

    bool encode()
    {
        for (ChannelWork &channel : *m_channels)
            std::transform(channel.wanted.begin(), channel.wanted.end(), channel.power.begin(),
                           [](float wanted) { return wanted * wanted; });
        return m_coder.encode(m_frame, *m_channels, m_weight, 1);
    }

    ChannelWork &channel(int c) { return (*m_channels)[static_cast<std::size_t>(c)]; }
    const ChannelFields &fields(int c) const { return m_frame.channel[static_cast<std::size_t>(c)]; }

    std::mt19937 m_random{3};
    dsp::Workers m_workers{2};
    PeakCoder m_coder{*measuredTables(), m_workers};
    std::unique_ptr<std::array<ChannelWork, Channels>> m_channels =
        std::make_unique<std::array<ChannelWork, Channels>>();
    Spectrum m_weight;
    Frame m_frame;
};

/// The harmonics of a period that peaks can reach.
std::vector<int> harmonicRow(int period)
{
    const double distance = (3724 + std::lround(period * 18618 / 511.0)) / 400.0;
    const int last = peakPositions(period).back();
    std::vector<int> row;
    for (int peak = 1; std::lround(peak * distance) <= last; ++peak)
        row.push_back(static_cast<int>(std::lround(peak * distance)));
    return row;
}

TEST_F(PeakCoderTest, aLoneHarmonicRowIsFoundAndTakenOut)
{
    for (const int period : {0, 77, 200, 333, 511}) {
        for (int c = 0; c < Channels; ++c) {
            fillWithNoise();
            const std::vector<int> row = harmonicRow(period);
            for (std::size_t n = 0; n < row.size(); ++n)
                channel(c).wanted[row[n]] = n % 3 ? 20000 : -25000;
            ASSERT_TRUE(encode());
            const std::vector<int> found = peakPositions(fields(c).period);
            double before = 0, after = 0;
            for (const int k : row) {
                EXPECT_NE(std::find(found.begin(), found.end(), k), found.end()) << period << ", " << k;
                before += channel(c).wanted[k] * channel(c).wanted[k];
                after += channel(c).power[k];
            }
            EXPECT_LT(after, 0.25 * before) << period;
            EXPECT_EQ(fields(1 - c).peakGain, 0) << "nothing stands out there";
            for (const float faint : channel(1 - c).peaks)
                ASSERT_LT(std::abs(faint), Level / 4);
        }
    }
}

TEST_F(PeakCoderTest, rowsOfBothChannelsShareTheBits)
{
    fillWithNoise();
    const std::array<std::vector<int>, Channels> rows{harmonicRow(120), harmonicRow(290)};
    for (int c = 0; c < Channels; ++c)
        for (const int k : rows[c])
            channel(c).wanted[k] = k % 2 ? 15000 : -15000;
    ASSERT_TRUE(encode());
    for (int c = 0; c < Channels; ++c) {
        double left = 0;
        for (const int k : rows[c])
            left += channel(c).power[k] / (15000.0 * 15000);
        EXPECT_LT(left, 0.1 * static_cast<double>(rows[c].size())) << c;
    }
}

TEST_F(PeakCoderTest, whereNothingStandsOutThereAreNoPeaks)
{
    fillWithNoise();
    EXPECT_FALSE(encode());
}

} // namespace
