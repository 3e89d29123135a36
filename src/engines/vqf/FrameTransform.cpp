#include "engines/vqf/FrameTransform.h"

#include <algorithm>
#include <cmath>

namespace vqf {

namespace {

template <typename Real>
void applyWindow(const WindowShape &shape, int block, Real *samples)
{
    const TypeLayout &layout = Layouts[shape.type];
    const int left = block == 0 ? shape.leftSlope : layout.innerSlope;
    const int right = block == layout.blocks - 1 ? shape.rightSlope : layout.innerSlope;
    dsp::applyLeftSlope(samples, layout.blockSize, left);
    dsp::applyRightSlope(samples, layout.blockSize, right);
}

/// Of a block's samples within the frame's.
int firstSample(const TypeLayout &layout, int block)
{
    return FrameSize / 2 + block * layout.blockSize - layout.blockSize / 2;
}

} // namespace

template <typename Real>
FrameTransform<Real>::FrameTransform()
    : m_transforms{dsp::Mdct<Real>(Layouts[Short].blockSize), dsp::Mdct<Real>(Layouts[Medium].blockSize),
                   dsp::Mdct<Real>(Layouts[Long].blockSize)}
{}

template <typename Real>
void FrameTransform<Real>::analyse(const WindowShape &shape, const Real *samples, Real *cosines, Real *sines)
{
    const TypeLayout &layout = Layouts[shape.type];
    const int size = layout.blockSize;
    const Real scale = 2 / std::sqrt(static_cast<Real>(size));
    for (int block = 0; block < layout.blocks; ++block) {
        const Real *start = samples + firstSample(layout, block);
        std::transform(start, start + 2 * size, m_block.begin(), [scale](Real s) { return s * scale; });
        applyWindow(shape, block, m_block.data());
        m_transforms[shape.type].forward(m_block.data(), cosines + block * size);
        if (sines)
            m_transforms[shape.type].forwardSine(m_block.data(), sines + block * size);
    }
}

template class FrameTransform<float>;
template class FrameTransform<double>;

} // namespace vqf
