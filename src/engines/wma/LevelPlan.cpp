#include "engines/wma/LevelPlan.h"

#include <algorithm>
#include <limits>

namespace wma {

namespace {

/// Smaller sizes are never worth a level,
constexpr float LeastSize = 0.55F;
/// and larger ones are never zero.
constexpr float SureSize = 1.6F;
/// How many places back the one before is looked for.
constexpr std::size_t Reach = 8;

/// A coefficient that may get a level.
struct Place
{
    int position = -1;
    float zeros = 0; ///< the error, if all places since the last sure one, this one included, are zero
    float cost = 0;  ///< the least one of all up to here, if this one isn't zero
    int before = -1; ///< the place of the level before it, then
    std::int16_t level = 0;
};

} // namespace

float planLevels(std::span<const WantedLevel> wanted, int largest, const LevelCode &code,
                 std::vector<std::int16_t> &levels)
{
    std::vector<Place> places(1); // the beginning
    places.reserve(wanted.size() + 1);
    std::size_t sure = 0;
    float smallOnes = 0;
    for (std::size_t k = 0; k < wanted.size(); ++k) {
        const auto [size, weight] = wanted[k];
        if (size < LeastSize) {
            smallOnes += weight * size * size;
            continue;
        }
        const float zeros = places.back().zeros;
        Place place{static_cast<int>(k), size > SureSize ? 0 : zeros + weight * size * size,
                    std::numeric_limits<float>::max()};
        const std::size_t count = places.size(), first = std::max(sure + Reach, count) - Reach;
        const int nearest = std::clamp(static_cast<int>(size + 0.5F), 1, largest);
        for (int level = nearest; level >= std::max(nearest - 1, 1); --level) {
            const float error = size - static_cast<float>(level);
            for (std::size_t n = first; n < count; ++n) {
                const int bits = code.bits(place.position - places[n].position - 1, level);
                const float cost = places[n].cost + zeros - places[n].zeros + weight * error * error +
                                   BitCost * static_cast<float>(bits);
                if (cost < place.cost) {
                    place.cost = cost;
                    place.before = static_cast<int>(n);
                    place.level = static_cast<std::int16_t>(level);
                }
            }
        }
        if (size > SureSize)
            sure = count;
        places.push_back(place);
    }
    // Behind the last level all are zero.
    const auto costInAll = [&](const Place &last) { return last.cost + places.back().zeros - last.zeros; };
    const auto last = std::min_element(
        places.begin() + static_cast<std::ptrdiff_t>(sure), places.end(),
        [&](const Place &one, const Place &other) { return costInAll(one) < costInAll(other); });
    levels.assign(wanted.size(), 0);
    for (const Place *place = &*last; place->before >= 0;
         place = &places[static_cast<std::size_t>(place->before)])
        levels[static_cast<std::size_t>(place->position)] = place->level;
    return costInAll(*last) + smallOnes;
}

} // namespace wma
