#include "FrameProbe.h"

namespace vqf {

namespace {

dsp::ProbedStream stream(const std::string &decoder)
{
    dsp::ProbedStream stream;
    stream.codec = decoder;
    stream.extradata = {0, 0, 0, Channels - 1, 0, 0, 0, KilobitsPerSecond, 0, 0, 0, SampleRate / 1000};
    return stream;
}

} // namespace

FrameProbe::FrameProbe(const std::string &decoder) : m_decoder(stream(decoder))
{
    for (int n = 0; n < 3; ++n)
        m_decoder.decode(packetOf(silence()));
}

Frame FrameProbe::silence()
{
    Frame frame;
    frame.window = 2;
    return frame;
}

Frame FrameProbe::testFrame(BlockType type, int gain)
{
    constexpr std::array<int, BlockTypes> windows{2, 4, 3};
    Frame frame;
    frame.window = windows[type];
    for (ChannelFields &channel : frame.channel) {
        channel.gain = static_cast<std::uint8_t>(gain);
        channel.blockGain.fill(31);
    }
    return frame;
}

FrameProbe::Spectra FrameProbe::spectra(const Frame &test, const Frame &before)
{
    m_decoder.decode(packetOf(before));
    auto samples = m_decoder.decode(packetOf(test));
    const auto rest = m_decoder.decode(packetOf(silence()));
    std::array<std::vector<double>, Channels> channel;
    channel.fill(std::vector<double>(2 * FrameSize));
    for (int n = 0; n < 2 * FrameSize; ++n) {
        const auto &source = n < FrameSize ? samples : rest;
        const double left = source.at(0).at(n % FrameSize), right = source.at(1).at(n % FrameSize);
        channel[0][n] = (left + right) * 16384;
        channel[1][n] = (left - right) * 16384;
    }
    // With short neighbours both slopes are short, whatever the code says of the right one.
    WindowShape shape = WindowShapes[test.window];
    shape.leftSlope = shape.rightSlope = 64;
    Spectra spectra;
    for (int c = 0; c < Channels; ++c) {
        spectra[c].resize(FrameSize);
        m_transform.analyse(shape, channel[c].data(), spectra[c].data());
    }
    return spectra;
}

} // namespace vqf
