#include "word_kinds.h"

namespace lemara::tools {

namespace {

bool is_capital(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
}

bool is_small(unsigned char c) {
    return (c >= 'a' && c <= 'z') || (c >= 0xDF && c != 0xF7) || c == 0xAA || c == 0xBA;
}

bool is_digit(unsigned char c) { return c >= '0' && c <= '9'; }

}  // namespace

WordKind kind_of_word(std::string_view latin1) {
    int capitals = 0, small = 0, digits = 0;
    bool begins_small = false;
    for (const char byte : latin1) {
        const auto c = static_cast<unsigned char>(byte);
        if (is_small(c) && capitals + small == 0) begins_small = true;
        capitals += is_capital(c);
        small += is_small(c);
        digits += is_digit(c);
    }
    const int letters = capitals + small;
    if (digits > 0) return letters > 0 ? WordKind::WITH_DIGITS : WordKind::NUMBER;
    if (letters == 0) return WordKind::SIGN;
    if (begins_small) return WordKind::SMALL;
    return small == 0 && capitals > 1 ? WordKind::CAPITALS : WordKind::CAPITALISED;
}

}  // namespace lemara::tools
