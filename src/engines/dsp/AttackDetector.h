#pragma once

#include <vector>

namespace dsp {

/// How suddenly a sound sets in: the energy of short segments, high frequencies emphasised, compared with
/// what came just before. A stream goes through in order.
class AttackDetector
{
public:
    /// `history` is the number of segments that a new one is compared with.
    AttackDetector(int segmentSamples, int history);

    /// Takes the next samples of one channel, in 16-bit units; a multiple of the segment. Gives each
    /// segment's ratio to the mean of those before it; steady sounds are near 1.
    std::vector<float> push(const float *samples, int count);

private:
    int m_segment;
    float m_last = 0;
    std::vector<float> m_history; ///< energies, a ring
    std::size_t m_next = 0;
};

} // namespace dsp
