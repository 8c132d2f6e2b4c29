// Tests: tests/host/utf8_test.cpp.
#include "lemara/utf8.h"

#include <cstdio>

namespace lemara::host {

namespace {

unsigned byte_at(std::string_view text, std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

/// Bytes that a character with this first byte has; 0 for a byte that begins none.
std::size_t length_of(unsigned lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

/// True if `byte` may follow `lead`: no overlong form, no surrogate, nothing above
/// U+10FFFF.
bool may_follow(unsigned lead, unsigned byte) {
    switch (lead) {
        case 0xE0:
            return byte >= 0xA0 && byte <= 0xBF;
        case 0xED:
            return byte >= 0x80 && byte <= 0x9F;
        case 0xF0:
            return byte >= 0x90 && byte <= 0xBF;
        case 0xF4:
            return byte >= 0x80 && byte <= 0x8F;
        default:
            return byte >= 0x80 && byte <= 0xBF;
    }
}

}  // namespace

Character character_at(std::string_view text, std::size_t at) {
    const unsigned lead = byte_at(text, at);
    if (lead < 0x80) return {lead, 1, true};
    const std::size_t length = length_of(lead);
    if (length == 0 || !may_follow(lead, byte_at(text, at + 1)))
        return {REPLACEMENT, 1, false};
    char32_t code = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned byte = byte_at(text, at + i);
        if ((byte & 0xC0) != 0x80) return {REPLACEMENT, i, false};
        code = code << 6 | (byte & 0x3F);
    }
    return {code, length, true};
}

std::size_t find_invalid_utf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Character character = character_at(text, at);
        if (!character.valid) return at;
        at += character.length;
    }
    return std::string_view::npos;
}

void append_utf8(std::string& text, char32_t character) {
    const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) return put(character);
    if (character < 0x800) {
        put(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            put(0xE0 | character >> 12);
        } else {
            put(0xF0 | character >> 18);
            put(0x80 | (character >> 12 & 0x3F));
        }
        put(0x80 | (character >> 6 & 0x3F));
    }
    put(0x80 | (character & 0x3F));
}

std::string utf8_from_latin1(std::string_view latin1) {
    std::string result;
    result.reserve(latin1.size() + latin1.size() / 8);
    for (const char c : latin1) append_utf8(result, static_cast<unsigned char>(c));
    return result;
}

bool latin1_exactly(std::string_view utf8, std::string& latin1, char32_t& missing) {
    latin1.clear();
    for (std::size_t at = 0; at < utf8.size();) {
        const Character character = character_at(utf8, at);
        at += character.length;
        if (character.code > 0xFF) {  // REPLACEMENT, too
            missing = character.code;
            return false;
        }
        latin1 += static_cast<char>(character.code);
    }
    return true;
}

std::string printable(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const Character character = character_at(text, at);
        const bool control =
            character.code < 0x20 || (character.code >= 0x7F && character.code < 0xA0);
        if (character.valid && !control) {
            result += text.substr(at, character.length);
        } else {
            for (std::size_t i = 0; i < character.length; ++i) {
                char escape[8];
                std::snprintf(escape, sizeof escape, "\\x%02X", byte_at(text, at + i));
                result += escape;
            }
        }
        at += character.length;
    }
    return result;
}

}  // namespace lemara::host
