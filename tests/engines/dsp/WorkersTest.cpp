#include "engines/dsp/Workers.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

TEST(WorkersTest, everyPartRunsOnceAndIsDoneAtTheEnd)
{
    for (const int threads : {1, 2, 4}) {
        dsp::Workers workers(threads);
        for (int task = 0; task < 500; ++task) {
            std::vector<int> runs(static_cast<std::size_t>(task % 9));
            workers.run(task % 9, [&](int part) { ++runs[static_cast<std::size_t>(part)]; });
            ASSERT_EQ(std::count(runs.begin(), runs.end(), 1), task % 9) << threads;
        }
    }
}

} // namespace
