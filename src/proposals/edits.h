// The candidates for a misspelt word as edits of it, before any of them becomes a string.
// The public generators turn every edit into a string; the engine judges edits and makes
// strings of the few that are words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lemara {

struct Rewrite {
    std::string_view key, replacement;
};

/// One change of a word: `removed` bytes from `at` on give way to `inserted`, which lives
/// as long as the call that passes it.
struct Edit {
    std::size_t at, removed;
    std::string_view inserted;
};

extern const Rewrite REPLACEMAI[27];
extern const Rewrite REPLACE2[40];
extern const Rewrite REPLACE[121];

/// Letters that replace a wrong one; has no n-tilde.
constexpr std::string_view ALPHABET = "aeioubcdfghjklmnpqrstvwxyz";

constexpr std::size_t SHORTEST_CANDIDATE = 3;  // bytes

/// The rows of REPLACE that can match where `first` stands, in their order.
const std::vector<const Rewrite*>& rows_of_replace(char first);

std::string applied(const std::string& word, const Edit& edit);

/// The visitors below call `visit` with each edit, in the order of production, until it
/// answers false.
template <class Visit>
void for_each_swap(const std::string& word, Visit visit) {
    // Equal neighbours are exchanged as well, and give the word itself.
    for (std::size_t i = 1; i < word.size(); ++i) {
        const char pair[] = {word[i], word[i - 1]};
        if (!visit(Edit{i - 1, 2, {pair, 2}})) return;
    }
}

/// Visits the rewrite of one row at `at`, if the row's key stands there and the candidate
/// is long enough. False if `visit` answered false.
template <class Visit>
bool visit_rewrite(const std::string& word, std::size_t at, const Rewrite& row,
                   Visit& visit) {
    // Most rows fail at their first byte. The end of the word has the empty key alone.
    if (!row.key.empty() && (at == word.size() || word[at] != row.key[0])) return true;
    if (word.compare(at, row.key.size(), row.key) != 0) return true;
    if (word.size() - row.key.size() + row.replacement.size() < SHORTEST_CANDIDATE)
        return true;
    return visit(Edit{at, row.key.size(), row.replacement});
}

template <class Visit>
void for_each_known_error(const std::string& folded, Visit visit) {
    // Kept on purpose: the end of the word is no position here, so no "h" is added there.
    for (std::size_t at = 0; at < folded.size(); ++at) {
        for (const Rewrite* row : rows_of_replace(folded[at])) {
            if (!visit_rewrite(folded, at, *row, visit)) return;
        }
    }
}

template <class Visit>
void for_each_letter_too_many_or_few(const std::string& folded, Visit visit) {
    for (std::size_t at = 0; at <= folded.size(); ++at) {
        for (const Rewrite& row : REPLACE2) {
            if (!visit_rewrite(folded, at, row, visit)) return;
        }
    }
}

template <class Visit>
void for_each_missing_blank(const std::string& folded, Visit visit) {
    // Kept on purpose: words that don't begin with a percent sign are not split.
    if (folded.size() < 2 || folded[0] != '%') return;
    for (std::size_t i = 1; i < folded.size(); ++i) {
        if (folded.size() + 1 < SHORTEST_CANDIDATE) continue;
        if (!visit(Edit{i, 0, " "})) return;
    }
}

template <class Visit>
void for_each_wrong_letter(const std::string& word, Visit visit) {
    if (word.size() < SHORTEST_CANDIDATE) return;
    for (std::size_t i = 0; i < word.size(); ++i) {
        for (const char& letter : ALPHABET) {
            if (word[i] != letter && !visit(Edit{i, 1, {&letter, 1}})) return;
        }
    }
}

}  // namespace lemara
