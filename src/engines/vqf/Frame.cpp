#include "engines/vqf/Frame.h"

namespace vqf {

void BitWriter::put(const Frame &frame)
{
    const TypeLayout &layout = Layouts[frame.type()];
    put(static_cast<unsigned>(frame.window), 4);
    for (int vector = 0; vector < layout.vectors; ++vector) {
        put(frame.main[vector].first, 7);
        put(frame.main[vector].second, vector < layout.signedVectors ? 7 : 6);
    }
    for (const ChannelFields &channel : frame.channel)
        for (int block = 0; block < layout.blocks; ++block)
            for (int n = 0; n < layout.barkIndices; ++n)
                put(channel.bark[block][n], 6);
    for (const ChannelFields &channel : frame.channel)
        for (int block = 0; block < layout.blocks; ++block)
            put(channel.barkHistory[block], 1);
    for (const ChannelFields &channel : frame.channel) {
        put(channel.gain, 8);
        for (int block = 0; layout.blocks > 1 && block < layout.blocks; ++block)
            put(channel.blockGain[block], 5);
    }
    for (const ChannelFields &channel : frame.channel) {
        put(channel.lspPredictor, 1);
        put(channel.lspFirst, 6);
        for (const std::uint8_t second : channel.lspSecond)
            put(second, 4);
    }
    if (frame.type() != Long)
        return;
    for (const PairIndex &pair : frame.peaks) {
        put(pair.first, 7);
        put(pair.second, 7);
    }
    for (const ChannelFields &channel : frame.channel) {
        put(channel.period, 9);
        put(channel.peakGain, 7);
    }
}

std::vector<std::uint8_t> packetOf(const Frame &frame)
{
    BitWriter writer;
    writer.put(0, 8);
    writer.put(frame);
    return writer.takeAll();
}

} // namespace vqf
