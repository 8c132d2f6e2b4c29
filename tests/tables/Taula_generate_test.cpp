// Form generation: from the start of an analysis to forms.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Taula.h"
#include "iragazkiak.h"
#include "support.h"
#include "table_text.h"

namespace {

using lemara::test::analyses_of;
using lemara::test::data_file;
using lemara::test::forms_of;
using lemara::test::KA;
using lemara::test::paths;
using lemara::test::table_from;
using lemara::test::word_path;
using Strings = std::vector<std::string>;

constexpr bool WHOLE_PATHS = false;
constexpr bool STOP_AT_TAG = true;

/// "analysis=form" of each record, in order.
Strings pairs_of(const std::vector<Analisia>& records) {
    Strings texts;
    for (const Analisia& record : records) texts.push_back(record.analisia + "=" + record.forma);
    return texts;
}

struct GenerateCase {
    std::string label, table, lema, etiketak;
    bool etiketanGelditu;
    Strings pairs;  // "analysis=form"
};

// (0)--u-->(1)--r-->(2)--<IZE>:<>-->((3))--<ABS>:a-->((4)), the end of (3) before its arc
const char UR[] =
    "0\tu\t1\n1\tr\t2\n2\t<IZE>:<>\t3\nfinal: 3\n3\t<ABS>:a\t4\nfinal: 4\n";

// The same with the end of (3) behind its arc.
const char UR_END_LAST[] =
    "0\tu\t1\n1\tr\t2\n2\t<IZE>:<>\t3\n3\t<ABS>:a\t4\nfinal: 3\nfinal: 4\n";

// Each word in one symbol, its tags behind it.
const std::string LEMMAS = paths({{"etxe", "<IZE>:<>", "<ABS>:a"},
                                  {"etxeko", "<IZE>:<>"},
                                  {"etxe", "<ADJ>:<>", "<ABS>:a"},
                                  {"etx", "<ADI>:<>", "e"},
                                  {"ur", "<IZE>:<>"}});

const std::string EXCLUDED = paths({
    {"a", "<IZE>:<>", "<ELI_IZE>:b"},
    {"a", "<IZE>:<>", "<PSP>:c"},
    {"a", "<IZE>:<>", "ba<AUR>:d"},
    {"a", "<IZE>:<>", "<ADL>:e"},
    {"a", "<IZE>:<>", "<Rare>:f"},
    {"a", "<IZE>:<>", "<ABS>:g"},
    {"a", "<IZE>:<>", "<ELI_IZE_X>:h"},
    {"a", "<IZE>:<>", "<PSPX>:i"},
    {"a", "<IZE>:<>", "<ADLX>:j"},
    {"a", "<IZE>:<>", "<rare>:k"},
    {"a", "<IZE>:<>", "<AUR>:l"},
    {"a", "<IZE>:<>", "<PSP>:m", "<ELI_IZE>:n"},
});

const std::string SKIPPED = paths({{"a", "<>:b", "<IZE>:c", "<0Dial>:d", "<1Erd>:e"},
                                   {"a", "<IZE>:c"},
                                   {"a", "x0:y", "<IZE>:<>"},
                                   {"a", "x1y:z", "<IZE>:<>"}});

const GenerateCase GENERATED[] = {
    {"a lemma with its tag", KA, "ka", "<IZE>", WHOLE_PATHS, {"ka<IZE>=ka"}},
    {"another lemma", KA, "kb", "", WHOLE_PATHS, {}},
    {"the lemma alone gives its paradigm", UR, "ur", "", WHOLE_PATHS,
     {"ur<IZE>=ur", "ur<IZE><ABS>=ura"}},
    {"the order of the arcs is the order of the forms", UR_END_LAST, "ur", "", WHOLE_PATHS,
     {"ur<IZE><ABS>=ura", "ur<IZE>=ur"}},
    {"the start of a lemma", UR, "u", "", WHOLE_PATHS, {"ur<IZE>=ur", "ur<IZE><ABS>=ura"}},
    {"an empty target gives everything", UR, "", "", WHOLE_PATHS,
     {"ur<IZE>=ur", "ur<IZE><ABS>=ura"}},
    {"tags choose", UR, "ur", "<IZE><ABS>", WHOLE_PATHS,
     {"ur<IZE>=ur", "ur<IZE><ABS>=ura"}},
    {"kept: a complete path that is a prefix of the target comes out", KA, "ka", "<IZE><ABS>",
     WHOLE_PATHS, {"ka<IZE>=ka"}},
    {"kept: even a lemma that stops short", "0\tk\t1\nfinal: 1\n", "kale", "<IZE>", WHOLE_PATHS,
     {"k=k"}},
    {"kept: even the empty path", "final: 0\n", "ka", "", WHOLE_PATHS, {"="}},
    {"a tag cut short is a start as well", UR, "ur", "<IZ", WHOLE_PATHS,
     {"ur<IZE>=ur", "ur<IZE><ABS>=ura"}},
    {"a symbol may pass the end of the target", LEMMAS, "etxek", "", WHOLE_PATHS,
     {"etxeko<IZE>=etxeko"}},
    {"lemma and tags are one text", UR, "ur<IZE>", "<ABS>", WHOLE_PATHS,
     {"ur<IZE>=ur", "ur<IZE><ABS>=ura"}},
    {"the comparison is exact", KA, "KA", "", WHOLE_PATHS, {}},
    {"an empty table", "", "ka", "", WHOLE_PATHS, {}},

    {"stop at the tag: one record for each lemma and tag", LEMMAS, "etxe", "", STOP_AT_TAG,
     {"etxe<IZE>=etxe", "etxeko<IZE>=etxeko", "etxe<ADJ>=etxe"}},
    {"stop at the tag: the form so far", "0\ta:b\t1\n1\t<IZE>:c\t2\n2\t<ABS>:d\t3\nfinal: 3\n",
     "a", "", STOP_AT_TAG, {"a<IZE>=bc"}},
    {"stop at the tag: it need not lead to an end", "0\ta\t1\n1\t<IZE>:<>\t2\n2\tb\t3\n3\tc\t3\n",
     "a", "", STOP_AT_TAG, {"a<IZE>=a"}},
    {"stop at the tag: a tag before the end of the target", LEMMAS, "etxe<IZE><ABS>", "",
     STOP_AT_TAG, {}},
    {"stop at the tag: the tag in the target", LEMMAS, "etxe<IZE>", "", STOP_AT_TAG,
     {"etxe<IZE>=etxe"}},
    {"stop at the tag: part of the tag in the target", LEMMAS, "etxe<I", "", STOP_AT_TAG,
     {"etxe<IZE>=etxe"}},
    {"stop at the tag: a path with no tag goes to its end", "0\ta\t1\nfinal: 1\n", "a", "",
     STOP_AT_TAG, {"a=a"}},
    {"stop at the tag: a path with no tag that stops short", "0\ta\t1\nfinal: 1\n", "abc", "",
     STOP_AT_TAG, {"a=a"}},
    {"stop at the tag: the marker and quality tags are none",
     "0\ta\t1\n1\t<>:b\t2\n2\t<0X>:c\t3\n3\t<IZE>:d\t4\nfinal: 4\n", "a", "", STOP_AT_TAG,
     {"a<IZE>=abcd"}},
    {"stop at the tag: a tag that leads back to its own state",
     "0\ta\t1\nfinal: 1\n1\t<X>:x\t1\n", "a", "", STOP_AT_TAG, {"a=a", "a<X>=ax"}},
    {"stop at the tag: excluded tags are stopped at first", EXCLUDED, "a<IZE>", "",
     STOP_AT_TAG, Strings(12, "a<IZE>=a")},
    {"kept: stop at the tag comes before the exclusions",
     paths({{"a", "<PSP>:c"}, {"a", "<ELI_IZE>:b"}, {"a", "<ADL>:e"}, {"a", "<Rare>:f"},
            {"ba<AUR>:d"}}),
     "", "", STOP_AT_TAG,
     {"a<PSP>=ac", "a<ELI_IZE>=ab", "a<ADL>=ae", "a<Rare>=af", "ba<AUR>=d"}},

    {"excluded kinds are left out", EXCLUDED, "a", "", WHOLE_PATHS,
     {"a<IZE><ABS>=ag", "a<IZE><ADLX>=aj", "a<IZE><rare>=ak", "a<IZE><AUR>=al"}},
    {"kept: a target with <PSP admits those", EXCLUDED, "a", "<IZE><PSP>", WHOLE_PATHS,
     {"a<IZE><PSP>=ac"}},
    {"kept: a target with part of the tag admits longer names", EXCLUDED, "a", "<IZE><PSP",
     WHOLE_PATHS, {"a<IZE><PSP>=ac", "a<IZE><PSPX>=ai"}},
    {"an exact target with <ELI_IZE> stops there", EXCLUDED, "a", "<IZE><ELI_IZE>", WHOLE_PATHS,
     {"a<IZE><ELI_IZE>=ab"}},
    {"kept: a target with part of <ELI_IZE admits longer names", EXCLUDED, "a",
     "<IZE><ELI_IZE", WHOLE_PATHS, {"a<IZE><ELI_IZE>=ab", "a<IZE><ELI_IZE_X>=ah"}},
    {"both in the target", EXCLUDED, "a", "<IZE><PSP><ELI_IZE>", WHOLE_PATHS,
     {"a<IZE><PSP>=ac", "a<IZE><PSP><ELI_IZE>=amn"}},
    {"kept: <PSP> alone in the target does not admit <ELI_IZE>",
     paths({{"a", "<PSP>:b", "<ELI_IZE>:c"}}), "a<PSP>", "", WHOLE_PATHS, {}},
    {"kept: auxiliaries cannot be asked for", EXCLUDED, "a", "<IZE><ADL>", WHOLE_PATHS, {}},
    {"kept: nor can rare analyses", EXCLUDED, "a", "<IZE><Rare>", WHOLE_PATHS, {}},
    {"kept: nor can ba-", EXCLUDED, "a", "<IZE>ba<AUR>", WHOLE_PATHS, {}},
    {"kept: an exact target with <ELI_IZE> reaches excluded kinds",
     paths({{"a", "<ADL>:b", "<ELI_IZE>:c"}, {"a", "<ELI_IZE><ADL>:d"}}), "a<ELI_IZE><ADL>", "",
     WHOLE_PATHS, {"a<ELI_IZE><ADL>=ad"}},
    {"kept: an exact <ELI_IZE> target needs no end of a word",
     "0\ta\t1\n1\t<ELI_IZE>:b\t2\n2\tc\t2\n", "a<ELI_IZE>", "", WHOLE_PATHS,
     {"a<ELI_IZE>=ab"}},
    {"kept: and goes on to no arc",
     "0\ta\t1\n1\t<ELI_IZE>:b\t2\nfinal: 2\n2\t<ABS>:c\t3\nfinal: 3\n", "a<ELI_IZE>", "",
     WHOLE_PATHS, {"a<ELI_IZE>=ab"}},
    {"past a target with <ELI_IZE it goes on",
     "0\ta\t1\n1\t<ELI_IZE>:b\t2\nfinal: 2\n2\t<ABS>:c\t3\nfinal: 3\n", "a<ELI_IZE", "",
     WHOLE_PATHS, {"a<ELI_IZE>=ab", "a<ELI_IZE><ABS>=abc"}},
    {"kept: a path that ends with an excluded tag on its last arc comes out",
     "0\ta\t1\n1\t<ADL>:b\t-1\n", "a", "", WHOLE_PATHS, {"a<ADL>=ab"}},

    {"kept: the marker, quality and opinion tags are not carried over", SKIPPED, "a", "<IZE>",
     WHOLE_PATHS, {"a<IZE>=abcde", "a<IZE>=ac", "a<IZE>=ay", "a<IZE>=az"}},
    {"kept: an opinion tag in the target can't be matched",
     paths({{"a", "<IZE>:c", "<1Erd>:e", "<ABS>:f"}}), "a", "<IZE><1Erd><ABS>", WHOLE_PATHS,
     {}},
    {"kept: nor can a quality tag", paths({{"a", "<IZE>:c", "<0Dial>:e", "<ABS>:f"}}), "a",
     "<IZE><0Dial><ABS>", WHOLE_PATHS, {}},
    {"kept: but a path that ends in front of that tag in the target comes out", SKIPPED, "a",
     "<IZE><1Erd>", WHOLE_PATHS,
     {"a<IZE>=abcde", "a<IZE>=ac", "a<IZE>=ay", "a<IZE>=az"}},
    {"kept: a symbol of one digit is carried over", "0\t1\t1\nfinal: 1\n", "", "", WHOLE_PATHS,
     {"1=1"}},
    {"kept: text with a digit as its second byte is skipped too", "0\ta1\t1\nfinal: 1\n", "",
     "", WHOLE_PATHS, {"=a1"}},
    {"text with another digit there is not", "0\ta2\t1\nfinal: 1\n", "", "", WHOLE_PATHS,
     {"a2=a2"}},
    {"a marker in the tags is cut out", UR, "ur", "<><IZE><><ABS><>", WHOLE_PATHS,
     {"ur<IZE>=ur", "ur<IZE><ABS>=ura"}},
    {"kept: a marker that appears when one is cut out goes too", UR, "ur", "<<>><IZE>",
     WHOLE_PATHS, {"ur<IZE>=ur", "ur<IZE><ABS>=ura"}},
    {"kept: a marker in the lemma can match nothing", UR, "u<>r", "", WHOLE_PATHS, {}},
    {"kept: a marker within a longer symbol is carried over", "0\ta<>\t1\nfinal: 1\n", "a<>",
     "", WHOLE_PATHS, {"a<>=a<>"}},

    {"capitals of the lemma", paths({{"A:a", "n", "a", "<IZE>:<>", "<ABS>:k"}}), "Ana", "",
     WHOLE_PATHS, {"Ana<IZE><ABS>=Anak"}},
    {"kept: a capital shows at the same index alone",
     paths({{"A:a", ":x", "N:n", "a", "<IZE>:<>"}}), "AN", "", WHOLE_PATHS,
     {"ANa<IZE>=Axna"}},
    {"kept: capitals carried down stay for the next record",
     "0\t:a\t1\n1\tA:<>\t2\n1\tb:<>\t2\n2\t<IZE>:<>\t3\nfinal: 3\n", "", "", WHOLE_PATHS,
     {"A<IZE>=A", "b<IZE>=A"}},
    {"in the other order there is none to stay",
     "0\t:a\t1\n1\tb:<>\t2\n1\tA:<>\t2\n2\t<IZE>:<>\t3\nfinal: 3\n", "", "", WHOLE_PATHS,
     {"b<IZE>=a", "A<IZE>=A"}},
    {"capitals that were cut off with their arc are gone",
     "0\tA:a\t1\n0\t:a\t1\n1\tb\t2\nfinal: 2\n", "", "", WHOLE_PATHS, {"Ab=Ab", "b=ab"}},
    {"a target that ends a word with symbols", "0\ta:b\t-1\n", "a", "", WHOLE_PATHS, {"a=b"}},
    {"a target that doesn't exist", "0\ta\t5\n", "a", "", WHOLE_PATHS, {}},
};

}  // namespace

TEST(Generation, GeneratesForms) {
    for (const GenerateCase& c : GENERATED) {
        SCOPED_TRACE(c.label);
        const auto table = table_from(c.table);
        for (const bool replacing : {false, true}) {
            const std::vector<Analisia> found =
                table->sortuFormak(c.lema, c.etiketak, c.etiketanGelditu, replacing);
            EXPECT_EQ(pairs_of(found), c.pairs) << "ordezkatzeko changes nothing";
        }
    }
}

TEST(Generation, RecordsAreTakenApart) {
    const auto table = table_from(
        paths({{"A:a", "n", "+:<>", "a", "<IZE>:<>", "<0Q>:<>", "<1O>:<>", "[h=Ane]:<>",
                "<ABS>:k"}}),
        "eumorfo");
    const std::vector<Analisia> found = table->sortuFormak("An", "", false, false);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].analisia, "An+a<IZE>[h=Ane]<ABS>");
    EXPECT_EQ(found[0].lema, "Ana");
    EXPECT_EQ(found[0].etiketa, " IZE ABS");
    EXPECT_EQ(found[0].twol, "+Ize+Abs");
    EXPECT_EQ(found[0].hobe, "Ane");
    EXPECT_EQ(found[0].tasuna, "") << "quality tags aren't carried over";
    EXPECT_EQ(found[0].iritzia, "");
    EXPECT_EQ(found[0].hiztegia, "eumorfo");
    EXPECT_EQ(found[0].forma, "Anak");
    EXPECT_EQ(found[0].maiuskula, 0);
}

// Lemmas of 1 to 24 bytes with a capital at each place, and two tags or five behind.
TEST(Generation, CarriesACapitalFromAnyPlace) {
    for (std::size_t size = 1; size <= 24; ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            for (const char letter : {'A', 'Z', '\300'}) {
                const std::string small(size, static_cast<char>(letter + 32));
                std::string lemma = small;
                lemma[at] = letter;
                for (const std::string tags : {"<IZE><ARR>", "<A><B><C><D><E>"}) {
                    const auto table =
                        table_from("0\t" + lemma + tags + ':' + small + "\t1\nfinal: 1\n");
                    const auto found = table->sortuFormak(lemma, "", false, false);
                    ASSERT_EQ(found.size(), 1u);
                    std::string expected = small;
                    aldatuMaiuskulakLow((lemma + tags).c_str(), expected.data());
                    EXPECT_EQ(found[0].forma, expected) << lemma << tags;
                }
            }
        }
    }
}

// More than a search keeps without asking for memory, behind what the vector holds.
TEST(Generation, ManyRecordsAreAppendedInOrder) {
    std::string records;
    Strings expected;
    for (int i = 0; i < 300; ++i) {
        const std::string lemma = "lemma" + std::to_string(i);
        records += "0\t" + lemma + "<IZE>:" + lemma + "\t1\n";
        expected.push_back(lemma + "<IZE>=" + lemma);
    }
    const auto table = table_from(records + "final: 1\n");
    EXPECT_EQ(pairs_of(table->sortuFormak("", "", false, false)), expected);
    std::vector<Analisia> found;
    char upper[8] = "", lower[8] = "";
    for (int time = 1; time <= 3; ++time) {
        table->birsortuFormak("", found, 0, upper, lower, false, false);
        ASSERT_EQ(found.size(), 300u * static_cast<unsigned>(time));
    }
    found.erase(found.begin(), found.begin() + 600);
    EXPECT_EQ(pairs_of(found), expected);
}

TEST(Generation, GeneratesFromTheTableOfTheFile) {
    const Taula table(data_file("etxe.sare"));
    EXPECT_EQ(pairs_of(table.sortuFormak("etxe", "<IZE>", false, false)),
              (Strings{"etxe<IZE><ARR>=etxe", "etxe<IZE><ARR><ABS>=etxea",
                       "etxe<IZE><ARR><ERG>=etxeak"}));
    EXPECT_EQ(pairs_of(table.sortuFormak("et", "", true, false)), (Strings{"etxe<IZE>=etxe"}));
}

TEST(Generation, TheTargetIsCutTo1000Bytes) {
    struct Case {
        std::string label;
        std::size_t length, records;
    };
    // (0)--[1000 a]-->(1)--b-->((2)): the target goes on with c.
    const std::string symbol(1000, 'a');
    const auto table = table_from("0\t" + symbol + "\t1\n1\tb\t2\nfinal: 2\n");
    const Case cases[] = {
        {"999 bytes", 999, 1},
        {"1,000 bytes", 1000, 1},
        {"1,001 bytes: the last is not compared", 1001, 1},
        {"5,000 bytes", 5000, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        std::string target = symbol.substr(0, std::min<std::size_t>(c.length, 1000));
        target.resize(c.length, 'c');
        EXPECT_EQ(table->sortuFormak(target, "", false, false).size(), c.records);
        EXPECT_EQ(table->sortuFormak("", target, false, false).size(), c.records);
    }
    std::string differs = symbol;
    differs[999] = 'c';
    EXPECT_EQ(table->sortuFormak(differs, "", false, false).size(), 0u)
        << "the 1,000th byte counts";
}

TEST(Generation, CyclesEnd) {
    struct Case {
        std::string label, table, lema;
        Strings pairs;
    };
    const Case cases[] = {
        {"a cycle past the target", "0\ta\t1\nfinal: 1\n1\t<X>:x\t1\n", "a", {"a=a"}},
        {"a cycle on skipped symbols", "0\t<>:x\t0\n0\ta\t1\nfinal: 1\n", "a", {"a=a"}},
        {"a cycle within the target", "final: 0\n0\ta\t0\n", "aaa",
         {"=", "a=a", "aa=aa", "aaa=aaa"}},
        {"a cycle of two states past the target",
         "0\ta\t1\nfinal: 1\n1\tb\t2\n2\tc\t1\nfinal: 2\n", "a", {"a=a", "ab=ab"}},
        {"an empty target passes each state once", "0\ta\t0\nfinal: 0\n", "", {"="}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(pairs_of(table_from(c.table)->sortuFormak(c.lema, "", false, false)), c.pairs);
    }
}

TEST(Generation, TheStepCanBeCalled) {
    const auto table = table_from(UR);
    std::vector<Analisia> found;
    char upper[64] = "u";
    char lower[64] = "w";
    EXPECT_EQ(&table->birsortuFormak("ur", found, 1, upper, lower, false, false), &found);
    EXPECT_EQ(pairs_of(found), (Strings{"ur<IZE>=wr", "ur<IZE><ABS>=wra"}));
    EXPECT_STREQ(upper, "u");
    EXPECT_STREQ(lower, "w");
    table->birsortuFormak("ur", found, -1, upper, lower, false, false);
    ASSERT_EQ(found.size(), 3u) << "a negative state ends a path";
    EXPECT_EQ(found[2].analisia, "u");
    EXPECT_EQ(found[2].forma, "w");
    table->birsortuFormak("x", found, -1, upper, lower, false, false);
    table->birsortuFormak("u", found, 99, upper, lower, false, false);
    EXPECT_EQ(found.size(), 3u);
    char capital[64] = "Ur";
    char small[64] = "ur";
    table->birsortuFormak("Ur", found, -1, capital, small, false, false);
    ASSERT_EQ(found.size(), 4u);
    EXPECT_EQ(found[3].forma, "Ur");
    EXPECT_STREQ(small, "Ur") << "a record carries its capitals down in place";
}
