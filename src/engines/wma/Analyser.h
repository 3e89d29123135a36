#pragma once

#include "engines/dsp/MaskingModel.h"
#include "engines/dsp/Mdct.h"
#include "engines/wma/FrameAnalysis.h"

namespace wma {

/// The sound that a frame is made of.
struct FrameSound
{
    /// Of each channel: 2 * frameSize in 16-bit units, the frame's region in the middle.
    std::array<std::vector<float>, MaxChannels> samples;
    std::vector<int> blocks; ///< their halvings
    int halvingsBefore = 0;
    int halvingsBehind = 0;
};

/// Finds what of a frame is heard: its spectra, how coarse their steps may be, and about how many bits they
/// will take. Nothing is kept from frame to frame; one thread at a time.
class Analyser
{
public:
    Analyser(const StreamFormat &format, const std::vector<BlockLayout> &layouts);

    FrameAnalysis analyse(const FrameSound &sound);

private:
    using Spectrum = std::vector<float>;

    /// What blocks of one size need.
    struct Kit
    {
        dsp::Mdct<float> transform;
        dsp::MaskingModel masking;
        std::vector<float> widthLevels; ///< of critical bands, at each band
    };

    void transform(const float *samples, int halvings, int leftSlope, int rightSlope, Spectrum &coefficients);
    void findThresholds(const float *centre, int halvings, Spectrum &thresholds);
    void keepMasking(const Spectrum &before, Spectrum &thresholds) const;
    void findSteps(int halvings, const Spectrum &thresholds, ChannelAnalysis &channel) const;
    void estimate(const BlockLayout &layout, const ChannelAnalysis &channel, BitEstimates &bits) const;

    const StreamFormat m_format;
    const std::vector<BlockLayout> &m_layouts;
    double m_lowPass;  ///< as a part of half the rate
    float m_bandShare; ///< of a band's threshold in its step
    std::vector<Kit> m_kits;
    std::vector<float> m_fullWindow; ///< Hann windows: for full blocks, and for all smaller ones
    std::vector<float> m_halfWindow;
    std::vector<float> m_windowed;
    Spectrum m_power, m_sines, m_other;
    std::array<float, Qualities> m_scales; ///< of squared levels, for each quality
};

} // namespace wma
