#include "engines/dsp/Mdct.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numbers>

namespace dsp {

namespace {

constexpr double Pi = std::numbers::pi;

/// The rising slope of that length, a power of two.
const std::vector<double> &slopeOf(int length)
{
    static const auto slopes = [] {
        std::array<std::vector<double>, 13> all; // up to 4096
        for (std::size_t power = 0; power < all.size(); ++power)
            for (int n = 0; n < 1 << power; ++n)
                all[power].push_back(std::sin(Pi * (n + 0.5) / (2.0 * (1 << power))));
        return all;
    }();
    return slopes.at(static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(length))));
}

} // namespace

template <typename Real>
Mdct<Real>::Mdct(int size)
    : m_size(size),
      m_twist(size / 2),
      m_roots(size / 4),
      m_reversed(size / 2),
      m_work(size / 2),
      m_folded(size),
      m_mirror(2 * size)
{
    const int points = size / 2;
    for (int n = 0; n < points; ++n)
        m_twist[n] = std::complex<Real>(std::polar(1.0, -Pi * (n + 0.125) / size));
    for (int n = 0; n < points / 2; ++n)
        m_roots[n] = std::complex<Real>(std::polar(1.0, -2 * Pi * n / points));
    for (int n = 0, reversed = 0; n < points; ++n) {
        m_reversed[n] = reversed;
        int bit = points / 2;
        for (; bit > 0 && (reversed & bit); bit /= 2)
            reversed ^= bit;
        reversed |= bit;
    }
}

template <typename Real>
void Mdct<Real>::fft()
{
    const int points = m_size / 2;
    Real *work = reinterpret_cast<Real *>(m_work.data());
    const Real *roots = reinterpret_cast<const Real *>(m_roots.data());
    for (int half = 1; half < points; half *= 2) {
        const int step = points / 2 / half;
        for (int start = 0; start < points; start += 2 * half) {
            Real *low = work + 2 * start;
            Real *high = low + 2 * half;
            for (int n = 0; n < half; ++n) {
                const Real cosine = roots[2 * n * step], sine = roots[2 * n * step + 1];
                const Real re = high[2 * n] * cosine - high[2 * n + 1] * sine;
                const Real im = high[2 * n] * sine + high[2 * n + 1] * cosine;
                high[2 * n] = low[2 * n] - re;
                high[2 * n + 1] = low[2 * n + 1] - im;
                low[2 * n] += re;
                low[2 * n + 1] += im;
            }
        }
    }
}

/// A cosine transform of the fourth kind: values from both ends pair up to complex numbers, whose Fourier
/// transform is twisted by an eighth of a step on either side.
template <typename Real>
void Mdct<Real>::dct4(const Real *in, Real *out)
{
    const auto product = [](std::complex<Real> a, std::complex<Real> b) {
        return std::complex<Real>(a.real() * b.real() - a.imag() * b.imag(),
                                  a.real() * b.imag() + a.imag() * b.real());
    };
    const int points = m_size / 2;
    for (int n = 0; n < points; ++n)
        m_work[m_reversed[n]] = product(std::complex<Real>(in[2 * n], in[m_size - 1 - 2 * n]), m_twist[n]);
    fft();
    for (int k = 0; k < points; ++k) {
        const std::complex<Real> value = product(m_work[k], m_twist[k]);
        out[2 * k] = value.real();
        out[m_size - 1 - 2 * k] = -value.imag();
    }
}

template <typename Real>
void Mdct<Real>::forward(const Real *samples, Real *coefficients)
{
    const int half = m_size / 2;
    for (int n = 0; n < half; ++n) {
        m_folded[n] = -samples[3 * half - 1 - n] - samples[3 * half + n];
        m_folded[half + n] = samples[n] - samples[m_size - 1 - n];
    }
    dct4(m_folded.data(), coefficients);
}

template <typename Real>
void Mdct<Real>::forwardSine(const Real *samples, Real *coefficients)
{
    std::reverse_copy(samples, samples + 2 * m_size, m_mirror.begin());
    forward(m_mirror.data(), coefficients);
}

template <typename Real>
void Mdct<Real>::inverse(const Real *coefficients, Real *samples)
{
    const int half = m_size / 2;
    dct4(coefficients, m_folded.data());
    for (int n = 0; n < half; ++n) {
        samples[n] = m_folded[half + n];
        samples[half + n] = -m_folded[m_size - 1 - n];
        samples[m_size + n] = -m_folded[half - 1 - n];
        samples[m_size + half + n] = -m_folded[n];
    }
}

template <typename Real>
void applyLeftSlope(Real *samples, int size, int slope)
{
    const int start = (size - slope) / 2;
    std::fill(samples, samples + start, Real(0));
    const std::vector<double> &rising = slopeOf(slope);
    for (int n = 0; n < slope; ++n)
        samples[start + n] *= static_cast<Real>(rising[n]);
}

template <typename Real>
void applyRightSlope(Real *samples, int size, int slope)
{
    const int start = size + (size - slope) / 2;
    const std::vector<double> &rising = slopeOf(slope);
    for (int n = 0; n < slope; ++n)
        samples[start + n] *= static_cast<Real>(rising[slope - 1 - n]);
    std::fill(samples + start + slope, samples + 2 * size, Real(0));
}

template class Mdct<float>;
template class Mdct<double>;
template void applyLeftSlope(float *, int, int);
template void applyLeftSlope(double *, int, int);
template void applyRightSlope(float *, int, int);
template void applyRightSlope(double *, int, int);

} // namespace dsp
