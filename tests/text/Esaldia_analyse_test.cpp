// The longest match: which runs are asked, whom, in which order, and what a merge moves.
#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "Esaldia.h"
#include "support.h"

namespace {

using lemara::test::analyses_of;
using lemara::test::network_from;
using lemara::test::paths;
using lemara::test::stdout_of;
using lemara::test::TempDir;
using lemara::test::word_path;

using Strings = std::vector<std::string>;

/// Networks that a test asks, by key, with their owner.
class Networks {
public:
    Networks& add(const std::string& key,
                  const std::vector<std::vector<std::string>>& list) {
        return add_text(key, paths(list));
    }
    Networks& add_text(const std::string& key, const std::string& text) {
        owned_.push_back(network_from(key, text));
        map[key] = owned_.back().get();
        return *this;
    }
    std::map<std::string, Sarea*> map;

private:
    std::vector<std::unique_ptr<Sarea>> owned_;
};

/// The paradigm of nouns in a vowel: nothing, -ak.
const std::vector<std::vector<std::string>> HP = {
    {"<hp1>", "<ABS>:<>"},
    {"<hp1>", "<ABS>:a", "<NUMP>:k"},
};

/// A dictionary from the text of a file.
std::unique_ptr<HiztegiPertsonala> dictionary_from(const std::string& text) {
    const TempDir folder;
    return std::make_unique<HiztegiPertsonala>(folder.write("hp.txt", text));
}

const HiztegiPertsonala& no_dictionary() {
    static const HiztegiPertsonala empty;
    return empty;
}

Esaldia analysed(const std::string& text, const std::map<std::string, Sarea*>& networks,
                 const HiztegiPertsonala& dictionary = no_dictionary(),
                 bool first = true) {
    Esaldia sentence(0, text);
    sentence.tokenizatu();
    sentence.analizatu(networks, dictionary, first);
    return sentence;
}

/// "etxe-a_|da" : the tokens, "_" where a blank followed, "|" between them, unknown ones
/// in round brackets, those without any analysis in curly ones.
std::string shape(const Esaldia& sentence) {
    std::string result;
    for (const Tokena& token : sentence.tokenak) {
        if (!result.empty()) result += '|';
        const bool none = token.analisiak.empty();
        const bool unknown =
            token.analisiak.size() == 1 && token.analisiak[0].etiketa == " EZZG";
        result += none      ? "{" + token.testua + "}"
                  : unknown ? "(" + token.testua + ")"
                            : token.testua;
        if (token.hutsunea) result += '_';
    }
    return result;
}

std::vector<std::string> word(const std::string& letters) {
    return word_path(letters, {"<X>"});
}

}  // namespace

TEST(EsaldiaAnalyse, TakesTheLongestRunThatIsKnown) {
    Networks networks;
    networks.add("eumorfo",
                 {word("zer"), word("zer moduz"), word("etxe-a"), word("etxe"),
                  word("da"), word("1,5"), word("zer moduz gaur"), word("b c d e f"),
                  word("a b c d e f"), word("x y"), word("y z"), word("."), word("a.b")});
    networks.add("zenbakiak", {word("1 2 3 4 5 6"), word("1 2 3 4 5 6 7"),
                               word("p q r s t u"), word("1 2 3 4 5 6 7 8")});
    struct Case {
        std::string label, text, tokens;
    };
    const Case cases[] = {
        {"a sentence with no tokens", "", ""},
        {"a single word", "etxe", "etxe"},
        {"an unknown word", "zzz", "(zzz)"},
        {"a word with a hyphen comes out whole", "etxe-a", "etxe-a"},
        {"its blank is that of its last piece", "etxe-a da", "etxe-a_|da"},
        {"a final dot stays outside", "etxe-a.", "etxe-a|."},
        {"two words with one blank", "zer moduz", "zer moduz"},
        {"two blanks are looked up as one", "zer  moduz", "zer moduz"},
        {"a final blank is that of the second word", "zer moduz ", "zer moduz_"},
        {"two words without a blank are no unit", "zer-moduz", "zer|(-)|(moduz)"},
        {"a number in pieces", "1,5 etxe", "1,5_|etxe"},
        {"the longer unit wins", "zer moduz gaur", "zer moduz gaur"},
        {"the shorter one if the longer fails", "zer moduz bihar", "zer moduz_|(bihar)"},
        {"the first unit takes the word that both hold", "x y z", "x y_|(z)"},
        {"a unit further on", "zzz y z da", "(zzz)_|y z_|da"},
        {"five tokens reach an ordinary network", "b c d e f", "b c d e f"},
        {"six do not", "a b c d e f", "(a)_|b c d e f"},
        {"six reach a network of numbers", "1 2 3 4 5 6", "1 2 3 4 5 6"},
        {"in small letters too", "p q r s t u", "p q r s t u"},
        {"seven reach it", "1 2 3 4 5 6 7", "1 2 3 4 5 6 7"},
        {"eight are never tried", "1 2 3 4 5 6 7 8", "1 2 3 4 5 6 7_|(8)"},
        {"nine tokens: the window moves on", "zzz 1 2 3 4 5 6 7 da",
         "(zzz)_|1 2 3 4 5 6 7_|da"},
        {"the case of the token does not hide a unit", "Zer MODUZ", "Zer MODUZ"},
        {"behind a merge all tokens keep order, text and blank",
         "zer moduz etxe, da zzz.", "zer moduz_|etxe|(,)_|da_|(zzz)|."},
        {"two merges", "etxe-a zer moduz etxe-a", "etxe-a_|zer moduz_|etxe-a"},
        {"a word that the tokeniser kept whole", "a.b da", "a.b_|da"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(shape(analysed(c.text, networks.map)), c.tokens);
    }
}

TEST(EsaldiaAnalyse, RunsOfSixReachNeitherOrdinaryNetworksNorTheDictionary) {
    Networks networks;
    networks.add("eumorfo", {word("zzz")}).add("hp", HP);
    const auto five = dictionary_from("b c d e fo\t<ARR>\t\t\tHP\n");
    EXPECT_EQ(five->gehienezko_hitzak, 5);
    EXPECT_EQ(shape(analysed("b c d e foak", networks.map, *five)), "b c d e foak");
    const auto six = dictionary_from("a b c d e fo\t<ARR>\t\t\tHP\n");
    EXPECT_EQ(six->gehienezko_hitzak, 6);
    EXPECT_EQ(shape(analysed("a b c d e fo", networks.map, *six)),
              "(a)_|(b)_|(c)_|(d)_|(e)_|(fo)");
}

TEST(EsaldiaAnalyse, SevenTokensAreTheMostWhateverTheLevelOfANetwork) {
    Networks networks;
    networks.add("zenbakiak", {word("1 2 3 4 5 6 7"), word("1 2 3 4 5 6 7 8")});
    networks.map.at("zenbakiak")->maila = 20;
    EXPECT_EQ(shape(analysed("1 2 3 4 5 6 7 8", networks.map)), "1 2 3 4 5 6 7_|(8)");
}

TEST(EsaldiaAnalyse, MergeMovesTextAndBlankAlone) {
    Networks networks;
    networks.add("eumorfo", {word("zer moduz"), word("a-b-c")});
    struct Case {
        std::string label, text, tokens;
        std::vector<int> flags;
    };
    const Case cases[] = {
        {"without a merge each token has its own flag",
         "bat Bi hiru",
         "(bat)_|(Bi)_|(hiru)",
         {0, 1, 0}},
        {"a merged token has the flag of its first piece", "Zer moduz", "Zer moduz", {1}},
        {"and not of its second", "zer Moduz", "zer Moduz", {0}},
        {"kept: the token behind takes the flag of the place it moves to",
         "zer moduz Ane etxe",
         "zer moduz_|(Ane)_|(etxe)",
         {0, 0, 1}},
        {"kept: so a small word can count as capitalised",
         "zer Moduz etxe",
         "zer Moduz_|(etxe)",
         {0, 1}},
        {"kept: a merge of five moves by four",
         "a-B-c x Y z W",
         "a-B-c_|(x)_|(Y)_|(z)_|(W)",
         {0, 1, 1, 1, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const Esaldia sentence = analysed(c.text, networks.map);
        EXPECT_EQ(shape(sentence), c.tokens);
        std::vector<int> flags;
        for (const Tokena& token : sentence.tokenak) flags.push_back(token.maiuskula);
        EXPECT_EQ(flags, c.flags);
    }
}

TEST(EsaldiaAnalyse, MarksUnknownTokens) {
    struct Case {
        std::string label, text, shape, printed;
    };
    const Case cases[] = {
        {"a word", "zzz", "(zzz)", ""},
        {"a colon gets no mark", ":", "{:}", ""},
        {"nor does an opening bracket", "[", "{[}", ""},
        {"a closing bracket gets none and a warning", "]", "{]}", " -->OJO arraroa:]"},
        {"each one warns", "a]]", "(a)|{]}|{]}", " -->OJO arraroa:] -->OJO arraroa:]"},
        {"a closing parenthesis gets the mark", ")", "())", ""},
        {"an opening parenthesis too", "(", "(()", ""},
        {"a dot gets the mark", ".", "(.)", ""},
    };
    Networks networks;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        std::string tokens;
        const std::string printed =
            stdout_of([&] { tokens = shape(analysed(c.text, networks.map)); });
        EXPECT_EQ(tokens, c.shape);
        EXPECT_EQ(printed, c.printed);
    }
    Networks brackets;
    brackets.add("eumorfo", {word("]"), word(":")});
    EXPECT_EQ(stdout_of([&] { EXPECT_EQ(shape(analysed("]:", brackets.map)), "]|:"); }),
              "");
}

TEST(EsaldiaAnalyse, TheUnknownMarkHoldsTheTokenAsItStands) {
    Networks networks;
    struct Case {
        std::string label, text;
    };
    const Case cases[] = {
        {"a word", "Zzz"},           {"a dot inside", "z.b"},
        {"a tag inside", "a<IZE>b"}, {"an open tag", "a<b"},
        {"a quality tag", "a<0b>c"}, {"the name of a class", "<hp1>"},
        {"Latin-1", "\361abar\351"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const Esaldia sentence = analysed(c.text, networks.map);
        ASSERT_EQ(sentence.tokenak.size(), 1u);
        ASSERT_EQ(sentence.tokenak[0].analisiak.size(), 1u);
        const Analisia& mark = sentence.tokenak[0].analisiak[0];
        EXPECT_EQ(mark.analisia, c.text + "<EZZG>");
        EXPECT_EQ(mark.lema, c.text);
        EXPECT_EQ(mark.etiketa, " EZZG");
        EXPECT_EQ(mark.hiztegia, "");
        EXPECT_EQ(mark.maiuskula, 0);
    }
    EXPECT_EQ(analysed("zzz", networks.map).tokenak.at(0).analisiak.at(0).twol, "+Ezzg");
}

TEST(EsaldiaAnalyse, OrdinaryNetworksAddUpInKeyOrder) {
    Networks networks;
    networks.add("hp", {word_path("bi", {"<HP>"}), {"<hp1>", "<ABS>:<>"}});
    networks.add("zenbakiak", {word_path("bi", {"<DET>"})});
    networks.add("eumorfo", {word_path("bi", {"<ADJ>"}), word_path("bi", {"<IZE>"})});
    networks.add("Aurre", {word_path("bi", {"<AUR>"})});
    const auto dictionary = dictionary_from("bi\t<ARR>\t\t\tHP\n");
    const Strings from_networks = {"bi<AUR>", "bi<ADJ>", "bi<IZE>", "bi<DET>"};
    const Strings from_dictionary = {"bi<IZE><ARR><hp1><ABS>"};
    Strings both = from_networks;
    both.insert(both.end(), from_dictionary.begin(), from_dictionary.end());

    const auto analyses = [&](const HiztegiPertsonala& d, bool first) {
        return analyses_of(
            analysed("bi", networks.map, d, first).tokenak.at(0).analisiak);
    };
    EXPECT_EQ(analyses(no_dictionary(), true), from_networks)
        << "the network hp is not asked";
    EXPECT_EQ(analyses(no_dictionary(), false), from_networks);
    EXPECT_EQ(analyses(*dictionary, true), from_dictionary) << "it hides the networks";
    EXPECT_EQ(analyses(*dictionary, false), both) << "it stands behind them";
}

TEST(EsaldiaAnalyse, ADictionaryWordHidesTheNetworksForItsRunAlone) {
    Networks networks;
    networks.add("hp", HP).add("eumorfo", {word("bi"), word("bi etxe")});
    const auto dictionary = dictionary_from("bi\t<ARR>\t\t\tHP\n");
    EXPECT_EQ(dictionary->gehienezko_hitzak, 1);
    EXPECT_EQ(shape(analysed("bi etxe", networks.map, *dictionary)), "bi etxe")
        << "the longer run goes first, and the dictionary is not asked about it";
    EXPECT_EQ(analysed("biak", networks.map, *dictionary)
                  .tokenak.at(0)
                  .analisiak.at(0)
                  .analisia,
              "bi<IZE><ARR><hp1><ABS><NUMP>");
}

TEST(EsaldiaAnalyse, ADictionaryNeedsItsNetwork) {
    Networks without;
    without.add("eumorfo", {word("etxe")});
    const auto dictionary = dictionary_from("bi\t<ARR>\t\t\tHP\n");
    EXPECT_EQ(shape(analysed("bi", without.map, *dictionary)), "(bi)");
    EXPECT_EQ(shape(analysed("bi", without.map, *dictionary, false)), "(bi)");
    std::map<std::string, Sarea*> slot = without.map;
    slot["hp"] = nullptr;  // a slot with no network is no network
    slot["zzz"] = nullptr;
    EXPECT_EQ(shape(analysed("bi etxe", slot, *dictionary)), "(bi)_|etxe");
}

TEST(EsaldiaAnalyse, WordsAddedLaterDoNotWidenTheRuns) {
    Networks networks;
    networks.add("hp", HP);
    HiztegiPertsonala dictionary;
    dictionary.gehitu_sarrera(false, "bi", "<ARR>", "", "", "");
    // Kept: the longest run is that of the file, here 0, so no run is short enough.
    EXPECT_EQ(shape(analysed("bi", networks.map, dictionary)), "(bi)");
    dictionary.gehienezko_hitzak = 1;
    EXPECT_EQ(shape(analysed("bi", networks.map, dictionary)), "bi");
}

TEST(EsaldiaAnalyse, AnalysesOfARunRespectTheLevelOfEachNetwork) {
    Networks networks;
    networks.add("eumorfo", {word_path("bi", {"<E>"})});
    networks.add("zenbakiak", {word_path("bi", {"<Z>"})});
    networks.add("hp", {{"<hp1>", "<ABS>:<>"}, word_path("bi", {"<H>"})});
    const auto dictionary = dictionary_from("bi\t<ARR>\t\t\tHP\n");
    dictionary->gehienezko_hitzak = 6;
    const Esaldia sentence(0, "ignored");
    struct Case {
        std::string label;
        int tokens;
        bool first;
        Strings analyses;
    };
    const Strings hp = {"bi<IZE><ARR><hp1><ABS>"};
    const Case cases[] = {
        {"one token", 1, true, hp},
        {"five tokens", 5, true, hp},
        {"six: the network hp has level 5", 6, true, {"bi<Z>"}},
        {"seven", 7, true, {"bi<Z>"}},
        {"eight are too many for all", 8, true, {}},
        {"one token, dictionary last", 1, false, {"bi<E>", "bi<Z>", hp[0]}},
        {"five, dictionary last", 5, false, {"bi<E>", "bi<Z>", hp[0]}},
        {"six, dictionary last", 6, false, {"bi<Z>"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(analyses_of(sentence.analizatuTokena(networks.map, *dictionary, "bi",
                                                       c.tokens, c.first)),
                  c.analyses);
    }
    dictionary->gehienezko_hitzak = 2;
    EXPECT_EQ(
        analyses_of(sentence.analizatuTokena(networks.map, *dictionary, "bi", 2, true)),
        hp);
    const Strings nets = {"bi<E>", "bi<Z>"};
    EXPECT_EQ(
        analyses_of(sentence.analizatuTokena(networks.map, *dictionary, "bi", 3, true)),
        nets);
}

TEST(EsaldiaAnalyse, ANetworkIsPassedOverByTheNameInItsTable) {
    // kept: the key plays no part; the table of this one says "hp"
    const auto disguised = network_from("hp", paths({word("bi")}));
    const Esaldia sentence(0, "");
    EXPECT_TRUE(
        sentence
            .analizatuTokena({{"other", disguised.get()}}, no_dictionary(), "bi", 1, true)
            .empty());
    disguised->taula->hiztegia = "x";
    EXPECT_EQ(
        sentence
            .analizatuTokena({{"other", disguised.get()}}, no_dictionary(), "bi", 1, true)
            .size(),
        1u);
    Sarea hollow("hollow", "", nullptr);
    EXPECT_TRUE(
        sentence.analizatuTokena({{"hollow", &hollow}}, no_dictionary(), "bi", 1, true)
            .empty());
}

TEST(EsaldiaAnalyse, DictionaryAnalysesAreAppendedAndReturned) {
    Networks networks;
    networks.add("hp", HP);
    const auto dictionary = dictionary_from("bi\t<ARR>\t\t\tHP\n");
    const Esaldia sentence(0, "");
    const Analisia before("x<Y>", "n");
    struct Case {
        std::string label, text;
        const HiztegiPertsonala* dictionary;
        bool with_network;
        int tokens;
        Strings all;
    };
    const std::string bi = "bi<IZE><ARR><hp1><ABS>";
    const Case cases[] = {
        {"appended behind what is there", "bi", dictionary.get(), true, 1, {"x<Y>", bi}},
        {"up to the level of the network, whatever the dictionary's own limit",
         "bi",
         dictionary.get(),
         true,
         5,
         {"x<Y>", bi}},
        {"but not beyond", "bi", dictionary.get(), true, 6, {"x<Y>"}},
        {"an unknown word", "zu", dictionary.get(), true, 1, {"x<Y>"}},
        {"no network", "bi", dictionary.get(), false, 1, {"x<Y>"}},
        {"no entries", "bi", &no_dictionary(), true, 1, {"x<Y>"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const std::map<std::string, Sarea*> none;
        std::vector<Analisia> list = {before};
        const std::vector<Analisia> copy = sentence.analizatuHiztegiPertsonalean(
            c.with_network ? networks.map : none, *c.dictionary, c.text, list, c.tokens);
        EXPECT_EQ(analyses_of(list), c.all);
        EXPECT_EQ(analyses_of(copy), c.all);
    }
}

// The text of a run: a token that would bring it past 989 bytes is left out, its blank is
// not. The table is one state that reads any number of "a", "b" and blanks:
// ((0))--a,b," "-->(0)
TEST(EsaldiaAnalyse, LongTokensAreLeftOutOfTheRun) {
    Networks networks;
    networks.add_text("zenbakiak", "0\ta\t0\n0\tb\t0\n0\t \t0\nfinal: 0\n");
    const auto a = [](std::size_t count) { return std::string(count, 'a'); };
    struct Case {
        std::string label, text, merged;
    };
    const Case cases[] = {
        {"two tokens of 989 bytes together, blank and all", a(987) + " b", a(987) + " b"},
        {"990 bytes: the second is left out, and the final blank goes", a(988) + " b",
         a(988)},
        {"the first may have 989 bytes", a(989) + " b", a(989)},
        {"kept: left-out tokens leave their blanks", a(989) + " b b b b b b ",
         a(989) + "      "},
        {"a token that still fits behind a left-out one is taken",
         a(980) + " " + a(100) + " b", a(980) + "  b"},
        {"a left-out first token", a(990) + " b", " b"},
        {"kept: the blank of the left-out last token goes as the last byte",
         "b " + a(990) + " ", "b "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const Esaldia sentence = analysed(c.text, networks.map);
        ASSERT_EQ(sentence.tokenak.size(), 1u);
        EXPECT_EQ(sentence.tokenak[0].testua, c.merged);
    }
}

TEST(EsaldiaAnalyse, AnUnknownTokenBeyondTheLimitHasAnEmptyLemma) {
    Networks networks;
    struct Case {
        std::string label;
        std::size_t length, lemma;
    };
    const Case cases[] = {
        {"989 bytes are looked up", 989, 989},
        {"kept: 990 bytes are left out of their own run", 990, 0},
        {"kept: and so are many", 12000, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const std::string word(c.length, 'q');
        const Esaldia sentence = analysed(word + " q", networks.map);
        ASSERT_EQ(sentence.tokenak.size(), 2u);
        EXPECT_EQ(sentence.tokenak[0].testua, word);
        ASSERT_EQ(sentence.tokenak[0].analisiak.size(), 1u);
        EXPECT_EQ(sentence.tokenak[0].analisiak[0].lema, word.substr(0, c.lemma));
        EXPECT_EQ(sentence.tokenak[0].analisiak[0].etiketa, " EZZG");
        EXPECT_EQ(sentence.tokenak[0].analisiak[0].analisia,
                  word.substr(0, c.lemma) + "<EZZG>");
    }
}

TEST(EsaldiaAnalyse, ASecondRunAddsAnalysesOnceMore) {
    Networks networks;
    networks.add("eumorfo", {word("zer moduz"), word("da")});
    Esaldia sentence = analysed("zer moduz da", networks.map);
    sentence.analizatu(networks.map, no_dictionary(), true);
    ASSERT_EQ(sentence.tokenak.size(), 2u);
    EXPECT_EQ(sentence.tokenak[0].analisiak.size(), 2u);
    EXPECT_EQ(sentence.tokenak[1].analisiak.size(), 2u);
}

namespace {

struct PlainToken {
    std::string text;
    bool blank;
    int flag;
    Strings analyses;
};

/// The twin: tries every run from the longest on and rebuilds the whole list at each
/// merge. `ordinary` and `numbers` are what the two networks know.
std::vector<PlainToken> plain_analysis(std::vector<PlainToken> tokens,
                                       const std::set<std::string>& ordinary,
                                       const std::set<std::string>& numbers) {
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        for (std::size_t n = std::min<std::size_t>(7, tokens.size() - i); n > 0; --n) {
            std::string run;
            for (std::size_t k = i; k < i + n; ++k) {
                run += tokens[k].text;
                if (tokens[k].blank && k + 1 < i + n) run += ' ';
            }
            const std::string lowered = tolowercase(run);
            Strings analyses;
            if (n <= 5 && ordinary.count(lowered) != 0)
                analyses.push_back(lowered + "<X>");
            if (numbers.count(lowered) != 0) analyses.push_back(lowered + "<X>");
            if (analyses.empty() && n > 1) continue;
            if (analyses.empty()) analyses.push_back(run + "<EZZG>");
            std::vector<PlainToken> merged(
                tokens.begin(), tokens.begin() + static_cast<std::ptrdiff_t>(i));
            merged.push_back({run, tokens[i + n - 1].blank, 0, analyses});
            merged.insert(merged.end(),
                          tokens.begin() + static_cast<std::ptrdiff_t>(i + n),
                          tokens.end());
            // The flags stay in their places.
            for (std::size_t k = 0; k < merged.size(); ++k)
                merged[k].flag = tokens[k].flag;
            tokens = merged;
            break;
        }
    }
    return tokens;
}

}  // namespace

TEST(EsaldiaAnalyse, AgreesWithAPlainTwinOnRandomSentences) {
    const unsigned seed = 20261123;
    std::mt19937 random(seed);
    const auto random_text = [&](std::size_t longest) {
        static const std::string alphabet = "aabbB  --..";
        std::string text;
        for (std::size_t n = 1 + random() % longest; n > 0; --n) {
            text += alphabet[random() % alphabet.size()];
        }
        return text;
    };
    std::size_t merges = 0;
    for (int world = 0; world < 40; ++world) {
        std::set<std::string> known[2];
        Networks networks;
        for (int k = 0; k < 2; ++k) {
            std::vector<std::vector<std::string>> entries;
            while (known[k].size() < 60) {
                const std::string text = tolowercase(random_text(k == 0 ? 9 : 13));
                if (text[0] == ' ' || text.back() == ' ') continue;
                if (text.find("  ") != std::string::npos) continue;
                if (known[k].insert(text).second) entries.push_back(word(text));
            }
            networks.add(k == 0 ? "eumorfo" : "zenbakiak", entries);
        }
        for (int round = 0; round < 100; ++round) {
            Esaldia sentence(0, random_text(30));
            sentence.tokenizatu();
            std::vector<PlainToken> tokens;
            for (const Tokena& token : sentence.tokenak) {
                tokens.push_back({token.testua, token.hutsunea, token.maiuskula, {}});
            }
            const std::vector<PlainToken> expected =
                plain_analysis(tokens, known[0], known[1]);
            merges += tokens.size() - expected.size();
            sentence.analizatu(networks.map, no_dictionary(), true);
            SCOPED_TRACE("seed " + std::to_string(seed) + ", world " +
                         std::to_string(world) + ", \"" + sentence.testua + "\"");
            ASSERT_EQ(sentence.tokenak.size(), expected.size());
            for (std::size_t k = 0; k < expected.size(); ++k) {
                EXPECT_EQ(sentence.tokenak[k].testua, expected[k].text);
                EXPECT_EQ(sentence.tokenak[k].hutsunea, expected[k].blank);
                EXPECT_EQ(sentence.tokenak[k].maiuskula, expected[k].flag);
                EXPECT_EQ(analyses_of(sentence.tokenak[k].analisiak),
                          expected[k].analyses);
            }
        }
    }
    EXPECT_GT(merges, 3000u) << "random sentences should meet random units";
}
