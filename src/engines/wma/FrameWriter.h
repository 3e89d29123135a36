#pragma once

#include "engines/dsp/BitWriter.h"
#include "engines/wma/Frame.h"

namespace wma {

/// What a frame's bits depend on beside its fields.
struct FrameSurroundings
{
    bool firstInPacket = false; ///< no other frame starts before it in its packet
    int halvingsBefore = 0;     ///< of the last block before it
    int halvingsBehind = 0;     ///< of the first block behind it
};

/// Turns the fields of frames into bits.
class FrameWriter
{
public:
    FrameWriter(const StreamFormat &format, const Tables &tables);

    void write(const Frame &frame, const FrameSurroundings &surroundings, dsp::BitWriter &bits) const;

    /// The length of an exponent's code, from the difference to the one before.
    int exponentBits(int difference) const
    {
        return m_tables.exponents[static_cast<std::size_t>(difference + LargestExponentStep)].length;
    }

private:
    /// One of the coefficients' codes, with the place of each level's first symbol.
    struct IndexedCode
    {
        const CoefficientCode *code;
        std::vector<std::size_t> first;
    };

    void writeBlock(const BlockFields &block, dsp::BitWriter &bits) const;
    void writeNoise(const BlockLayout &layout, const ChannelFields &channel, dsp::BitWriter &bits) const;
    void writeExponents(const BlockLayout &layout, const ChannelFields &channel, dsp::BitWriter &bits) const;
    void writeLevels(const BlockFields &block, int channel, dsp::BitWriter &bits) const;

    const StreamFormat m_format;
    const Tables &m_tables;
    const std::vector<BlockLayout> m_layouts;
    std::array<IndexedCode, 2> m_codes;
};

} // namespace wma
