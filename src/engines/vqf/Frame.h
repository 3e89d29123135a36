#pragma once

#include "engines/dsp/BitWriter.h"
#include "engines/vqf/Format.h"

#include <cstdint>
#include <vector>

namespace vqf {

/// An entry of each of two codebooks with their signs, as the file writes them: bit 6 is the sign.
struct PairIndex
{
    std::uint8_t first = 0;
    std::uint8_t second = 0;
};

constexpr int entryOf(std::uint8_t index)
{
    return index & 63;
}

constexpr bool isNegative(std::uint8_t index)
{
    return index & 64;
}

/// The fields of a frame that belong to one channel.
struct ChannelFields
{
    std::array<std::array<std::uint8_t, MaxBarkIndices>, MaxBlocks> bark{};
    std::array<bool, MaxBlocks> barkHistory{};
    std::uint8_t gain = 0;                           ///< 8 bits
    std::array<std::uint8_t, MaxBlocks> blockGain{}; ///< 5 bits; not of long frames
    std::uint8_t lspPredictor = 0;
    std::uint8_t lspFirst = 0;
    std::array<std::uint8_t, LspSplits> lspSecond{};
    std::uint16_t period = 0;  ///< 9 bits; this and the next of long frames only
    std::uint8_t peakGain = 0; ///< 7 bits
};

struct Frame
{
    int window = 0; ///< index into WindowShapes
    std::array<PairIndex, MaxVectors> main{};
    std::array<PairIndex, PeakVectors> peaks{};
    std::array<ChannelFields, Channels> channel{};

    BlockType type() const { return WindowShapes[window].type; }
};

/// Also takes whole frames.
class BitWriter : public dsp::BitWriter
{
public:
    using dsp::BitWriter::put;
    void put(const Frame &frame);
};

/// A frame as a decoder takes it: the number of bits to skip (none) in a byte of its own, then the frame.
std::vector<std::uint8_t> packetOf(const Frame &frame);

} // namespace vqf
