#include "FrameProbe.h"

#include "engines/wma/StreamFormat.h"

#include <stdexcept>

namespace wma {

namespace {

dsp::ProbedStream stream(const std::string &decoder, const StreamFormat &format, int options, int packetBytes)
{
    dsp::ProbedStream stream;
    stream.codec = decoder;
    stream.rate = format.rate();
    stream.channels = format.channels();
    stream.bitRate = format.bitRate();
    stream.packetSize = packetBytes;
    const auto header = format.header(options);
    stream.extradata.assign(header.begin(), header.end());
    return stream;
}

} // namespace

FrameProbe::FrameProbe(const std::string &decoder, int rate, int channels, int bitRate, int options,
                       dsp::BitWriter first, dsp::BitWriter silence)
    : m_frameSize(StreamFormat(rate, channels, bitRate).frameSize()),
      m_silence(silence.takeAll()),
      m_decoder(stream(decoder, StreamFormat(rate, channels, bitRate), options, PacketBytes))
{
    std::vector<double> nothing;
    decode(first.takeAll(), nothing);
}

std::optional<std::vector<double>> FrameProbe::spectrum(dsp::BitWriter frame, int blockSize)
{
    std::vector<double> samples;
    if (!decode(frame.takeAll(), samples)) {
        decode(m_silence, samples);
        return std::nullopt;
    }
    if (!decode(m_silence, samples) || samples.size() != 2 * static_cast<std::size_t>(m_frameSize))
        throw std::runtime_error("the decoder gives no frame for a packet");
    double *block = samples.data() + (m_frameSize - blockSize) / 2;
    dsp::applyLeftSlope(block, blockSize, blockSize);
    dsp::applyRightSlope(block, blockSize, blockSize);
    auto transform = m_transforms.find(blockSize);
    if (transform == m_transforms.end())
        transform = m_transforms.emplace(blockSize, blockSize).first;
    std::vector<double> coefficients(blockSize);
    transform->second.forward(block, coefficients.data());
    for (double &coefficient : coefficients)
        coefficient *= -1; // the decoder's transform has the other sign
    return coefficients;
}

/// Appends what comes out, in 16-bit units; whether anything does.
bool FrameProbe::decode(std::vector<std::uint8_t> packet, std::vector<double> &samples)
{
    packet.resize(PacketBytes);
    try {
        const auto decoded = m_decoder.decode(packet);
        for (const float sample : decoded.at(0))
            samples.push_back(sample * 32768.0);
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

} // namespace wma
