// The kinds of tokens that coverage counts apart. Tests: tests/tools/word_kinds_test.cpp.
#pragma once

#include <string_view>

namespace lemara::tools {

enum class WordKind {
    SMALL,        ///< begins in lower case
    CAPITALISED,  ///< begins with a capital
    CAPITALS,     ///< two letters or more, none of them small
    WITH_DIGITS,  ///< letters and digits
    NUMBER,       ///< digits, and no letter
    SIGN,         ///< neither
};

constexpr int WORD_KINDS = 6;

/// The kind of a token in Latin-1; signs in front of the first letter don't count.
WordKind kind_of_word(std::string_view latin1);

/// Punctuation and numbers are no words.
constexpr bool is_word(WordKind kind) { return kind < WordKind::NUMBER; }

}  // namespace lemara::tools
