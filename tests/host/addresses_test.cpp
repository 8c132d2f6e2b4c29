#include "host/addresses.h"

#include <gtest/gtest.h>

#include <string>

namespace lemara::host {
namespace {

struct Case {
    std::string label, text, address;
};

const Case CASES[] = {
    {"a word", "etxea", ""},
    {"nothing", "", ""},
    {"http", "http://a.eus/b?c=d#e eta", "http://a.eus/b?c=d#e"},
    {"in capitals", "HTTP://A.EUS x", "HTTP://A.EUS"},
    {"another scheme", "git+ssh://a/b.git,", "git+ssh://a/b.git"},
    {"a scheme alone", "http://", ""},
    {"a scheme and signs", "http://...", ""},
    {"www", "www.a.eus.", "www.a.eus"},
    {"a case ending", "www.a.eus-en dago", "www.a.eus-en"},
    {"letters beyond ASCII", "https://\u00f1.eus/\u00e9?", "https://\u00f1.eus/\u00e9"},
    {"a bracket that is part of it", "http://a.eus/b_(c)", "http://a.eus/b_(c)"},
    {"a bracket around it", "http://a.eus/b)", "http://a.eus/b"},
    {"typographic quotes around it", "http://a.eus\u201d", "http://a.eus"},
    {"an ellipsis behind it", "http://a.eus\u2026", "http://a.eus"},
    {"mail", "izen.abizen+x@a.b.eus, ", "izen.abizen+x@a.b.eus"},
    {"mailto", "mailto:a@b.eus>", "mailto:a@b.eus"},
    {"a sign for mail and no host", "a@b", ""},
    {"a host name", "berria.eus da", "berria.eus"},
    {"a host name and a path", "berria.eus/a/b.", "berria.eus/a/b"},
    {"a host name with its case ending", "berria.eus-en", "berria.eus-en"},
    {"a forgotten blank", "etxea.Gero", ""},
    {"a forgotten blank before a word that looks like a host", "etxea.eta", ""},
    {"a number", "3.5", ""},
    {"an abbreviation", "etab.", ""},
    {"a path", "/usr/lib", "/usr/lib"},
    {"a slash", "/edo", ""},
    {"a slash alone", "/", ""},
    {"home", "~/a.b", "~/a.b"},
    {"here", "./a", "./a"},
    {"up", "../a", "../a"},
    {"of another system", "C:\\a\\b c", "C:\\a\\b"},
    {"words with a slash", "eta/edo", ""},
    {"a file in a folder", "src/a.txt;", "src/a.txt"},
    {"a file name", "liburua.pdf-a", "liburua.pdf-a"},
    {"a file name goes on as a word", "liburua.pdf\u00f1", ""},
    {"a handle", "@izena_1: ", "@izena_1"},
    {"a hashtag", "#\u00f1abar!", "#\u00f1abar"},
    {"a sign alone", "# a", ""},
    {"a picture as text", "data:image/png;base64,AAAA==", "data:image/png;base64,AAAA=="},
};

}  // namespace

TEST(Addresses, AreFoundWhereTheyBegin) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(c.text.substr(0, address_at(c.text, 0)), c.address);
        const std::string later = "(" + c.text;
        EXPECT_EQ(later.substr(1, address_at(later, 1)), c.address);
    }
}

TEST(Addresses, BeginBehindBlanksAndBrackets) {
    for (const char32_t c : std::u32string(U" \n(\"[{\u201c\u00ab\u2014,;|")) {
        EXPECT_TRUE(may_precede_address(c)) << static_cast<unsigned>(c);
    }
    for (const char32_t c : std::u32string(U"a\u00f1\u0416\u0301@./-_:'")) {
        EXPECT_FALSE(may_precede_address(c)) << static_cast<unsigned>(c);
    }
}

}  // namespace lemara::host
