#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace dsp {

/// What a decoder is told of a stream before its first packet.
struct ProbedStream
{
    std::string codec; ///< the decoder's name
    int rate = 44100;
    int channels = 2;
    int bitRate = 0;    ///< bits per second, 0 where the decoder doesn't ask
    int packetSize = 0; ///< bytes, 0 where the decoder doesn't ask
    std::vector<std::uint8_t> extradata;
    bool keepStart = true; ///< nothing of the start is dropped as the codec's delay
};

/// One of the system's decoders, fed packet by packet with streams made to measure: what comes out tells what
/// its tables hold. Every failure is a std::runtime_error.
class DecoderProbe
{
public:
    /// Whether the system's library has this decoder.
    static bool exists(const std::string &codec);

    explicit DecoderProbe(const ProbedStream &stream);
    ~DecoderProbe();

    /// The samples of each channel that come out upon this packet, full scale being 1; empty where none do.
    std::vector<std::vector<float>> decode(std::span<const std::uint8_t> packet);

private:
    struct Context;
    std::unique_ptr<Context> m_context;
};

} // namespace dsp
