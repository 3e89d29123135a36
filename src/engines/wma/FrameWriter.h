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

/// One of the codes of coefficients, with the place of each level's first symbol.
class LevelCode
{
public:
    LevelCode(const CoefficientCode &code, int runBits);

    /// Writes a level, from 1 on, behind a run of zeros, without its sign. An escaped level has so many bits.
    void write(int run, int level, int levelBits, dsp::BitWriter &bits) const;
    void writeEnd(dsp::BitWriter &bits) const;
    /// What a level with its sign takes; an escaped one of at most 9 bits.
    int bits(int run, int level) const
    {
        const auto index = static_cast<std::size_t>(level);
        if (index <= m_code->runs.size() && run < m_code->runs[index - 1])
            return m_code->symbols[m_first[index - 1] + static_cast<std::size_t>(run)].length + 1;
        return m_escapeBits;
    }

private:
    const CoefficientCode *m_code;
    std::vector<std::size_t> m_first;
    int m_runBits;
    int m_escapeBits;
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

    /// Of a channel's levels.
    const LevelCode &levelCode(bool midSide, int channel) const { return m_codes[midSide && channel == 1]; }

    /// Of all of a channel.
    int exponentBits(const BlockLayout &layout, const ChannelFields &channel) const;

private:
    void writeBlock(const BlockFields &block, dsp::BitWriter &bits) const;
    void writeNoise(const BlockLayout &layout, const ChannelFields &channel, dsp::BitWriter &bits) const;
    void writeExponents(const BlockLayout &layout, const ChannelFields &channel, dsp::BitWriter &bits) const;
    void writeLevels(const BlockFields &block, int channel, dsp::BitWriter &bits) const;

    const StreamFormat m_format;
    const Tables &m_tables;
    const std::vector<BlockLayout> m_layouts;
    std::array<LevelCode, 2> m_codes;
};

} // namespace wma
