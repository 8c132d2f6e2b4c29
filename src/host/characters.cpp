#include "host/characters.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace lemara::host {

namespace {

struct Row {
    char32_t character;
    std::string_view bytes;
};

// What typographers write and the engine has no byte for. Sorted by character.
constexpr Row SIGNS[] = {
    {0x02B9, "'"},   {0x02BB, "'"},  {0x02BC, "'"},  {0x02BD, "'"}, {0x2010, "-"},
    {0x2011, "-"},   {0x2012, "-"},  {0x2013, "-"},  {0x2014, "-"}, {0x2015, "-"},
    {0x2018, "'"},   {0x2019, "'"},  {0x201A, "'"},  {0x201B, "'"}, {0x201C, "\""},
    {0x201D, "\""},  {0x201E, "\""}, {0x201F, "\""}, {0x2024, "."}, {0x2025, ".."},
    {0x2026, "..."}, {0x2032, "'"},  {0x2033, "\""}, {0x2039, "'"}, {0x203A, "'"},
    {0x2043, "-"},   {0x2212, "-"},  {0xFF07, "'"},
};

// Ligatures, and letters that Unicode has twice.
constexpr Row LETTERS[] = {
    {0x212A, "K"},  {0x212B, "\305"}, {0xFB00, "ff"},  {0xFB01, "fi"},
    {0xFB02, "fl"}, {0xFB03, "ffi"},  {0xFB04, "ffl"},
};

struct Range {
    char32_t first, last;
};

constexpr Range BLANKS[] = {
    {0x1680, 0x1680}, {0x2000, 0x200A}, {0x2028, 0x2029},
    {0x202F, 0x202F}, {0x205F, 0x205F}, {0x3000, 0x3000},
};

constexpr Range NOTHING[] = {
    {0x034F, 0x034F}, {0x061C, 0x061C}, {0x180B, 0x180F},
    {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x206F},
    {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}, {0xE0000, 0xE01EF},
};

constexpr Range ACCENTS[] = {
    {0x0300, 0x036F}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},
    {0x20D0, 0x20FF}, {0xFE20, 0xFE2F},
};

// Beyond Latin-1, what is neither letter nor digit. The rest counts as letters: a word is
// then left alone, which is the safe side.
constexpr Range SYMBOLS[] = {
    {0x02C2, 0x02C5},   {0x02D2, 0x02DF},   {0x02E5, 0x02EB},   {0x037E, 0x037E},
    {0x0387, 0x0387},   {0x055A, 0x055F},   {0x0589, 0x058F},   {0x05BE, 0x05BE},
    {0x05F3, 0x05F4},   {0x0600, 0x060F},   {0x061B, 0x061F},   {0x066A, 0x066D},
    {0x06D4, 0x06D4},   {0x0964, 0x0965},   {0x0E3F, 0x0E3F},   {0x0E4F, 0x0E5B},
    {0x1360, 0x1368},   {0x2010, 0x2070},   {0x2074, 0x207E},   {0x2080, 0x208E},
    {0x20A0, 0x20CF},   {0x2100, 0x2101},   {0x2103, 0x2106},   {0x2108, 0x2109},
    {0x2114, 0x2114},   {0x2116, 0x2118},   {0x211E, 0x2123},   {0x2125, 0x2125},
    {0x2127, 0x2127},   {0x2129, 0x2129},   {0x2140, 0x2144},   {0x214A, 0x215F},
    {0x218A, 0x2BFF},   {0x2E00, 0x2E2E},   {0x2E30, 0x2E7F},   {0x3001, 0x3004},
    {0x3008, 0x3020},   {0x3030, 0x3030},   {0x3036, 0x3037},   {0x303D, 0x303F},
    {0x30FB, 0x30FB},   {0x3200, 0x33FF},   {0x4DC0, 0x4DFF},   {0xA490, 0xA4CF},
    {0xE000, 0xF8FF},   {0xFE10, 0xFE1F},   {0xFE30, 0xFE6F},   {0xFF01, 0xFF0F},
    {0xFF1A, 0xFF20},   {0xFF3B, 0xFF40},   {0xFF5B, 0xFF65},   {0xFFE0, 0xFFFC},
    {0x10100, 0x1013F}, {0x1D000, 0x1D164}, {0x1F000, 0x1FAFF}, {0xF0000, 0x10FFFF},
};

template <std::size_t N>
bool is_in(const Range (&ranges)[N], char32_t character) {
    const Range* found =
        std::lower_bound(std::begin(ranges), std::end(ranges), character,
                         [](const Range& range, char32_t c) { return range.last < c; });
    return found != std::end(ranges) && found->first <= character;
}

template <std::size_t N>
const Row* find_row(const Row (&rows)[N], char32_t character) {
    const Row* found =
        std::lower_bound(std::begin(rows), std::end(rows), character,
                         [](const Row& row, char32_t c) { return row.character < c; });
    return found != std::end(rows) && found->character == character ? found : nullptr;
}

// Signs of Latin-1 that the engine takes for a part of the word beside them.
constexpr std::string_view TAKEN_FOR_LETTERS =
    "#<>@\\^|~"
    "\242\243\244\245\246\247\250\251\254\256\257\261\262\263\266\267\270\271\274\275"
    "\276\260\327\367";

/// All bytes in order, so that a byte can be shown as a text of one byte.
const std::array<char, 256>& all_bytes() {
    static const std::array<char, 256> bytes = [] {
        std::array<char, 256> result{};
        for (std::size_t i = 0; i < result.size(); ++i) result[i] = static_cast<char>(i);
        return result;
    }();
    return bytes;
}

std::string_view as_byte(char32_t code) { return {&all_bytes()[code], 1}; }

bool is_latin1_word(char32_t code) {
    if (code < 0x80) {
        return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') ||
               (code >= 'a' && code <= 'z');
    }
    return code == 0xAA || code == 0xBA || (code >= 0xC0 && code != 0xD7 && code != 0xF7);
}

Folding latin1_folding(char32_t code, Signs signs) {
    if (is_latin1_word(code)) return {Role::word, as_byte(code)};
    if (code == '\n' || code == '\r') return {Role::line_end};
    if (code <= ' ' || (code >= 0x7F && code <= 0xA0)) return {Role::blank};
    switch (code) {
        case 0xAD:
            return {Role::nothing};
        case 0xB5:
            if (signs == Signs::as_typed) return {Role::word, as_byte(code)};
            return {Role::foreign};  // micro sign: mu
        case '`':
        case 0xB4:
            return {Role::sign, "'"};
        case 0xAB:
        case 0xBB:
            return {Role::sign, "\""};  // angle quotes
        default:
            break;
    }
    const bool glued =
        signs == Signs::apart &&
        TAKEN_FOR_LETTERS.find(static_cast<char>(code)) != std::string_view::npos;
    return {Role::sign, glued ? std::string_view(&STAND_IN, 1) : as_byte(code)};
}

struct Composition {
    char32_t accent;
    std::string_view bases;
    std::string_view composed;
};

// The letters of Latin-1 that Unicode can also write as a letter and a combining mark.
constexpr Composition COMPOSITIONS[] = {
    {0x0300, "AEIOUaeiou", "\300\310\314\322\331\340\350\354\362\371"},
    {0x0301, "AEIOUYaeiouy", "\301\311\315\323\332\335\341\351\355\363\372\375"},
    {0x0302, "AEIOUaeiou", "\302\312\316\324\333\342\352\356\364\373"},
    {0x0303, "ANOano", "\303\321\325\343\361\365"},
    {0x0308, "AEIOUaeiouy", "\304\313\317\326\334\344\353\357\366\374\377"},
    {0x030A, "Aa", "\305\345"},
    {0x0327, "Cc", "\307\347"},
    {0x0340, "AEIOUaeiou",
     "\300\310\314\322\331\340\350\354\362\371"},  // 0300, twice there
    {0x0341, "AEIOUYaeiouy", "\301\311\315\323\332\335\341\351\355\363\372\375"},
};

}  // namespace

Folding folding_of(char32_t character, Signs signs) {
    if (character <= 0xFF) return latin1_folding(character, signs);
    if (is_in(NOTHING, character)) return {Role::nothing};
    if (is_in(ACCENTS, character)) return {Role::accent};
    if (is_in(BLANKS, character)) return {Role::blank};
    if (const Row* row = find_row(SIGNS, character)) return {Role::sign, row->bytes};
    if (const Row* row = find_row(LETTERS, character)) return {Role::word, row->bytes};
    if (is_in(SYMBOLS, character)) return {Role::sign, std::string_view(&STAND_IN, 1)};
    return {Role::foreign};
}

char composed(char base, char32_t accent) {
    for (const Composition& row : COMPOSITIONS) {
        if (row.accent != accent) continue;
        const std::size_t at = row.bases.find(base);
        return at == std::string_view::npos ? '\0' : row.composed[at];
    }
    return '\0';
}

bool is_letter(char c) {
    const auto code = static_cast<unsigned char>(c);
    return is_latin1_word(code) && !(code >= '0' && code <= '9') && code != 0xAA &&
           code != 0xBA;
}

}  // namespace lemara::host
