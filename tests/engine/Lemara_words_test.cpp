// What the engine answers for one word: valid or not, entries by their start, forms.
#include "Lemara.h"
#include "small_engine.h"

namespace {

using lemara::test::analyses_of;
using lemara::test::dictionary_line;
using lemara::test::forms_of;
using lemara::test::hp_table;
using lemara::test::Lexicon;
using lemara::test::paths;
using lemara::test::World;

using Strings = std::vector<std::string>;

/// Plain words, inflected nouns, multi-word entries, and words with marks.
std::string main_table() {
    return Lexicon()
        .word("etxe", {"<IZE>", "<ARR>"})
        .form("etxe", "etxeak", {"<IZE>", "<ARR>", "<ABS>"})
        .form("etxe", "etxera", {"<IZE>", "<ARR>", "<ALA>"})
        .word("a", {"<DET>"})
        .word(".", {"<PUNT>"})
        .word("bi", {"<DET>"})
        .word("bi", {"<IZE>"})
        .form("bi", "biak", {"<IZE>", "<ABS>"})
        .word("matea", {"<MAT>"})
        .word("hamat", {"<XMATX>"})
        .word("erdia", {"<MAT>"})
        .word("erdia", {"<IZE>"})
        .word("zer moduz", {"<ADB>"})
        .word("Ama Lurra", {"<IZB>"})
        .word("\321abar Lurra", {"<IZB>"})
        .word("txar bat", {"<IZE>", "[e=on bat]"})
        .word("eze hori", {"<EZZG>"})
        .path({"erdi e:erdi e", "z", "<IZE>:<>", "<ABS>:an"})
        .word("Donostia", {"<LIB>"})
        .text();
}

World& world() {
    static World shared;
    if (!shared.engine) {
        shared.table("eumorfo.sare", main_table())
            .table("hp.sare", hp_table())
            .table("besteak.sare",
                   Lexicon().word("bi", {"<LAG>"}).word("ogi", {"<IZE>"}).text())
            .dictionary(dictionary_line("zubi", "<ARR>") +
                        dictionary_line("gu", "<ARR>") +
                        dictionary_line("hari luze", "<ARR>"))
            .build();
    }
    return shared;
}

const Lemara& engine() { return *world().engine; }

}  // namespace

TEST(LemaraWords, JudgesWords) {
    struct Case {
        std::string label, word;
        bool valid, deep;
    };
    const Case cases[] = {
        {"a known word", "etxe", true, true},
        {"an unknown word", "zzz", false, false},
        {"in capitals", "ETXE", true, true},
        {"a word of another network", "ogi", true, true},
        {"a name needs its capital", "donostia", false, false},
        {"and has it here", "Donostia", true, true},
        {"an analysis with MAT does not count", "matea", false, false},
        {"kept: MAT is sought as letters, in any tag", "hamat", false, false},
        {"one analysis without it is enough", "erdia", true, true},
        {"a word of the dictionary", "zubi", true, true},
        {"its forms too", "zubiak", true, true},
        {"with an ending that its class lacks", "zubiek", false, false},
        {"a paradigm of the network hp is no word", "<hp1>ak", false, false},
        {"the empty word", "", false, false},
        {"a text with a hyphen that nobody knows", "etxe-a", false, false},
        {"a blank makes a text", "etxe bi", true, true},
        {"with one unknown token", "etxe zzz", false, false},
        {"kept: MAT is a good analysis in a text", "matea bi", true, true},
        {"the dictionary counts in a text", "zubiak bi", true, true},
        {"an entry of two words in the dictionary", "hari luzeak", true, true},
        {"a lone hyphen that nobody knows", "-", false, false},
        {"a token without analyses is not unknown", "etxe :", true, true},
        {"kept: a lone blank has no token, so none is unknown", " ", true, true},
        {"only the first sentence is judged", "etxe. Zzz qqq", true, true},
        {"and it is judged", "zzz. Etxe", false, false},
        {"a text is not searched for multi-word entries", "zer ", false, false},
        {"the start of a multi-word entry", "zer", false, true},
        {"with a capital it is searched in small letters first", "Zer", false, true},
        {"in capitals too", "ZER", false, true},
        {"the start of a capitalised entry", "Ama", false, true},
        {"in small letters it is none", "ama", false, false},
        {"all in capitals: only the first letter is put back", "AMA", false, true},
        {"kept: an accented capital is searched in small letters only", "\321abar", false,
         false},
        {"an entry to be replaced does not count", "txar", false, false},
        {"an entry marked as unknown does not count", "eze", false, false},
        {"an entry whose form is not a word does not count", "erdi", false, false},
        {"a part of the first word is not the first word", "ze", false, false},
        {"the second word is not the first", "moduz", false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(engine().isValid(c.word, false), c.valid);
        EXPECT_EQ(engine().isValid(c.word, true), c.deep);
    }
}

TEST(LemaraWords, AHyphenatedWordIsJudgedAsText) {
    World other;
    other
        .table("eumorfo.sare",
               Lexicon().words({"etxe", "a", "-", "bai-bai"}, "<X>").text())
        .table("hp.sare", hp_table())
        .build();
    struct Case {
        std::string label, word;
        bool valid;
    };
    const Case cases[] = {
        {"all tokens known, the hyphen as well", "etxe-a", true},
        {"a lone hyphen that the network knows", "-", true},
        {"known as a whole", "bai-bai", true},
        {"one token unknown", "etxe-zzz", false},
        {"a hyphen at the end", "etxe-", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(other.engine->isValid(c.word, false), c.valid);
        EXPECT_EQ(other.engine->isValid(c.word, true), c.valid);
    }
}

TEST(LemaraWords, AWordAddedLaterIsValidAsAWordAlone) {
    World other;
    other.table("eumorfo.sare", Lexicon().word("etxe", {"<IZE>"}).text())
        .table("hp.sare", hp_table())
        .build();
    EXPECT_FALSE(other.engine->isValid("zubiak", false));
    other.engine->hiztegiPertsonala->gehitu_sarrera(false, "zubi", "<ARR>", "", "", "");
    EXPECT_TRUE(other.engine->isValid("zubiak", false));
    // Kept: a text asks the dictionary only for runs as long as those of its file.
    EXPECT_FALSE(other.engine->isValid("etxe zubiak", false));
    EXPECT_EQ(other.engine->analizatu_paragrafoa(1, "zubiak")
                  .esaldiak.at(0)
                  .tokenak.at(0)
                  .analisiak.at(0)
                  .etiketa,
              " EZZG");
}

TEST(LemaraWords, AnalysesOfATokenComeFromAllNetworks) {
    const Strings all = {"bi<LAG>", "bi<DET>", "bi<IZE>"};
    EXPECT_EQ(analyses_of(engine().analizatuTokena("bi")), all);
    const Strings main = {"bi<DET>", "bi<IZE>"};
    EXPECT_EQ(analyses_of(engine().analizatuTokena("bi", "eumorfo")), main);
    EXPECT_EQ(analyses_of(engine().analizatuTokena("matea")), Strings{"matea<MAT>"});
    // Kept: here "hp" is asked like any other, and the dictionary is not.
    EXPECT_EQ(analyses_of(engine().analizatuTokena("<hp1>ak")),
              Strings{"<hp1><ABS><NUMP>"});
    EXPECT_TRUE(engine().analizatuTokena("zubi").empty());
}

TEST(LemaraWords, AParagraphHasTheNumberOne) {
    for (const int number : {0, 1, 2, -5, 77}) {
        const Paragrafoa paragraph = engine().analizatu_paragrafoa(number, "etxe! zubi");
        EXPECT_EQ(paragraph.zenbakia, 1) << "kept: the argument is ignored";
        EXPECT_EQ(paragraph.testua, "etxe! zubi");
        ASSERT_EQ(paragraph.esaldiak.size(), 2u);
        EXPECT_EQ(paragraph.esaldiak[1].tokenak.at(0).analisiak.at(0).analisia,
                  "zubi<IZE><ARR><hp1><ABS><MG>")
            << "the dictionary comes first";
    }
}

TEST(LemaraWords, FindsEntriesByTheirStart) {
    struct Case {
        std::string label, start;
        Strings all, filtered;
    };
    const Case cases[] = {
        {"each path, cut at its first tag",
         "etxe",
         {"etxe", "etxeak", "etxera"},
         {"etxe", "etxeak", "etxera"}},
        {"a start with a tag",
         "etxe<IZE>",
         {"etxe", "etxeak", "etxera"},
         {"etxe", "etxeak", "etxera"}},
        {"multi-word entries by their first word", "zer ", {"zer moduz"}, {"zer moduz"}},
        {"capitals come into the form", "Ama ", {"Ama Lurra"}, {"Ama Lurra"}},
        {"the start is not folded", "ama ", {}, {}},
        {"an entry to be replaced is filtered", "txar ", {"txar bat"}, {}},
        {"an entry marked as unknown is filtered", "eze ", {"eze hori"}, {}},
        {"nothing begins so", "qq", {}, {}},
        {"a start that ends behind a whole entry", "bi<DET>x", {}, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(forms_of(engine().bilatuHasiera(c.start, false)), c.all);
        EXPECT_EQ(forms_of(engine().bilatuHasiera(c.start, true)), c.filtered);
    }
    const std::vector<Analisia> found = engine().bilatuHasiera("zer ", true);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].lema, "zer moduz");
    EXPECT_EQ(found[0].hiztegia, "eumorfo");
}

TEST(LemaraWords, OnlyTheFirstAnalysisOfAFormDecidesOnReplacement) {
    World other;
    other
        .table("eumorfo.sare", Lexicon()
                                   .word("on bat", {"<IZE>"})
                                   .word("on bat", {"<ADJ>", "[e=hau]"})
                                   .word("ez bat", {"<ADJ>", "[e=hau]"})
                                   .word("ez bat", {"<IZE>"})
                                   .text())
        .table("hp.sare", hp_table())
        .build();
    EXPECT_EQ(other.engine->bilatuHasiera("on ", true).size(), 2u);
    EXPECT_EQ(other.engine->bilatuHasiera("ez ", true).size(), 0u);
    EXPECT_EQ(other.engine->bilatuHasiera("ez ", false).size(), 2u);
    EXPECT_TRUE(other.engine->isValid("on", true));
    EXPECT_FALSE(other.engine->isValid("ez", true));
}

TEST(LemaraWords, GivesTheFormsOfAWord) {
    struct Case {
        std::string label, word, tag;
        Strings analyses, forms;
    };
    const Case cases[] = {
        {"up to and with the tag",
         "etxe",
         "<IZE>",
         {"etxe<IZE><ARR>", "etxe<IZE><ARR><ABS>", "etxe<IZE><ARR><ALA>"},
         {"etxe", "etxeak", "etxera"}},
        {"from a form as well",
         "etxeak",
         "<ARR>",
         {"etxe<IZE><ARR>", "etxe<IZE><ARR><ABS>", "etxe<IZE><ARR><ALA>"},
         {"etxe", "etxeak", "etxera"}},
        {"a tag further back leaves its own form, and what is a start of it",
         "etxeak",
         "<ABS>",
         {"etxe<IZE><ARR>", "etxe<IZE><ARR><ABS>"},
         {"etxe", "etxeak"}},
        {"the first analysis that holds the tag decides",
         "bi",
         "<IZE>",
         {"bi<IZE>", "bi<IZE><ABS>"},
         {"bi", "biak"}},
        {"a tag that no analysis holds gives nothing, and no other road is tried",
         "bi",
         "<ARR>",
         {},
         {}},
        {"the tag is any text of the analysis", "bi", "DET>", {"bi<DET>"}, {"bi"}},
        {"an unknown word goes through the dictionary's machinery",
         "mahai",
         "<ARR>",
         {"mahai<IZE><ARR><hp1><ABS><MG>", "mahai<IZE><ARR><hp1><ABS><NUMP>",
          "mahai<IZE><ARR><hp1><ALA>"},
         {"mahai", "mahaiak", "mahaira"}},
        {"a word of the dictionary is unknown here too",
         "zubi",
         "<ARR>",
         {"zubi<IZE><ARR><hp1><ABS><MG>", "zubi<IZE><ARR><hp1><ABS><NUMP>",
          "zubi<IZE><ARR><hp1><ALA>"},
         {"zubi", "zubiak", "zubira"}},
        {"a name keeps its capital",
         "Ane",
         "<PIB>",
         {"Ane<IZE><PIB><hp8><ABS>", "Ane<IZE><PIB><hp8><ERG>"},
         {"Ane", "Anek"}},
        {"several entries come in the order of their stems",
         "hartu",
         "<ADI>",
         {"har<ADI><ADOIN><hp24><ADOIN>", "hartu<ADI><PART><hp21><ADOI>",
          "hartze<ADI><ADI_IZE><hp20><ABS>"},
         {"har", "hartu", "hartzea"}},
        {"an unknown word with a tag that is no class", "mahai", "<IZE>", {}, {}},
        {"an unknown word with no tag", "mahai", "", {}, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const std::vector<Analisia> forms = engine().sortuFormak(c.word, c.tag);
        EXPECT_EQ(analyses_of(forms), c.analyses);
        EXPECT_EQ(forms_of(forms), c.forms);
    }
    for (const Analisia& form : engine().sortuFormak("mahai", "<ARR>")) {
        EXPECT_EQ(form.hiztegia, "HP");
        EXPECT_EQ(form.lema, "mahai");
        EXPECT_EQ(form.maiuskula, 0);
    }
    EXPECT_EQ(engine().sortuFormak("etxe", "<IZE>").at(0).hiztegia, "eumorfo");
    EXPECT_EQ(engine().hiztegiPertsonala->erroak.count("mahai"), 0u)
        << "the engine's own dictionary is not touched";
}

TEST(LemaraWords, AParadigmShorterThanItsClassTagIsAnError) {
    World other;
    other.table("eumorfo.sare", Lexicon().word("etxe", {"<IZE>"}).text())
        .table("hp.sare", paths({{"<hp1>:x", "<ABS>:<>"}}))
        .build();
    try {
        other.engine->sortuFormak("zubi", "<ARR>");
        ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "basic_string::substr");
    }
    try {
        other.engine->sortu_forma_ezezaguna("zubi", " IZE ARR ABS");
        ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "basic_string::substr");
    }
}

TEST(LemaraWords, InflectsALemmaThatTheLexiconLacks) {
    struct Case {
        std::string label, lemma, tags, form;
    };
    const Case cases[] = {
        {"a noun", "mahai", " IZE ARR ABS NUMP", "mahaiak"},
        {"its bare form", "mahai", " IZE ARR ABS MG", "mahai"},
        {"another ending", "mahai", " IZE ARR ALA", "mahaira"},
        {"a noun in a consonant", "lagun", " IZE ARR ABS NUMP", "lagunak"},
        {"lowered, as its paradigm is", "Mahai", " IZE ARR ABS NUMP", "mahaiak"},
        {"an adjective", "berde", " ADJ IZO ABS NUMP", "berdeak"},
        {"a verb's verbal noun", "hartu", " ADI ADI_IZE ABS", "hartzea"},
        {"a verb's stem", "hartu", " ADI ADOIN ADOIN", "har"},
        {"a person", "Ane", " IZE PIB ERG", "Anek"},
        {"a place", "Soria", " IZE LIB ABS", "Soria"},
        {"another name", "Exu", " IZE IZB ABS", "Exu"},
        {"no class among the tags", "mahai", " IZE ABS", "mahai"},
        {"no tags", "mahai", "", "mahai"},
        {"ARR is tested before ADI", "hartu", " ADI ADI_IZE ABS ARR", "hartu"},
        {"a class inside a longer tag counts, and then nothing matches", "mahai",
         " XARRX ABS", "mahai"},
        {"tags that differ in one", "mahai", " IZE ARR ABS NUMS", "mahai"},
        {"tags that are a start of the right ones", "mahai", " IZE ARR ABS", "mahai"},
        {"tags that go on", "mahai", " IZE ARR ABS NUMP X", "mahai"},
        {"without the first blank", "mahai", "IZE ARR ABS NUMP", "mahai"},
        {"a class whose paradigm the network lacks", "Madril", " IZE LIB ABS", "Madril"},
        {"an empty lemma", "", " IZE ARR ABS NUMP", "ak"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(engine().sortu_forma_ezezaguna(c.lemma, c.tags), c.form);
    }
    try {
        engine().sortu_forma_ezezaguna("s", " IZE LIB ABS");
        ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "basic_string::at")
            << "a sibilant with nothing before it";
    }
}

TEST(LemaraWords, ClassesAreTriedInTheirOrder) {
    // Every class is one ending that tells its name, on a lemma in a vowel.
    World other;
    other.table("eumorfo.sare", Lexicon().word("etxe", {"<IZE>"}).text())
        .table(
            "hp.sare",
            paths({{"<hp1>", "<IZO>:<>", "<ADI>:<>", "<PIB>:<>", "<LIB>:<>", "<IZB>:i"},
                   {"<hp21>", "<PIB>:<>", "<LIB>:<>", "<IZB>:d"},
                   {"<hp8>", "<LIB>:<>", "<IZB>:p"},
                   {"<hp12>", "<IZB>:l"},
                   {"<hp16>", "<X>:b"}}))
        .build();
    struct Case {
        std::string label, tags, form;
    };
    const Case cases[] = {
        {"ARR before all others", " IZE ARR IZO ADI PIB LIB IZB", "zui"},
        {"IZO before ADI and the names", " ADJ IZO IZO ADI PIB LIB IZB", "zui"},
        {"ADI before the names", " ADI PART PIB LIB IZB", "zud"},
        {"PIB before LIB and IZB", " IZE PIB LIB IZB", "zup"},
        {"LIB before IZB", " IZE LIB IZB", "zul"},
        {"IZB last", " IZE IZB X", "zub"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(other.engine->sortu_forma_ezezaguna("zu", c.tags), c.form);
    }
}
