#include <gtest/gtest.h>

#include <string>

#include "host/piece.h"

namespace {

using namespace lemara::host;

constexpr std::size_t NONE = std::string_view::npos;

struct ValidCase {
    std::string label, text;
    std::size_t invalid_at;
};

const ValidCase VALID[] = {
    {"nothing", "", NONE},
    {"one to four bytes", "a\303\261\342\202\254\360\237\230\200", NONE},
    {"the highest character", "\364\217\277\277", NONE},
    {"just above it", "ab\364\220\200\200", 2},
    {"a Latin-1 byte", "ma\361ana", 2},
    {"a lone continuation byte", "a\200", 1},
    {"cut at the end", "a\342\202", 1},
    {"cut before a letter", "\342\202a", 0},
    {"an overlong slash", "\300\257", 0},
    {"an overlong form of three bytes", "\340\200\257", 0},
    {"an overlong form of four bytes", "\360\200\200\257", 0},
    {"a surrogate", "\355\240\200", 0},
    {"the last before the surrogates", "\355\237\277", NONE},
    {"a byte that never is", "\377", 0},
};

TEST(TextEncoding, FindsWhatIsNotUtf8) {
    for (const ValidCase& c : VALID) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(find_invalid_utf8(c.text), c.invalid_at);
    }
}

TEST(TextEncoding, RoundTripsEveryLatin1Byte) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string latin1(1, static_cast<char>(byte));
        const std::string utf8 = utf8_from_latin1(latin1);
        std::string back;
        char32_t missing = 0;
        EXPECT_EQ(find_invalid_utf8(utf8), NONE) << byte;
        EXPECT_TRUE(latin1_exactly(utf8, back, missing)) << byte;
        EXPECT_EQ(back, latin1) << byte;
    }
}

TEST(TextEncoding, TellsTheFirstCharacterThatLatin1Lacks) {
    std::string latin1;
    char32_t missing = 0;
    EXPECT_FALSE(latin1_exactly("a\342\202\254\305\201", latin1, missing));
    EXPECT_EQ(missing, U'\u20AC');
    EXPECT_FALSE(latin1_exactly("a\377", latin1, missing));
    EXPECT_EQ(missing, REPLACEMENT);
}

struct FoldCase {
    std::string label, utf8, latin1, lost;
};

const FoldCase FOLDS[] = {
    {"plain", "etxea", "etxea", ""},
    {"a letter of Latin-1", "\303\261abar", "\361abar", ""},
    {"typographic quotes", "\342\200\234a\342\200\235 \342\200\230b\342\200\231",
     "\"a\" 'b'", ""},
    {"low and single angle quotes", "\342\200\236a\342\200\234 \342\200\271b\342\200\272",
     "\"a\" 'b'", ""},
    {"angle quotes", "\302\253a\302\273", "\"a\"", ""},
    {"accents that stand for quotes", "`a\302\264", "'a'", ""},
    {"dashes", "a\342\200\223b\342\200\224c\342\210\222d\342\200\221e", "a-b-c-d-e", ""},
    {"ellipsis", "a\342\200\246", "a...", ""},
    {"blanks", "a\302\240b\342\200\257c\342\200\211d", "a b c d", ""},
    {"a blank at the end stays", "bat ", "bat ", ""},
    {"soft hyphen", "etxe\302\255a", "etxea", ""},
    {"zero width", "\357\273\277a\342\200\213b", "ab", ""},
    {"decomposed tilde", "n\314\203abar", "\361abar", ""},
    {"decomposed accents", "e\314\201u\314\210C\314\247", "\351\374\307", ""},
    {"ligature", "\357\254\201n", "fin", ""},
    {"signs of Latin-1 stay", "#a m\302\262 \302\260C \302\265g a@b.eus <a>",
     "#a m\262 \260C \265g a@b.eus <a>", ""},
    {"an address stays", "http://a.eus/b?c", "http://a.eus/b?c", ""},
    {"an asterisk is none that stands in", "a * b", "a * b", ""},
    {"euro", "5 \342\202\254", "5 *", "\342\202\254"},
    {"a NUL would end the text", std::string("a\0b", 3), "a b", ""},
    {"an accent that Latin-1 has not with that letter", "n\314\201a b", "* b",
     "n\314\201a"},
    {"beyond the first plane", "a\360\237\230\200b", "a*b", "\360\237\230\200"},
    {"a word with a foreign letter, and its ending", "\305\201\303\263d-en b", "* b",
     "\305\201\303\263d-en"},
    {"another script; the first place is told", "\320\240 \320\276", "* *", "\320\240"},
};

TEST(TextEncoding, FoldsTextForTheEngine) {
    for (const FoldCase& c : FOLDS) {
        SCOPED_TRACE(c.label);
        const EngineText text = engine_text(c.utf8);
        EXPECT_EQ(text.latin1, c.latin1);
        EXPECT_EQ(c.utf8.substr(text.lost.begin, text.lost.end - text.lost.begin),
                  c.lost);
    }
}

TEST(TextEncoding, ShowsAnyBytes) {
    EXPECT_EQ(printable("a\303\261b"), "a\303\261b");
    EXPECT_EQ(printable("a\361b"), "a\\xF1b");
    EXPECT_EQ(printable("a\033[1m\tb"), "a\\x1B[1m\\x09b");
    EXPECT_EQ(printable("\302\205"), "\\xC2\\x85");
    EXPECT_EQ(printable(std::string(1, '\0')), "\\x00");
}

}  // namespace
