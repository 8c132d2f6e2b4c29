// Where a text is cut into sentences, and the road from text to analysed sentences.
#include "Paragrafoa.h"

#include <random>
#include <set>

#include "support.h"

namespace {

using lemara::test::network_from;
using lemara::test::paths;
using lemara::test::table_from;
using lemara::test::word_path;

/// Abbreviations, dot included: "etxe.", "a.", "z.b." and "Dr." (which needs its
/// capital).
std::unique_ptr<Taula> abbreviations() {
    return table_from(paths({word_path("etxe.", {"<LAB>"}),
                             word_path("a.", {"<LAB>"}),
                             word_path("z.b.", {"<LAB>"}),
                             {"D:d", "r", ".", "<IZB>:<>"}}));
}

struct Case {
    std::string label, text;
    std::vector<std::string> sentences;
};

const Case CASES[] = {
    {"an empty text has one empty sentence", "", {""}},
    {"a text with no mark is one sentence", "bat bi hiru", {"bat bi hiru"}},
    {"a final blank makes a last, empty sentence", "Bai! Ez! ", {"Bai! ", "Ez! ", ""}},
    {"a colon ends a sentence whatever follows", "Bai: ez", {"Bai: ", "ez"}},
    {"a question mark too", "Bai? ez", {"Bai? ", "ez"}},
    {"an exclamation mark too", "Bai! ez", {"Bai! ", "ez"}},
    {"only the last of several marks has a blank", "Bai?! Ez", {"Bai?! ", "Ez"}},
    {"a mark at the very end needs no cut", "Bai!", {"Bai!"}},
    {"a dot at the very end needs no cut", "Bai.", {"Bai."}},
    {"a line feed behind a mark ends nothing", "Bai!\nEz. \nEz", {"Bai!\nEz. ", "\nEz"}},
    {"a tab behind a mark ends nothing", "Bai.\tEz", {"Bai.\tEz"}},
    {"a small letter behind the dot", "hitza. hura", {"hitza. hura"}},
    {"a capital behind the dot", "hitza. Hura", {"hitza. ", "Hura"}},
    {"a word that the table knows with its dot", "etxe. Hura", {"etxe. Hura"}},
    {"the table is asked with the word as typed, so in any case",
     "ETXE. Hura",
     {"ETXE. Hura"}},
    {"the word goes back to the nearest blank", "bat etxe. Hura", {"bat etxe. Hura"}},
    {"a longer word is another word", "betxe. Hura", {"betxe. ", "Hura"}},
    {"an abbreviation with a capital of its own", "Dr. Hura", {"Dr. Hura"}},
    {"the same in small letters is none", "dr. Hura", {"dr. ", "Hura"}},
    {"kept: of a word with an inner dot only the front is asked", "a.b. Xx", {"a.b. Xx"}},
    {"kept: so an abbreviation with an inner dot is never known",
     "z.b. Xx",
     {"z.b. ", "Xx"}},
    {"a sign behind the dot is not lower case", "hitza. (Hura)", {"hitza. ", "(Hura)"}},
    {"a digit behind the dot is not lower case", "hitza. 12", {"hitza. ", "12"}},
    {"kept: an accented small letter counts as not lower case",
     "hitza. \351zer",
     {"hitza. ", "\351zer"}},
    {"a quote is not lower case", "hitza. \"hura\"", {"hitza. ", "\"hura\""}},
    {"two blanks: the second one is not lower case", "hitza.  hura", {"hitza. ", "hura"}},
    {"the end of the text is not lower case", "hitza. ", {"hitza. ", ""}},
    {"an ordinal does not end a sentence", "1998. Urtean", {"1998. Urtean"}},
    {"an ordinal before a quotation does", "1998. \"Urtean\"", {"1998. ", "\"Urtean\""}},
    {"a quotation in small letters does not", "1998. \"urtean\"", {"1998. \"urtean\""}},
    {"kept: one that begins with an accented small letter does",
     "1998. \"\351zer\"",
     {"1998. ", "\"\351zer\""}},
    {"an ordinal at the end of the text", "1998. ", {"1998. "}},
    {"an ordinal and a lone quote", "1998. \"", {"1998. ", "\""}},
    {"a Roman numeral is an ordinal", "XX. Mendea", {"XX. Mendea"}},
    {"a Roman numeral before a quotation", "XX. \"Mendea\"", {"XX. ", "\"Mendea\""}},
    {"a small numeral is none", "xx. Mendea", {"xx. ", "Mendea"}},
    {"kept: any word that ends in a numeral's letter counts", "ABC. Hura", {"ABC. Hura"}},
    {"three dots end a sentence by their last", "hara... Hura", {"hara... ", "Hura"}},
    {"kept: three dots behind an abbreviation do not", "etxe... Hura", {"etxe... Hura"}},
    {"a dot in front of everything has no byte before it", ". Hura", {". ", "Hura"}},
    {"the same before a small letter", ". hura", {". hura"}},
    {"two dots with blanks", ". . X", {". ", ". ", "X"}},
    {"kept: behind a blank in front of the text the word is empty",
     " etxe. Hura",
     {"etxe. ", "Hura"}},
    {"a blank and a dot in front", " . Hura", {". ", "Hura"}},
    {"leading white space of each sentence goes", "  Bai!  \tEz", {"Bai! ", "Ez"}},
    {"a blank alone", " ", {""}},
    {"marks follow each other", "! ? : . ", {"! ", "? ", ": ", ". ", ""}},
    {"the text ends at a NUL", std::string("bat! \0bi! ", 10), {"bat! ", ""}},
};

std::vector<std::string> texts_of(const std::vector<Esaldia>& sentences) {
    std::vector<std::string> texts;
    for (const Esaldia& sentence : sentences) texts.push_back(sentence.testua);
    return texts;
}

std::vector<std::string> split(const std::string& text, const Taula* table) {
    Paragrafoa paragraph(1, text);
    paragraph.esaldikatu(table);
    return texts_of(paragraph.esaldiak);
}

}  // namespace

TEST(Paragrafoa, ConstructorDoesNoWork) {
    const Paragrafoa paragraph(-12, " Bai! Ez. ");
    EXPECT_EQ(paragraph.zenbakia, -12);
    EXPECT_EQ(paragraph.testua, " Bai! Ez. ");
    EXPECT_TRUE(paragraph.esaldiak.empty());
}

TEST(Paragrafoa, SplitsIntoSentences) {
    const std::unique_ptr<Taula> table = abbreviations();
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        Paragrafoa paragraph(3, c.text);
        paragraph.esaldikatu(table.get());
        EXPECT_EQ(texts_of(paragraph.esaldiak), c.sentences);
        int number = -1;  // sentences are counted from -1
        for (const Esaldia& sentence : paragraph.esaldiak) {
            EXPECT_EQ(sentence.zenbakia, number++);
            EXPECT_TRUE(sentence.tokenak.empty());
        }
        EXPECT_EQ(paragraph.testua, c.text);
        EXPECT_EQ(paragraph.zenbakia, 3);
    }
}

// What stands in front of the dot, behind the blank and behind that, in all combinations:
//   front digit or numeral: ends if a quote follows and then no small letter
//   any other front:        ends unless a small letter follows
TEST(Paragrafoa, DotLooksAtWhatStandsAroundIt) {
    const std::unique_ptr<Taula> table = abbreviations();
    const std::string fronts = "0123456789CDILMVXABEaz\351)";
    const std::string seconds = "azAZ1(\"\351\311";
    const std::string thirds = "azA9\"\351 ";
    for (const char front : fronts) {
        for (const char second : seconds) {
            for (const char third : thirds) {
                const std::string text =
                    std::string("q") + front + ". " + second + third + "q";
                SCOPED_TRACE(text);
                const bool numeral =
                    std::string("0123456789CDILMVX").find(front) != std::string::npos;
                const bool small_second = second == 'a' || second == 'z';
                const bool small_third = third == 'a' || third == 'z';
                const bool ends = numeral ? second == '"' && !small_third : !small_second;
                EXPECT_EQ(split(text, table.get()).size(), ends ? 2u : 1u);
            }
        }
    }
}

TEST(Paragrafoa, ATableMayKnowTheDotAlone) {
    const auto table = table_from(paths({word_path(".", {"<PUNT>"})}));
    EXPECT_EQ(split(". Hura", table.get()), std::vector<std::string>{". Hura"});
}

TEST(Paragrafoa, AnEmptyWordIsAskedToo) {
    // A table that accepts the empty token: (0)--<X>:<>-->((1))
    const auto table = table_from(paths({{"<X>:<>"}}));
    EXPECT_EQ(split(" . Hura", table.get()), std::vector<std::string>{". Hura"});
}

TEST(Paragrafoa, ANullTableKnowsNoAbbreviation) {
    const std::vector<std::string> two = {"etxe. ", "Hura"};
    EXPECT_EQ(split("etxe. Hura", nullptr), two);
    EXPECT_EQ(split("etxe. hura", nullptr).size(), 1u);
}

TEST(Paragrafoa, SplittingAppends) {
    Paragrafoa paragraph(1, "Bai! Ez");
    paragraph.esaldikatu(nullptr);
    paragraph.esaldikatu(nullptr);
    const std::vector<std::string> twice = {"Bai! ", "Ez", "Bai! ", "Ez"};
    EXPECT_EQ(texts_of(paragraph.esaldiak), twice);
    EXPECT_EQ(paragraph.esaldiak[2].zenbakia, -1);
    EXPECT_EQ(paragraph.esaldiak[3].zenbakia, 0);
}

TEST(Paragrafoa, TextsOfAnyLengthAreReadWhole) {
    const std::unique_ptr<Taula> table = abbreviations();
    std::string text;
    for (int i = 0; i < 4000; ++i) text += "Bai. ";
    EXPECT_EQ(split(text, table.get()).size(), 4001u);
    for (const std::size_t length : {9998u, 9999u, 10000u, 10001u, 30000u}) {
        const std::string word(length, 'e');
        EXPECT_EQ(split(word, table.get()), std::vector<std::string>{word});
    }
    for (const std::size_t length : {110u, 111u, 112u, 113u, 20000u}) {
        const std::string word(length, 'e');
        const std::vector<std::string> two = {word + ". ", "Hura"};
        EXPECT_EQ(split(word + ". Hura", table.get()), two);
    }
}

TEST(Paragrafoa, AnalysesFromEndToEnd) {
    // eumorfo accepts bat and etxe.; each of its words is one path
    const auto main = network_from(
        "eumorfo", paths({word_path("bat", {"<DET>"}), word_path("etxe.", {"<LAB>"})}));
    const std::map<std::string, Sarea*> networks = {{"eumorfo", main.get()}};
    const HiztegiPertsonala dictionary;
    Paragrafoa paragraph(9, "bat! etxe. Zzz");
    const std::vector<Esaldia> copy = paragraph.analizatu(networks, dictionary, true);
    const std::vector<std::string> two = {"bat! ", "etxe. Zzz"};
    EXPECT_EQ(texts_of(copy), two);
    EXPECT_EQ(texts_of(paragraph.esaldiak), two);
    ASSERT_EQ(copy[0].tokenak.size(), 2u);
    EXPECT_EQ(copy[0].tokenak[0].analisiak.at(0).analisia, "bat<DET>");
    EXPECT_EQ(copy[0].tokenak[1].analisiak.at(0).etiketa, " EZZG");
    ASSERT_EQ(copy[1].tokenak.size(), 2u)
        << "the abbreviation is one token of two pieces";
    EXPECT_EQ(copy[1].tokenak[0].testua, "etxe.");
    EXPECT_TRUE(copy[1].tokenak[0].hutsunea);
    EXPECT_EQ(copy[1].tokenak[0].analisiak.at(0).analisia, "etxe.<LAB>");
    EXPECT_EQ(copy[1].tokenak[1].testua, "Zzz");
    EXPECT_EQ(paragraph.esaldiak[1].tokenak.size(), 2u);
}

TEST(Paragrafoa, WithoutTheMainNetworkNothingIsSplit) {
    const auto other = network_from("besteak", paths({word_path("bat", {"<DET>"})}));
    const std::map<std::string, Sarea*> networks = {{"besteak", other.get()}};
    const HiztegiPertsonala dictionary;
    Paragrafoa paragraph(1, "bat! bi");
    EXPECT_TRUE(paragraph.analizatu(networks, dictionary, true).empty());
    EXPECT_TRUE(paragraph.esaldiak.empty());
    EXPECT_TRUE(paragraph.analizatu({}, dictionary, false).empty());
    // A slot with no network is no network.
    EXPECT_TRUE(paragraph.analizatu({{"eumorfo", nullptr}}, dictionary, true).empty());
}

namespace {

/// The twin: marks first, cuts then, one kind of mark after the other. `known` holds the
/// abbreviations in small letters.
std::vector<std::string> plain_split(const std::string& text,
                                     const std::set<std::string>& known) {
    const auto at = [&](std::size_t i) { return i < text.size() ? text[i] : '\0'; };
    const auto is_in = [](char c, const std::string& list) {
        return c != '\0' && list.find(c) != std::string::npos;
    };
    const std::string small = "abcdefghijklmnopqrstuvwxyz";
    std::set<std::size_t> marks;
    for (const std::string mark : {"! ", "? ", ": "}) {
        for (auto p = text.find(mark); p != std::string::npos;
             p = text.find(mark, p + 1)) {
            marks.insert(p + 1);
        }
    }
    for (auto p = text.find(". "); p != std::string::npos; p = text.find(". ", p + 1)) {
        const std::size_t blank = text.rfind(' ', p);
        std::string word;
        if (blank != 0) {  // behind a blank in front of the text the word is empty
            const std::size_t start = blank == std::string::npos ? 0 : blank + 1;
            word = text.substr(start, text.find('.', start) + 1 - start);
        }
        if (known.count(tolowercase(word)) != 0) continue;
        const bool ordinal = p > 0 && is_in(at(p - 1), "0123456789CDILMVX");
        const bool ends = ordinal ? at(p + 2) == '"' && !is_in(at(p + 3), small)
                                  : !is_in(at(p + 2), small);
        if (ends) marks.insert(p + 1);
    }
    std::vector<std::string> sentences = {""};
    for (std::size_t i = 0; i < text.size(); ++i) {
        sentences.back() += text[i];
        if (marks.count(i) != 0) sentences.emplace_back();
    }
    for (std::string& sentence : sentences) {
        while (!sentence.empty() && (sentence[0] == ' ' || sentence[0] == '\t')) {
            sentence.erase(0, 1);
        }
    }
    return sentences;
}

}  // namespace

TEST(Paragrafoa, AgreesWithAPlainTwinOnRandomTexts) {
    const std::set<std::string> known = {"a.", "ab.", "b", ".", "x."};
    std::vector<std::vector<std::string>> entries;
    for (const std::string& word : known) entries.push_back(word_path(word, {"<LAB>"}));
    const auto table = table_from(paths(entries));
    const unsigned seed = 20261122;
    std::mt19937 random(seed);
    const std::string alphabet = "      .....!?:\"aabAXIz12\351\t";
    std::size_t cut = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (std::size_t length = random() % 24; length > 0; --length) {
            text += alphabet[random() % alphabet.size()];
        }
        const std::vector<std::string> expected = plain_split(text, known);
        cut += expected.size() - 1;
        ASSERT_EQ(split(text, table.get()), expected)
            << "text \"" << text << "\", seed " << seed << ", round " << round;
    }
    EXPECT_GT(cut, 8000u);
}

TEST(Paragrafoa, TwinReadsTheTableTheSame) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        const bool capital_entry = c.text.find("Dr.") != std::string::npos;
        if (capital_entry || c.text.find('\0') != std::string::npos) continue;
        EXPECT_EQ(plain_split(c.text, {"etxe.", "a.", "z.b."}), c.sentences);
    }
}
