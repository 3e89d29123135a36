#pragma once

#include "engines/dsp/MaskingModel.h"
#include "engines/dsp/Mdct.h"
#include "engines/vqf/Format.h"

#include <array>

namespace vqf {

/// How much noise one channel hides around a frame. It's looked at through windows of one length whatever the
/// blocks are: steep slopes spread tones over the whole spectrum, which then seems to hide what it doesn't.
/// One thread at a time.
class NoiseThresholds
{
public:
    NoiseThresholds();

    /// Takes 2 * FrameSize samples in 16-bit units, the frame's region in the middle.
    void analyse(const float *samples);
    /// Sets the inverse of the power of noise that is hidden in each coefficient, FrameSize in all.
    void inverse(const WindowShape &shape, float *inverse) const;

private:
    static constexpr int Size = FrameSize / 2; ///< coefficients of a window
    static constexpr int Step = FrameSize / 4;
    static constexpr int Windows = (2 * FrameSize - 2 * Size) / Step + 1;

    /// How much of a block's noise each window sees.
    std::array<float, Windows> shares(const WindowShape &shape, int block) const;

    dsp::Mdct<float> m_transform;
    dsp::MaskingModel m_model;
    std::array<float, 2 * Size> m_window;
    std::array<std::array<float, Size>, Windows> m_inverse; ///< to the power MeanExponent
};

} // namespace vqf
