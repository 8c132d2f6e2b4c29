#include "host/characters.h"

#include <gtest/gtest.h>
#include <utf8proc.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "lemara/utf8.h"

namespace lemara::host {
namespace {

utf8proc_category_t category_of(char32_t code) {
    return utf8proc_category(static_cast<utf8proc_int32_t>(code));
}

bool is_mark(char32_t code) {
    const auto category = category_of(code);
    return category == UTF8PROC_CATEGORY_MN || category == UTF8PROC_CATEGORY_MC ||
           category == UTF8PROC_CATEGORY_ME;
}

bool is_unicode_letter(char32_t code) {
    const auto category = category_of(code);
    return category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_LO;
}

/// The one letter that two characters compose to; 0 if they don't.
char32_t composed_by_utf8proc(char base, char32_t accent) {
    std::string text(1, base);
    append_utf8(text, accent);
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> result(
        utf8proc_NFC(reinterpret_cast<const utf8proc_uint8_t*>(text.c_str())),
        &std::free);
    const std::string composed_text = reinterpret_cast<char*>(result.get());
    const Character c = character_at(composed_text, 0);
    return c.length == composed_text.size() ? c.code : 0;
}

}  // namespace

// No letter of any script may be taken for a sign: the word would be cut and marked.
TEST(Characters, LettersAreLetters) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        if (!is_unicode_letter(code)) continue;
        const Role role = folding_of(code).role;
        const bool apostrophe = code == 0x2B9 || (code >= 0x2BB && code <= 0x2BD);
        const bool letterlike =
            code >= 0x2100 && code <= 0x214F;  // signs for all we know
        if (apostrophe || letterlike) continue;
        ASSERT_TRUE(role == Role::word || role == Role::foreign) << std::hex << code;
    }
}

TEST(Characters, BlanksAreBlanks) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        const auto category = category_of(code);
        const bool blank = category == UTF8PROC_CATEGORY_ZS ||
                           category == UTF8PROC_CATEGORY_ZL ||
                           category == UTF8PROC_CATEGORY_ZP;
        if (!blank) continue;
        ASSERT_EQ(folding_of(code).role, Role::blank) << std::hex << code;
    }
}

TEST(Characters, MarksDoNotSplitWords) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        if (!is_mark(code)) continue;
        const Role role = folding_of(code).role;
        ASSERT_TRUE(role == Role::accent || role == Role::foreign ||
                    role == Role::nothing)
            << std::hex << code;
    }
}

TEST(Characters, EveryByteHasARole) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto code = static_cast<char32_t>(byte);
        const Folding folding = folding_of(code);
        if (folding.role == Role::word) {
            EXPECT_EQ(folding.bytes, std::string(1, static_cast<char>(byte)));
        }
        EXPECT_EQ(is_letter(static_cast<char>(byte)),
                  is_unicode_letter(code) && byte != 0xAA && byte != 0xBA && byte != 0xB5)
            << byte;
    }
}

TEST(Characters, LettersComposeAsInUnicode) {
    for (int base = 'A'; base <= 'z'; ++base) {
        for (char32_t accent = 0x300; accent <= 0x36F; ++accent) {
            const char32_t expected =
                composed_by_utf8proc(static_cast<char>(base), accent);
            const char ours = composed(static_cast<char>(base), accent);
            const auto code = static_cast<unsigned char>(ours);
            ASSERT_EQ(code, expected <= 0xFF && base != '`' ? expected : 0)
                << static_cast<char>(base) << ' ' << std::hex << accent;
        }
    }
}

TEST(Characters, SignsFoldToTheEnginesOwn) {
    const struct {
        std::string label;
        char32_t character;
        Role role;
        std::string bytes;
    } rows[] = {
        {"a typographic apostrophe", 0x2019, Role::sign, "'"},
        {"an accent that stands alone", 0xB4, Role::sign, "'"},
        {"low quotes", 0x201E, Role::sign, "\""},
        {"angle quotes", 0xAB, Role::sign, "\""},
        {"a dash", 0x2014, Role::sign, "-"},
        {"minus", 0x2212, Role::sign, "-"},
        {"the ellipsis", 0x2026, Role::sign, "..."},
        {"a ligature", 0xFB03, Role::word, "ffi"},
        {"a narrow blank", 0x202F, Role::blank, ""},
        {"a tab", '\t', Role::blank, ""},
        {"NUL", 0, Role::blank, ""},
        {"a soft hyphen", 0xAD, Role::nothing, ""},
        {"a byte order mark", 0xFEFF, Role::nothing, ""},
        {"euro", 0x20AC, Role::sign, "*"},
        {"a smiley", 0x1F600, Role::sign, "*"},
        {"a degree", 0xB0, Role::sign, "*"},
        {"per cent stays", '%', Role::sign, "%"},
        {"Cyrillic", 0x416, Role::foreign, ""},
        {"micro", 0xB5, Role::foreign, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        const Folding folding = folding_of(row.character);
        EXPECT_EQ(folding.role, row.role);
        EXPECT_EQ(folding.bytes, row.bytes);
    }
}

}  // namespace lemara::host
