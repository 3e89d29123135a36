#include "engines/dsp/IntegerFit.h"

#include <algorithm>
#include <cmath>

namespace dsp {

namespace {

/// How far the values, in units of 1 / `scale`, lie from integers at most; stops looking once beyond `limit`.
double worstDistance(std::span<const double> values, double scale, double limit)
{
    double worst = 0;
    for (const double value : values) {
        const double scaled = value * scale;
        worst = std::max(worst, std::abs(scaled - std::nearbyint(scaled)));
        if (worst > limit)
            break;
    }
    return worst;
}

/// The scale for which the values are the closest to the integers that they are nearest to now.
double refined(std::span<const double> values, double scale)
{
    double product = 0, square = 0;
    for (const double value : values) {
        const double integer = std::nearbyint(value * scale);
        product += integer * value;
        square += value * value;
    }
    return product / square;
}

} // namespace

std::optional<std::vector<int>> fitIntegers(std::span<const double> values, int largest)
{
    double loudest = 0;
    for (const double value : values)
        loudest = std::max(loudest, std::abs(value));
    if (loudest == 0)
        return std::vector<int>(values.size(), 0);
    for (int k = 1; k <= largest; ++k) {
        const double limit = std::min(0.004 + 4e-6 * k, 0.1);
        double scale = k / loudest;
        if (worstDistance(values, scale, 2 * limit) > 2 * limit)
            continue;
        scale = refined(values, scale);
        if (worstDistance(values, scale, limit) > limit)
            continue;
        std::vector<int> integers;
        for (const double value : values)
            integers.push_back(static_cast<int>(std::lround(value * scale)));
        return integers;
    }
    return std::nullopt;
}

} // namespace dsp
