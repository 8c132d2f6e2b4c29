// What the rooms above the tables ask of a table, beyond its public operations.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Analisia.h"
#include "Taula.h"

namespace lemara {

struct PackedView;
class KnownBeginnings;
class LazyTransducer;
class UpperArcs;

/// The packed form of a table, and what is derived from it: its lower side made
/// deterministic, its arcs by what they write on the upper side, and what was answered
/// about beginnings of its upper side.
const PackedView& packed_form(const Taula& table);
LazyTransducer& lazy_form(const Taula& table);
UpperArcs& upper_form(const Taula& table);
KnownBeginnings& known_beginnings(const Taula& table);

/// The graph of a table: its own, or one unfolded from its image, which the object then
/// owns.
struct Graph {
    std::vector<Egoera*> states;
    bool owned = false;

    Graph() = default;
    Graph(Graph&& other) noexcept;
    Graph& operator=(Graph&&) = delete;
    ~Graph();
};
Graph graph_of(const Taula& table);

struct TokenAnalyses {
    std::vector<Analisia> records;

    /// Bytes of the token that some path has read, or more. A text that the token begins
    /// with, and that is longer than this, has no analysis in the table.
    std::size_t reach = 0;
};

/// Taula::analizatuTokena, with how far the walk came.
TokenAnalyses analyse_token(const Taula& table, const std::string& token);

/// What `reach` is of the token `text`, if what is known of `word`, with which it begins,
/// tells that it has no analysis.
std::optional<std::size_t> known_reach(const Taula& table, std::string_view word,
                                       std::string_view text);

/// The first record of Taula::analizatuTokena; none if there is no record.
std::optional<Analisia> first_analysis(const Taula& table, const std::string& token);

/// Taula::sortuFormak for a target as a whole.
std::vector<Analisia> all_forms(const Taula& table, std::string_view target,
                                bool stop_at_tag);

/// The same record by record, until `take` answers false.
void for_each_form(const Taula& table, std::string_view target, bool stop_at_tag,
                   const std::function<bool(Analisia&&)>& take);

/// True if the token has an analysis with no "MAT" in its `etiketa`. Builds no records,
/// remembers answers, and walks only if the lazy form can't tell.
bool has_word(const Taula& table, const std::string& token);

/// The same by a walk alone.
bool walk_finds_word(const Taula& table, const std::string& token);

}  // namespace lemara
