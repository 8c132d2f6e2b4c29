// What the rooms above the tables ask of a table, beyond its public operations.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Analisia.h"
#include "Taula.h"
#include "tables/inside.h"

namespace lemara {

/// The packed form of a table, and what is derived from it: its lower side made
/// deterministic, its arcs by what they write on the upper side, and what was answered
/// about beginnings of its upper side.
inline const PackedView& packed_form(const Taula& table) {
    return TableInside::forms_of(table).view;
}
inline LazyTransducer& lazy_form(const Taula& table) {
    return TableInside::forms_of(table).lazy;
}
inline UpperArcs& upper_form(const Taula& table) {
    return TableInside::forms_of(table).upper;
}
inline KnownBeginnings& known_beginnings(const Taula& table) {
    return TableInside::forms_of(table).beginnings;
}

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
/// and walks only if the lazy form can't tell.
bool finds_word(const Taula& table, const std::string& token);

/// The same, and remembers answers. Here, since a text asks it of every word, and what
/// was answered before is found sooner than a call is made.
inline bool has_word(const Taula& table, const std::string& token) {
    constexpr std::uint64_t NO = 1, YES = 2;
    // The memory takes a word for the same with NULs behind it, the filter of better
    // forms does not.
    if (!token.empty() && token.back() == '\0') return finds_word(table, token);
    WordMap& answers = TableInside::forms_of(table).answers;
    const WordMap::Word word(token);
    const std::uint64_t known = answers.find(word);
    if (known != WordMap::NOTHING) return known == YES;
    const bool found = finds_word(table, token);
    answers.put(word, found ? YES : NO);
    return found;
}

/// The same by a walk alone.
bool walk_finds_word(const Taula& table, const std::string& token);

}  // namespace lemara
