#include "text_encoding.h"

#include <algorithm>
#include <cstdio>

namespace lemara::tools {

namespace {

unsigned byte_at(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

/// Bytes of the valid character at `at`, 0 if there is none.
std::size_t valid_length(std::string_view text, std::size_t at) {
    const unsigned lead = byte_at(text, at);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    if (length == 0 || text.size() - at < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte_at(text, at + i) & 0xC0) != 0x80) return 0;
    }
    const unsigned second = byte_at(text, at + 1);
    if (lead == 0xE0 && second < 0xA0) return 0;  // overlong
    if (lead == 0xED && second > 0x9F) return 0;  // a surrogate
    if (lead == 0xF0 && second < 0x90) return 0;  // overlong
    if (lead == 0xF4 && second > 0x8F) return 0;  // above U+10FFFF
    return length;
}

struct Fold {
    char32_t character;
    const char* latin1;
};

// What typographers write and the engine has no byte for. Sorted by character.
constexpr Fold FOLDS[] = {
    {0x00A0, " "},  {0x00AD, ""},   {0x02BC, "'"},   {0x1680, " "},   {0x180E, ""},
    {0x2000, " "},  {0x2001, " "},  {0x2002, " "},   {0x2003, " "},   {0x2004, " "},
    {0x2005, " "},  {0x2006, " "},  {0x2007, " "},   {0x2008, " "},   {0x2009, " "},
    {0x200A, " "},  {0x200B, ""},   {0x200C, ""},    {0x200D, ""},    {0x200E, ""},
    {0x200F, ""},   {0x2010, "-"},  {0x2011, "-"},   {0x2012, "-"},   {0x2013, "-"},
    {0x2014, "-"},  {0x2015, "-"},  {0x2018, "'"},   {0x2019, "'"},   {0x201A, "'"},
    {0x201B, "'"},  {0x201C, "\""}, {0x201D, "\""},  {0x201E, "\""},  {0x201F, "\""},
    {0x2022, "*"},  {0x2024, "."},  {0x2025, ".."},  {0x2026, "..."}, {0x202F, " "},
    {0x2032, "'"},  {0x2033, "\""}, {0x2039, "'"},   {0x203A, "'"},   {0x2043, "-"},
    {0x205F, " "},  {0x2060, ""},   {0x2212, "-"},   {0x3000, " "},   {0xFB00, "ff"},
    {0xFB01, "fi"}, {0xFB02, "fl"}, {0xFB03, "ffi"}, {0xFB04, "ffl"}, {0xFEFF, ""},
};

const char* folded(char32_t character) {
    const auto* found = std::lower_bound(
        std::begin(FOLDS), std::end(FOLDS), character,
        [](const Fold& fold, char32_t wanted) { return fold.character < wanted; });
    const bool hit = found != std::end(FOLDS) && found->character == character;
    return hit ? found->latin1 : nullptr;
}

struct Composition {
    char32_t accent;
    const char* bases;
    const char* composed;
};

// The letters of Latin-1 that Unicode can also write as a letter and a combining accent.
constexpr Composition COMPOSITIONS[] = {
    {0x0300, "AEIOUaeiou", "\300\310\314\322\331\340\350\354\362\371"},
    {0x0301, "AEIOUYaeiouy", "\301\311\315\323\332\335\341\351\355\363\372\375"},
    {0x0302, "AEIOUaeiou", "\302\312\316\324\333\342\352\356\364\373"},
    {0x0303, "ANOano", "\303\321\325\343\361\365"},
    {0x0308, "AEIOUaeiouy", "\304\313\317\326\334\344\353\357\366\374\377"},
    {0x030A, "Aa", "\305\345"},
    {0x0327, "Cc", "\307\347"},
};

/// Puts an accent on the last letter of `latin1`; false if there is no such letter.
bool compose(std::string& latin1, char32_t accent) {
    if (latin1.empty()) return false;
    for (const Composition& row : COMPOSITIONS) {
        if (row.accent != accent) continue;
        const std::size_t at = std::string_view(row.bases).find(latin1.back());
        if (at == std::string_view::npos) return false;
        latin1.back() = row.composed[at];
        return true;
    }
    return false;
}

}  // namespace

std::size_t find_invalid_utf8(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t length = valid_length(text, at);
        if (length == 0) return at;
        at += length;
    }
    return std::string_view::npos;
}

std::size_t length_of_invalid(std::string_view text) {
    const unsigned lead = byte_at(text, 0);
    const std::size_t wanted = lead >= 0xE0 && lead <= 0xEF   ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 1;
    std::size_t length = 1;
    while (length + 1 < wanted && length < text.size()) {
        const unsigned byte = byte_at(text, length);
        const bool overlong = (lead == 0xE0 && byte < 0xA0) || (lead == 0xF0 && byte < 0x90);
        const bool beyond = (lead == 0xED && byte > 0x9F) || (lead == 0xF4 && byte > 0x8F);
        if ((byte & 0xC0) != 0x80 || (length == 1 && (overlong || beyond))) break;
        ++length;
    }
    return length;
}

char32_t next_character(std::string_view text, std::size_t& at) {
    const unsigned lead = byte_at(text, at++);
    if (lead < 0x80) return lead;
    const int more = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    char32_t character = lead & (0x3Fu >> more);
    for (int i = 0; i < more && at < text.size(); ++i) {
        character = character << 6 | (byte_at(text, at++) & 0x3Fu);
    }
    return character;
}

void append_utf8(std::string& text, char32_t character) {
    const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        put(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12);
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xF0 | character >> 18);
        put(0x80 | (character >> 12 & 0x3F));
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    }
}

std::string utf8_from_latin1(std::string_view latin1) {
    std::string result;
    result.reserve(latin1.size() + latin1.size() / 8);
    for (const char c : latin1) append_utf8(result, static_cast<unsigned char>(c));
    return result;
}

std::string printable(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = valid_length(text, at);
        std::size_t behind = at;
        const char32_t character = length > 0 ? next_character(text, behind) : 0;
        if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
            for (std::size_t i = 0; i < std::max<std::size_t>(length, 1); ++i) {
                char escape[8];
                std::snprintf(escape, sizeof escape, "\\x%02X", byte_at(text, at + i));
                result += escape;
            }
        } else {
            result += text.substr(at, length);
        }
        at += std::max<std::size_t>(length, 1);
    }
    return result;
}

bool latin1_exactly(std::string_view utf8, std::string& latin1, char32_t& missing) {
    latin1.clear();
    for (std::size_t at = 0; at < utf8.size();) {
        const char32_t character = next_character(utf8, at);
        if (character > 0xFF) {
            missing = character;
            return false;
        }
        latin1 += static_cast<char>(character);
    }
    return true;
}

EngineText engine_text(std::string_view utf8) {
    EngineText result;
    result.latin1.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t start = at;
        const char32_t character = next_character(utf8, at);
        if (const char* replacement = folded(character)) {
            result.latin1 += replacement;
        } else if (character <= 0xFF && character != 0) {
            result.latin1 += static_cast<char>(character);
        } else if (!compose(result.latin1, character)) {
            if (result.missing_at == std::string_view::npos) {
                result.missing_at = start;
                result.missing = character;
            }
            result.latin1 += '*';
        }
    }
    return result;
}

}  // namespace lemara::tools
