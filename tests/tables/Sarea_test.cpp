// The named network and the inflection of a replacement.
#include "Sarea.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "support.h"

namespace {

using lemara::test::forms_of;
using lemara::test::network_from;
using lemara::test::paths;
using Strings = std::vector<std::string>;

struct KeyCase {
    std::string label, izena;
    int maila;
};

const KeyCase KEYS[] = {
    {"the main network", "eumorfo", 5},
    {"numbers", "zenbakiak", 7},
    {"numbers at the end of the key", "euzenbak", 7},
    {"numbers in the middle of the key", "a_zenbak_b", 7},
    {"the key is compared exactly", "Zenbakiak", 5},
    {"part of it is not enough", "zenba", 5},
    {"the empty key", "", 5},
};

// ur, etxe and \361abar with two endings each, arto with an opinion tag.
const std::string WORDS = paths({
    {"u", "r", "<IZE>:<>", "<ABS>:a"},
    {"u", "r", "<IZE>:<>", "<ERG>:ak"},
    {"etxe", "<IZE>:<>", "<ABS>:a"},
    {"etxe", "<IZE>:<>", "<ERG>:ak"},
    {"\361abar", "<IZE>:<>", "<ABS>:a"},
    {"arto", "<IZE>:<>", "<1Erd>:<>", "<ABS>:a"},
    {"hutsa:<>", "<IZE>:<>", "<ABS>:<>"},
});

struct ReplaceCase {
    std::string label, lemak, analisia;
    int maiuskula;
    Strings formak;
};

const ReplaceCase REPLACEMENTS[] = {
    {"one lemma", "etxe", "itxe<IZE><ABS>", 0, {"etxea"}},
    {"the other ending", "etxe", "itxe<IZE><ERG>", 0, {"etxeak"}},
    {"quality tags and groups are left out", "etxe", "itxe<IZE>[h=etxe]<0Dial><ABS>", 0,
     {"etxea"}},
    {"the marker is left out", "etxe", "itxe<><IZE><><ABS>", 0, {"etxea"}},
    {"two lemmas in their order", "etxe/ur", "x<IZE><ABS>", 0, {"etxea", "ura"}},
    {"two lemmas in the other order", "ur/etxe", "x<IZE><ABS>", 0, {"ura", "etxea"}},
    {"three lemmas", "ur/\361abar/etxe", "x<IZE><ABS>", 0, {"ura", "\361abara", "etxea"}},
    {"one of them unknown", "ezezagun/ur", "x<IZE><ABS>", 0, {"ura"}},
    {"the last of them unknown", "ur/ezezagun", "x<IZE><ABS>", 0, {"ura"}},
    {"all of them unknown", "ezezagun/besteak", "x<IZE><ABS>", 0, {}},
    {"the same twice", "ur/ur", "x<IZE><ABS>", 0, {"ura", "ura"}},
    {"an unknown lemma", "ezezagun", "x<IZE><ABS>", 0, {}},
    {"first letter", "etxe", "x<IZE><ABS>", 1, {"Etxea"}},
    {"all letters", "etxe", "x<IZE><ABS>", 2, {"ETXEA"}},
    {"all letters of all lemmas", "etxe/ur", "x<IZE><ABS>", 2, {"ETXEA", "URA"}},
    {"first letter of all lemmas", "etxe/ur", "x<IZE><ABS>", 1, {"Etxea", "Ura"}},
    {"an accented first letter", "\361abar", "x<IZE><ABS>", 1, {"\321abara"}},
    {"accented letters", "\361abar", "x<IZE><ABS>", 2, {"\321ABARA"}},
    {"another class does nothing", "etxe", "x<IZE><ABS>", 3, {"etxea"}},
    {"a negative class does nothing", "etxe", "x<IZE><ABS>", -1, {"etxea"}},
    {"kept: an analysis with an opinion tag gives no forms", "etxe", "x<IZE><1Erd><ABS>", 0,
     {}},
    {"kept: nor does a word whose own path has that tag", "arto", "x<IZE><1Erd><ABS>", 0, {}},
    {"without it the path is passable", "arto", "x<IZE><ABS>", 0, {"artoa"}},
    {"an empty form is no matter in class 0", "hutsa", "x<IZE><ABS>", 0, {""}},
    {"an empty form is no matter in class 2", "hutsa", "x<IZE><ABS>", 2, {""}},
};

}  // namespace

TEST(Sarea, HoldsWhatItIsGiven) {
    const Sarea empty;
    EXPECT_EQ(empty.izena, "");
    EXPECT_EQ(empty.fitxategia, "");
    EXPECT_EQ(empty.taula, nullptr);
    EXPECT_EQ(empty.maila, 0);
    for (const KeyCase& c : KEYS) {
        SCOPED_TRACE(c.label);
        auto* const table = new Taula;
        const Sarea network(c.izena, "dir/f.sare", table);
        EXPECT_EQ(network.izena, c.izena);
        EXPECT_EQ(network.fitxategia, "dir/f.sare");
        EXPECT_EQ(network.taula, table);
        EXPECT_EQ(network.maila, c.maila);
        EXPECT_EQ(table->hiztegia, c.izena) << "the table learns its network's name";
    }
    EXPECT_TRUE(std::has_virtual_destructor<Sarea>::value);
}

TEST(Sarea, ANullTableNeverAnswers) {
    const Sarea network("eumorfo", "f.sare", nullptr);
    EXPECT_EQ(network.maila, 5);
    EXPECT_TRUE(network.ordeztuForma("etxe/ur", Analisia("x<IZE>", "")).empty());
    EXPECT_TRUE(Sarea().ordeztuForma("etxe", Analisia("x<IZE>", "")).empty());
}

TEST(Sarea, InflectsAReplacement) {
    const auto network = network_from("eumorfo", WORDS);
    for (const ReplaceCase& c : REPLACEMENTS) {
        SCOPED_TRACE(c.label);
        Analisia analysis(c.analisia, "eumorfo");
        analysis.maiuskula = c.maiuskula;
        EXPECT_EQ(forms_of(network->ordeztuForma(c.lemak, analysis)), c.formak);
    }
}

TEST(Sarea, OnlyTheFormIsRecased) {
    const auto network = network_from("eumorfo", WORDS);
    Analisia analysis("itxe<IZE><ABS>", "beste");
    analysis.maiuskula = 2;
    const std::vector<Analisia> found = network->ordeztuForma("etxe", analysis);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].analisia, "etxe<IZE><ABS>");
    EXPECT_EQ(found[0].lema, "etxe");
    EXPECT_EQ(found[0].hiztegia, "eumorfo");
    EXPECT_EQ(found[0].maiuskula, 0);
    EXPECT_EQ(found[0].forma, "ETXEA");
}

TEST(Sarea, AnEmptyPieceIsSearchedToo) {
    // A table whose upper side may begin with the tags: only an empty lemma reaches it.
    const auto network =
        network_from("x", paths({{"<IZE>:b", "<ABS>:c"}, {"ur", "<IZE>:<>", "<ABS>:a"}}));
    Analisia analysis("x<IZE><ABS>", "");
    EXPECT_EQ(forms_of(network->ordeztuForma("ur", analysis)), (Strings{"ura"}));
    EXPECT_EQ(forms_of(network->ordeztuForma("ur/", analysis)), (Strings{"ura", "bc"}))
        << "kept: behind a last slash";
    EXPECT_EQ(forms_of(network->ordeztuForma("/ur", analysis)), (Strings{"bc", "ura"}));
    EXPECT_EQ(forms_of(network->ordeztuForma("ur//ur", analysis)),
              (Strings{"ura", "bc", "ura"}));
    EXPECT_EQ(forms_of(network->ordeztuForma("/", analysis)), (Strings{"bc", "bc"}));
    EXPECT_EQ(forms_of(network->ordeztuForma("", analysis)), (Strings{"bc"}));
}

TEST(Sarea, AnAnalysisWithoutTagsIsItsOwnTail) {
    // kept: without a tag the whole text is taken for the tail, behind the lemma.
    const auto network = network_from("x", paths({{"ur", "ura"}}));
    EXPECT_EQ(forms_of(network->ordeztuForma("ur", Analisia("ura", ""))), (Strings{"urura"}));
    EXPECT_TRUE(network->ordeztuForma("ur", Analisia("b", "")).empty());
}

TEST(Sarea, AnEmptyFormHasNoFirstLetter) {
    const auto network = network_from("eumorfo", WORDS);
    Analisia analysis("x<IZE><ABS>", "");
    analysis.maiuskula = 1;
    try {
        network->ordeztuForma("hutsa", analysis);
        FAIL() << "no error for an empty form";
    } catch (const std::out_of_range& error) {
        EXPECT_NE(std::string(error.what()).find("basic_string::substr"), std::string::npos)
            << error.what();
    }
}
