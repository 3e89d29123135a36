#include "engines/vqf/EvenError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

namespace vqf {

namespace {

/// The bits per coefficient that the search is worth where they are spent well, by experiment.
constexpr float EffectiveBits = 0.7F;
/// Keeps the logarithm of silence finite.
constexpr float InaudiblePower = 1e-6F;
/// Sums kept side by side, which lets the compiler use its vectors.
constexpr std::size_t SumLanes = 16;

} // namespace

float evenError(std::span<const float> weighted)
{
    std::vector<float> wants(weighted.size()); // bits, less what the common error saves
    std::transform(weighted.begin(), weighted.end(), wants.begin(),
                   [](float power) { return std::log2(power + InaudiblePower) / 2; });
    float low = -20, high = 30;
    for (int step = 0; step < 16; ++step) {
        const float middle = (low + high) / 2;
        std::array<float, SumLanes> bits{};
        for (std::size_t n = 0; n < wants.size(); n += SumLanes)
            for (std::size_t lane = 0; lane < SumLanes; ++lane)
                bits[lane] += std::max(wants[n + lane] - middle, 0.0F);
        const float spent = std::accumulate(bits.begin(), bits.end(), 0.0F);
        (spent > EffectiveBits * static_cast<float>(wants.size()) ? low : high) = middle;
    }
    return std::exp2(2 * high);
}

} // namespace vqf
