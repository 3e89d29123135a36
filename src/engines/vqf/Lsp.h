#pragma once

#include "engines/vqf/Format.h"

#include <optional>

namespace vqf {

/// Line spectral frequencies in radians, ascending; they stand for a filter whose power response is the curve
/// that a frame's spectrum has as its amplitude.
using Lsp = std::array<double, LspOrder>;

/// From the autocorrelation 0..LspOrder. Nothing where the filter is too near to instability to tell its
/// roots.
std::optional<Lsp> lspOf(const std::array<double, LspOrder + 1> &autocorrelation);

/// The two products that the curve is made of, at an angle given by its cosine.
struct LspProducts
{
    double odd;
    double even;

    /// 0.5 / |A|^2 with the filter's polynomial A.
    double curve(double cosine) const
    {
        return 0.5 / (odd * odd * (2 - 2 * cosine) + even * even * (2 + 2 * cosine));
    }
};
LspProducts lspProducts(const Lsp &cosines, double cosine);
Lsp cosinesOf(const Lsp &lsp);

} // namespace vqf
