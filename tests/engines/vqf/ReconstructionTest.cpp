#include "ModelDecoder.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

namespace {

using namespace vqf;

/// Frames of every kind in a legal succession, every field random within what a file may hold.
class RandomFrames
{
public:
    std::vector<Frame> make(int count)
    {
        std::vector<Frame> frames;
        for (int n = 0; n < count; ++n)
            frames.push_back(next());
        return frames;
    }

private:
    int any(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    std::uint8_t byte(int count) { return static_cast<std::uint8_t>(any(count)); }

    Frame next()
    {
        Frame frame;
        do
            frame.window = any(static_cast<int>(WindowShapes.size()));
        while (WindowShapes[frame.window].leftSlope != WindowShapes[m_lastWindow].rightSlope);
        m_lastWindow = frame.window;
        const TypeLayout &layout = Layouts[frame.type()];
        for (int n = 0; n < layout.vectors; ++n)
            frame.main[n] = {byte(128), byte(n < layout.signedVectors ? 128 : 64)};
        for (PairIndex &pair : frame.peaks)
            pair = {byte(128), byte(128)};
        for (ChannelFields &channel : frame.channel) {
            for (int block = 0; block < layout.blocks; ++block) {
                for (int n = 0; n < layout.barkIndices; ++n)
                    channel.bark[block][n] = byte(64);
                channel.barkHistory[block] = m_seen[frame.type()] && any(2);
                channel.blockGain[block] = byte(32);
            }
            channel.gain = static_cast<std::uint8_t>(150 + any(40));
            channel.lspPredictor = byte(2);
            channel.lspFirst = byte(64);
            for (std::uint8_t &second : channel.lspSecond)
                second = byte(16);
            channel.period = static_cast<std::uint16_t>(any(PeakPeriods));
            channel.peakGain = byte(64);
        }
        m_seen[frame.type()] = true;
        return frame;
    }

    std::mt19937 m_random{5};
    int m_lastWindow = 0;
    std::array<bool, BlockTypes> m_seen{};
};

TEST(ReconstructionTest, agreesWithTheSystemsDecoderOnAnyLegalFrames)
{
    const std::vector<Frame> frames = RandomFrames().make(600);
    const ModelDecoder::Samples own = ModelDecoder::decode(frames);
    std::vector<std::vector<std::uint8_t>> packets;
    std::transform(frames.begin(), frames.end(), std::back_inserter(packets), packetOf);
    const ModelDecoder::Samples system = decodeBySystem(packets);
    double power = 0, error = 0;
    for (int c = 0; c < 2; ++c) {
        ASSERT_EQ(own[c].size(), system[c].size());
        // What the decoder remembers from before the first frame is its own matter.
        for (std::size_t n = FrameSize; n < own[c].size(); ++n) {
            power += own[c][n] * own[c][n];
            error += (own[c][n] - system[c][n]) * (own[c][n] - system[c][n]);
        }
    }
    RecordProperty("dB", static_cast<int>(10 * std::log10(power / error)));
    EXPECT_GT(10 * std::log10(power / error), 90);
    EXPECT_GT(power / static_cast<double>(own[0].size()), 1);
}

TEST(FrameTest, fieldsOfEveryTypeFillTheFrame)
{
    for (const int window : {2, 4, 0}) {
        Frame frame;
        frame.window = window;
        frame.channel[1].period = 0x1ff;
        frame.channel[1].peakGain = 0x55;
        BitWriter writer;
        writer.put(frame);
        EXPECT_EQ(writer.bits(), FrameBits);
        const std::vector<std::uint8_t> bytes = writer.takeAll();
        ASSERT_EQ(bytes.size(), 558U);
        EXPECT_EQ(bytes[0] >> 4, window);
        // The last fields of a long frame: nine bits of the period, seven of the gain, then six of padding.
        EXPECT_EQ((bytes[555] << 16 | bytes[556] << 8 | bytes[557]) & 0x3fffff,
                  window == 0 ? 0xffd5 << 6 : 0);
    }
}

} // namespace
