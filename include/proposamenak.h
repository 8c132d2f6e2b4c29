#pragma once

#include <map>
#include <string>
#include <vector>

/// \file
/// Candidates for a misspelt word. Each generator edits the word in one way and returns
/// what comes out, in the order of production, repeats and non-words included. Words are
/// NUL-terminated Latin-1; a null pointer counts as the empty word. All are pure
/// functions.

/// The word in small letters with a capital first letter (if 3 bytes or longer), then all
/// in capitals. Nothing for a word whose first letter is not "a" to "z" or n-tilde.
[[gnu::visibility("default")]] std::vector<std::string> sortu_proposamen_hautagaiak_MAI(
    const char* hitza);

/// The word with two neighbours exchanged, from left to right.
[[gnu::visibility("default")]] std::vector<std::string>
sortu_proposamen_hautagaiak_DISLEXIA(const char* hitza);

/// The lowered word with one replacement of the table of known misspellings, by position
/// and then by row.
[[gnu::visibility("default")]] std::vector<std::string> sortu_proposamen_hautagaiak_REP(
    const char* hitza);

/// The lowered word with one blank inserted; only for a word that begins with "%".
[[gnu::visibility("default")]] std::vector<std::string>
sortu_proposamen_hautagaiak_MARRA_HUTSUNE(const char* hitza);

/// The lowered word with one letter inserted or deleted, by position and then by row.
[[gnu::visibility("default")]] std::vector<std::string> sortu_proposamen_hautagaiak_REP2(
    const char* hitza);

/// The word with one byte replaced by a letter, by position and then by "aeiou", "b" to
/// "z".
[[gnu::visibility("default")]] std::vector<std::string> sortu_proposamen_hautagaiak_TRY(
    const char* hitza);

/// The lists of all six generators under the keys 1 to 6, in the order above.
[[gnu::visibility("default")]] std::map<int, std::vector<std::string>>
proposamen_hautagaiak_lortu(std::string hitza);
