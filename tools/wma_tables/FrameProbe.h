#pragma once

#include "engines/dsp/BitWriter.h"
#include "engines/dsp/DecoderProbe.h"
#include "engines/dsp/Mdct.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace wma {

/// Sends single frames through a decoder, each between silent ones, and gives back the spectrum that the
/// decoder made of the first block. Streams have neither a bit reservoir nor heads of packets: a packet is a
/// frame.
class FrameProbe
{
public:
    /// `options` as in the stream's header. `first` begins the stream; it and `silence` are frames in which
    /// nothing is coded, zeros in streams of full blocks.
    FrameProbe(const std::string &decoder, int rate, int channels, int bitRate, int options,
               dsp::BitWriter first = {}, dsp::BitWriter silence = {});

    /// The first channel's coefficients of a frame that begins with a block of this size; all others must be
    /// silent. Nothing where the decoder refuses the frame.
    std::optional<std::vector<double>> spectrum(dsp::BitWriter frame, int blockSize);
    std::optional<std::vector<double>> spectrum(dsp::BitWriter frame)
    {
        return spectrum(std::move(frame), m_frameSize);
    }

private:
    bool decode(std::vector<std::uint8_t> packet, std::vector<double> &samples);

    static constexpr int PacketBytes = 3000; ///< room for every coefficient of a frame

    int m_frameSize;
    std::vector<std::uint8_t> m_silence;
    dsp::DecoderProbe m_decoder;
    std::map<int, dsp::Mdct<double>> m_transforms; ///< by block size
};

} // namespace wma
