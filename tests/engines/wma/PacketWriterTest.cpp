#include "engines/wma/PacketWriter.h"

#include "engines/wma/Streams.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace wma;

/// Frames of any size are halved until they are taken.
TEST(PacketWriterTest, aFrameOfFewBitsFindsRoomWhereverTheStreamIs)
{
    std::mt19937 random(1);
    for (const StreamKind &kind : StreamKinds) {
        const StreamFormat format(kind);
        for (int stream = 0; stream < 300; ++stream) {
            PacketWriter packets(format);
            const int frames = 2 + static_cast<int>(random() % 30);
            int given = 0;
            const auto check = [&] {
                for (const Packet &packet : packets.take()) {
                    const int told = packet.bytes[0] & 15;
                    EXPECT_GE(told, 2);
                    given += packet.frames;
                }
            };
            for (int behind = frames - 1; behind >= 0; --behind) {
                if (behind == 0)
                    packets.makeRoomForLast();
                // Mostly ones that all but fill the packet.
                int size = random() % 4 == 0 ? static_cast<int>(random()) % (2 * packets.capacity())
                                             : packets.capacity() / (1 + static_cast<int>(random() % 5));
                size = std::abs(size) - static_cast<int>(random() % 40);
                while (size > LeastFrameBits && !packets.takes(size, static_cast<std::size_t>(behind)))
                    size = random() % 2 ? size - 50 : size / 2;
                size = std::max(size, 6);
                ASSERT_TRUE(packets.takes(size, static_cast<std::size_t>(behind)))
                    << kind.rate << ' ' << kind.bitRate << ' ' << behind << ' ' << size;
                dsp::BitWriter bits;
                for (int left = size; left > 0; left -= 16)
                    bits.put(0x5555U & ((1U << std::min(left, 16)) - 1), std::min(left, 16));
                packets.add(std::move(bits));
                check();
            }
            packets.finish();
            check();
            // The rest that the last packet keeps is never put out.
            ASSERT_EQ(given, frames);
        }
    }
}

} // namespace
