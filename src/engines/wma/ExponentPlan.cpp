#include "engines/wma/ExponentPlan.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace wma {

namespace {

constexpr int LargestStep = 12; ///< from band to band
/// Bits that a squared error of 1 dB in a coefficient's step is worth.
constexpr float ErrorCost = 0.03F;
/// Coefficients that a live band has too few of to count only themselves.
constexpr float LiveBias = 2;

float errorCost(const WantedExponent &band, float finer, float coarser)
{
    const float weight = static_cast<float>(band.live) + LiveBias;
    return ErrorCost * (weight * coarser * coarser + (band.live > 0 ? weight : 1) * finer * finer);
}

} // namespace

float exponentErrors(std::span<const WantedExponent> wanted,
                     const std::array<std::int8_t, MaxBands> &exponents, float gain, int largest)
{
    float cost = 0;
    for (std::size_t n = 0; n < wanted.size(); ++n) {
        const float step = gain + ExponentLevel * static_cast<float>(exponents[n] - largest);
        const float coarsest = wanted[n].live > 0 ? wanted[n].step : wanted[n].coarsest;
        const float finest = std::min(wanted[n].step, coarsest);
        cost += errorCost(wanted[n], std::min(step - finest, 0.0F), std::max(step - coarsest, 0.0F));
    }
    return cost;
}

std::array<std::int8_t, MaxBands> planExponents(std::span<const WantedExponent> wanted, int bands,
                                                const FrameWriter &writer)
{
    std::array<std::int8_t, MaxBands> exponents;
    exponents.fill(StartExponent);
    const auto isLive = [](const WantedExponent &band) { return band.live > 0; };
    const auto first = std::find_if(wanted.begin(), wanted.end(), isLive);
    const auto count = static_cast<std::size_t>(wanted.end() - first);
    if (count == 0)
        return exponents;

    // Targets relative to the first live band's; dead bands don't mind larger ones, up to a limit.
    std::array<float, MaxBands> targets, coarsest;
    float lowest = 0, highest = 0;
    for (std::size_t n = 0; n < count; ++n) {
        targets[n] = (first[n].step - first->step) / ExponentLevel;
        coarsest[n] = isLive(first[n]) ? targets[n] : (first[n].coarsest - first->step) / ExponentLevel;
        targets[n] = std::min(targets[n], coarsest[n]);
        lowest = std::min(lowest, coarsest[n]);
        if (isLive(first[n]))
            highest = std::max(highest, targets[n]);
    }
    const int from = std::max(static_cast<int>(std::floor(lowest)), LowestExponent - StartExponent);
    const int to = std::min(static_cast<int>(std::ceil(highest)), HighestExponent - StartExponent);
    const int states = to - from + 1;

    // The least cost of each band's having each exponent.
    constexpr std::size_t MostStates = HighestExponent - LowestExponent + 1;
    constexpr float Impossible = std::numeric_limits<float>::max() / 4;
    std::array<std::array<float, MostStates>, MaxBands> costs;
    std::array<float, 2 * LargestStep + 1> stepBits;
    for (int step = -LargestStep; step <= LargestStep; ++step)
        stepBits[step + LargestStep] = static_cast<float>(writer.exponentBits(step));
    std::fill_n(costs[0].begin(), states, Impossible);
    costs[0][-from] = 0;
    for (std::size_t n = 1; n < count; ++n) {
        auto &cost = costs[n];
        std::fill_n(cost.begin(), states, Impossible);
        for (int step = -LargestStep; step <= LargestStep; ++step) {
            const float bits = stepBits[step + LargestStep];
            for (int state = std::max(0, step); state < std::min(states, states + step); ++state)
                cost[state] = std::min(cost[state], costs[n - 1][state - step] + bits);
        }
        for (int state = 0; state < states; ++state) {
            const auto exponent = static_cast<float>(from + state);
            const float finer = ExponentLevel * std::min(exponent - targets[n], 0.0F);
            const float coarser = ExponentLevel * std::max(exponent - coarsest[n], 0.0F);
            cost[state] += errorCost(first[n], finer, coarser);
        }
    }

    // Back along the way that the last band's best exponent was reached.
    auto state =
        static_cast<int>(std::min_element(costs[count - 1].begin(), costs[count - 1].begin() + states) -
                         costs[count - 1].begin());
    const auto firstBand = static_cast<std::size_t>(first - wanted.begin());
    for (std::size_t n = count - 1;; --n) {
        exponents[firstBand + n] = static_cast<std::int8_t>(StartExponent + from + state);
        if (n == 0)
            break;
        float best = Impossible;
        int bestState = state;
        for (int step = -LargestStep; step <= LargestStep; ++step) {
            const int source = state - step;
            if (source < 0 || source >= states)
                continue;
            const float cost = costs[n - 1][source] + stepBits[step + LargestStep];
            if (cost < best) {
                best = cost;
                bestState = source;
            }
        }
        state = bestState;
    }
    for (std::size_t band = wanted.size(); band < static_cast<std::size_t>(bands); ++band)
        exponents[band] = exponents[wanted.size() - 1];
    return exponents;
}

} // namespace wma
