#pragma once

#include "engines/dsp/Mdct.h"
#include "engines/vqf/Format.h"

#include <array>

namespace vqf {

/// The blocks' transforms of one channel's frame. Samples are 2 * FrameSize values in 16-bit units, of which
/// the frame's region is the middle half; spectra are FrameSize coefficients, block after block, in decoders'
/// units. Keeps scratch memory: one thread at a time.
template <typename Real>
class FrameTransform
{
public:
    FrameTransform();

    /// `sines` receives the sine counterparts, up to their signs, unless it's null.
    void analyse(const WindowShape &shape, const Real *samples, Real *cosines, Real *sines = nullptr);

private:
    std::array<dsp::Mdct<Real>, BlockTypes> m_transforms;
    std::array<Real, 2 * FrameSize> m_block;
};

extern template class FrameTransform<float>;
extern template class FrameTransform<double>;

} // namespace vqf
