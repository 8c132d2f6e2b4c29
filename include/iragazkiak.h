#pragma once

#include <string>

/// \file
/// Filters on analysis strings as text: does an analysis fit the case of the typed token,
/// is it one that the tables over-generate, what is its tail of tags.
///
/// All are pure functions, but for aldatuMaiuskulakLow, which writes into its second
/// argument. Case tests are ASCII alone: a token that begins with an accented small
/// letter is not in lower case here. Strings are NUL-terminated Latin-1; a null pointer
/// counts as the empty string. The tests answer true if the analysis is to be kept.

/// False if the token begins with a small letter and the analysis with a capital, or if
/// the analysis holds "<PIB>" or "<LIB>" and the token begins with a small letter.
[[gnu::visibility("default")]] bool egiaztatuIzenBereziak(const char* tokena,
                                                          const char* analisia);

/// False if the token begins with a small letter and the analysis with a capital.
[[gnu::visibility("default")]] bool egiaztatuIzenLehenMaiuskulak(const char* tokena,
                                                                 const char* analisia);

/// As egiaztatuIzenBereziak, with "<IZB>" among the names; and a symbol or acronym
/// ("<SNB>",
/// "<SIG>") must stand at the start of the token exactly as its lemma is written.
[[gnu::visibility("default")]] bool egiaztatuIzenBereziakEtaSinboloak(
    const char* tokena, const char* analisia);

/// False unless the analysis holds "<SNB>", "<SIG>" or "<LAB>" and either begins with "<"
/// or equals the token in full.
[[gnu::visibility("default")]] bool egiaztatuLAB(const char* tokena,
                                                 const char* analisia);

/// False for the multiword and false lemmas that the tables over-generate, by a fixed
/// list of substrings. The second argument is not used.
[[gnu::visibility("default")]] bool kenduHAULtxarrak(const char* analisia,
                                                     const char* tokena);

/// True if the word has no small letter ("a" to "z", 224 to 253) or begins with "A" to
/// "Z". An accented capital in front of small letters answers false.
[[gnu::visibility("default")]] bool kalkulatuMaiuskulak(const char* hitza);

/// Carries the capitals of the upper string into the lower one, in place: at each index
/// up to the first "<" of `goikoa`, a small letter of `behekoa` whose capital stands in
/// `goikoa` becomes that capital. The strings are compared index by index, not along
/// their path.
[[gnu::visibility("default")]] void aldatuMaiuskulakLow(const char* goikoa,
                                                        char* behekoa);

/// The tag tail of an analysis: everything from the first "<" on, without quality tags
/// and bracket groups. A string with no "<" comes back unchanged. A tag or group that is
/// never closed ends at the end of the string.
[[gnu::visibility("default")]] std::string garbitu_upp(std::string analisia);
