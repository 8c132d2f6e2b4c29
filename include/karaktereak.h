#pragma once

#include <string>

/// \file
/// What a letter, a capital, a digit and a sign are.
///
/// Text is 8-bit Latin-1; the locale is never asked. The ranges differ from one function
/// to the next on purpose: case tests are ASCII alone, case conversions cover Latin-1,
/// and the tokeniser's tests have lists of their own. All functions are pure and may be
/// called from any thread.

/// True for the bytes 65 to 90 only.
[[gnu::visibility("default")]] bool orbi_isupper(char c);

/// True for the bytes 97 to 122 only.
[[gnu::visibility("default")]] bool orbi_islower(char c);

/// The bytes 97 to 122 and 224 to 253 minus 32; any other byte unchanged. The whole
/// Latin-1 block moves, so the sign 247 becomes the sign 215; 222, 223, 254 and 255 have
/// no partner.
[[gnu::visibility("default")]] unsigned char orbi_toupper(unsigned char c);

/// The bytes 65 to 90 and 192 to 221 plus 32; any other byte unchanged.
[[gnu::visibility("default")]] unsigned char orbi_tolower(unsigned char c);

/// A copy of `s`, each byte through orbi_tolower.
[[gnu::visibility("default")]] std::string tolowercase(std::string s);

/// A copy of `s`, each byte through orbi_toupper.
[[gnu::visibility("default")]] std::string touppercase(std::string s);

/// Lowers "A" to "Z" in `s` in place and returns `s`. Latin-1 capitals stay, so this is
/// not tolowercase. A null pointer is returned as it is.
[[gnu::visibility("default")]] char* orbi_strlwr(char* s);

/// Appends `src` to `dst` and returns `dst`, unless the two lengths together exceed
/// 2^64 - 3. `dst` must have room, as for strcat. A null pointer changes nothing.
[[gnu::visibility("default")]] char* orbi_strcat(char* dst, const char* src);

/// Compares at most `n` bytes of `a` and `b` as strncmp does, with "A" to "Z" lowered on
/// both sides; Latin-1 capitals are not folded. Zero means equal, and so does an `n` of 0
/// or less. A null pointer counts as the empty string.
[[gnu::visibility("default")]] int orbi_strncasecmp(const char* a, const char* b, int n);

/// True for 65 to 122, 192 to 253, and 128, 154, 186. The ASCII signs 91 to 96 and the
/// signs 215 and 247 count as letters. A negative value is false: pass the byte as
/// unsigned.
[[gnu::visibility("default")]] bool orbi_isalpha(int c);

/// Letter or digit, as the tokeniser sees it. For 0 to 127: the ASCII letters and digits.
/// A high byte passed as 128 to 255 is false. A high byte passed as a negative number
/// (byte minus 256) is true for 128, 154, 186, 193, 196 to 199, 201, 205, 209, 211, 214,
/// 218, 220, 224 to 239, 241 to 244, 246 and 249 to 252.
[[gnu::visibility("default")]] bool alfazenbakizkoaDa(int c);

/// True for the signs that are a token of their own: the bytes 33, 34, 39 to 47, 58, 59,
/// 61, 63, 91, 93, 95, 123, 125, 161, 191, and 0. Only the low byte of `c` counts, so 161
/// and -95 are the same sign.
[[gnu::visibility("default")]] bool puntuazioaDa(int c);

/// True for one of "C", "D", "I", "L", "M", "V", "X"; capitals only.
[[gnu::visibility("default")]] bool erromatarra_da(char c);

/// The same test as erromatarra_da.
[[gnu::visibility("default")]] bool erromatarraDa(char c);
