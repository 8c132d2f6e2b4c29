// What each character of Unicode is to the engine. Tests: tests/host/characters_test.cpp.
#pragma once

#include <cstddef>
#include <string_view>

namespace lemara::host {

/// The engine's byte for a character that is no letter and that Latin-1 lacks, and for a
/// whole word or address that is kept from the engine. A sign, and so a token of its own.
constexpr char STAND_IN = '*';

enum class Role {
    blank,     ///< separates: blanks of every width, tabs, control characters
    line_end,  ///< LF, CR, and CR LF as two of them
    nothing,   ///< as if it were not there: soft hyphen, zero-width characters, marks of
               ///< order
    word,      ///< letter or digit of Latin-1, or what folds to such: `bytes`
    accent,    ///< combining mark: composes with the letter before it, or makes the word
               ///< foreign
    foreign,   ///< letter or digit that Latin-1 lacks, and what is no UTF-8
    sign,      ///< `bytes`, each a sign to the engine, or one that it takes into words
};

struct Folding {
    Role role;
    std::string_view bytes = "";  ///< Latin-1
};

/// What the engine is shown of signs that it takes for a part of the word beside them.
enum class Signs {
    apart,     ///< STAND_IN, so that a word is judged without them; addresses likewise
    as_typed,  ///< those of Latin-1 as they stand: the tables know "#" and "%" in words
};

/// What becomes of a character. Typographic quotes become ' and ", dashes and the minus
/// sign -, the ellipsis three dots, ligatures their letters. `signs` tells of those that
/// the engine would take for a part of a word, and of the micro sign.
Folding folding_of(char32_t character, Signs signs = Signs::apart);

/// The Latin-1 letter that `base` and the combining mark `accent` make; 0 if there is
/// none.
char composed(char base, char32_t accent);

/// True for letters of Latin-1, not for digits.
bool is_letter(char c);

}  // namespace lemara::host
