// The lemmas of the lexicon that begin with a text. Tests:
// tests/engine/Lemara_words_test.cpp.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "Analisia.h"
#include "Sarea.h"
#include "analysis/text_pieces.h"
#include "tables/token_walk.h"

namespace lemara {

/// Calls `visit` with each entry of a network that begins with `start`, until it answers
/// false: without unknown forms, and without those whose form is one to be replaced. A
/// null network has no entries.
template <class Visit>
void for_each_entry(const Sarea* network, const std::string& start, Visit visit) {
    if (network == nullptr) return;
    const Taula& table = *network->taula;
    for_each_form(table, start, true, [&](Analisia&& entry) {
        if (contains(entry.etiketa, "EZZG")) return true;
        // The first analysis alone decides whether the form is one to be replaced.
        const std::optional<Analisia> first = first_analysis(table, entry.forma);
        if (!first || !first->erabili.empty()) return true;
        return visit(std::move(entry));
    });
}

/// True if `is_wanted` says yes to one of those entries. Stops there.
template <class IsWanted>
bool has_entry(const Sarea* network, const std::string& start, IsWanted is_wanted) {
    bool found = false;
    for_each_entry(network, start, [&](Analisia&& entry) {
        found = is_wanted(entry);
        return !found;
    });
    return found;
}

}  // namespace lemara
