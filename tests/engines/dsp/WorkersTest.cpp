#include "engines/dsp/Workers.h"

#include "base/Thread.h"

#include <algorithm>
#include <atomic>
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

TEST(WorkersTest, whatAPartThrowsReachesTheCallerOnceAllThatBeganHaveEnded)
{
    for (const int threads : {1, 2, 4}) {
        dsp::Workers workers(threads);
        for (int task = 0; task < 500; ++task) {
            std::atomic<int> running = 0;
            const auto part = [&](int number) {
                ++running;
                if (number == task % 7) {
                    --running;
                    throw number;
                }
                std::this_thread::yield();
                --running;
            };
            try {
                workers.run(7, part);
                ADD_FAILURE() << "nothing was thrown";
            } catch (int number) {
                EXPECT_EQ(number, task % 7);
            }
            ASSERT_EQ(running, 0) << threads;
            std::atomic<int> runs = 0;
            workers.run(7, [&](int) { ++runs; });
            ASSERT_EQ(runs, 7) << "the next task has all of its parts, and no failure of the last";
        }
    }
}

TEST(WorkersTest, theThreadsThatThereAreDoTheWork)
{
    for (const int there : {0, 1}) {
        const ThreadShortage shortage(there);
        dsp::Workers workers(4);
        EXPECT_EQ(workers.threads(), 1 + there);
        std::atomic<int> runs = 0;
        workers.run(9, [&](int) { ++runs; });
        EXPECT_EQ(runs, 9);
    }
}

} // namespace
