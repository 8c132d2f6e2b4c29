// Words of a sentence as the formats of other programs want them.
// Tests: tests/host/formats_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lemara::host {

/// The part of a token between two blanks.
struct Word {
    std::string form;
    std::size_t begin = 0;  ///< in code points from the start of the token
    std::size_t end = 0;
};

/// The words of a token's text: several if it is a unit. What is no UTF-8 becomes U+FFFD;
/// with `join_accents` letter and accent become one character if Latin-1 has it.
std::vector<Word> words_of(std::string_view text, bool join_accents);

/// A token's text in one line: its words as written, with a blank between them.
std::string form_of(std::string_view text);

/// Blank-separated names.
std::vector<std::string_view> names_in(std::string_view names);

/// What a token that no table knows is.
enum class Unread { word, address, sign };
Unread kind_of_unread(std::string_view text);

}  // namespace lemara::host
