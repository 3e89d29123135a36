#include "engines/vqf/Lsp.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace vqf {

namespace {

constexpr int Half = LspOrder / 2;
using Polynomial = std::array<double, LspOrder + 1>;

/// The predictor polynomial by the Levinson recursion.
std::optional<Polynomial> predictor(const std::array<double, LspOrder + 1> &r)
{
    Polynomial a{1};
    double error = r[0];
    if (!(error > 0))
        return std::nullopt;
    for (int order = 1; order <= LspOrder; ++order) {
        double sum = 0;
        for (int n = 0; n < order; ++n)
            sum += a[n] * r[order - n];
        const double reflection = -sum / error;
        const Polynomial last = a;
        for (int n = 1; n <= order; ++n)
            a[n] = last[n] + reflection * last[order - n];
        error *= 1 - reflection * reflection;
        if (!(error > 0))
            return std::nullopt;
    }
    return a;
}

/// A symmetric polynomial of order LspOrder on the unit circle, as a series in the cosine.
class Series
{
public:
    Series(const Polynomial &a, double sign)
    {
        // The sum or difference of the polynomial and its mirror has a root at -1 or at 1; it's divided out.
        double quotient = 0;
        for (int n = 0; n <= Half; ++n) {
            const double mirrored = n == 0 ? 0 : a[LspOrder + 1 - n];
            quotient = a[n] + sign * mirrored - sign * quotient;
            m_factors[Half - n] = n == Half ? quotient : 2 * quotient;
        }
    }

    double at(double cosine) const
    {
        double next = 0, afterNext = 0;
        for (int n = Half; n > 0; --n) {
            const double value = m_factors[n] + 2 * cosine * next - afterNext;
            afterNext = next;
            next = value;
        }
        return m_factors[0] + cosine * next - afterNext;
    }

    /// The angles of its roots where there are as many as its order lets expect.
    std::optional<std::array<double, Half>> roots(int steps) const
    {
        std::array<double, Half> found{};
        int count = 0;
        double lastAngle = 0, last = at(1);
        for (int step = 1; step <= steps && count < Half; ++step) {
            const double angle = std::numbers::pi * step / steps;
            const double value = at(std::cos(angle));
            if ((value < 0) != (last < 0))
                found[count++] = bisect(lastAngle, angle, last < 0);
            lastAngle = angle;
            last = value;
        }
        if (count < Half)
            return std::nullopt;
        return found;
    }

private:
    double bisect(double low, double high, bool lowNegative) const
    {
        for (int n = 0; n < 22; ++n) {
            const double middle = (low + high) / 2;
            ((at(std::cos(middle)) < 0) == lowNegative ? low : high) = middle;
        }
        return (low + high) / 2;
    }

    std::array<double, Half + 1> m_factors{};
};

} // namespace

std::optional<Lsp> lspOf(const std::array<double, LspOrder + 1> &autocorrelation)
{
    const std::optional<Polynomial> a = predictor(autocorrelation);
    if (!a)
        return std::nullopt;
    for (const int steps : {512, 8192}) {
        const auto even = Series(*a, 1).roots(steps);
        const auto odd = Series(*a, -1).roots(steps);
        if (!even || !odd)
            continue;
        Lsp lsp;
        for (int n = 0; n < Half; ++n) {
            lsp[2 * n] = (*even)[n];
            lsp[2 * n + 1] = (*odd)[n];
        }
        return lsp;
    }
    return std::nullopt;
}

LspProducts lspProducts(const Lsp &cosines, double cosine)
{
    LspProducts products{0.5, 0.5};
    for (int n = 0; n < LspOrder; n += 2) {
        products.even *= 2 * (cosines[n] - cosine);
        products.odd *= 2 * (cosines[n + 1] - cosine);
    }
    return products;
}

Lsp cosinesOf(const Lsp &lsp)
{
    Lsp cosines;
    for (int n = 0; n < LspOrder; ++n)
        cosines[n] = std::cos(lsp[n]);
    return cosines;
}

} // namespace vqf
