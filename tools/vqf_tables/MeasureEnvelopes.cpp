// The spectral envelopes: with everything else fixed, a coefficient follows the index of its band as that
// column of the codebook says, plus 1. Where neighbours stop following each other, a band ends.
#include "Measurement.h"
#include "engines/dsp/IntegerFit.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace vqf {

namespace {

constexpr int LargestFactor = 37000; ///< of 4096ths
constexpr int Turn = 17;             ///< by which the indices of a block differ from each other

/// How a coefficient follows the index.
using Course = std::array<double, BookSize>;

double product(const Course &a, const Course &b)
{
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

/// Adds up courses that are proportional, whatever their signs.
void addAligned(Course &sum, const Course &course)
{
    const double sign = product(sum, course) < 0 ? -1 : 1;
    for (int n = 0; n < BookSize; ++n)
        sum[n] += sign * course[n];
}

/// Of each coefficient of a block, summed over blocks and channels.
std::vector<Course> coursesOf(FrameProbe &probe, BlockType type)
{
    const TypeLayout &layout = Layouts[type];
    std::array<std::vector<Course>, Channels> single;
    single.fill(std::vector<Course>(FrameSize));
    for (int n = 0; n < BookSize; ++n) {
        Frame frame = FrameProbe::testFrame(type, 200);
        for (ChannelFields &channel : frame.channel)
            for (auto &block : channel.bark)
                for (int j = 0; j < layout.barkIndices; ++j)
                    block[j] = static_cast<std::uint8_t>((n + Turn * j) % BookSize);
        const auto spectra = [&](int sign) {
            for (int vector = 0; vector < layout.vectors; ++vector)
                frame.main[vector].first = static_cast<std::uint8_t>(vector % BookSize | sign);
            return probe.spectra(frame);
        };
        const FrameProbe::Spectra plus = spectra(0), minus = spectra(64);
        for (int c = 0; c < Channels; ++c)
            for (int k = 0; k < FrameSize; ++k)
                single[c][k][n] = plus[c][k] - minus[c][k];
    }
    std::vector<Course> courses(layout.blockSize);
    for (const auto &channel : single)
        for (int k = 0; k < FrameSize; ++k)
            addAligned(courses[k % layout.blockSize], channel[k]);
    return courses;
}

std::vector<int> edgesOf(const std::vector<Course> &courses)
{
    std::vector<int> edges{0};
    for (std::size_t k = 1; k < courses.size(); ++k) {
        const double together = product(courses[k - 1], courses[k]);
        const double cosine2 =
            together * together / product(courses[k - 1], courses[k - 1]) / product(courses[k], courses[k]);
        if (1 - cosine2 > 1e-7)
            edges.push_back(static_cast<int>(k));
    }
    edges.push_back(static_cast<int>(courses.size()));
    return edges;
}

/// The common course of many noisy ones: the strongest direction among them.
Course strongest(const std::vector<Course> &courses)
{
    Course direction =
        *std::max_element(courses.begin(), courses.end(),
                          [](const Course &a, const Course &b) { return product(a, a) < product(b, b); });
    for (int round = 0; round < 4; ++round) {
        Course next{};
        for (const Course &course : courses) {
            const double weight = product(course, direction);
            for (int n = 0; n < BookSize; ++n)
                next[n] += weight * course[n];
        }
        const double length = std::sqrt(product(next, next));
        std::transform(next.begin(), next.end(), direction.begin(), [=](double x) { return x / length; });
    }
    if (std::accumulate(direction.begin(), direction.end(), 0.0) < 0)
        std::transform(direction.begin(), direction.end(), direction.begin(), std::negate<>());
    return direction;
}

} // namespace

void measureEnvelopes(FrameProbe &probe, Tables &tables)
{
    for (int t = 0; t < BlockTypes; ++t) {
        const auto type = static_cast<BlockType>(t);
        const TypeLayout &layout = Layouts[type];
        const std::vector<Course> courses = coursesOf(probe, type);
        const std::vector<int> edges = edgesOf(courses);
        if (static_cast<int>(edges.size()) != layout.bands + 1)
            throw std::runtime_error("the envelope's bands don't show");
        for (int band = 0; band < layout.bands; ++band)
            tables.bandWidths[type][band] = static_cast<std::int16_t>(edges[band + 1] - edges[band]);
        for (int column = 0; column < BarkColumns; ++column) {
            std::vector<Course> turnedBack;
            for (int j = 0; j < layout.barkIndices; ++j) {
                const int band = column * layout.barkIndices + j;
                for (int k = edges[band]; k < edges[band + 1]; ++k) {
                    Course &course = turnedBack.emplace_back();
                    for (int n = 0; n < BookSize; ++n)
                        course[(n + Turn * j) % BookSize] = courses[k][n];
                }
            }
            const auto factors = dsp::fitIntegers(strongest(turnedBack), LargestFactor);
            if (!factors)
                throw std::runtime_error("the envelope's values don't show");
            for (int entry = 0; entry < BookSize; ++entry)
                tables.bark[type][entry][column] = static_cast<std::int16_t>((*factors)[entry] - 4096);
        }
    }
}

} // namespace vqf
