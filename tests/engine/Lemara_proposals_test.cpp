// Which candidates reach the user: stages, limits, order, and the case of the typed word.
#include <map>
#include <random>
#include <set>

#include "Lemara.h"
#include "small_engine.h"

namespace {

using lemara::test::hp_table;
using lemara::test::Lexicon;
using lemara::test::World;

using Strings = std::vector<std::string>;

/// An engine that knows `words`, capitals as they are written.
void build(World& world, const Strings& words) {
    world.table("eumorfo.sare", Lexicon().words(words, "<X>").text())
        .table("hp.sare", hp_table())
        .build();
}

struct Case {
    std::string label, word;
    Strings known, proposals;
};

const Case CASES[] = {
    {"nothing known", "bozo", {"etxe"}, {}},
    {"the empty word", "", {"etxe", "a"}, {}},
    {"the first stage has no limit: 3 swaps and 9 rewrites",
     "bozo",
     {"obzo", "bzoo", "booz", "hbozo", "pozo", "bohozo", "bhozo", "buzo", "boxo", "botzo",
      "bohzo", "bozoho", "boz", "bazo"},
     {"obzo", "bzoo", "booz", "hbozo", "pozo", "bohozo", "bhozo", "buzo", "boxo", "botzo",
      "bohzo", "bozoho"}},
    {"its order is that of the generators, not of the lexicon",
     "bozo",
     {"buzo", "pozo", "obzo"},
     {"obzo", "pozo", "buzo"}},
    {"capitals come first",
     "boze",
     {"Boze", "obze", "poze"},
     {"Boze", "BOZE", "obze", "poze"}},
    {"a hit in the first stage shuts out the others",
     "bozo",
     {"pozo", "bozoa", "bazo"},
     {"pozo"}},
    {"of nine insertions five are kept",
     "bozo",
     {"abozo", "bbozo", "dbozo", "ebozo", "fbozo", "gbozo", "ibozo", "jbozo", "kbozo"},
     {"abozo", "bbozo", "dbozo", "ebozo", "fbozo"}},
    {"four insertions",
     "bozo",
     {"abozo", "dbozo", "ebozo", "bozok"},
     {"abozo", "dbozo", "ebozo", "bozok"}},
    {"kept: a repeat counts for the limit",
     "bozo",
     {"bbozo", "abozo", "bozoa", "bozok", "bozot"},
     {"abozo", "bbozo", "bbozo", "bozoa", "bozok"}},
    {"insertions before deletions at one position",
     "bozo",
     {"ozo", "zbozo", "boz"},
     {"zbozo", "ozo", "boz"}},
    {"a hit in the second stage shuts out the third",
     "bozo",
     {"bozoa", "bazo"},
     {"bozoa"}},
    {"inserted letters come before inserted blanks, and both share the limit",
     "%bozo",
     {"a%bozo", "b%bozo", "d%bozo", "%", "bozo", "%b", "ozo", "%bo", "zo", "%boz o"},
     {"A%bozo", "B%bozo", "D%bozo", "% bozo", "%b ozo"}},
    {"five inserted letters leave no room for blanks",
     "%bozo",
     {"a%bozo", "b%bozo", "d%bozo", "e%bozo", "f%bozo", "%", "bozo"},
     {"A%bozo", "B%bozo", "D%bozo", "E%bozo", "F%bozo"}},
    {"nine inserted letters",
     "%bozo",
     {"a%bozo", "b%bozo", "d%bozo", "e%bozo", "f%bozo", "g%bozo", "i%bozo", "j%bozo",
      "k%bozo", "%", "bozo"},
     {"A%bozo", "B%bozo", "D%bozo", "E%bozo", "F%bozo"}},
    {"blanks alone", "%bozo", {"%", "bozo", "%boz o"}, {"% bozo", "%boz o"}},
    {"the third stage keeps five, by position",
     "bozo",
     {"boza", "boao", "bizo", "bezo", "bazo", "eozo", "aozo"},
     {"aozo", "eozo", "bazo", "bezo", "bizo"}},
    {"kept: a known misspelling that stands twice comes out twice",
     "mixe",
     {"mia"},
     {"mia", "mia"}},
    {"the word itself is dropped because it is unknown", "oozo", {"etxe"}, {}},
    {"kept: and kept if it is known", "oozo", {"oozo"}, {"Oozo", "OOZO", "oozo"}},
    {"all capitals: proposals too", "BOZO", {"pozo", "bohozo"}, {"POZO", "BOHOZO"}},
    {"all capitals of Latin-1", "\321ABO", {"\361apo"}, {"\321APO"}},
    {"kept: both capital candidates become one text", "BOZE", {"Boze"}, {"BOZE", "BOZE"}},
    {"digits alone", "120", {"210"}, {"210"}},
    {"digits alone bring capitals to a proposal", "120", {"a20"}, {"A20"}},
    {"a capital in front", "Bozo", {"pozo"}, {"Pozo"}},
    {"only the first letter", "BoZO", {"pozo"}, {"Pozo"}},
    {"a capital inside changes nothing", "bOZO", {"pozo"}, {"pozo"}},
    {"kept: a digit in front counts as a capital", "1bozo", {"b1ozo"}, {"B1ozo"}},
    {"kept: so does a small letter with a tilde", "\361abo", {"nabo"}, {"Nabo"}},
    {"kept: but it keeps its own", "\361abo", {"\361apo"}, {"\361apo"}},
    {"an accented small letter in front", "\351bo", {"ebo"}, {"Ebo"}},
    {"a small letter leaves proposals as they are", "bozo", {"Pozo", "pozo"}, {"pozo"}},
    {"a capital word finds capital entries by itself", "Bozo", {"Pozo"}, {}},
};

}  // namespace

TEST(LemaraProposals, ComeInStagesAndInTheCaseOfTheWord) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        World world;
        build(world, c.known);
        EXPECT_EQ(world.engine->lortu_ezzg_proposamenak(c.word), c.proposals);
    }
}

TEST(LemaraProposals, AreValidatedAsWordsWithoutTheirMultiWordEntries) {
    World world;
    world
        .table("eumorfo.sare",
               Lexicon()
                   .word("pozo handi", {"<IZE>"})  // begins with a candidate
                   .word("buzo", {"<MAT>"})        // is no word for the checker
                   .word("boxo", {"<IZE>"})
                   .text())
        .table("hp.sare", hp_table())
        .dictionary(lemara::test::dictionary_line("boto", "<ARR>"))
        .build();
    EXPECT_EQ(world.engine->lortu_ezzg_proposamenak("bozo"), Strings{"boxo"});
    EXPECT_EQ(world.engine->lortu_ezzg_proposamenak("obto"), Strings{"boto"})
        << "words of the dictionary are proposals";
}

namespace {

/// The stages once more, over all candidates at once.
Strings plain_proposals(const Lemara& engine, const std::string& word) {
    const std::map<int, Strings> candidates = proposamen_hautagaiak_lortu(word);
    const auto valid_of = [&](int key) {
        Strings valid;
        for (const std::string& text : candidates.at(key)) {
            if (engine.isValid(text, false)) valid.push_back(text);
        }
        return valid;
    };
    const auto joined = [&](const std::vector<int>& keys, std::size_t limit) {
        Strings all;
        for (const int key : keys) {
            for (const std::string& text : valid_of(key)) all.push_back(text);
        }
        if (all.size() > limit) all.resize(limit);
        return all;
    };
    Strings result = joined({1, 2, 3}, 1000000);
    if (result.empty()) result = joined({5, 4}, 5);
    if (result.empty()) result = joined({6}, 5);
    const bool all_capitals = word == touppercase(word);
    const bool starts_small = !word.empty() && word[0] >= 'a' && word[0] <= 'z';
    for (std::string& text : result) {
        if (all_capitals) {
            text = touppercase(text);
        } else if (!starts_small && text[0] >= 'a' && text[0] <= 'z') {
            text[0] = static_cast<char>(text[0] - 32);
        }
    }
    return result;
}

}  // namespace

TEST(LemaraProposals, AgreeWithThePlainStagesOnRandomWords) {
    const unsigned seed = 20261124;
    std::mt19937 random(seed);
    const auto random_word = [&](const std::string& alphabet) {
        std::string word;
        for (std::size_t n = 2 + random() % 4; n > 0; --n) {
            word += alphabet[random() % alphabet.size()];
        }
        return word;
    };
    std::set<std::string> words = {"%", "%a", "%t", "a", "o"};
    while (words.size() < 150) words.insert(random_word("atzosxiu\361%"));
    World world;
    build(world, Strings(words.begin(), words.end()));
    std::size_t proposed = 0;
    for (int round = 0; round < 400; ++round) {
        const std::string word =
            random_word(round % 3 == 0 ? "AtzOs1\321%" : "atzosxiu\361%");
        SCOPED_TRACE("seed " + std::to_string(seed) + ", word " + word);
        const Strings expected = plain_proposals(*world.engine, word);
        if (!expected.empty()) ++proposed;
        ASSERT_EQ(world.engine->lortu_ezzg_proposamenak(word), expected);
    }
    EXPECT_GT(proposed, 100u);
}
