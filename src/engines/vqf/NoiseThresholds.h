#pragma once

#include "engines/dsp/MaskingModel.h"
#include "engines/dsp/Mdct.h"
#include "engines/vqf/Format.h"

#include <array>
#include <cmath>
#include <vector>

namespace vqf {

/// Powers of values that come in runs of the same one.
class StepwisePower
{
public:
    explicit StepwisePower(float exponent) : m_exponent(exponent) {}

    float operator()(float base)
    {
        if (base != m_base) {
            m_base = base;
            m_power = std::pow(base, m_exponent);
        }
        return m_power;
    }

private:
    float m_exponent;
    float m_base = 1, m_power = 1;
};

/// How much noise one channel hides around a frame. It's looked at through windows of one length whatever the
/// blocks are: steep slopes spread tones over the whole spectrum, which then seems to hide what it doesn't.
/// One thread at a time.
class NoiseThresholds
{
public:
    NoiseThresholds();

    /// Takes 2 * FrameSize samples in 16-bit units, the frame's region in the middle.
    void analyse(const float *samples);
    /// Sets the inverse of the power of noise that is hidden in each coefficient of the frame in that window,
    /// FrameSize in all.
    void inverse(int window, float *inverse) const;

private:
    static constexpr int Size = FrameSize / 2; ///< coefficients of a window
    static constexpr int Step = FrameSize / 4;
    static constexpr int Windows = (2 * FrameSize - 2 * Size) / Step + 1;

    using Shares = std::array<float, Windows>;

    Shares sharesOf(const WindowShape &shape, int block) const;

    dsp::Mdct<float> m_transform;
    dsp::MaskingModel m_model;
    std::array<float, 2 * Size> m_window;
    std::array<std::vector<Shares>, WindowShapes.size()> m_shares; ///< of each block in each window
    std::array<std::array<float, Size>, Windows> m_inverse;        ///< to the power MeanExponent
};

} // namespace vqf
