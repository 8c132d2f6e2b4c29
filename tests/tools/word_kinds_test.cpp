#include "word_kinds.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using lemara::tools::kind_of_word;
using lemara::tools::WordKind;

struct Case {
    std::string label, token;
    WordKind kind;
};

const Case CASES[] = {
    {"small letters", "etxea", WordKind::SMALL},
    {"a capital inside", "iPhone", WordKind::SMALL},
    {"a sign in front", "-etxea", WordKind::SMALL},
    {"Latin-1", "\361abar", WordKind::SMALL},
    {"a multi-word entry", "eta gero", WordKind::SMALL},
    {"a capital in front", "Etxea", WordKind::CAPITALISED},
    {"a capital n-tilde in front", "\321abar", WordKind::CAPITALISED},
    {"one capital alone", "A", WordKind::CAPITALISED},
    {"an acronym with a case", "EAJk", WordKind::CAPITALISED},
    {"an acronym", "EAJ", WordKind::CAPITALS},
    {"an acronym with a sign", "J.-P.", WordKind::CAPITALS},
    {"digits and a case", "1998an", WordKind::WITH_DIGITS},
    {"letters, then digits", "A8", WordKind::WITH_DIGITS},
    {"a number", "1.998,5", WordKind::NUMBER},
    {"a sign and digits", "%20", WordKind::NUMBER},
    {"a sign", "?", WordKind::SIGN},
    {"the signs for times and divided are no letters", "\327\367", WordKind::SIGN},
    {"nothing", "", WordKind::SIGN},
};

}  // namespace

TEST(WordKinds, ByLettersAndDigits) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(kind_of_word(c.token), c.kind);
    }
}
