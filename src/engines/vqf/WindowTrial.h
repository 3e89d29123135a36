#pragma once

#include "engines/vqf/FrameTransform.h"
#include "engines/vqf/NoiseWeights.h"

namespace vqf {

/// The noise that each window code would leave to hear, in dB, up to a constant of the frame.
using WindowCosts = std::array<float, WindowShapes.size()>;

/// Looks what becomes of a frame in each of the windows, without coding it. One thread at a time.
class WindowTrial
{
public:
    /// `samples` of mid and side as FrameEncoder gets them; `weights` have heard them.
    WindowCosts costs(const std::array<const float *, Channels> &samples, const NoiseWeights &weights,
                      dsp::Workers &workers);

private:
    class Trial
    {
    public:
        float cost(int window, const std::array<const float *, Channels> &samples,
                   const NoiseWeights &weights);

    private:
        FrameTransform<float> m_transform;
        NoiseWeights::Spectrum m_weight, m_spectrum;
        std::array<float, Channels * FrameSize> m_weighted;
    };

    std::array<Trial, WindowShapes.size()> m_trials;
};

} // namespace vqf
