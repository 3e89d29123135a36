#pragma once

#include "engines/dsp/DecoderProbe.h"
#include "engines/vqf/Frame.h"
#include "engines/vqf/FrameTransform.h"

namespace vqf {

/// Sends single frames through a decoder, each between two that are next to silent, and gives back the
/// spectrum that the decoder made of it.
class FrameProbe
{
public:
    using Spectra = std::array<std::vector<double>, Channels>;

    explicit FrameProbe(const std::string &decoder);

    /// A frame of the type with the loudest block gains, everything else being zero, and the window that
    /// short neighbours ask for.
    static Frame testFrame(BlockType type, int gain);
    /// The spectrum of M and of S. `before` is a short frame, silent but for its history.
    Spectra spectra(const Frame &test, const Frame &before);
    Spectra spectra(const Frame &test) { return spectra(test, silence()); }
    static Frame silence();

private:
    dsp::DecoderProbe m_decoder;
    FrameTransform<double> m_transform;
};

} // namespace vqf
