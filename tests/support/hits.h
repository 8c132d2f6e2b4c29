// Counts of what random input has met, so that a test shows that it tests something.
#pragma once

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace lemara::test {

using Hits = std::map<std::string, long>;

/// Tells all counts, and expects that each of `features` was met more than `least` times.
inline void expect_hits(const Hits& hits, const std::vector<std::string>& features,
                        long least = 0) {
    for (const auto& [feature, count] : hits) {
        std::cout << "  " << feature << ": " << count << '\n';
    }
    for (const std::string& feature : features) {
        const auto found = hits.find(feature);
        EXPECT_GT(found == hits.end() ? 0 : found->second, least) << feature;
    }
}

}  // namespace lemara::test
