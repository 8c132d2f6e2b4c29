#include "text_encoding.h"

#include <algorithm>

namespace lemara::tools {

namespace {

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

std::size_t length_of_invalid(std::string_view text) {
    return host::character_at(text, 0).length;
}

char32_t next_character(std::string_view text, std::size_t& at) {
    const host::Character character = host::character_at(text, at);
    at += character.length;
    return character.code;
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
