#pragma once

#include "engines/dsp/Workers.h"
#include "engines/vqf/ChannelWork.h"
#include "engines/vqf/VectorSearch.h"

namespace vqf {

/// Codes the periodic peaks of long frames.
class PeakCoder
{
public:
    PeakCoder(const Tables &tables, dsp::Workers &workers);

    /// Sets each channel's period to that at whose multiples most stands out of levels of that root mean
    /// square, gains and the peaks' shape, and takes the peaks out of the power. Returns whether there are
    /// any.
    bool encode(Frame &frame, std::array<ChannelWork, Channels> &channels, const Spectrum &weight, float rms);

private:
    /// One channel's values at its peaks.
    struct Peaks
    {
        std::array<float, PeakValues> target, weight, shape;
        float gain = 0;
        std::uint8_t gainField = 0;
    };
    /// A way to code the peaks of both channels.
    struct Coding
    {
        std::array<Peaks, Channels> peaks;
        std::array<PairIndex, PeakVectors> vectors;
        float error = 0; ///< weighted
    };

    bool choosePeriods(Frame &frame, const std::array<ChannelWork, Channels> &channels,
                       const Spectrum &weight, float rms) const;
    static void setGain(Peaks &peaks, float wanted);
    void findShape(Coding &coding) const;

    dsp::Workers &m_workers;
    SearchBooks m_books;
    std::vector<std::vector<int>> m_positions; ///< of each period
};

} // namespace vqf
