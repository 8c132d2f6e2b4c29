// The text of a table, read into records with numbers for their symbols: what its graph
// is built from, and its packed form.
//
// The text form in a file and that in memory differ at their line ends and in what they
// do with a broken line; both differences are kept.
//
// Twin: the plain reader of tests/tables/fuzz_test.cpp. Tests:
// tests/tables/Taula_load_test.cpp.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lemara {

/// What stands on the two sides of an arc. The text belongs to somebody else.
struct SymbolPair {
    std::string_view upper, lower;
};

/// The arcs of a table's states, one state after the other, each in the order of the
/// text.
struct ArcsByState {
    /// The pair of the pseudo-arc that a final record makes; no other arc has this
    /// number.
    static constexpr std::uint32_t FINAL = 0;

    std::size_t state_count() const { return begin.size() - 1; }

    std::vector<std::uint32_t> begin;   // by state, and where the last one ends
    std::vector<std::int32_t> targets;  // negative: end of a word
    std::vector<std::uint32_t> pairs;   // a number for the symbols of each arc
    std::vector<SymbolPair> symbols;    // by that number
};

/// How many states a text names: the number on its last counted line, plus one. A file's
/// lines are counted in pieces.
int states_of_file(std::string_view text);
int states_of_memory(std::string_view text);

/// How many of `count` states a text of so many bytes is trusted to mean.
std::size_t trusted_states(long count, std::size_t bytes);

/// The records of a text whose states are `states` in all. Those of other states are
/// passed over. The symbols are views of the text.
ArcsByState arcs_of_file(std::string_view text, std::size_t states);
ArcsByState arcs_of_memory(std::string_view text, std::size_t states);

}  // namespace lemara
