// Positions are exact on any text: a hundred thousand random ones, and rows for what they found.
#include <random>

#include "host_world.h"
#include "spans.h"

namespace lemara::test {
namespace {

const char* const PIECES[] = {
    "etxe", "etxea", "gizno", "Bilbo", "ahal izan", "ahal", "mai", "txar", "\u00f1abar",
    "n\u0303abar", "\u00d1", "e\u0301", "c\u0327", "s\u0301", "a\u0323\u0301", " ", " ", " ", " ",
    "\n", "\r", "\r\n", "\n\n", "\t", ".", ",", "!", "?", ":", ";", "'", "\"", "(", ")", "[", "]",
    "-", "_", "/", "\\", "<", ">", "&", "%", "#", "@", "*", "|", "~", "^", "`", "$", "+", "=",
    "\u2018", "\u2019", "\u201c", "\u201d", "\u00ab", "\u00bb", "\u2013", "\u2014", "\u2010",
    "\u2011", "\u2212", "\u2026", "\u00a0", "\u202f", "\u2003", "\u3000", "\u00ad", "\u200b",
    "\u200d", "\u2060", "\ufeff", "\ufb01", "\u00b5", "\u00ba", "\u00b2", "\u20ac", "\u2022",
    "\u65e5\u672c", "\u0141\u00f3d\u017a", "\u041c\u0438\u0440", "\u0645", "\U0001d4b3",
    "\U0001f600", "\U0001f468\u200d\U0001f469", "\U000e0041", "\uffff", "\u0300", "\u20e3",
    "http://a.eus/b?c=d", "https://\u00f1.eus", "www.berria.eus-en", "mai@l.eus", "a@b",
    "/usr/lib/x", "~/a", "C:\\a\\b", "berria.eus", "fitx.txt", "#ola", "@nor", "://", "1990",
    "1990.", "3.5", "1.", "XIV.", "Dr.", "ftp", "http", "50%", "d'Or", "etxe-gizno", "etxea.gizno",
    "\xff", "\xe2\x82", "\xf0\x9f", "\xc0\xaf", "\xed\xa0\x80", "\x80",
};

std::string random_text(std::mt19937& random) {
    std::string text;
    const std::size_t pieces = random() % 14;
    for (std::size_t i = 0; i < pieces; ++i) {
        switch (random() % 16) {
            case 0: text += static_cast<char>(random()); break;
            case 1: {
                utf8proc_uint8_t bytes[4];
                const auto code = static_cast<utf8proc_int32_t>(random() % 0x3000);
                const auto n = utf8proc_encode_char(code, bytes);
                text.append(reinterpret_cast<char*>(bytes), static_cast<std::size_t>(n));
                break;
            }
            default: text += PIECES[random() % std::size(PIECES)];
        }
    }
    return text;
}

std::string shown(const std::string& text) {
    std::string result;
    for (const char c : text) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned char>(c));
        result += c > ' ' && c < 0x7F ? std::string(1, c) : escape;
    }
    return result;
}

struct Case {
    std::string label, text;
    std::size_t begin, end;  // bytes of the first finding
    std::size_t code_point, utf16, line, column;
};

const Case CASES[] = {
    {"plain", "etxe gizno", 5, 10, 5, 5, 1, 6},
    {"behind a letter of two bytes", "\u00f1abar gizno", 7, 12, 6, 6, 1, 7},
    {"a decomposed letter is two code points", "n\u0303abar gizno", 8, 13, 7, 7, 1, 8},
    {"behind a character beyond U+FFFF", "\U0001d4b3 gizno", 5, 10, 2, 3, 1, 3},
    {"typographic quotes", "\u201cgizno\u201d", 3, 8, 1, 1, 1, 2},
    {"angle quotes", "\u00abgizno\u00bb", 2, 7, 1, 1, 1, 2},
    {"an ellipsis ends a word", "gizno\u2026 etxe", 0, 5, 0, 0, 1, 1},
    {"a soft hyphen lies inside", "giz\u00adno", 0, 7, 0, 0, 1, 1},
    {"a zero-width character at the edge is outside", "\u200bgizno\u200b", 3, 8, 1, 1, 1, 2},
    {"a byte order mark has no column", "\ufeffgizno", 3, 8, 1, 1, 1, 1},
    {"LF", "etxe\ngizno", 5, 10, 5, 5, 2, 1},
    {"CR", "etxe\rgizno", 5, 10, 5, 5, 2, 1},
    {"CR LF", "etxe\r\ngizno", 6, 11, 6, 6, 2, 1},
    {"a tab is a blank of one column", "\tgizno", 1, 6, 1, 1, 1, 2},
    {"a no-break blank", "etxe\u00a0gizno", 6, 11, 5, 5, 1, 6},
    {"behind an invalid byte", "\xff gizno", 2, 7, 2, 2, 1, 3},
    {"a cut character counts once", "\xe2\x82 gizno", 3, 8, 2, 2, 1, 3},
    {"behind an address", "http://a.eus/gizno gizno", 19, 24, 19, 19, 1, 20},
    {"behind another script", "\u65e5\u672c gizno", 7, 12, 3, 3, 1, 4},
    {"a part joined by a hyphen", "etxe-gizno", 5, 10, 5, 5, 1, 6},
    {"NUL is a blank", std::string("etxe\0gizno", 10), 5, 10, 5, 5, 1, 6},
};

struct Unmarked {
    std::string label, text;
};

const Unmarked UNMARKED[] = {
    {"the empty text", ""},
    {"blanks", " \t\u00a0\r\n\n"},
    {"another script", "\u041c\u0438\u0440 \u65e5\u672c \u0645\u0631"},
    {"a letter beyond Latin-1", "\u0141\u00f3d\u017a"},
    {"with a case ending", "\u0141\u00f3d\u017a-en gi\u017a-gizno"},
    {"a decomposed letter beyond Latin-1", "gis\u0301no"},
    {"an invalid byte in a word", "giz\xf1no"},
    {"web addresses", "http://gizno.eus/a_(gizno) www.gizno.com berria.eus/gizno gizno.eus-en"},
    {"mail addresses", "gizno@adibidea.eus (gizno.gizno@a.b.eus)"},
    {"paths", "/usr/gizno ~/gizno ./gizno ../gizno C:\\gizno\\a gizno/gizno.txt gizno.pdf"},
    {"handles and hashtags", "@gizno #gizno_a"},
    {"numbers and signs", "1990 3,5 50% 10:30 \u20ac5 \u00a7 1. *** + \U0001f600 \u00b2"},
    {"a word too long to be one", std::string(300, 'g')},
    {"an accent alone", "\u0301"},
};

}  // namespace

TEST(Positions, AreThoseOfTheSource) {
    HostWorld world;
    const auto checker = world.open();
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        const std::vector<Finding> findings = checker->check(c.text);
        ASSERT_EQ(findings.size(), 1u);
        const Span& span = findings[0].span;
        EXPECT_EQ(span.begin.byte, c.begin);
        EXPECT_EQ(span.end.byte, c.end);
        EXPECT_EQ(span.begin.code_point, c.code_point);
        EXPECT_EQ(span.begin.utf16, c.utf16);
        EXPECT_EQ(span.line, c.line);
        EXPECT_EQ(span.column, c.column);
        EXPECT_EQ(SpanJudge(c.text).judge(*checker, {}), "");
    }
}

TEST(Positions, SomeThingsAreNeverMarked) {
    HostWorld world;
    const auto checker = world.open();
    for (const Unmarked& c : UNMARKED) {
        SCOPED_TRACE(c.label);
        for (const Finding& finding : checker->check(c.text)) {
            ADD_FAILURE() << finding.token << " at byte " << finding.span.begin.byte;
        }
        EXPECT_EQ(SpanJudge(c.text).judge(*checker, {}), "");
    }
}

TEST(Positions, HoldOnRandomTexts) {
    constexpr unsigned TEXTS = 100000;
    HostWorld world;
    const auto checker = world.open();
    std::size_t findings = 0;
    for (unsigned seed = 0; seed < TEXTS; ++seed) {
        std::mt19937 random(seed);
        const std::string text = random_text(random);
        CheckOptions options;
        options.most_forms = 0;
        options.report_foreign = seed % 2 == 0;
        options.paragraphs = static_cast<Paragraphs>(seed % 3);
        SpanJudge judge(text);
        ASSERT_EQ(judge.judge(*checker, options), "") << "seed " << seed << ": " << shown(text);
        findings += judge.findings;
    }
    EXPECT_GT(findings, TEXTS / 2);
}

// What a long text is cut into may not show in any position.
TEST(Positions, HoldBehindThePieces) {
    HostWorld world;
    const auto checker = world.open();
    const struct {
        std::string label, unit;
    } rows[] = {
        {"sentences", "Etxe \u00f1abar gizno. "},
        {"no sentence ends", "etxe \u00f1abar gizno, "},
        {"no blanks", "etxe-\u00f1abar-gizno-"},
        {"no words", "\u2026\u20ac"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        std::string text;
        while (text.size() < 200000) text += row.unit;
        CheckOptions options;
        options.most_forms = 0;
        EXPECT_EQ(SpanJudge(text).judge(*checker, options), "");
    }
}

}  // namespace lemara::test
