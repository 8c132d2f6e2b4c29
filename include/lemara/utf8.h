#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// \file
/// UTF-8 and Latin-1: the one place where the checker and the tools take characters
/// apart.

namespace lemara::host {

constexpr char32_t REPLACEMENT = 0xFFFD;  ///< stands for what is no UTF-8

/// A character of a text; what is no UTF-8 counts as one character for each longest piece
/// that begins like one, as browsers and Python's "replace" count.
struct Character {
    char32_t code = 0;       ///< its number
    std::size_t length = 1;  ///< bytes
    bool valid = true;       ///< false: `code` is REPLACEMENT
};

/// The character at byte `at` of `text`, which must not be its end.
[[gnu::visibility("default")]] Character character_at(std::string_view text,
                                                      std::size_t at);

/// The first byte that is no UTF-8; npos if there is none.
[[gnu::visibility("default")]] std::size_t find_invalid_utf8(std::string_view text);

/// Appends a character as UTF-8.
[[gnu::visibility("default")]] void append_utf8(std::string& text, char32_t character);

/// Latin-1 as UTF-8.
[[gnu::visibility("default")]] std::string utf8_from_latin1(std::string_view latin1);

/// UTF-8 as Latin-1, letter for letter. A character that Latin-1 lacks ends it with false
/// and is in `missing`: REPLACEMENT for what is no UTF-8.
[[gnu::visibility("default")]] bool latin1_exactly(std::string_view utf8,
                                                   std::string& latin1,
                                                   char32_t& missing);

/// Any bytes as UTF-8 for a message: control characters and what is no UTF-8 stand as
/// \\x1F.
[[gnu::visibility("default")]] std::string printable(std::string_view text);

}  // namespace lemara::host
