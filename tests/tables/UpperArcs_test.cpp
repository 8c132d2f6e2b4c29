// What is kept of a state's arcs is what a look at every arc finds, up to its bounds and
// beyond.
#include "tables/UpperArcs.h"

#include <gtest/gtest.h>

#include <atomic>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "support.h"
#include "tables/packed_walk.h"
#include "tables/token_walk.h"

namespace {

using lemara::PackedArc;
using lemara::PackedState;
using lemara::PackedView;
using lemara::StateRef;
using lemara::UpperArcs;
using lemara::test::table_from;
using Places = std::vector<StateRef>;

Places places_of(const PackedView& view) {
    Places places;
    StateRef ref = 0;
    for (std::uint32_t i = 0; i < view.state_count; ++i) {
        places.push_back(ref);
        ref = view.behind(ref);
    }
    return places;
}

bool is_same(const PackedArc& a, const PackedArc& b) {
    return a.target == b.target && a.label == b.label && a.follows == b.follows;
}

std::vector<PackedArc> by_looking(const PackedView& view, const PackedState& state,
                                  std::uint8_t byte) {
    std::vector<PackedArc> arcs;
    for (std::uint32_t i = 0; i < state.count; ++i) {
        const lemara::PackedLabel& label = view.labels[view.label_of(state.arcs[i])];
        const std::string_view written(view.pool + label.upper_at, label.written_size);
        if (written.empty() || static_cast<std::uint8_t>(written[0]) == byte) {
            arcs.push_back(state.arcs[i]);
        }
    }
    return arcs;
}

/// What is expected of one question. True if the answer was an entry.
bool expect_arcs(const PackedView& view, UpperArcs& kept, StateRef ref,
                 std::uint8_t byte) {
    const PackedState state = view.state(ref);
    const auto [begin, end] = kept.find(ref, state, byte);
    if (begin == state.arcs) {
        EXPECT_EQ(end, state.arcs + state.count);
        return false;
    }
    const std::vector<PackedArc> expected = by_looking(view, state, byte);
    EXPECT_TRUE(std::equal(begin, end, expected.begin(), expected.end(), is_same));
    return true;
}

/// States in a row, each with `arcs` arcs to the next one.
std::string random_rows(std::mt19937& random, int states, int arcs) {
    const char* const uppers[] = {"a",   "b",    "A",  "",  "<>", "<IZE>", "<0Q>", "x1",
                                  "abc", "\361", "ba", "c", "d",  "e",     "\377"};
    std::string records;
    for (int s = 0; s < states; ++s) {
        for (int a = 0; a < arcs; ++a) {
            records += std::to_string(s) + '\t' + uppers[random() % std::size(uppers)] +
                       ':' + "a\t" + std::to_string(s + 1) + '\n';
        }
    }
    return records + "final: " + std::to_string(states) + '\n';
}

}  // namespace

TEST(UpperArcs, AnswersAsALookAtEveryArc) {
    std::mt19937 random(20261122);
    long answered = 0, plain = 0;
    for (int round = 0; round < 40; ++round) {
        const int arcs = 1 + static_cast<int>(random() % 40);
        const auto table = table_from(random_rows(random, 3, arcs));
        const PackedView& view = lemara::packed_form(*table);
        UpperArcs kept(view);
        for (int time = 1; time <= 2; ++time) {
            for (const StateRef ref : places_of(view)) {
                for (int byte = 0; byte < 256; ++byte) {
                    const bool entry =
                        expect_arcs(view, kept, ref, static_cast<std::uint8_t>(byte));
                    ++(entry ? answered : plain);
                    const bool many = view.state(ref).count > UpperArcs::FEW;
                    ASSERT_EQ(entry, time == 2 && many)
                        << "arcs " << arcs << ", byte " << byte;
                }
            }
        }
    }
    EXPECT_GT(answered, 10000);
    EXPECT_GT(plain, 10000);
}

TEST(UpperArcs, KeepsABoundedNumber) {
    std::mt19937 random(1);
    const auto table = table_from(random_rows(random, 30, 20));
    const PackedView& view = lemara::packed_form(*table);
    UpperArcs kept(view);
    std::size_t answered = 0;
    for (int time = 1; time <= 2; ++time) {
        for (const StateRef ref : places_of(view)) {
            for (int byte = 0; byte < 256; ++byte) {
                answered += expect_arcs(view, kept, ref, static_cast<std::uint8_t>(byte));
            }
        }
    }
    EXPECT_EQ(kept.size(), UpperArcs::MOST_ENTRIES);
    EXPECT_EQ(answered, UpperArcs::MOST_ENTRIES);
}

TEST(UpperArcs, KeepsABoundedNumberOfArcs) {
    std::string records;
    for (int a = 0; a < 2000; ++a) records += "0\t:a\t1\n";  // any byte fits all of them
    const auto table = table_from(records + "final: 1\n");
    const PackedView& view = lemara::packed_form(*table);
    UpperArcs kept(view);
    std::size_t answered = 0;
    for (int time = 1; time <= 2; ++time) {
        for (int byte = 0; byte < 256; ++byte) {
            answered += expect_arcs(view, kept, 0, static_cast<std::uint8_t>(byte));
        }
    }
    EXPECT_EQ(kept.size(), UpperArcs::MOST_ARCS / 2000 + 1);
    EXPECT_EQ(answered, kept.size());
}

TEST(UpperArcs, KeepsNothingOfATableWithWideLabels) {
    std::string records;
    for (int a = 0; a < 40000; ++a) records += "0\tyz" + std::to_string(a) + "\t1\n";
    const auto table = table_from(records + "final: 1\n");
    ASSERT_NE(lemara::packed_form(*table).wide_labels, nullptr);
    for (int time = 1; time <= 3; ++time) {
        const std::vector<Analisia> found =
            table->sortuFormak("yz31234", "", false, false);
        ASSERT_EQ(found.size(),
                  5u);  // "yz3" and so on stand before the end of the target
        EXPECT_EQ(found.back().forma, "yz31234");
    }
    EXPECT_EQ(lemara::upper_form(*table).size(), 0u);
}

TEST(UpperArcsThreads, FourThreadsMakeOneForm) {
    std::mt19937 random(2);
    const auto table = table_from(random_rows(random, 6, 30));
    const PackedView& view = lemara::packed_form(*table);
    const Places places = places_of(view);
    UpperArcs kept(view);
    std::atomic<long> wrong{0}, answered{0};
    lemara::test::in_threads(4, [&](unsigned t) {
        for (std::size_t i = 0; i < 8000; ++i) {
            const StateRef ref = places[i * (t + 1) % places.size()];
            const auto byte = static_cast<std::uint8_t>(i / 3 * (t + 1) % 256);
            const PackedState state = view.state(ref);
            const auto [begin, end] = kept.find(ref, state, byte);
            if (begin == state.arcs) continue;
            const std::vector<PackedArc> expected = by_looking(view, state, byte);
            ++answered;
            if (!std::equal(begin, end, expected.begin(), expected.end(), is_same))
                ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(answered, 0);
}
