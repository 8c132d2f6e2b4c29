// Small questions about text that several rooms ask.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lemara {

inline bool contains(std::string_view text, std::string_view piece) {
    return text.find(piece) != std::string_view::npos;
}

inline bool starts_with(std::string_view text, std::string_view piece) {
    return text.substr(0, piece.size()) == piece;
}

inline bool ends_with(std::string_view text, std::string_view piece) {
    return text.size() >= piece.size() &&
           text.substr(text.size() - piece.size()) == piece;
}

/// `text` up to its first NUL: what an interface of C strings sees of it.
inline std::string_view up_to_nul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

/// The text of a C string; empty for a null pointer.
inline std::string_view text_of(const char* text) { return text == nullptr ? "" : text; }

/// orbi_tolower, where a call would cost too much.
constexpr std::uint8_t lowered(std::uint8_t c) {
    // Kept on purpose: the block goes as a whole, so the sign 215 turns into the sign
    // 247.
    const bool capital = (c >= 65 && c <= 90) || (c >= 192 && c <= 221);
    return capital ? static_cast<std::uint8_t>(c + 32) : c;
}

/// orbi_toupper in the same way.
constexpr std::uint8_t raised(std::uint8_t c) {
    // Kept on purpose: the block goes as a whole, so the sign 247 turns into the sign
    // 215.
    const bool small = (c >= 97 && c <= 122) || (c >= 224 && c <= 253);
    return small ? static_cast<std::uint8_t>(c - 32) : c;
}

inline bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// What the standard toupper does to a byte in its default locale, where it knows "a" to
/// "z" alone. Latin-1 small letters stay, and that differs from orbi_toupper on purpose.
/// Written out, so that a host's setlocale has no say and a negative char is no undefined
/// argument.
inline char standard_toupper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

}  // namespace lemara
