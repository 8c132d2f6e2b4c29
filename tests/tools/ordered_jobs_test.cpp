#include "ordered_jobs.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

using lemara::tools::OrderedJobs;

TEST(OrderedJobsThreads, ResultsComeInOrder) {
    for (const std::size_t threads : {1u, 2u, 5u}) {
        std::vector<std::string> taken, expected;
        OrderedJobs<int, std::string> jobs(
            threads,
            [](int value) {
                if (value % 7 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
                return std::to_string(value);
            },
            [&](std::string result) { taken.push_back(std::move(result)); });
        for (int i = 0; i < 300; ++i) {
            jobs.add(i);
            expected.push_back(std::to_string(i));
        }
        jobs.finish();
        EXPECT_EQ(taken, expected) << threads << " threads";
    }
}

TEST(OrderedJobsThreads, AnErrorComesOut) {
    for (const std::size_t threads : {1u, 2u}) {
        OrderedJobs<int, int> jobs(
            threads, [](int) -> int { throw std::runtime_error("no"); }, [](int) {});
        EXPECT_THROW(
            {
                jobs.add(1);
                jobs.finish();
            },
            std::runtime_error);
    }
}

TEST(OrderedJobsThreads, MayEndWithWorkLeft) {
    int taken = 0;
    {
        OrderedJobs<int, int> jobs(
            3, [](int value) { return value; }, [&](int) { ++taken; });
        for (int i = 0; i < 50; ++i) jobs.add(i);
    }
    EXPECT_LE(taken, 50);
}
