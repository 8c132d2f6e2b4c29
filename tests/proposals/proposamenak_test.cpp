// Candidates are pinned twice: by rows of exact lists, and by a plain rewrite over the
// tables as they are written down here, so that no row of them can change unseen.
#include "proposamenak.h"

#include <algorithm>
#include <map>
#include <utility>

#include "support.h"

namespace {

using Strings = std::vector<std::string>;

struct Row {
    int number;
    const char* key;
    const char* replacement;
};

// The known misspellings. Four pairs of rows are equal; 105 inserts and 106 deletes an
// "h".
const Row REPLACE[] = {
    {1, "agaz", "arekin"},
    {2, "tako", "tzat"},
    {3, "arekila", "arekin"},
    {4, "ikan", "ik"},
    {5, "rantza", "rantz"},
    {6, "runtz", "rantz"},
    {7, "runtza", "rantz"},
    {8, "iya", "ia"},
    {9, "ph", "f"},
    {10, "mm", "nm"},
    {11, "aje", "ai"},
    {12, "ai", "aje"},
    {13, "ska", "xka"},
    {14, "mendu", "mentu"},
    {15, "mentu", "mendu"},
    {16, "dade", "tate"},
    {17, "tate", "dade"},
    {18, "\374", "u"},
    {19, "\341", "a"},
    {20, "\351", "e"},
    {21, "\355", "i"},
    {22, "\363", "o"},
    {23, "\372", "u"},
    {24, "ixe", "ia"},
    {25, "a", "aha"},
    {26, "e", "ehe"},
    {27, "i", "ihi"},
    {28, "o", "oho"},
    {29, "u", "uhu"},
    {30, "rrr", "rr"},
    {31, "aiten", "aten"},
    {32, "pen", "men"},
    {33, "men", "pen"},
    {34, "tar", "ar"},
    {35, "tiar", "tar"},
    {36, "ber", "bir"},
    {37, "kotz", "ko"},
    {38, "urgintza", "uragintza"},
    {39, "kalde", "alde"},
    {40, "eri", "ei"},
    {41, "elgar", "elkar"},
    {42, "untzi", "ontzi"},
    {43, "nun", "non"},
    {44, "sinis", "sines"},
    {45, "eraz", "araz"},
    {46, "kela", "keela"},
    {47, "ken", "keen"},
    {48, "ian", "ean"},
    {49, "menpe", "mende"},
    {50, "untz", "antz"},
    {51, "ixe", "ia"},
    {52, "oa", "ua"},
    {53, "ua", "oa"},
    {54, "etaz", "ez"},
    {55, "askozaz", "askoz"},
    {56, "zione", "zio"},
    {57, "zoin", "zein"},
    {58, "keri", "keria"},
    {59, "zoin", "zein"},
    {60, "ilari", "ialari"},
    {61, "bako", "gabeko"},
    {62, "gaitz", "kaitz"},
    {63, "kaitz", "gaitz"},
    {64, "ztaraz", "tzaraz"},
    {65, "ztezin", "zezin"},
    {66, "stezin", "sezin"},
    {67, "teen", "ten"},
    {68, "sterraz", "tserraz"},
    {69, "igintza", "iagintza"},
    {70, "ibi", "iba"},
    {71, "imi", "ima"},
    {72, "kera", "kara"},
    {73, "kera", "era"},
    {74, "kera", "keta"},
    {75, "tar", "tiar"},
    {76, "tiar", "tar"},
    {77, "lari", "ari"},
    {78, "gune", "une"},
    {79, "tar", "ar"},
    {80, "ue", "oa"},
    {81, "ll", "l"},
    {82, "tt", "t"},
    {83, "\361", "n"},
    {84, "cc", "tz"},
    {85, "tutata", "tuta"},
    {86, "rarte", "ra arte"},
    {87, "tz", "z"},
    {88, "tx", "x"},
    {89, "ts", "s"},
    {90, "mb", "nb"},
    {91, "mp", "np"},
    {92, "nm", "mm"},
    {93, "ll", "il"},
    {94, "il", "ll"},
    {95, "in", "\361"},
    {96, "\361", "in"},
    {97, "z", "x"},
    {98, "s", "z"},
    {99, "s", "x"},
    {100, "x", "s"},
    {101, "x", "z"},
    {102, "z", "tz"},
    {103, "x", "tx"},
    {104, "s", "ts"},
    {105, "", "h"},
    {106, "h", ""},
    {107, "u", "o"},
    {108, "o", "u"},
    {109, "b", "p"},
    {110, "d", "t"},
    {111, "g", "k"},
    {112, "p", "b"},
    {113, "t", "d"},
    {114, "k", "g"},
    {115, "x", "j"},
    {116, "j", "x"},
    {117, "j", "g"},
    {118, "g", "j"},
    {119, "v", "b"},
    {120, "c", "tz"},
    {121, "c", "z"},
};

const char* const REPLACE2_LETTERS = "abdefgijklmnoprstuxz";
const char* const TRY_LETTERS = "aeioubcdfghjklmnpqrstvwxyz";

/// Every row at every position below `end`; what comes out shorter than 3 bytes is
/// dropped.
Strings rewrite_all(const std::string& word, std::size_t end,
                    const std::vector<std::pair<std::string, std::string>>& rows) {
    Strings result;
    for (std::size_t at = 0; at < end; ++at) {
        for (const auto& [key, replacement] : rows) {
            if (word.compare(at, key.size(), key) != 0) continue;
            const std::string candidate =
                word.substr(0, at) + replacement + word.substr(at + key.size());
            if (candidate.size() >= 3) result.push_back(candidate);
        }
    }
    return result;
}

Strings expected_rep(const std::string& word) {
    std::vector<std::pair<std::string, std::string>> rows;
    for (const Row& row : REPLACE) rows.emplace_back(row.key, row.replacement);
    return rewrite_all(word, word.size(), rows);
}

Strings expected_rep2(const std::string& word) {
    std::vector<std::pair<std::string, std::string>> rows;
    for (const char* c = REPLACE2_LETTERS; *c != 0; ++c)
        rows.emplace_back("", std::string(1, *c));
    for (const char* c = REPLACE2_LETTERS; *c != 0; ++c)
        rows.emplace_back(std::string(1, *c), "");
    return rewrite_all(word, word.size() + 1, rows);
}

Strings expected_try(const std::string& word) {
    Strings result;
    if (word.size() < 3) return result;
    for (std::size_t at = 0; at < word.size(); ++at) {
        for (const char* c = TRY_LETTERS; *c != 0; ++c) {
            std::string candidate = word;
            candidate[at] = *c;
            if (candidate != word) result.push_back(candidate);
        }
    }
    return result;
}

struct Case {
    std::string label;
    std::string word;
    Strings candidates;
};

void check(const std::vector<Case>& cases, Strings (*generator)(const char*)) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(generator(c.word.c_str()), c.candidates);
    }
}

}  // namespace

TEST(Proposamenak, CapitalisesTheWord) {
    check(
        {
            {"the empty word has no candidate", "", {}},
            {"a two-letter word has no first-capital form", "ez", {"EZ"}},
            {"one letter", "a", {"A"}},
            {"first capital, then all capitals", "etxe", {"Etxe", "ETXE"}},
            {"three bytes are enough for a first capital", "bai", {"Bai", "BAI"}},
            {"capitals are folded first", "ETXE", {"Etxe", "ETXE"}},
            {"mixed case is folded first", "eTxE", {"Etxe", "ETXE"}},
            {"n-tilde has a row", "\361abar", {"\321abar", "\321ABAR"}},
            {"capital n-tilde is folded to it", "\321ABAR", {"\321abar", "\321ABAR"}},
            {"all capitals cover Latin-1", "caf\351", {"Caf\351", "CAF\311"}},
            {"a digit has no row, so nothing at all", "1etxe", {}},
            {"an accented vowel has no row, so nothing at all", "\351zer", {}},
            {"c-cedilla has no row", "\347abar", {}},
            {"a sign has no row", "%etxe", {}},
            {"a blank has no row", " etxe", {}},
        },
        sortu_proposamen_hautagaiak_MAI);
}

TEST(Proposamenak, EveryLetterHasItsCapital) {
    const std::string small = "abcdefghijklmn\361opqrstuvwxyz";
    const std::string capital = "ABCDEFGHIJKLMN\321OPQRSTUVWXYZ";
    ASSERT_EQ(small.size(), 27u);
    ASSERT_EQ(capital.size(), 27u);
    for (int byte = 1; byte < 256; ++byte) {
        SCOPED_TRACE("first byte " + std::to_string(byte));
        const std::string word = std::string(1, static_cast<char>(byte)) + "ke";
        const std::string::size_type row = small.find(tolowercase(word)[0]);
        Strings expected;
        if (row != std::string::npos) {
            expected = {capital.substr(row, 1) + "ke", capital.substr(row, 1) + "KE"};
        }
        EXPECT_EQ(sortu_proposamen_hautagaiak_MAI(word.c_str()), expected);
    }
}

TEST(Proposamenak, SwapsNeighbours) {
    check(
        {
            {"the empty word", "", {}},
            {"one byte has no neighbour", "a", {}},
            {"two bytes", "ez", {"ze"}},
            {"kept: equal neighbours give the word itself", "oo", {"oo"}},
            {"from left to right, in the case as typed",
             "Etxe",
             {"tExe", "Exte", "Etex"}},
            {"Latin-1 bytes are bytes", "\361a", {"a\361"}},
            {"a doubled letter inside", "etxxe", {"texxe", "extxe", "etxxe", "etxex"}},
        },
        sortu_proposamen_hautagaiak_DISLEXIA);
}

TEST(Proposamenak, InsertsABlankBehindAPercentSignOnly) {
    check(
        {
            {"the empty word", "", {}},
            {"one byte", "%", {}},
            {"kept: a word without a percent sign in front yields nothing", "etxea", {}},
            {"a percent sign further on does not count", "etxe%a", {}},
            {"every place, and a blank only",
             "%etxea",
             {"% etxea", "%e txea", "%et xea", "%etx ea", "%etxe a"}},
            {"two bytes make three", "%a", {"% a"}},
            {"the word is folded", "%EZ\321", {"% ez\361", "%e z\361", "%ez \361"}},
        },
        sortu_proposamen_hautagaiak_MARRA_HUTSUNE);
}

TEST(Proposamenak, RewritesKnownMisspellings) {
    check(
        {
            {"the empty word", "", {}},
            {"by position, then by row; ia is too short to be kept",
             "ixe",
             {"ihixe", "hixe", "ise", "ize", "itxe", "ihxe", "ije", "ixehe", "ixhe"}},
            {"kept: the row of ixe stands twice, so its candidate comes out twice",
             "1ixe",
             {"h1ixe", "1ia", "1ihixe", "1ia", "1hixe", "1ise", "1ize", "1itxe", "1ihxe",
              "1ije", "1ixehe", "1ixhe"}},
            {"an h is never added at the end", "ez", {"ehez", "hez", "etz", "ehz"}},
            {"one byte: what is shorter than three bytes is dropped", "a", {"aha"}},
            {"capitals are folded first", "EZ", {"ehez", "hez", "etz", "ehz"}},
        },
        sortu_proposamen_hautagaiak_REP);
}

TEST(Proposamenak, EveryRowOfTheMisspellingsIsThere) {
    int number = 0;
    for (const Row& row : REPLACE) {
        SCOPED_TRACE("row " + std::to_string(row.number));
        ASSERT_EQ(row.number, ++number);
        // Digits match no key of their own, so the rest of the word adds only what is
        // known.
        const std::string word = std::string("00") + row.key + "0";
        const Strings candidates = sortu_proposamen_hautagaiak_REP(word.c_str());
        EXPECT_EQ(candidates, expected_rep(word));
        const std::string made = std::string("00") + row.replacement + "0";
        EXPECT_NE(std::find(candidates.begin(), candidates.end(), made),
                  candidates.end());
        // At the very end of the word, and at its start.
        const std::string last = std::string("00") + row.key;
        EXPECT_EQ(sortu_proposamen_hautagaiak_REP(last.c_str()), expected_rep(last));
        const std::string first = row.key + std::string("00");
        EXPECT_EQ(sortu_proposamen_hautagaiak_REP(first.c_str()), expected_rep(first));
        const std::string alone = row.key;
        EXPECT_EQ(sortu_proposamen_hautagaiak_REP(alone.c_str()), expected_rep(alone));
    }
    EXPECT_EQ(number, 121);
}

TEST(Proposamenak, RowsThatStandTwiceGiveTwoCandidates) {
    struct Twice {
        std::string label, word, candidate;
    };
    const Twice rows[] = {
        {"kept: ixe to ia", "mixe", "mia"},
        {"kept: tar to ar", "0tar", "0ar"},
        {"kept: tiar to tar", "0tiar", "0tar"},
        {"kept: zoin to zein", "zoin", "zein"},
    };
    for (const Twice& row : rows) {
        SCOPED_TRACE(row.label);
        const Strings all = sortu_proposamen_hautagaiak_REP(row.word.c_str());
        EXPECT_EQ(std::count(all.begin(), all.end(), row.candidate), 2);
    }
}

TEST(Proposamenak, InsertsAndDeletesOneLetter) {
    Strings sixty;
    for (const char* c = REPLACE2_LETTERS; *c != 0; ++c)
        sixty.push_back(std::string(1, *c) + "ba");
    for (const char* c = REPLACE2_LETTERS; *c != 0; ++c)
        sixty.push_back("b" + std::string(1, *c) + "a");
    for (const char* c = REPLACE2_LETTERS; *c != 0; ++c)
        sixty.push_back("ba" + std::string(1, *c));
    ASSERT_EQ(sixty.size(), 60u);
    check(
        {
            {"the empty word: one-letter candidates are dropped", "", {}},
            {"one byte: two-letter candidates are dropped", "a", {}},
            {"two bytes: 60 insertions, the last position included, no deletion", "ba",
             sixty},
            {"the word is folded", "BA", sixty},
        },
        sortu_proposamen_hautagaiak_REP2);

    struct Has {
        std::string label, word, candidate;
        int times;
    };
    const Has rows[] = {
        {"a letter at the end", "etxe", "etxea", 1},
        {"a doubled letter is inserted at two positions", "etxe", "etxee", 2},
        {"a deletion of three bytes is kept", "etxe", "txe", 1},
        {"the deletion of one of two equal letters comes out at both", "etxxe", "etxe",
         2},
        {"h is neither inserted", "ari", "hari", 0},
        {"nor deleted", "hari", "ari", 0},
        {"c is not deleted", "cari", "ari", 0},
        {"q is not inserted", "ari", "qari", 0},
        {"v is not inserted", "ari", "vari", 0},
        {"w is not inserted", "ari", "wari", 0},
        {"y is not inserted", "ari", "yari", 0},
        {"n-tilde is not inserted", "ari", "\361ari", 0},
        {"n-tilde is not deleted", "\361ari", "ari", 0},
    };
    for (const Has& row : rows) {
        SCOPED_TRACE(row.label);
        const Strings all = sortu_proposamen_hautagaiak_REP2(row.word.c_str());
        EXPECT_EQ(std::count(all.begin(), all.end(), row.candidate), row.times);
    }
    for (const std::string word :
         {"", "e", "ez", "bat", "etxe", "hitzaldi", "abdefgijklmnoprstuxz"}) {
        SCOPED_TRACE(word);
        EXPECT_EQ(sortu_proposamen_hautagaiak_REP2(word.c_str()), expected_rep2(word));
    }
}

TEST(Proposamenak, TriesEveryLetterAtEveryPlace) {
    struct Count {
        std::string label, word;
        std::size_t count;
    };
    const Count rows[] = {
        {"the empty word", "", 0},
        {"one byte is too short", "e", 0},
        {"two bytes are too short", "ez", 0},
        {"26 for each place, less the letters that stand there", "etx", 26 * 3 - 3},
        {"a capital is replaced like any other byte", "Etx", 26 * 3 - 2},
        {"a Latin-1 byte is no letter of the alphabet", "\361ar", 26 * 3 - 2},
        {"digits", "123", 26 * 3},
    };
    for (const Count& row : rows) {
        SCOPED_TRACE(row.label);
        const Strings all = sortu_proposamen_hautagaiak_TRY(row.word.c_str());
        EXPECT_EQ(all.size(), row.count);
        EXPECT_EQ(all, expected_try(row.word));
    }
    const Strings all = sortu_proposamen_hautagaiak_TRY("Ari");
    ASSERT_GE(all.size(), 26u);
    EXPECT_EQ(all[0], "ari")
        << "vowels come first, and a capital gives way to its small letter";
    EXPECT_EQ(all[4], "uri");
    EXPECT_EQ(all[5], "bri");
    EXPECT_EQ(all[25], "zri");
    EXPECT_EQ(all[26], "Aai");
}

TEST(Proposamenak, NoGeneratorTouchesTheWordOrNeedsOne) {
    Strings (*const generators[])(const char*) = {
        sortu_proposamen_hautagaiak_MAI,  sortu_proposamen_hautagaiak_DISLEXIA,
        sortu_proposamen_hautagaiak_REP,  sortu_proposamen_hautagaiak_MARRA_HUTSUNE,
        sortu_proposamen_hautagaiak_REP2, sortu_proposamen_hautagaiak_TRY,
    };
    for (const auto generator : generators) {
        EXPECT_EQ(generator(""), Strings{});
        EXPECT_EQ(generator(nullptr), Strings{})
            << "a null pointer counts as the empty word";
        std::string word = "EtxE\321";
        generator(word.c_str());
        EXPECT_EQ(word, "EtxE\321");
    }
}

TEST(Proposamenak, LongWordsAreNotCut) {
    const std::string word(3000, 'q');
    EXPECT_EQ(sortu_proposamen_hautagaiak_DISLEXIA(word.c_str()).size(), 2999u);
    EXPECT_EQ(sortu_proposamen_hautagaiak_MAI(word.c_str()).front(),
              "Q" + std::string(2999, 'q'));
}

TEST(Proposamenak, CollectionHasSixListsInTheOrderOfTheGenerators) {
    for (const std::string word : {"", "a", "ez", "etxe", "Etxe", "ETXE", "%etxea",
                                   "\361abar", "oo", "mixe", "1etxe"}) {
        SCOPED_TRACE(word);
        const char* w = word.c_str();
        const std::map<int, Strings> expected = {
            {1, sortu_proposamen_hautagaiak_MAI(w)},
            {2, sortu_proposamen_hautagaiak_DISLEXIA(w)},
            {3, sortu_proposamen_hautagaiak_REP(w)},
            {4, sortu_proposamen_hautagaiak_MARRA_HUTSUNE(w)},
            {5, sortu_proposamen_hautagaiak_REP2(w)},
            {6, sortu_proposamen_hautagaiak_TRY(w)},
        };
        EXPECT_EQ(proposamen_hautagaiak_lortu(word), expected);
    }
}
