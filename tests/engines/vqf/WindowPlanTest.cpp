#include "engines/vqf/WindowPlan.h"

#include "VqfFile.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <span>

namespace {

using namespace vqf;

constexpr int Windows = static_cast<int>(WindowShapes.size());
/// The sound begins as if a frame in this window had been before.
constexpr int Before = 8;

std::vector<float> noiseOf(float amplitude, unsigned seed = 1)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> any(-amplitude, amplitude);
    std::vector<float> samples(FrameSize);
    for (float &sample : samples)
        sample = any(random);
    return samples;
}

void push(WindowPlan &plan, const std::vector<float> &samples, const WindowCosts &costs)
{
    plan.push(samples.data(), samples.data(), costs);
}

/// The cheapest succession, by trying all.
float leastCost(int before, std::span<const WindowCosts> costs)
{
    if (costs.empty())
        return 0;
    float least = std::numeric_limits<float>::max();
    for (int window = 0; window < Windows; ++window)
        if (follows(before, window))
            least = std::min(least, costs[0][window] + leastCost(window, costs.subspan(1)));
    return least;
}

TEST(WindowPlanTest, eachWindowBeginsTheCheapestSuccessionOfAllThatAreKnown)
{
    constexpr int Frames = 120;
    std::mt19937 random(8);
    // So large that what the plan itself prefers hardly matters.
    std::uniform_real_distribution<float> any(0, 1e5F);
    std::vector<WindowCosts> costs(Frames);
    for (WindowCosts &of : costs)
        for (float &cost : of)
            cost = any(random);
    for (const int ahead : {1, 2, 4, 6}) {
        WindowPlan plan;
        const float own = 30 * static_cast<float>(ahead);
        int window = Before;
        for (int frame = 0; frame < Frames; ++frame) {
            push(plan, noiseOf(1000, frame), costs[frame]);
            if (frame < ahead - 1)
                continue;
            const std::span<const WindowCosts> known(&costs[frame - ahead + 1], ahead);
            const float least = leastCost(window, known);
            const int next = plan.next();
            ASSERT_TRUE(follows(window, next)) << frame;
            ASSERT_LE(known[0][next] + leastCost(next, known.subspan(1)), least + own) << frame;
            window = next;
        }
    }
}

TEST(WindowPlanTest, noBlockTypeIsLeftAtOnceWhereTheFormatForbidsIt)
{
    for (int last = 0; last < Windows; ++last) {
        std::array<bool, BlockTypes> reached{};
        for (int window = 0; window < Windows; ++window) {
            for (int next = 0; next < Windows; ++next) {
                if (!follows(last, window) || !follows(window, next))
                    continue;
                const BlockType before = WindowShapes[last].type, between = WindowShapes[window].type,
                                after = WindowShapes[next].type;
                EXPECT_FALSE(between == Long && before != Long && after != Long) << last << window << next;
                EXPECT_FALSE(between == Medium && before == Short && after == Short)
                    << last << window << next;
                reached[after] = true;
            }
        }
        EXPECT_EQ(reached, (std::array<bool, BlockTypes>{true, true, true})) << "two frames after " << last;
    }
}

TEST(WindowPlanTest, noiseOutOfSilenceBeginsShortAndStaysLong)
{
    constexpr int First = 4, End = 17;
    WindowCosts costs;
    for (int window = 0; window < Windows; ++window)
        costs[window] = WindowShapes[window].type == Long ? 0 : 6;
    WindowPlan plan;
    const std::vector<float> silence(FrameSize);
    std::vector<BlockType> types;
    for (int frame = 0; frame < 30; ++frame) {
        push(plan, frame >= First && frame < End ? noiseOf(5000, frame) : silence, costs);
        if (frame >= 3)
            types.push_back(WindowShapes[plan.next()].type);
    }
    for (int frame = 0; frame < static_cast<int>(types.size()); ++frame)
        EXPECT_EQ(types[frame], frame < First || frame > End ? Medium
                                : frame == First             ? Short
                                                             : Long)
            << frame;
}

/// The block types of a file's frames.
std::vector<BlockType> typesOf(const std::vector<std::uint8_t> &file)
{
    std::vector<BlockType> types;
    for (std::size_t bit = 0; bit + FrameBits <= 8 * (file.size() - VqfHeaderBytes); bit += FrameBits) {
        const std::size_t byte = VqfHeaderBytes + bit / 8;
        types.push_back(WindowShapes[(file[byte] << 8 | file[byte + 1]) >> (12 - bit % 8) & 15].type);
    }
    return types;
}

TEST(WindowPlanTest, aClickOutOfSilenceGetsShortBlocksInItsPlace)
{
    constexpr int Frame = 6;
    // Within the frame's region, not where the windows of its neighbours reach.
    for (const int place : {40, 700, 1024, 1500, 1850}) {
        Pcm samples(2 * 8 * FrameSize);
        std::mt19937 random(4);
        const std::size_t click = static_cast<std::size_t>(regionStart(Frame)) + place;
        for (std::size_t n = 2 * click; n < 2 * (click + 60); ++n)
            samples[n] = static_cast<qint16>(static_cast<int>(random() % 20000) - 10000);
        const std::vector<BlockType> types = typesOf(encodeVqf(samples));
        ASSERT_GT(types.size(), Frame + 1);
        EXPECT_EQ(types[Frame], Short) << place;
        EXPECT_EQ(std::count(types.begin(), types.end(), Short), 1) << place;
    }
}

} // namespace
