#include "engines/wma/FrameWriter.h"

#include <algorithm>
#include <cstdlib>

namespace wma {

namespace {

void put(dsp::BitWriter &bits, const Code &code)
{
    bits.put(code.bits, code.length);
}

/// Of an escaped level.
int levelBits(int gain)
{
    return gain < 15 ? 13 : gain < 32 ? 12 : gain < 40 ? 11 : gain < 45 ? 10 : 9;
}

} // namespace

int largestLevel(int gain)
{
    return (1 << levelBits(gain)) - 1;
}

LevelCode::LevelCode(const CoefficientCode &code, int runBits)
    : m_code(&code), m_runBits(runBits), m_escapeBits(code.escape.length + levelBits(127) + runBits + 1)
{
    std::size_t first = 0;
    for (const std::uint16_t runs : code.runs) {
        m_first.push_back(first);
        first += runs;
    }
}

void LevelCode::write(int run, int level, int levelBits, dsp::BitWriter &bits) const
{
    const auto index = static_cast<std::size_t>(level);
    if (index <= m_code->runs.size() && run < m_code->runs[index - 1])
        return put(bits, m_code->symbols[m_first[index - 1] + static_cast<std::size_t>(run)]);
    put(bits, m_code->escape);
    bits.put(static_cast<unsigned>(level), levelBits);
    bits.put(static_cast<unsigned>(run), m_runBits);
}

void LevelCode::writeEnd(dsp::BitWriter &bits) const
{
    put(bits, m_code->end);
}

FrameWriter::FrameWriter(const StreamFormat &format, const Tables &tables)
    : m_format(format),
      m_tables(tables),
      m_layouts(blockLayouts(format, tables)),
      m_codes{LevelCode(tables.coefficients[format.tablePair()][0], format.runBits()),
              LevelCode(tables.coefficients[format.tablePair()][1], format.runBits())}
{}

void FrameWriter::write(const Frame &frame, const FrameSurroundings &surroundings, dsp::BitWriter &bits) const
{
    const auto putSize = [&](int halvings) {
        bits.put(static_cast<unsigned>(halvings), m_format.sizeBits());
    };
    if (surroundings.firstInPacket) {
        putSize(surroundings.halvingsBefore);
        putSize(frame.front().halvings);
    }
    for (std::size_t n = 0; n < frame.size(); ++n) {
        putSize(n + 1 < frame.size() ? frame[n + 1].halvings : surroundings.halvingsBehind);
        writeBlock(frame[n], bits);
    }
}

void FrameWriter::writeBlock(const BlockFields &block, dsp::BitWriter &bits) const
{
    const BlockLayout &layout = m_layouts[block.halvings];
    if (m_format.channels() == 2)
        bits.put(block.midSide, 1);
    for (int c = 0; c < m_format.channels(); ++c)
        bits.put(block.channels[c].coded, 1);
    if (!block.isCoded())
        return;
    constexpr int GainBits = 7, FullGain = 127;
    int gain = block.gain - 1;
    for (; gain >= FullGain; gain -= FullGain)
        bits.put(FullGain, GainBits);
    bits.put(static_cast<unsigned>(gain), GainBits);
    const auto forCoded = [&](const auto &writePart) {
        for (const ChannelFields &channel : block.channels)
            if (channel.coded)
                writePart(channel);
    };
    if (m_format.hasNoise()) {
        forCoded([&](const ChannelFields &channel) {
            for (int band = 0; band < layout.noiseBands(); ++band)
                bits.put(channel.isNoise[band], 1);
        });
        forCoded([&](const ChannelFields &channel) { writeNoise(layout, channel, bits); });
    }
    if (block.halvings > 0)
        bits.put(block.newExponents, 1);
    if (block.newExponents)
        forCoded([&](const ChannelFields &channel) { writeExponents(layout, channel, bits); });
    for (int c = 0; c < m_format.channels(); ++c)
        if (block.channels[c].coded)
            writeLevels(block, c, bits);
}

void FrameWriter::writeNoise(const BlockLayout &layout, const ChannelFields &channel,
                             dsp::BitWriter &bits) const
{
    bool first = true;
    int last = 0;
    for (int band = 0; band < layout.noiseBands(); ++band) {
        if (!channel.isNoise[band])
            continue;
        const int level = channel.noiseLevels[band];
        if (first)
            bits.put(static_cast<unsigned>(level - LowestNoiseLevel), 7);
        else
            put(bits, m_tables.noiseLevels[static_cast<std::size_t>(level - last + LargestNoiseStep)]);
        first = false;
        last = level;
    }
}

int FrameWriter::exponentBits(const BlockLayout &layout, const ChannelFields &channel) const
{
    int bits = 0, last = StartExponent;
    for (int band = 0; band < layout.bands; ++band) {
        bits += exponentBits(channel.exponents[band] - last);
        last = channel.exponents[band];
    }
    return bits;
}

void FrameWriter::writeExponents(const BlockLayout &layout, const ChannelFields &channel,
                                 dsp::BitWriter &bits) const
{
    int last = StartExponent;
    for (int band = 0; band < layout.bands; ++band) {
        const int exponent = channel.exponents[band];
        put(bits, m_tables.exponents[static_cast<std::size_t>(exponent - last + LargestExponentStep)]);
        last = exponent;
    }
}

void FrameWriter::writeLevels(const BlockFields &block, int channelNumber, dsp::BitWriter &bits) const
{
    const BlockLayout &layout = m_layouts[block.halvings];
    const ChannelFields &channel = block.channels[channelNumber];
    const LevelCode &code = levelCode(block.midSide, channelNumber);
    int run = 0;
    const auto writeRange = [&](int begin, int end) {
        for (int k = begin; k < end; ++k) {
            const int value = channel.levels[k];
            if (value == 0) {
                ++run;
                continue;
            }
            code.write(run, std::abs(value), levelBits(block.gain), bits);
            bits.put(value < 0, 1); // the decoder's transform has the other sign
            run = 0;
        }
    };
    // Bands of noise are left out: runs go on behind them.
    int begin = 0;
    for (int band = 0; band < layout.noiseBands(); ++band) {
        if (!channel.isNoise[band])
            continue;
        const int visible = layout.firstNoiseBand + band;
        writeRange(begin, std::max(layout.edges[visible], layout.noiseBegin));
        begin = layout.edges[visible + 1];
    }
    writeRange(begin, layout.codedEnd);
    if (run > 0)
        code.writeEnd(bits);
}

} // namespace wma
