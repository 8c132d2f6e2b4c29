#include "graph.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using lemara::tools::ArcIndex;
using lemara::tools::arcs_on_cycles;
using lemara::tools::reachable;
using Numbers = std::vector<std::uint32_t>;
using Flags = std::vector<bool>;

TEST(Graph, FindsWhatCanBeReached) {
    // 0 -> 1 -> 3, 2 -> 3
    const Numbers sources{0, 2, 1}, targets{1, 3, 3};
    EXPECT_EQ(reachable({0}, ArcIndex(4, sources), targets, 4),
              (Flags{true, true, false, true}));
    EXPECT_EQ(reachable({3}, ArcIndex(4, targets), sources, 4),
              (Flags{true, true, true, true}));
    EXPECT_EQ(reachable({}, ArcIndex(4, sources), targets, 4), Flags(4, false));
}

TEST(Graph, FindsCyclesAsTheirDefinitionSays) {
    for (unsigned seed = 1; seed <= 500; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const std::uint32_t states = 1 + static_cast<std::uint32_t>(random() % 7);
        Numbers sources, targets;
        for (auto i = random() % 10; i > 0; --i) {
            sources.push_back(static_cast<std::uint32_t>(random() % states));
            targets.push_back(static_cast<std::uint32_t>(random() % states));
        }
        const Flags found = arcs_on_cycles(states, sources, targets);
        const ArcIndex by_source(states, sources);
        for (std::size_t arc = 0; arc < sources.size(); ++arc) {
            const Flags behind = reachable({targets[arc]}, by_source, targets, states);
            EXPECT_EQ(found[arc], behind[sources[arc]]) << "arc " << arc;
        }
    }
}

TEST(Graph, TakesAChainOfAMillionStates) {
    constexpr std::uint32_t STATES = 1000000;
    Numbers sources, targets;
    for (std::uint32_t state = 0; state + 1 < STATES; ++state) {
        sources.push_back(state);
        targets.push_back(state + 1);
    }
    sources.push_back(STATES - 1);
    targets.push_back(STATES / 2);
    const Flags found = arcs_on_cycles(STATES, sources, targets);
    EXPECT_FALSE(found[STATES / 2 - 1]);
    EXPECT_TRUE(found[STATES / 2]);
    EXPECT_TRUE(found[STATES - 1]);
}

}  // namespace
