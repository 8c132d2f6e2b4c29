// The parts of a table: arcs and states.
#include "Egoera.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "Zubia.h"
#include "support.h"

using lemara::test::stdout_of;

TEST(Zubia, HoldsWhatItIsGiven) {
    const Zubia empty;
    EXPECT_EQ(empty.hurrengo_egoera, 0);
    EXPECT_EQ(empty.goiko_ikurra, "");
    EXPECT_EQ(empty.beheko_ikurra, "");
    const Zubia arc(7, "<IZE>", "ak");
    EXPECT_EQ(arc.hurrengo_egoera, 7);
    EXPECT_EQ(arc.goiko_ikurra, "<IZE>");
    EXPECT_EQ(arc.beheko_ikurra, "ak");
    EXPECT_FALSE(std::has_virtual_destructor<Zubia>::value);
    EXPECT_EQ(arc.toString(),
              "\n   - hurrengo_egoera: 7\n   - goiko_ikurra: <IZE>\n   - beheko_ikurra: ak\n");
    EXPECT_EQ(Zubia(-1, "", "").toString(),
              "\n   - hurrengo_egoera: -1\n   - goiko_ikurra: \n   - beheko_ikurra: \n");
}

TEST(Egoera, KeepsItsArcsInOrder) {
    Egoera state;
    EXPECT_FALSE(state.final);
    EXPECT_TRUE(state.zubiak.empty());
    EXPECT_FALSE(state.hasZubia(""));
    auto* const first = new Zubia(1, "A", "b");
    auto* const second = new Zubia(2, "C", "");
    state.addZubia(first);
    state.addZubia(second);
    ASSERT_EQ(state.zubiak.size(), 2u);
    EXPECT_EQ(state.zubiak[0], first);
    EXPECT_EQ(state.zubiak[1], second);
    EXPECT_TRUE(state.hasZubia("b"));
    EXPECT_TRUE(state.hasZubia("")) << "an empty lower symbol is found as such";
    EXPECT_FALSE(state.hasZubia("A")) << "the upper symbol does not count";
    EXPECT_FALSE(state.hasZubia("B"));
    EXPECT_FALSE(state.hasZubia("bb"));
    state.deleteZubiak();
    ASSERT_EQ(state.zubiak.size(), 2u) << "the vector keeps its size";
    EXPECT_EQ(state.zubiak[0], nullptr);
    EXPECT_EQ(state.zubiak[1], nullptr);
    EXPECT_FALSE(state.hasZubia("b")) << "null arcs are passed over";
    state.deleteZubiak();
    EXPECT_TRUE(std::has_virtual_destructor<Egoera>::value);
}

TEST(Egoera, TakesArcsOver) {
    auto* const arc = new Zubia(1, "a", "a");
    Egoera state({arc, nullptr}, true);
    EXPECT_TRUE(state.final);
    ASSERT_EQ(state.zubiak.size(), 2u);
    EXPECT_EQ(state.zubiak[0], arc);
    EXPECT_TRUE(state.hasZubia("a"));
    EXPECT_FALSE(state.hasZubia("b"));
    state.deleteZubiak();
}

TEST(Egoera, Prints) {
    Egoera state;
    EXPECT_EQ(stdout_of([&] { state.printEgoera(); }), "\n\nfinal: 0, zubiak: 0\n");
    state.addZubia(new Zubia(1, "A", "b"));
    state.addZubia(new Zubia(-1, "", ""));
    state.final = true;
    EXPECT_EQ(stdout_of([&] { state.printEgoera(); }),
              "\n\nfinal: 1, zubiak: 2\n"
              "  1. zubia:\n   - hurrengo_egoera: 1\n   - goiko_ikurra: A\n"
              "   - beheko_ikurra: b\n"
              "  2. zubia:\n   - hurrengo_egoera: -1\n   - goiko_ikurra: \n"
              "   - beheko_ikurra: \n");
    state.deleteZubiak();
}
