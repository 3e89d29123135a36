#pragma once

#include <complex>
#include <vector>

namespace dsp {

/// The modified discrete cosine transform of blocks of `size` coefficients, a power of two from 8 on, each
/// made of 2 * size windowed samples:
///
///     X[k] = sum over n of x[n] cos(pi/size * (n + 1/2 + size/2) * (k + 1/2))
///
/// Nothing is scaled. Forward, window, inverse, window and overlapping add give size / 2 times the samples.
/// An object keeps scratch memory: one thread at a time.
template <typename Real>
class Mdct
{
public:
    explicit Mdct(int size);

    int size() const { return m_size; }
    /// `samples` holds 2 * size values; `coefficients` receives size of them.
    void forward(const Real *samples, Real *coefficients);
    /// The same with the sine in place of the cosine, up to each coefficient's sign. Both squares together
    /// are an estimate of the power that doesn't depend on phase.
    void forwardSine(const Real *samples, Real *coefficients);
    /// The transposed transform: size coefficients to 2 * size samples.
    void inverse(const Real *coefficients, Real *samples);

private:
    void dct4(const Real *in, Real *out);
    void fft();

    int m_size;
    std::vector<std::complex<Real>> m_twist; ///< before and behind the Fourier transform
    std::vector<std::complex<Real>> m_roots; ///< of unity, for size / 2 points
    std::vector<int> m_reversed;             ///< bit reversal
    std::vector<std::complex<Real>> m_work;
    std::vector<Real> m_folded;
    std::vector<Real> m_mirror;
};

extern template class Mdct<float>;
extern template class Mdct<double>;

/// Multiplies the left half of a block of 2 * size samples by a rising sine slope of `slope` samples, a power
/// of two, centred in that half; before it is silence.
template <typename Real>
void applyLeftSlope(Real *samples, int size, int slope);
/// The mirror image on the right half.
template <typename Real>
void applyRightSlope(Real *samples, int size, int slope);

} // namespace dsp
