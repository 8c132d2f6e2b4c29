// The two encodings of the tools: UTF-8 outside, Latin-1 in the engine.
// Tests: tests/tools/text_encoding_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "lemara/utf8.h"

namespace lemara::tools {

using host::append_utf8;
using host::find_invalid_utf8;
using host::printable;
using host::utf8_from_latin1;

/// Bytes of what is no UTF-8 at the start of `text`: the longest piece that begins like a
/// character, as browsers and the checker count it.
std::size_t length_of_invalid(std::string_view text);

/// The character at byte `at` of valid UTF-8; moves `at` behind it.
char32_t next_character(std::string_view text, std::size_t& at);

/// Valid UTF-8 as Latin-1, letter for letter; a character that Latin-1 lacks ends the
/// conversion with false and is in `missing`.
bool latin1_exactly(std::string_view utf8, std::string& latin1, char32_t& missing);

/// A text as the engine reads it, and what was not possible.
struct EngineText {
    std::string latin1;
    std::size_t missing_at =
        std::string_view::npos;  ///< byte of the first lost character
    char32_t missing = 0;        ///< the first lost character
};

/// Valid UTF-8 as Latin-1 text for the engine, folded: typographic quotes become ' and ",
/// dashes and the minus sign -, the ellipsis three dots, blanks of every width a blank;
/// letter and combining accent become one letter; soft hyphens, zero-width characters and
/// the byte order mark go. Any other character that Latin-1 lacks, and NUL, becomes "*"
/// and is told: a sign that never ends a sentence.
EngineText engine_text(std::string_view utf8);

}  // namespace lemara::tools
