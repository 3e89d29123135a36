#include "engines/wma/StreamEncoder.h"

#include "ModelDecoder.h"

#include <functional>
#include <gtest/gtest.h>
#include <random>

namespace {

using namespace wma;

using Pcm = std::vector<std::int16_t>; ///< interleaved

class StreamEncoderTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!measuredTables())
            GTEST_SKIP() << "this system's libraries have no decoder for WMA";
    }

    static std::vector<Packet> encode(const StreamKind &kind, const Pcm &samples, int threads = 1)
    {
        StreamEncoder encoder(*measuredTables(), kind, threads);
        std::vector<Packet> packets;
        const auto keep = [&](std::vector<Packet> more) {
            std::move(more.begin(), more.end(), std::back_inserter(packets));
        };
        const std::size_t block = static_cast<std::size_t>(encoder.format().frameSize() * kind.channels);
        for (std::size_t at = 0; at < samples.size(); at += block)
            keep(encoder.encode(samples.data() + at,
                                static_cast<int>(std::min(block, samples.size() - at)) / kind.channels));
        keep(encoder.finish());
        return packets;
    }

    static Pcm make(const StreamKind &kind, int frames, const std::function<double(int, int)> &value)
    {
        Pcm samples;
        for (int n = 0; n < frames; ++n)
            for (int c = 0; c < kind.channels; ++c)
                samples.push_back(static_cast<std::int16_t>(value(n, c)));
        return samples;
    }
};

constexpr StreamKind Extremes[] = {{8000, 1, 5}, {16000, 2, 16}, {44100, 2, 64}, {48000, 2, 160}};

/// That packets are such as decoders take.
void checkRules(const StreamFormat &format, const std::vector<Packet> &packets)
{
    for (std::size_t n = 0; n < packets.size(); ++n) {
        const auto &bytes = packets[n].bytes;
        ASSERT_EQ(bytes.size(), static_cast<std::size_t>(format.packetBytes()));
        EXPECT_EQ(bytes[0] >> 4, n % 16);
        EXPECT_GE(bytes[0] & 15, 2);
        const int carried = (bytes[1] << 16 | bytes[2] << 8 | bytes[3]) >> (24 - format.carryBits());
        EXPECT_LE(carried, format.packetBytes() * 4);
        EXPECT_TRUE(n > 0 || carried == 0);
    }
}

TEST_F(StreamEncoderTest, anySoundOfAnyLengthIsPlayedInFull)
{
    std::mt19937 random(3);
    const auto noise = [&](int, int) { return static_cast<int>(random() % 65536) - 32768.0; };
    const std::vector<std::pair<const char *, std::function<double(int, int)>>> sounds = {
        {"silence", [](int, int) { return 0.0; }},
        {"noise", noise},
        {"square", [](int n, int) { return n / 50 % 2 ? 32767.0 : -32768.0; }},
        {"antiphase", [](int n, int c) { return (c ? -30000 : 30000) * std::sin(0.05 * n); }},
        {"left only", [](int n, int c) { return c ? 0 : 20000 * std::sin(0.03 * n); }},
        {"click", [](int n, int) { return n == 9000 ? 32767.0 : 0.0; }},
        {"bursts", [&](int n, int c) { return n / 3000 % 2 ? noise(n, c) : 0.0; }},
    };
    for (const StreamKind &kind : Extremes) {
        const StreamFormat format(kind);
        const int size = format.frameSize();
        for (const auto &[name, sound] : sounds) {
            for (const int frames : {0, 1, size - 1, size, size + 1, 60'000}) {
                SCOPED_TRACE(testing::Message()
                             << kind.rate << " Hz, " << kind.bitRate << " kb/s, " << name << ", " << frames);
                const std::vector<Packet> packets = encode(kind, make(kind, frames, sound));
                checkRules(format, packets);
                const Samples decoded = decodeBySystem(format, packets);
                const int blocks = (frames + size - 1) / size;
                ASSERT_EQ(decoded[0].size(), static_cast<std::size_t>((blocks + 2) * size));
                if (name == std::string("silence")) {
                    const auto [lowest, highest] = std::minmax_element(decoded[0].begin(), decoded[0].end());
                    EXPECT_EQ(*lowest, 0);
                    EXPECT_EQ(*highest, 0);
                }
            }
        }
    }
}

TEST_F(StreamEncoderTest, theEndSoundsLikeTheRestWhereverItIs)
{
    for (const StreamKind &kind : Extremes) {
        const StreamFormat format(kind);
        const auto size = static_cast<std::size_t>(format.frameSize());
        const auto channels = static_cast<std::size_t>(kind.channels);
        const std::size_t longest = (size < 2048 ? 24 : 12) * size;
        std::mt19937 random(6);
        const Pcm whole = make(kind, static_cast<int>(longest), [&](int n, int c) {
            return 12000 * std::sin(0.02 * n * (c + 1)) + static_cast<int>(random() % 16000) - 8000.0;
        });
        for (std::size_t frames = 200; frames < longest; frames += size / 3) {
            SCOPED_TRACE(testing::Message() << kind.rate << " Hz, " << frames);
            const Pcm part(whole.begin(), whole.begin() + std::ptrdiff_t(frames * channels));
            const std::vector<Packet> packets = encode(kind, part);
            checkRules(format, packets);
            const Samples decoded = decodeBySystem(format, packets);
            ASSERT_EQ(decoded[0].size(), ((frames + size - 1) / size + 2) * size);
            double power = 0, error = 0;
            for (std::size_t n = frames - std::min(frames, size); n < frames; ++n) {
                for (std::size_t c = 0; c < channels; ++c) {
                    const double sample = part[n * channels + c];
                    const double off = sample - decoded[c][n + 2 * size];
                    power += sample * sample;
                    error += off * off;
                }
            }
            EXPECT_GT(10 * std::log10(power / error), 4);
        }
    }
}

TEST_F(StreamEncoderTest, theStreamKeepsToItsRateWhateverTheSound)
{
    std::mt19937 random(4);
    for (const StreamKind &kind : Extremes) {
        const StreamFormat format(kind);
        const int seconds = 30;
        // Ten seconds each of silence, of noise, and of a faint tone.
        const Pcm samples = make(kind, seconds * kind.rate, [&](int n, int) {
            return n < 10 * kind.rate   ? 0
                   : n < 20 * kind.rate ? static_cast<int>(random() % 30000) - 15000.0
                                        : 100 * std::sin(0.1 * n);
        });
        const auto packets = encode(kind, samples);
        int frames = 0, number = 0;
        for (const Packet &packet : packets) {
            frames += packet.frames;
            ++number;
            EXPECT_NEAR(double(frames) / format.framesPerPacket(), number, 4.5);
        }
        const double bits = 8.0 * format.filePacketBytes() / format.packetsPerFilePacket() *
                            static_cast<double>(packets.size());
        EXPECT_NEAR(bits / seconds / 1000 / kind.bitRate, 1, 0.03);
    }
}

TEST_F(StreamEncoderTest, thePacketsDontDependOnTheThreads)
{
    std::mt19937 random(5);
    const StreamKind kind{44100, 2, 64};
    const Pcm samples = make(kind, 300'000, [&](int n, int c) {
        return 8000 * std::sin(0.02 * n * (c + 1)) + (n / 7000 % 3 == 0 ? random() % 9000 : 0);
    });
    const auto one = encode(kind, samples, 1), three = encode(kind, samples, 3);
    ASSERT_EQ(one.size(), three.size());
    for (std::size_t n = 0; n < one.size(); ++n)
        ASSERT_EQ(one[n].bytes, three[n].bytes) << n;
}

} // namespace
