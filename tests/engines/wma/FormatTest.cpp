#include "ModelDecoder.h"
#include "engines/wma/FrameWriter.h"
#include "engines/wma/Streams.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace wma;

/// Frames of every kind, every field random within what a file may hold.
class RandomFrames
{
public:
    RandomFrames(const StreamFormat &format, const Tables &tables)
        : m_format(format), m_layouts(blockLayouts(format, tables))
    {}

    /// `density` is the share of coefficients that aren't zero.
    Frame next(double density)
    {
        Frame frame;
        divide(frame, 0, density);
        return frame;
    }

private:
    int any(int from, int to) { return std::uniform_int_distribution(from, to)(m_random); }
    bool happens(double share) { return std::uniform_real_distribution()(m_random) < share; }

    void divide(Frame &frame, int halvings, double density)
    {
        if (halvings < m_format.halvings() && happens(0.3)) {
            divide(frame, halvings + 1, density);
            divide(frame, halvings + 1, density);
            return;
        }
        BlockFields block;
        block.halvings = halvings;
        block.midSide = m_format.channels() == 2 && happens(0.5);
        block.gain = any(20, 70);
        const BlockFields *before = frame.empty() ? nullptr : &frame.back();
        block.newExponents = !before || before->halvings != halvings || happens(0.5);
        for (int c = 0; c < m_format.channels(); ++c) {
            fill(block, block.channels[c], density);
            if (!block.newExponents && !before->channels[c].coded)
                block.channels[c].coded = false;
        }
        // What decoders keep of a channel that wasn't coded is better left alone.
        if (!block.newExponents)
            for (int c = 0; c < m_format.channels(); ++c)
                if (block.channels[c].coded)
                    block.channels[c].exponents = before->channels[c].exponents;
        frame.push_back(block);
    }

    void fill(const BlockFields &block, ChannelFields &channel, double density)
    {
        const BlockLayout &layout = m_layouts[block.halvings];
        channel.coded = density > 0 && happens(0.9);
        int exponent = StartExponent;
        for (int band = 0; band < layout.bands; ++band) {
            if (happens(0.3))
                exponent = std::clamp(exponent + (happens(0.02) ? any(-30, 30) : any(-3, 3)), 0, 70);
            channel.exponents[band] = static_cast<std::int8_t>(exponent);
        }
        channel.levels.assign(layout.codedEnd, 0);
        for (std::int16_t &level : channel.levels)
            if (happens(density)) {
                const int largest = happens(0.05) ? largestLevel(block.gain) : happens(0.2) ? 30 : 2;
                level = static_cast<std::int16_t>(happens(0.5) ? any(1, largest) : -any(1, largest));
            }
        int level = 0;
        for (int band = 0; band < layout.noiseBands(); ++band)
            if ((channel.isNoise[band] = happens(0.5))) {
                level = level == 0 ? any(20, 60) : level + any(-LargestNoiseStep, LargestNoiseStep);
                channel.noiseLevels[band] = static_cast<std::int8_t>(std::clamp(level, 2, 80));
                level = channel.noiseLevels[band];
            }
    }

    const StreamFormat m_format;
    const std::vector<BlockLayout> m_layouts;
    std::mt19937 m_random{7};
};

class FormatTest : public testing::TestWithParam<StreamKind>
{};

TEST_P(FormatTest, theSystemsDecoderPlaysAnyLegalFramesAsTheModelDoes)
{
    const Tables *tables = measuredTables();
    if (!tables)
        GTEST_SKIP() << "this system's libraries have no decoder for WMA";
    const StreamFormat format(GetParam());
    RandomFrames random(format, *tables);
    const FrameWriter writer(format, *tables);
    PacketWriter packets(format);
    constexpr int Count = 150;
    std::vector<Frame> frames;
    Frame next = random.next(0.05);
    int before = 0;
    for (int n = 0; n < Count; ++n) {
        const Frame behind = random.next(0.05);
        if (n == Count - 1)
            packets.makeRoomForLast();
        for (double density = 0.05;; density = density < 0.001 ? 0 : density / 2) {
            dsp::BitWriter bits;
            writer.write(next, {packets.startsPacket(), before, behind.front().halvings}, bits);
            if (packets.takes(bits.bits(), static_cast<std::size_t>(Count - 1 - n))) {
                packets.add(std::move(bits));
                break;
            }
            // What the frame before said of this one's first block must hold.
            const int promised = next.front().halvings;
            do
                next = random.next(density);
            while (next.front().halvings != promised);
        }
        frames.push_back(next);
        before = next.back().halvings;
        next = behind;
        if (packets.canPad() && n % 10 == 0)
            packets.pad();
    }
    packets.finish();

    const Samples own = ModelDecoder(format, *tables).decode(frames);
    const Samples system = decodeBySystem(format, packets.take());
    double power = 0, error = 0;
    for (int c = 0; c < format.channels(); ++c) {
        ASSERT_EQ(own[c].size(), system[c].size());
        for (std::size_t n = 0; n < own[c].size(); ++n) {
            power += own[c][n] * own[c][n];
            error += (own[c][n] - system[c][n]) * (own[c][n] - system[c][n]);
        }
    }
    const double agreement = 10 * std::log10(power / error);
    RecordProperty("dB", static_cast<int>(agreement));
    EXPECT_GT(agreement, 120);
    EXPECT_GT(power / static_cast<double>(own[0].size()), 1);
}

INSTANTIATE_TEST_SUITE_P(AllKinds, FormatTest, testing::ValuesIn(StreamKinds), [](const auto &info) {
    return std::to_string(info.param.rate) + (info.param.channels == 2 ? "s" : "m") +
           std::to_string(info.param.bitRate);
});

} // namespace
