// The analysis walk: from a token to its analyses.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Taula.h"
#include "support.h"
#include "table_text.h"

namespace {

using lemara::test::analyses_of;
using lemara::test::data_file;
using lemara::test::KA;
using lemara::test::paths;
using lemara::test::table_from;
using lemara::test::word_path;
using Strings = std::vector<std::string>;

struct WalkCase {
    std::string label, table, tokena;
    Strings analisiak;
};

// One arc of several letters beside the single ones.
// (0)--a-->(1)--b-->((2)),  (0)--X:ab-->((2))
const char LONG_SYMBOL[] = "0\ta\t1\n0\tX:ab\t2\n1\tb\t2\nfinal: 2\n";

// The same with the long symbol first.
const char LONG_SYMBOL_FIRST[] = "0\tX:ab\t2\n0\ta\t1\n1\tb\t2\nfinal: 2\n";

// Names: Ana, ana, with a capital and a small letter above.
const std::string NAMES = paths({{"A:a", "n", "a", "<IZE>:<>", "<PIB>:<>"},
                                 word_path("ana", {"<IZE>", "<ARR>"}),
                                 word_path("ana", {"<IZE>", "<LIB>"})});

// A capital in a symbol of several letters: not seen by the early cut, but at the end.
const std::string LONG_NAME = paths({{"An:an", "a", "<IZE>:<>"}});

// Epsilon on the surface in front, in the middle and behind.
const std::string EPSILONS = paths({{"<A>:<>", "a", "<B>:<>", "b", "<C>:<>"}});

const std::string MARKERS = paths({{"a", "<>:<>", "b", "<IZE>:<>"}, {"a", "<>:b", "<X>:<>"}});

const std::string SYMBOLS = paths({word_path("km", {"<SNB>"}), {"K:k", "G:g", "<SIG>:<>"}});

const std::string HAULAK = paths({word_path("bat egin", {"<ADI>"}),
                                  word_path("bat", {"<IZE>"}),
                                  word_path("bat", {"<IZE>", "<PSP>"})});

// Deviant forms: "itxe" with the better form "etxe", and others.
const std::string DEVIANT = paths({
    {"i", "t", "x", "e", "<IZE>:<>", "[h=etxe]:<>", "<X>:<>"},
    {"e:a", "t", "x", "e", "<IZE>:<>", "[h=atxe]:<>", "<X>:<>"},
    {"e:o", "t", "x", "e", "<IZE>:<>", "[e=otxe]:<>", "<X>:<>"},
    {"e:u", "t", "x", "e", "<IZE>:<>", "[e=Utxe]:<>", "<X>:<>"},
    {"z", "a", "a:<>", "<IZE>:<>", "[h=za]:<>", "<X>:<>"},
    {"y", "a:", "<IZE>:<>", "[h=yab]:<>", "<X>:<>", ":b"},
});

const WalkCase WALKS[] = {
    {"a word", KA, "ka", {"ka<IZE>"}},
    {"a word in capitals", KA, "KA", {"ka<IZE>"}},
    {"a dead end", KA, "kb", {}},
    {"input left over", KA, "kax", {}},
    {"input too short", KA, "k", {}},
    {"an empty token", KA, "", {}},
    {"an empty table", "", "ka", {}},
    {"an empty table, an empty token", "", "", {}},
    {"an empty token and a final start", "final: 0\n", "", {""}},
    {"an empty token takes epsilon paths alone", "0\t<A>:<>\t1\n0\tb\t1\nfinal: 1\n", "",
     {"<A>"}},
    {"the order of the arcs is the order of the results",
     "0\tB:a\t1\n0\tc:a\t1\n0\tb:a\t1\nfinal: 1\n", "a", {"c", "b"}},
    {"the end of a word is an arc among the others",
     "0\ta\t1\n1\t<A>:<>\t2\nfinal: 1\n1\t<B>:<>\t2\nfinal: 2\n", "a", {"a<A>", "a", "a<B>"}},
    {"equal analyses are not removed", "0\ta\t1\n0\ta\t1\nfinal: 1\n", "a", {"a", "a"}},
    {"two ends give two results", "0\ta\t1\nfinal: 1\nfinal: 1\n", "a", {"a", "a"}},
    {"a word that begins a longer one", "0\ta\t1\nfinal: 1\n1\tb\t2\nfinal: 2\n", "ab",
     {"ab"}},
    {"an end before the token is used up yields nothing, the search goes on",
     "0\ta\t1\nfinal: 1\n0\tx:ab\t2\nfinal: 2\n", "ab", {"x"}},
    {"a symbol of several letters matches as a whole", LONG_SYMBOL, "ab", {"ab"}},
    {"a symbol of several letters is not matched in part", LONG_SYMBOL, "a", {}},
    {"upper symbols alone carry case", LONG_SYMBOL, "AB", {"ab", "X"}},
    {"a long symbol before a short one", LONG_SYMBOL_FIRST, "Ab", {"X", "ab"}},
    {"a symbol longer than the rest of the token", "0\ta:abc\t1\nfinal: 1\n", "ab", {}},
    {"epsilon below is taken without input", EPSILONS, "ab", {"<A>a<B>b<C>"}},
    {"epsilon above writes nothing", "0\t:a\t1\n1\tb:\t2\nfinal: 2\n", "a", {"b"}},
    {"kept: the marker is written as it is", MARKERS, "ab", {"a<>b<IZE>", "a<><X>"}},
    {"kept: the marker below is matched as two characters", "0\t<>\t1\nfinal: 1\n", "<>",
     {"<>"}},
    {"kept: the lower side must be in lower case", "0\ta:A\t1\nfinal: 1\n", "A", {}},
    {"the upper side keeps its case", "0\tEtxe:etxe\t1\nfinal: 1\n", "Etxe", {"Etxe"}},
    {"Latin-1 capitals are lowered", "0\t\361\t1\nfinal: 1\n", "\321", {"\361"}},
    {"byte 222 is not lowered", "0\t\376\t1\nfinal: 1\n", "\336", {}},
    {"kept: the signs 215 and 247 are folded", "0\t\367\t1\nfinal: 1\n", "\327", {"\367"}},
    {"a blank is a byte like any other", "0\ta b\t1\nfinal: 1\n", "a b", {"a b"}},
    {"a target that ends a word with symbols", "0\ta:b\t-1\n", "b", {"a"}},
    {"a far negative target ends a word too", "0\ta:b\t-7\n", "b", {"a"}},
    {"a target that doesn't exist", "0\ta\t5\n", "a", {}},

    {"a lower-case token has no analysis in capitals", NAMES, "ana", {"ana<IZE><ARR>"}},
    {"a token with a capital has both", NAMES, "Ana",
     {"Ana<IZE><PIB>", "ana<IZE><ARR>", "ana<IZE><LIB>"}},
    {"a token in capitals has both", NAMES, "ANA",
     {"Ana<IZE><PIB>", "ana<IZE><ARR>", "ana<IZE><LIB>"}},
    {"a capital in a long symbol, a small token", LONG_NAME, "ana", {}},
    {"a capital in a long symbol, a capital token", LONG_NAME, "Ana", {"Ana<IZE>"}},
    {"a capital behind an epsilon in front", "0\t:\t1\n1\tA:a\t2\nfinal: 2\n", "a", {}},
    {"a capital behind a first letter is free", "0\tx\t1\n1\tA:a\t2\nfinal: 2\n", "xa",
     {"xA"}},
    {"kept: an accented capital is no capital", "0\t\321:\361\t1\nfinal: 1\n", "\361",
     {"\321"}},
    {"a symbol as written", SYMBOLS, "km", {"km<SNB>"}},
    {"a symbol in another case", SYMBOLS, "KM", {}},
    {"an acronym as written", SYMBOLS, "KG", {"KG<SIG>"}},
    {"an acronym in another case", SYMBOLS, "Kg", {}},
    {"an acronym in lower case", SYMBOLS, "kg", {}},
    {"a false multiword is refused", HAULAK, "bat egin", {}},
    {"bat is refused with <PSP> alone", HAULAK, "bat", {"bat<IZE>"}},

    {"a deviant form", DEVIANT, "itxe", {"itxe<IZE>[h=etxe]<X>"}},
    {"a form that is its own better form vanishes", DEVIANT, "atxe", {}},
    {"the test is case-sensitive", DEVIANT, "Atxe", {"etxe<IZE>[h=atxe]<X>"}},
    {"a form that is its own form to use vanishes", DEVIANT, "otxe", {}},
    {"the form to use against the token as typed", DEVIANT, "utxe",
     {"etxe<IZE>[e=Utxe]<X>"}},
    {"the token as typed has the capital", DEVIANT, "Utxe", {}},
    {"a token shorter than the lemma is compared whole", DEVIANT, "za", {}},
    {"kept: only as many bytes as the lemma has are compared", DEVIANT, "yb",
     {"ya<IZE>[h=yab]<X>"}},
};

struct ClassCase {
    std::string label, tokena;
    int maiuskula;
};

// The table accepts any of these tokens, lowered.
const ClassCase CLASSES[] = {
    {"small letters", "etxea", 0},
    {"a capital in front", "Etxea", 1},
    {"capitals", "ETXEA", 2},
    {"kept: a capital further on", "eTXEA", 0},
    {"kept: a digit counts as capital", "1a", 1},
    {"kept: a digit alone is all capitals", "1", 2},
    {"kept: a sign in front counts as capital", "-a", 1},
    {"a capital alone", "A", 2},
    {"a small letter alone", "a", 0},
    {"an accented small letter in front", "\361a", 0},
    {"an accented capital in front", "\321a", 1},
    {"accented capitals", "\321\311", 2},
    {"kept: byte 255 has no capital", "\377", 2},
    {"kept: the division sign has one", "\367", 0},
    {"kept: the empty token", "", 2},
};

}  // namespace

TEST(Analysis, WalksTables) {
    for (const WalkCase& c : WALKS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(analyses_of(table_from(c.table)->analizatuTokena(c.tokena)), c.analisiak);
    }
}

TEST(Analysis, WalksTheTableFromTheFile) {
    const Taula table(data_file("ka.sare"));
    const std::vector<Analisia> found = table.analizatuTokena("KA");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].analisia, "ka<IZE>");
    EXPECT_EQ(found[0].lema, "ka");
    EXPECT_EQ(found[0].twol, "+Ize");
    EXPECT_EQ(found[0].etiketa, " IZE");
    EXPECT_EQ(found[0].maiuskula, 2);
    EXPECT_EQ(found[0].forma, "");
    EXPECT_TRUE(table.analizatuTokena("kb").empty());
    EXPECT_TRUE(table.analizatuTokena("kax").empty());
}

TEST(Analysis, ATableGivesItsName) {
    const auto table = table_from(KA, "eumorfo");
    const std::vector<Analisia> found = table->analizatuTokena("ka");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].hiztegia, "eumorfo");
}

TEST(Analysis, CaseClass) {
    for (const ClassCase& c : CLASSES) {
        SCOPED_TRACE(c.label);
        const std::string symbol = tolowercase(c.tokena);
        const auto table = table_from("0\tx:" + symbol + "\t1\nfinal: 1\n");
        const std::vector<Analisia> found = table->analizatuTokena(c.tokena);
        ASSERT_EQ(found.size(), 1u);
        EXPECT_EQ(found[0].maiuskula, c.maiuskula);
    }
}

TEST(Analysis, ReplacementWithAnEmptyLemma) {
    // No bytes of the token are compared, and the empty text equals nothing.
    const auto table = table_from(paths({{"<IZE>:a", "[h=a]:<>", "<X>:<>"}}));
    EXPECT_EQ(table->analizatuTokena("a").size(), 1u);
    const auto empty = table_from(paths({{"a:<>", "<IZE>:<>", "[h=]:<>", "<X>:<>"}}));
    EXPECT_EQ(empty->analizatuTokena("").size(), 1u);
}

TEST(Analysis, ReplacementComparesTheStartOfTheToken) {
    // etxe with the better form etxe, and the ending -ak: the token begins with it.
    const auto table =
        table_from(paths({{"etxe", "<IZE>:<>", "[h=etxe]:<>", "<X>:ak"},
                          {"etxe", "<IZE>:<>", "[h=etx]:<>", "<X>:ak"}}));
    EXPECT_EQ(analyses_of(table->analizatuTokena("etxeak")), (Strings{"etxe<IZE>[h=etx]<X>"}));
    EXPECT_EQ(table->analizatuTokena("Etxeak").size(), 2u);
}

TEST(Analysis, LongTokens) {
    // (0)--a-->((0))
    const auto table = table_from("0\ta\t0\nfinal: 0\n");
    struct Case {
        std::string label;
        std::size_t length, walked;
    };
    const Case cases[] = {
        {"998 bytes", 998, 998},
        {"999 bytes", 999, 999},
        {"1,000 bytes: the last is not walked", 1000, 999},
        {"1,500 bytes", 1500, 999},
        {"100,000 bytes", 100000, 999},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const std::vector<Analisia> found = table->analizatuTokena(std::string(c.length, 'a'));
        ASSERT_EQ(found.size(), 1u);
        EXPECT_EQ(found[0].analisia, std::string(c.walked, 'a'));
        EXPECT_EQ(found[0].maiuskula, 0);
    }
    {
        SCOPED_TRACE("the case class sees the whole token");
        std::vector<Analisia> found =
            table->analizatuTokena(std::string(1400, 'A') + std::string(100, 'b'));
        ASSERT_EQ(found.size(), 1u);
        EXPECT_EQ(found[0].maiuskula, 1);
        found = table->analizatuTokena(std::string(1500, 'A'));
        ASSERT_EQ(found.size(), 1u);
        EXPECT_EQ(found[0].maiuskula, 2);
    }
    {
        SCOPED_TRACE("the replacement filter sees the whole token");
        // A lemma of 1,100 bytes whose better form is the first 1,100 bytes of the token.
        const std::string better = std::string(999, 'a') + std::string(101, 'z');
        Taula wide;
        wide.addEgoera(new Egoera);
        wide.addEgoera(new Egoera);
        wide.addZubiaTaulan(0, false, new Zubia(0, "a", "a"));
        wide.addZubiaTaulan(
            0, false, new Zubia(1, std::string(101, 'y') + "<X>[h=" + better + "]<Y>", ""));
        wide.addZubiaTaulan(1, true, new Zubia(-1, "", ""));
        EXPECT_EQ(wide.analizatuTokena(std::string(999, 'a') + std::string(501, 'b')).size(),
                  1u);
        EXPECT_EQ(wide.analizatuTokena(better + "bbb").size(), 0u);
    }
}

TEST(Analysis, ATokenEndsAtANul) {
    const auto table = table_from(KA);
    const std::vector<Analisia> found = table->analizatuTokena(std::string("ka\0x", 4));
    EXPECT_EQ(analyses_of(found), (Strings{"ka<IZE>"}));
}

TEST(Analysis, CyclesOfEmptySymbolsEnd) {
    struct Case {
        std::string label, table, tokena;
        Strings analisiak;
    };
    const Case cases[] = {
        {"a state that leads to itself", "0\t<A>:<>\t0\n0\ta\t1\nfinal: 1\n", "a", {"a"}},
        {"two states in a circle", "0\t<A>:<>\t1\n1\t<B>:<>\t0\n1\ta\t2\nfinal: 2\n", "a",
         {"<A>a"}},
        {"a circle is entered anew behind a letter", "final: 0\n0\t<A>:<>\t1\n1\ta\t0\n", "aa",
         {"<A>a<A>a"}},
        {"a circle at the end", "0\ta\t1\nfinal: 1\n1\t<A>:<>\t1\n", "a", {"a"}},
        {"a state may be entered on two paths", "0\t<A>:<>\t1\n0\t<B>:<>\t1\n1\ta\t2\nfinal: 2\n",
         "a", {"<A>a", "<B>a"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(analyses_of(table_from(c.table)->analizatuTokena(c.tokena)), c.analisiak);
    }
}

TEST(Analysis, TheStepCanBeCalled) {
    const auto table = table_from(KA);
    std::vector<std::string*> found;
    char output[64] = "x";
    EXPECT_EQ(&table->birbilaTokena("ka", found, 1, "a", output), &found);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(*found[0], "xa<IZE>") << "behind the text that is there";
    EXPECT_STREQ(output, "x") << "the output is as it was";
    table->birbilaTokena("ka", found, -1, "", output);
    ASSERT_EQ(found.size(), 2u) << "a negative state ends a path";
    EXPECT_EQ(*found[1], "x");
    table->birbilaTokena("ka", found, -1, "left over", output);
    table->birbilaTokena("ka", found, 99, "a", output);
    ASSERT_EQ(found.size(), 2u);
    char capital[64] = "A";
    table->birbilaTokena("ka", found, 1, "a", capital);
    ASSERT_EQ(found.size(), 2u) << "a capital in front of a token in lower case";
    table->birbilaTokena("KA", found, 1, "a", capital);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(*found[2], "Aa<IZE>");
    for (std::string* text : found) delete text;
}

TEST(Analysis, ManyThreadsReadOneTable) {
    const Taula table(data_file("etxe.sare"));
    const Strings expected = {"etxe<IZE><ARR><ABS>"};
    std::vector<int> wrong(4, 0);
    lemara::test::in_threads(4, [&](unsigned t) {
        for (int i = 0; i < 500; ++i) {
            if (analyses_of(table.analizatuTokena("etxea")) != expected) ++wrong[t];
            if (table.sortuFormak("etxe", "", false, false).size() != 3) ++wrong[t];
        }
    });
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}
