#include "karaktereak.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

namespace {

bool among(int c, const std::vector<int>& list) {
    return std::find(list.begin(), list.end(), c) != list.end();
}

/// A character function of one byte, judged over every byte.
bool is_small_block(int byte) {
    return (byte >= 97 && byte <= 122) || (byte >= 224 && byte <= 253);
}
bool is_capital_block(int byte) {
    return (byte >= 65 && byte <= 90) || (byte >= 192 && byte <= 221);
}

const std::vector<int> SIGNS = {33, 34, 39, 40, 41, 42, 43, 44, 45,  46,  47,
                                58, 59, 61, 63, 91, 93, 95, 123, 125, 161, 191};

// As unsigned bytes; they count when they arrive as byte minus 256.
const std::vector<int> ALPHANUMERIC_WHEN_NEGATIVE = {
    128, 154, 186, 193, 196, 197, 198, 199, 201, 205, 209, 211, 214, 218, 220,
    224, 225, 226, 227, 228, 229, 230, 231, 232, 233, 234, 235, 236, 237, 238,
    239, 241, 242, 243, 244, 246, 249, 250, 251, 252};

std::string all_bytes() {
    std::string text;
    for (int byte = 1; byte < 256; ++byte) text += static_cast<char>(byte);
    return text;
}

struct ByteCase {
    std::string label;
    int byte, upper, lower;
};

const ByteCase BYTES[] = {
    {"a letter", 'a', 'A', 'a'},
    {"the last letter", 'Z', 'Z', 'z'},
    {"a sign before the capitals", '@', '@', '@'},
    {"a sign behind the capitals", '[', '[', '['},
    {"a sign before the small letters", '`', '`', '`'},
    {"a sign behind the small letters", '{', '{', '{'},
    {"the first accented small letter", 224, 192, 224},
    {"the last accented small letter", 253, 221, 253},
    {"the first accented capital", 192, 192, 224},
    {"the last accented capital", 221, 221, 253},
    {"n tilde", 241, 209, 241},
    {"kept: the division sign has the multiplication sign as its capital", 247, 215, 247},
    {"kept: the multiplication sign has the division sign as its small letter", 215, 215, 247},
    {"222 has no partner", 222, 222, 222},
    {"223 has no partner", 223, 223, 223},
    {"254 has no partner", 254, 254, 254},
    {"255 has no partner", 255, 255, 255},
    {"191 is before the block", 191, 191, 191},
};

struct StringCase {
    std::string label, text, upper, lower, strlwr;
};

const StringCase STRINGS[] = {
    {"empty", "", "", "", ""},
    {"letters and signs", "Etxe-12 aZ", "ETXE-12 AZ", "etxe-12 az", "etxe-12 az"},
    {"byte 255 stays", "\377", "\377", "\377", "\377"},
    {"byte 224 becomes 192", "\340", "\300", "\340", "\340"},
    {"byte 222 stays", "\336", "\336", "\336", "\336"},
    {"kept: strlwr leaves byte 192, tolowercase gives 224", "\300A", "\300A", "\340a",
     "\300a"},
    {"n tilde", "\361aBAR", "\321ABAR", "\361abar", "\361abar"},
};

struct Comparison {
    std::string label, a, b;
    int n, sign;
};

const Comparison COMPARISONS[] = {
    {"equal", "etxe", "etxe", 4, 0},
    {"case is folded", "ETXE", "etxe", 4, 0},
    {"case is folded on the right", "etxe", "EtXe", 4, 0},
    {"only the first n bytes count", "etxeA", "etxeB", 4, 0},
    {"the byte at n counts", "etxeA", "etxeB", 5, -1},
    {"a prefix is smaller", "etxe", "etxea", 10, -1},
    {"a longer one is greater", "etxea", "ETXE", 10, 1},
    {"the end of both ends the comparison", "etxe", "etxe", 100, 0},
    {"Z folds to z, above the underscore", "Z", "_", 1, 1},
    {"kept: Latin-1 capitals are not folded", "\321", "\361", 1, -1},
    {"high bytes are above ASCII", "\361", "z", 1, 1},
    {"no bytes are equal", "a", "b", 0, 0},
    {"a negative count is equal", "a", "b", -1, 0},
    {"empty strings are equal", "", "", 3, 0},
};

int sign_of(int value) { return (value > 0) - (value < 0); }

}  // namespace

TEST(Karaktereak, CaseTestsAreAsciiOnly) {
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE("byte " + std::to_string(byte));
        const char c = static_cast<char>(byte);
        EXPECT_EQ(orbi_isupper(c), byte >= 65 && byte <= 90);
        EXPECT_EQ(orbi_islower(c), byte >= 97 && byte <= 122);
    }
    EXPECT_FALSE(orbi_isupper('\300')) << "kept: an accented capital is no capital";
    EXPECT_FALSE(orbi_islower('\340')) << "kept: an accented small letter is no small letter";
}

TEST(Karaktereak, CaseConversionsCoverLatin1) {
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE("byte " + std::to_string(byte));
        const auto c = static_cast<unsigned char>(byte);
        EXPECT_EQ(orbi_toupper(c), is_small_block(byte) ? byte - 32 : byte);
        EXPECT_EQ(orbi_tolower(c), is_capital_block(byte) ? byte + 32 : byte);
        EXPECT_EQ(orbi_toupper(orbi_toupper(c)), orbi_toupper(c));
        EXPECT_EQ(orbi_tolower(orbi_tolower(c)), orbi_tolower(c));
        EXPECT_EQ(orbi_tolower(orbi_toupper(c)), orbi_tolower(c));
        EXPECT_EQ(orbi_toupper(orbi_tolower(c)), orbi_toupper(c));
    }
    for (const ByteCase& c : BYTES) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(orbi_toupper(static_cast<unsigned char>(c.byte)), c.upper);
        EXPECT_EQ(orbi_tolower(static_cast<unsigned char>(c.byte)), c.lower);
    }
}

TEST(Karaktereak, StringsAreConvertedByteByByte) {
    for (const StringCase& c : STRINGS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(touppercase(c.text), c.upper);
        EXPECT_EQ(tolowercase(c.text), c.lower);
        std::string buffer = c.text;
        char* const result = orbi_strlwr(buffer.data());
        EXPECT_EQ(result, buffer.data());
        EXPECT_EQ(buffer, c.strlwr);
    }
}

TEST(Karaktereak, StringsOfAllBytes) {
    const std::string text = all_bytes();
    const std::string upper = touppercase(text);
    const std::string lower = tolowercase(text);
    std::string strlwr = text;
    orbi_strlwr(strlwr.data());
    ASSERT_EQ(upper.size(), text.size());
    ASSERT_EQ(lower.size(), text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        SCOPED_TRACE("byte " + std::to_string(i + 1));
        const auto byte = static_cast<unsigned char>(text[i]);
        EXPECT_EQ(static_cast<unsigned char>(upper[i]), orbi_toupper(byte));
        EXPECT_EQ(static_cast<unsigned char>(lower[i]), orbi_tolower(byte));
        const int folded = byte >= 'A' && byte <= 'Z' ? byte + 32 : byte;
        EXPECT_EQ(static_cast<unsigned char>(strlwr[i]), folded);
    }
    EXPECT_EQ(touppercase(upper), upper);
    EXPECT_EQ(tolowercase(lower), lower);
    const std::string with_nul("a\0b", 3);
    EXPECT_EQ(touppercase(with_nul), std::string("A\0B", 3)) << "a string may hold a NUL";
    EXPECT_EQ(tolowercase(std::string("A\0B", 3)), with_nul);
}

TEST(Karaktereak, StrcatAppends) {
    char buffer[16] = "etxe";
    EXPECT_EQ(orbi_strcat(buffer, "ak"), buffer);
    EXPECT_STREQ(buffer, "etxeak");
    EXPECT_EQ(orbi_strcat(buffer, ""), buffer);
    EXPECT_STREQ(buffer, "etxeak");
    char empty[8] = "";
    orbi_strcat(empty, "\361a");
    EXPECT_STREQ(empty, "\361a");
}

TEST(Karaktereak, NullPointersAreHarmless) {
    char buffer[8] = "etxe";
    EXPECT_EQ(orbi_strcat(buffer, nullptr), buffer);
    EXPECT_STREQ(buffer, "etxe");
    EXPECT_EQ(orbi_strcat(nullptr, "a"), nullptr);
    EXPECT_EQ(orbi_strlwr(nullptr), nullptr);
    EXPECT_EQ(orbi_strncasecmp(nullptr, nullptr, 3), 0);
    EXPECT_EQ(orbi_strncasecmp(nullptr, "", 3), 0);
    EXPECT_LT(orbi_strncasecmp(nullptr, "a", 3), 0);
    EXPECT_GT(orbi_strncasecmp("a", nullptr, 3), 0);
}

TEST(Karaktereak, StrncasecmpFoldsAsciiAlone) {
    for (const Comparison& c : COMPARISONS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(sign_of(orbi_strncasecmp(c.a.c_str(), c.b.c_str(), c.n)), c.sign);
        EXPECT_EQ(sign_of(orbi_strncasecmp(c.b.c_str(), c.a.c_str(), c.n)), -c.sign);
    }
    const std::string a(20000, 'A');
    const std::string b(20000, 'a');
    EXPECT_EQ(orbi_strncasecmp(a.c_str(), b.c_str(), 9999), 0) << "long texts do no harm";
}

TEST(Karaktereak, IsalphaOverEveryValue) {
    for (int c = -128; c < 256; ++c) {
        SCOPED_TRACE("value " + std::to_string(c));
        const bool expected = (c >= 65 && c <= 122) || (c >= 192 && c <= 253) || c == 128 ||
                              c == 154 || c == 186;
        EXPECT_EQ(orbi_isalpha(c), expected);
    }
    for (int c = 91; c <= 96; ++c) EXPECT_TRUE(orbi_isalpha(c)) << "kept: sign " << c;
    EXPECT_TRUE(orbi_isalpha(215)) << "kept: the multiplication sign is a letter";
    EXPECT_TRUE(orbi_isalpha(247)) << "kept: the division sign is a letter";
    EXPECT_FALSE(orbi_isalpha(-15)) << "kept: a negative value is no letter";
    EXPECT_FALSE(orbi_isalpha(1000));
    EXPECT_FALSE(orbi_isalpha(-100000));
}

TEST(Karaktereak, AlfazenbakizkoaDaOverEveryValue) {
    for (int c = -128; c < 256; ++c) {
        SCOPED_TRACE("value " + std::to_string(c));
        const bool ascii = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                           (c >= 'a' && c <= 'z');
        const bool negative = c < 0 && among(c + 256, ALPHANUMERIC_WHEN_NEGATIVE);
        EXPECT_EQ(alfazenbakizkoaDa(c), ascii || negative);
    }
    EXPECT_FALSE(alfazenbakizkoaDa(233)) << "kept: an unsigned high byte is none";
    EXPECT_TRUE(alfazenbakizkoaDa(-23)) << "kept: the same byte as a negative number is one";
    EXPECT_FALSE(alfazenbakizkoaDa(-62)) << "kept: a circumflex on a capital A is not listed";
    EXPECT_FALSE(alfazenbakizkoaDa(100000)) << "far values are no letters";
    EXPECT_FALSE(alfazenbakizkoaDa(-100000));
}

TEST(Karaktereak, PuntuazioaDaOverEveryValue) {
    for (int c = -128; c < 256; ++c) {
        SCOPED_TRACE("value " + std::to_string(c));
        const int byte = c & 0xFF;
        EXPECT_EQ(puntuazioaDa(c), byte == 0 || among(byte, SIGNS));
    }
    EXPECT_TRUE(puntuazioaDa(0)) << "kept: the end of the list is found too";
    EXPECT_TRUE(puntuazioaDa(161));
    EXPECT_TRUE(puntuazioaDa(-95)) << "kept: 161 and -95 are the same sign";
    EXPECT_TRUE(puntuazioaDa(256 + 33)) << "kept: only the low byte counts";
    EXPECT_TRUE(puntuazioaDa(256)) << "kept: a low byte of 0 counts as well";
    EXPECT_FALSE(puntuazioaDa('0'));
    EXPECT_FALSE(puntuazioaDa(' '));
    EXPECT_FALSE(puntuazioaDa('%'));
}

TEST(Karaktereak, RomanDigitsAreCapitals) {
    const std::string roman = "CDILMVX";
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE("byte " + std::to_string(byte));
        const char c = static_cast<char>(byte);
        const bool expected = roman.find(c) != std::string::npos;
        EXPECT_EQ(erromatarra_da(c), expected);
        EXPECT_EQ(erromatarraDa(c), expected);
    }
    EXPECT_FALSE(erromatarra_da('i'));
}
