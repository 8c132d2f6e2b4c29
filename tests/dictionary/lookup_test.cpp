// Looking a word up in the personal dictionary.
#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "HiztegiPertsonala.h"
#include "dictionary_text.h"
#include "iragazkiak.h"
#include "karaktereak.h"
#include "hits.h"
#include "support.h"

namespace {

using lemara::test::analyses_of;
using lemara::test::expect_hits;
using lemara::test::Hits;
using lemara::test::network_from;
using lemara::test::paths;
using lemara::test::TempDir;
using Strings = std::vector<std::string>;

// The network of paradigms: a class tag, then endings.
// (0)--<hp1>-->( )--<ABS>:<>-->(( )),  --<ABS><MUG>:a-->(( )),  --<ABS><NUMP>:ak-->(( ))
const std::string HP = paths({
    {"<hp1>", "<ABS>:<>"},
    {"<hp1>", "<MUG>:a"},
    {"<hp1>", "<NUMP>:ak"},
    {"<hp2>", "<MUG>:a"},
    {"<hp2>", "<NUMP>:ak"},
    {"<hp3>", "<ABS>:<>"},
    {"<hp3>", "<BARE>:k"},
    {"<hp4>", "<ABS>:<>"},
    {"<hp4>", "<MUG>:a"},
    {"<hp4>", "<BI>:a"},
    {"<hp9>", "<ABS>:<>"},
    {"<hp9>", "<ERG>:ek"},
    {"<hp24>", "<ABS>:<>"},
    {"<hp24>", "<X>:ak"},
    {"<hp1>", "[h=taulakoa]:z", "[e=taulakoa]:<>", "[s=taulakoa]:<>", "<INS>:<>"},
});

/// A dictionary read from lines "word\ttag".
std::unique_ptr<HiztegiPertsonala> dictionary_of(const TempDir& folder, const Strings& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    return std::make_unique<HiztegiPertsonala>(folder.write("hp.txt", text));
}

struct LookupCase {
    std::string label;
    Strings lines;
    std::string hitza;
    Strings found;  // "analysis maiuskula"
};

const Strings UR_ETXE = {"ur\t<ARR>", "etxe\t<ARR>"};

const LookupCase LOOKUPS[] = {
    {"an ending", UR_ETXE, "etxeak", {"etxe<IZE><ARR><hp1><NUMP> 0"}},
    {"a capital in front", UR_ETXE, "Etxeak", {"etxe<IZE><ARR><hp1><NUMP> 1"}},
    {"capitals", UR_ETXE, "ETXEAK", {"etxe<IZE><ARR><hp1><NUMP> 2"}},
    {"a capital further on", UR_ETXE, "eTXEak", {"etxe<IZE><ARR><hp1><NUMP> 0"}},
    {"no ending: the class tag alone", UR_ETXE, "etxe", {"etxe<IZE><ARR><hp1><ABS> 0"}},
    {"no stem stands in front", UR_ETXE, "etxola", {}},
    {"no key begins so", UR_ETXE, "zuhaitz", {}},
    {"an ending that the table rejects", UR_ETXE, "etxeko", {}},
    {"the empty word", UR_ETXE, "", {}},
    {"a word of one byte", UR_ETXE, "e", {}},
    {"the two stems of a word, in the order of the keys", {"neska\t<ARR>", "ur\t<ARR>"}, "neskak",
     {"neska<IZE><ARR><hp2><NUMP> 0", "neska<IZE><ARR><hp3><BARE> 0"}},
    {"kept: a stem shorter than the shortest word of the file is not reached",
     {"neska\t<ARR>"}, "neskak", {"neska<IZE><ARR><hp3><BARE> 0"}},
    {"kept: so a form of that stem alone is unknown", {"neska\t<ARR>"}, "neska",
     {"neska<IZE><ARR><hp3><ABS> 0"}},
    {"all stems of the range are tried", {"ur\t<IZB>", "lagun\t<ARR>", "lag\t<ARR>"}, "laguna",
     {"lagun<IZE><ARR><hp4><MUG> 0", "lagun<IZE><ARR><hp4><BI> 0"}},
    {"a shorter stem and a longer one", {"la\t<ARR>", "lak\t<ARR>"}, "lak",
     {"la<IZE><ARR><hp3><BARE> 0", "lak<IZE><ARR><hp4><ABS> 0"}},
    {"a word shorter than the shortest of the file", {"etxeak\t<ARR>", "etx\t<IZB>"}, "et", {}},
    {"kept: a word shorter than the file's matches as it stands alone",
     {"hartu\t<ADI>", "hartze\t<IZB>"}, "har", {"hartu<ADI><ADOIN><hp24><ABS> 0"}},
    {"kept: but not with an ending that makes it as long",
     {"hartuko\t<ADI>", "hartu\t<ADI>"}, "harak", {}},
    {"two words with a blank", {"etxe orratz\t<ARR>"}, "etxe orratza",
     {"etxe orratz<IZE><ARR><hp4><MUG> 0", "etxe orratz<IZE><ARR><hp4><BI> 0"}},
    {"two words with capitals", {"etxe orratz\t<ARR>"}, "Etxe Orratz",
     {"etxe orratz<IZE><ARR><hp4><ABS> 1"}},
    {"kept: a proper name written with a capital yields nothing", {"Ikoren\t<PIB>"}, "Ikoren",
     {}},
    {"kept: nor in lower case", {"Ikoren\t<PIB>"}, "ikoren", {}},
    {"kept: a proper name written in lower case matches a capital", {"ikoren\t<PIB>"},
     "Ikorenek", {"ikoren<IZE><PIB><hp9><ERG> 1"}},
    {"kept: and a small letter", {"ikoren\t<PIB>"}, "ikorenek",
     {"ikoren<IZE><PIB><hp9><ERG> 0"}},
    {"a common noun written with a capital", {"Etxe\t<ARR>"}, "etxeak",
     {"etxe<IZE><ARR><hp1><NUMP> 0"}},
    {"accented capitals are lowered", {"\361abi\t<ARR>"}, "\321abiak",
     {"\361abi<IZE><ARR><hp1><NUMP> 1"}},
    {"kept: a digit in front is class 0", {"4ko\t<ARR>"}, "4koak",
     {"4ko<IZE><ARR><hp1><NUMP> 0"}},
    {"kept: a digit in front is class 0 among capitals too", {"4ko\t<ARR>"}, "4KOAK",
     {"4ko<IZE><ARR><hp1><NUMP> 0"}},
    {"a plus in the lemma", {"a+b\t<ARR>"}, "a+b", {"a+b<IZE><ARR><hp4><ABS> 0"}},
    {"the stem of a verb", {"hartu\t<ADI>", "ur\t<IZB>"}, "harak",
     {"hartu<ADI><ADOIN><hp24><X> 0"}},
};

std::string text_of(const Analisia& r) {
    return r.analisia + '|' + r.lema + '|' + r.etiketa + '|' + r.hiztegia + '|' + r.sai + '|' +
           r.hobe + '|' + r.erabili + '|' + std::to_string(r.maiuskula);
}

/// The lookup in so many words, over all keys.
std::vector<Analisia> plain_lookup(const HiztegiPertsonala& dictionary, const std::string& word,
                                   const Sarea& network, Hits& hits) {
    std::vector<Analisia> result;
    const auto shortest = static_cast<std::size_t>(dictionary.gutxieneko_luzera);
    const std::string start = tolowercase(word.substr(0, shortest));
    const std::string low = tolowercase(word);
    for (const auto& [key, entry] : dictionary.erroak) {
        const std::string& stem = entry->erroa;
        if (low.compare(0, stem.size(), stem) != 0) continue;
        if (key.compare(0, start.size(), start) != 0) {
            ++hits["a stem out of reach"];
            continue;
        }
        for (const Analisia& r :
             network.taula->analizatuTokena(entry->paradigma + low.substr(stem.size()))) {
            if (!egiaztatuIzenBereziak(word.c_str(), entry->lema.c_str())) continue;
            Analisia a(entry->lema + entry->kategoria + r.analisia, network.taula->hiztegia);
            a.hobe = entry->hobe;
            a.erabili = entry->erabili;
            a.sai = entry->sai;
            a.maiuskula = 1;
            if (touppercase(word) == word) a.maiuskula = 2;
            if (word.substr(0, 1) == start.substr(0, 1)) a.maiuskula = 0;
            ++hits["class " + std::to_string(a.maiuskula)];
            result.push_back(a);
        }
    }
    ++hits[result.size() > 1 ? "several results" : result.empty() ? "no result" : "one result"];
    return result;
}

}  // namespace

TEST(Lookup, FindsWords) {
    const TempDir folder;
    const auto network = network_from("hp", HP);
    for (const LookupCase& c : LOOKUPS) {
        SCOPED_TRACE(c.label);
        const auto dictionary = dictionary_of(folder, c.lines);
        Strings found;
        for (const Analisia& a : dictionary->analizatu(c.hitza, network.get())) {
            found.push_back(a.analisia + ' ' + std::to_string(a.maiuskula));
        }
        EXPECT_EQ(found, c.found);
    }
}

TEST(Lookup, RecordsComeFromEntryAndTable) {
    HiztegiPertsonala dictionary;
    dictionary.gutxieneko_luzera = 2;
    dictionary.gehitu_sarrera(false, "etxe", "<ARR>", "hobea", "erabilia", "saia");
    const auto network = network_from("hp", HP);
    std::vector<Analisia> found = dictionary.analizatu("Etxeak", network.get());
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].analisia, "etxe<IZE><ARR><hp1><NUMP>");
    EXPECT_EQ(found[0].lema, "etxe");
    EXPECT_EQ(found[0].etiketa, " IZE ARR NUMP") << "a class tag shows in no field";
    EXPECT_EQ(found[0].twol, "+Ize+Arr+Nump");
    EXPECT_EQ(found[0].hiztegia, "hp");
    EXPECT_EQ(found[0].hobe, "hobea");
    EXPECT_EQ(found[0].erabili, "erabilia");
    EXPECT_EQ(found[0].sai, "saia");
    EXPECT_EQ(found[0].maiuskula, 1);
    EXPECT_EQ(found[0].forma, "");

    // Groups of the table are overwritten, with the empty text as well.
    found = dictionary.analizatu("etxez", network.get());
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].hobe, "hobea");
    EXPECT_EQ(found[0].erabili, "erabilia");
    EXPECT_EQ(found[0].sai, "saia");
    HiztegiPertsonala plain;
    plain.gehitu_sarrera(false, "etxe", "<ARR>", "", "", "");
    found = plain.analizatu("etxez", network.get());
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].hobe, "") << "kept: also when the entry has none";
    EXPECT_EQ(found[0].erabili, "");
    EXPECT_EQ(found[0].sai, "");
}

TEST(Lookup, AWordThatIsItsOwnReplacementIsFound) {
    HiztegiPertsonala dictionary;
    dictionary.gehitu_sarrera(false, "etxe", "<ARR>", "etxe", "etxe", "");
    const auto network = network_from("hp", HP);
    EXPECT_EQ(dictionary.analizatu("etxe", network.get()).size(), 1u)
        << "kept: the walk's filter does not apply";
}

TEST(Lookup, TheLemmaLosesItsPlus) {
    HiztegiPertsonala dictionary;
    dictionary.gehitu_sarrera(false, "sagar+on", "<ARR>", "", "", "");
    const auto network = network_from("hp", HP);
    const std::vector<Analisia> found = dictionary.analizatu("sagar+on", network.get());
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].lema, "sagaron");
}

TEST(Lookup, ALemmaWithACapitalWantsOne) {
    // No word leads to such an entry: it is made by hand.
    HiztegiPertsonala dictionary;
    dictionary.erroak["etxe"] =
        new HPsarrera("Etxe", "<IZE>", "etxe", "", "", "HP", "<hp1>");
    const auto network = network_from("hp", HP);
    EXPECT_TRUE(dictionary.analizatu("etxeak", network.get()).empty());
    EXPECT_EQ(dictionary.analizatu("Etxeak", network.get()).size(), 1u);
    EXPECT_EQ(dictionary.analizatu("ETXEAK", network.get()).size(), 1u);
}

TEST(Lookup, ADefaultDictionaryVisitsEveryKey) {
    HiztegiPertsonala dictionary;
    dictionary.gehitu_sarrera(false, "neska", "<ARR>", "", "", "");
    dictionary.gehitu_sarrera(false, "tu", "<ADI>", "", "", "");
    const auto network = network_from("hp", HP);
    EXPECT_EQ(analyses_of(dictionary.analizatu("neskak", network.get())),
              (Strings{"neska<IZE><ARR><hp2><NUMP>", "neska<IZE><ARR><hp3><BARE>"}));
    EXPECT_EQ(dictionary.analizatu("neskak", network.get())[0].maiuskula, 1)
        << "kept: a word in lower case is class 1 there";
    EXPECT_EQ(dictionary.analizatu("NESKAK", network.get())[0].maiuskula, 2);
    // The empty stem of the verb tu.
    const std::vector<Analisia> empty = dictionary.analizatu("", network.get());
    EXPECT_EQ(analyses_of(empty), (Strings{"tu<ADI><ADOIN><hp24><ABS>"}));
    EXPECT_EQ(empty[0].maiuskula, 0) << "the empty word is class 0";
    EXPECT_EQ(analyses_of(dictionary.analizatu("ak", network.get())),
              (Strings{"tu<ADI><ADOIN><hp24><X>"}));
}

TEST(Lookup, ADictionaryWithoutAFileMatchesWholeWords) {
    const TempDir folder;
    HiztegiPertsonala dictionary(folder.path("ez-dago.txt"));
    EXPECT_EQ(dictionary.gutxieneko_luzera, 10000);
    dictionary.gehitu_sarrera(false, "etxe", "<ARR>", "", "", "");
    const auto network = network_from("hp", HP);
    EXPECT_EQ(dictionary.analizatu("etxe", network.get()).size(), 1u);
    EXPECT_EQ(dictionary.analizatu("Etxe", network.get()).size(), 1u);
    EXPECT_TRUE(dictionary.analizatu("etxeak", network.get()).empty())
        << "kept: words added at run time match only without an ending";
}

TEST(Lookup, NegativeLengthsDoNoHarm) {
    HiztegiPertsonala dictionary;
    dictionary.gehitu_sarrera(false, "etxe", "<ARR>", "", "", "");
    dictionary.gutxieneko_luzera = -5;
    const auto network = network_from("hp", HP);
    dictionary.analizatu("etxeak", network.get());
    dictionary.analizatu("", network.get());
}

TEST(Lookup, ANullNetworkNeverAnswers) {
    HiztegiPertsonala dictionary;
    dictionary.gehitu_sarrera(false, "etxe", "<ARR>", "", "", "");
    EXPECT_TRUE(dictionary.analizatu("etxe", nullptr).empty());
    EXPECT_TRUE(dictionary.analizatu("zuhaitz", nullptr).empty());
    const Sarea empty;
    EXPECT_TRUE(dictionary.analizatu("etxe", &empty).empty());
}

TEST(Lookup, RandomDictionariesAgreeWithThePlainLookup) {
    const auto network = network_from("hp", HP);
    const TempDir folder;
    const Strings tags = {"<ARR>", "<ARR>", "<IZO>", "<ADI>", "<PIB>", "<LIB>", "<IZB>"};
    Hits hits;
    for (unsigned seed = 7000; seed < 7400; ++seed) {
        std::mt19937 engine(seed);
        const auto random = [&] { return static_cast<unsigned>(engine()); };
        const auto text = [&](unsigned longest, const char* letters, unsigned count) {
            std::string word;
            for (unsigned n = 1 + random() % longest; n > 0; --n) {
                word += letters[random() % count];
            }
            return word;
        };
        Strings lines;
        for (unsigned n = 1 + random() % 8; n > 0; --n) {
            const std::string word = "k" + text(4, "akeAr n\361", 8);
            lines.push_back(word + '\t' + tags[random() % tags.size()]);
        }
        const auto dictionary = dictionary_of(folder, lines);
        if (seed % 10 == 0) dictionary->gutxieneko_luzera = 0;
        if (seed % 10 == 1) dictionary->gutxieneko_luzera = 10000;
        for (int i = 0; i < 40; ++i) {
            std::string word = (i % 3 == 0 ? "K" : "k") + text(6, "akeAr n\361K", 9);
            if (i % 2 == 0 && !dictionary->erroak.empty()) {
                // A stem with an ending of some class.
                auto stem = dictionary->erroak.begin();
                std::advance(stem, random() % dictionary->erroak.size());
                const Strings forms = {"", "a", "ak", "k", "ek", "z"};
                word = stem->first + forms[random() % forms.size()];
                if (i % 4 == 0) word = touppercase(word.substr(0, 1)) + word.substr(1);
            }
            if (i % 7 == 0) word = touppercase(word);
            const std::vector<Analisia> found = dictionary->analizatu(word, network.get());
            const std::vector<Analisia> expected =
                plain_lookup(*dictionary, word, *network, hits);
            ASSERT_EQ(found.size(), expected.size()) << "seed " << seed << ", word " << word;
            for (std::size_t k = 0; k < found.size(); ++k) {
                ASSERT_EQ(text_of(found[k]), text_of(expected[k]))
                    << "seed " << seed << ", word " << word;
            }
        }
    }
    expect_hits(hits, {"a stem out of reach", "no result", "one result", "several results",
                       "class 0", "class 1", "class 2"});
}

TEST(Lookup, ManyThreadsReadOneDictionary) {
    const TempDir folder;
    const auto dictionary = dictionary_of(folder, UR_ETXE);
    const auto network = network_from("hp", HP);
    std::vector<int> wrong(4, 0);
    lemara::test::in_threads(4, [&](unsigned t) {
        for (int i = 0; i < 300; ++i) {
            if (dictionary->analizatu("etxeak", network.get()).size() != 1) ++wrong[t];
            if (!dictionary->analizatu("zuhaitz", network.get()).empty()) ++wrong[t];
            if (dictionary->lortuAdoin("hartu") != "har") ++wrong[t];
        }
    });
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}
