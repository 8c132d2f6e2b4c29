// The tokeniser: a table of sentences, and a plain twin that reads the rules one byte at
// a time and must agree with it on any text.
#include <iterator>
#include <random>

#include "Esaldia.h"
#include "plain_tokeniser.h"
#include "support.h"

namespace {

using lemara::test::Piece;
using lemara::test::PlainTokeniser;

std::vector<Piece> pieces_of(const Esaldia& sentence) {
    std::vector<Piece> pieces;
    for (const Tokena& token : sentence.tokenak)
        pieces.push_back({token.testua, token.hutsunea});
    return pieces;
}

constexpr bool t = true;
constexpr bool f = false;

struct Case {
    std::string label, text;
    std::vector<Piece> tokens;
};

const Case CASES[] = {
    {"punctuation is a token of its own",
     "Kaixo, mundua.",
     {{"Kaixo", f}, {",", t}, {"mundua", f}, {".", f}}},
    {"a hyphen cuts a word",
     "etxe-a da.",
     {{"etxe", f}, {"-", f}, {"a", t}, {"da", f}, {".", f}}},
    {"a dot inside a number stays, a comma cuts it",
     "1.5 eta 2,5.",
     {{"1.5", t}, {"eta", t}, {"2", f}, {",", f}, {"5", f}, {".", f}}},
    {"kept: the dot of an ordinal vanishes",
     "1998. urtean",
     {{"1998", t}, {"urtean", f}}},
    {"the last dot stays, also behind a digit", "12.", {{"12", f}, {".", f}}},
    {"kept: with a blank behind it that dot is not the last byte", "12. ", {{"12", t}}},
    {"kept: a number dot goes in front of punctuation as well",
     "12.,",
     {{"12", f}, {",", f}}},
    {"kept: of two dots the first is a number dot",
     "12.. a",
     {{"12", f}, {".", t}, {"a", f}}},
    {"an abbreviation keeps its inner dot",
     "e.a. bestea",
     {{"e.a", f}, {".", t}, {"bestea", f}}},
    {"a percent sign is no punctuation",
     "%50 eta 50%.",
     {{"%50", t}, {"eta", t}, {"50%", f}, {".", f}}},
    {"three dots are three tokens",
     "etxea...",
     {{"etxea", f}, {".", f}, {".", f}, {".", f}}},
    {"accented letters stay in their word",
     "h\351roe eta \351zer",
     {{"h\351roe", t}, {"eta", t}, {"\351zer", f}}},
    {"an address keeps its final dot", "www.a.b.", {{"www.a.b.", f}}},
    {"kept: an address swallows what follows and loses blanks",
     "http://a.b/c.d dago hemen.",
     {{"http://a.b/c.ddagohemen.", f}}},
    {"kept: a blank two places ahead is jumped over", "http://a b", {{"http://ab", f}}},
    {"kept: a blank one place ahead is copied", "ftp a b", {{"ftpa b", f}}},
    {"an address inside a sentence is cut like any text",
     "Ikusi http://a.b/c dago.",
     {{"Ikusi", t},
      {"http", f},
      {":", f},
      {"/", f},
      {"/", f},
      {"a.b", f},
      {"/", f},
      {"c", t},
      {"dago", f},
      {".", f}}},
    {"http alone", "http", {{"http", f}}},
    {"ftp alone", "ftp", {{"ftp", f}}},
    {"sftp begins an address", "sftp://a/b.", {{"sftp://a/b.", f}}},
    {"ftp needs no more than its three letters", "ftpa-b", {{"ftpa-b", f}}},
    {"httpa begins an address too", "httpa-b", {{"httpa-b", f}}},
    {"www without its dot does not", "wwwa-b", {{"wwwa", f}, {"-", f}, {"b", f}}},
    {"the address test sees capitals",
     "Http://a",
     {{"Http", f}, {":", f}, {"/", f}, {"/", f}, {"a", f}}},
    {"an empty sentence", "", {}},
    {"one byte", "a", {{"a", f}}},
    {"one sign", "!", {{"!", f}}},
    {"a final blank is noted", "etxea ", {{"etxea", t}}},
    {"two blanks are as one", "bat  bi", {{"bat", t}, {"bi", f}}},
    {"a blank behind punctuation is noted", "bat, ", {{"bat", f}, {",", t}}},
    {"a tab is a byte like any other", "bat\tbi", {{"bat\tbi", f}}},
    {"a line feed too", "bat\nbi", {{"bat\nbi", f}}},
    {"a no-break space too", "bat\240bi", {{"bat\240bi", f}}},
    {"ampersand, number sign and the like cut nothing",
     "a&b#c<d>e$f\\g",
     {{"a&b#c<d>e$f\\g", f}}},
    {"slash, apostrophe and underscore cut",
     "a/b'c_d",
     {{"a", f}, {"/", f}, {"b", f}, {"'", f}, {"c", f}, {"_", f}, {"d", f}}},
    {"the inverted marks cut", "\277zer\241", {{"\277", f}, {"zer", f}, {"\241", f}}},
    {"a dot in front of a letter stays", "a.b c", {{"a.b", t}, {"c", f}}},
    {"a dot in front of a high byte stays", "a.\351", {{"a.\351", f}}},
    {"a dot in front stands alone", ".a", {{".", f}, {"a", f}}},
    {"a dot behind a high byte is punctuation",
     "\351.a",
     {{"\351", f}, {".", f}, {"a", f}}},
    {"a final dot behind a word run", "a.b.", {{"a.b", f}, {".", f}}},
    {"all signs",
     "!\"'()*+,-./:;=?[]_{}\241\277",
     {{"!", f}, {"\"", f}, {"'", f},    {"(", f},   {")", f}, {"*", f},
      {"+", f}, {",", f},  {"-", f},    {".", f},   {"/", f}, {":", f},
      {";", f}, {"=", f},  {"?", f},    {"[", f},   {"]", f}, {"_", f},
      {"{", f}, {"}", f},  {"\241", f}, {"\277", f}}},
};

}  // namespace

TEST(EsaldiaTokenise, CutsSentences) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        Esaldia sentence(0, c.text);
        sentence.tokenizatu();
        EXPECT_EQ(pieces_of(sentence), c.tokens);
        for (const Tokena& token : sentence.tokenak) EXPECT_TRUE(token.analisiak.empty());
    }
}

TEST(EsaldiaTokenise, ConstructorRemovesLeadingBlanksAndTabs) {
    struct Row {
        std::string label, text, stored;
    };
    const Row rows[] = {
        {"nothing to remove", "etxea", "etxea"},
        {"blanks and tabs in any order", " \t \tetxea ", "etxea "},
        {"only white space", " \t ", ""},
        {"the empty text", "", ""},
        {"a line feed stops it", " \n etxea", "\n etxea"},
        {"a carriage return stops it", "\r etxea", "\r etxea"},
        {"a no-break space stops it", "\240etxea", "\240etxea"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        const Esaldia sentence(41, row.text);
        EXPECT_EQ(sentence.testua, row.stored);
        EXPECT_EQ(sentence.zenbakia, 41);
        EXPECT_TRUE(sentence.tokenak.empty());
    }
}

TEST(EsaldiaTokenise, MarksCase) {
    struct Row {
        std::string label, text;
        int flag;
    };
    const Row rows[] = {
        {"small letters", "etxe", 0},
        {"a capital in front", "Etxe", 1},
        {"kept: all capitals are 1 as well", "ETXE", 1},
        {"digits have no small letter", "12", 1},
        {"punctuation has none either", "!", 1},
        {"a digit in front of small letters", "1etxe", 0},
        {"kept: an accented capital in front of small letters", "\311zer", 0},
        {"accented capitals alone", "\311\311", 1},
        {"an accented small letter", "\351", 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        Esaldia sentence(0, row.text);
        sentence.tokenizatu();
        ASSERT_EQ(sentence.tokenak.size(), 1u);
        EXPECT_EQ(sentence.tokenak[0].maiuskula, row.flag);
    }
}

TEST(EsaldiaTokenise, AppendsOnASecondCall) {
    Esaldia sentence(0, "bat bi");
    sentence.tokenizatu();
    sentence.tokenizatu();
    const std::vector<Piece> twice = {{"bat", t}, {"bi", f}, {"bat", t}, {"bi", f}};
    EXPECT_EQ(pieces_of(sentence), twice);
}

TEST(EsaldiaTokenise, TakesABlankWithNoTokenBeforeIt) {
    Esaldia sentence(0, "");
    sentence.testua =
        "  bat";  // a host can write the field; the constructor would have cut it
    sentence.tokenizatu();
    const std::vector<Piece> one = {{"bat", f}};
    EXPECT_EQ(pieces_of(sentence), one);
}

TEST(EsaldiaTokenise, WordsOfAnyLengthStayWhole) {
    for (const std::size_t length : {111u, 112u, 113u, 5000u}) {
        SCOPED_TRACE(length);
        const std::string word(length, 'a');
        Esaldia sentence(0, word + " b");
        sentence.tokenizatu();
        const std::vector<Piece> two = {{word, t}, {"b", f}};
        EXPECT_EQ(pieces_of(sentence), two);
    }
}

TEST(EsaldiaTokenise, TwinReadsTheTableTheSame) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(PlainTokeniser(c.text).run(), c.tokens);
    }
}

TEST(EsaldiaTokenise, AgreesWithThePlainTwinOnRandomTexts) {
    const unsigned seed = 20261121;
    std::mt19937 random(seed);
    const std::string alphabet = "  ..,-'1290abAB\351\277%\t/:hw";
    const char* const starts[] = {"", "", "", "", "http", "www.", "ftp", "sftp"};
    std::size_t tokens = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text = starts[random() % std::size(starts)];
        for (std::size_t length = random() % 24; length > 0; --length) {
            text += alphabet[random() % alphabet.size()];
        }
        Esaldia sentence(0, text);
        sentence.tokenizatu();
        const std::vector<Piece> expected = PlainTokeniser(sentence.testua).run();
        tokens += expected.size();
        ASSERT_EQ(pieces_of(sentence), expected)
            << "text \"" << sentence.testua << "\", seed " << seed << ", round " << round;
        for (const Tokena& token : sentence.tokenak) {
            ASSERT_EQ(token.maiuskula, kalkulatuMaiuskulak(token.testua.c_str()) ? 1 : 0);
        }
    }
    EXPECT_GT(tokens, 50000u);
}
