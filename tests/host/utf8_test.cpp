#include "lemara/utf8.h"

#include <gtest/gtest.h>

#include "spans.h"

namespace lemara::host {

TEST(Utf8, EveryCharacterIsReadAndWritten) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        std::string text;
        append_utf8(text, code);
        const Character c = character_at(text + "x", 0);
        if (code >= 0xD800 && code <= 0xDFFF) {
            ASSERT_FALSE(c.valid) << code;
            continue;
        }
        ASSERT_TRUE(c.valid) << code;
        ASSERT_EQ(c.code, code);
        ASSERT_EQ(c.length, text.size());
    }
}

// Pairs of bytes, and each with some bytes behind it, as utf8proc judges them.
TEST(Utf8, WhatIsNoUtf8CountsAsBrowsersCount) {
    const std::string behind[] = {"",         "a",        "\x80", "\x80\x80",
                                  "\xbf\xbf", "\x80\xff", "\xc3"};
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            for (const std::string& rest : behind) {
                std::string text(1, static_cast<char>(first));
                text += static_cast<char>(second) + rest;
                std::size_t length = 0;
                const auto plain = test::plain_character(text.substr(0, 4), length);
                const Character c = character_at(text, 0);
                ASSERT_EQ(c.valid, plain.valid) << first << ' ' << second;
                ASSERT_EQ(c.code, plain.code) << first << ' ' << second;
                ASSERT_EQ(c.length, length) << first << ' ' << second;
            }
        }
    }
}

TEST(Utf8, TheFirstBadByteIsFound) {
    const struct {
        std::string label, text;
        std::size_t at;
    } rows[] = {
        {"none", "e\u00f1e", std::string::npos},
        {"at the start",
         "\xff"
         "a",
         0},
        {"a cut character at the end", "ab\xe2\x82", 2},
        {"a surrogate", "a\xed\xa0\x80", 1},
        {"an overlong slash", "\xc0\xaf", 0},
        {"the empty text", "", std::string::npos},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(find_invalid_utf8(row.text), row.at);
    }
}

TEST(Utf8, MessagesShowAnyBytes) {
    EXPECT_EQ(printable("e\u00f1\n\xff\x7f\u0085"), "e\u00f1\\x0A\\xFF\\x7F\\xC2\\x85");
    EXPECT_EQ(utf8_from_latin1("\361a"), "\u00f1a");
}

}  // namespace lemara::host
