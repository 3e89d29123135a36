#pragma once

#include <optional>
#include <span>
#include <vector>

namespace dsp {

/// Finds the integers that measured values are, but for one common factor: the smallest ones, not above
/// `largest`, that explain all values. Values measured from rounded samples are allowed a small distance from
/// an integer, a smaller one where the integers are small and would explain much by chance. Nothing where no
/// factor fits.
std::optional<std::vector<int>> fitIntegers(std::span<const double> values, int largest);

} // namespace dsp
