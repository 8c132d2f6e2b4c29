// The personal dictionary and its file: reading, appending, removing, rewriting.
#include "HiztegiPertsonala.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "dictionary_text.h"
#include "support.h"

namespace {

using lemara::test::read_file;
using lemara::test::records_of;
using lemara::test::stems_of;
using lemara::test::stdout_of;
using lemara::test::TempDir;
using Strings = std::vector<std::string>;

constexpr bool IN_FILE = true;
constexpr bool IN_MEMORY = false;

constexpr int NO_WORD = 10000;  // gutxieneko_luzera of a file without a word

struct ReadCase {
    std::string label, text;
    Strings records;  // "lema kategoria hobe/erabili"
    int shortest, most_words;
};

const ReadCase READ[] = {
    {"an empty file", "", {}, NO_WORD, 0},
    {"a word", "etxe\t<ARR>\n", {"etxe <ARR> /"}, 4, 1},
    {"all five fields", "etxe\t<ARR>\th\te\tHP\n", {"etxe <ARR> h/e"}, 4, 1},
    {"an empty field in the middle", "etxe\t<ARR>\t\te\tHP\n", {"etxe <ARR> /e"}, 4, 1},
    {"the line that the system writes", "etxe\t<ARR>\t\t\tHP\n", {"etxe <ARR> /"}, 4, 1},
    {"a last line with no line feed", "etxe\t<ARR>", {"etxe <ARR> /"}, 4, 1},
    {"a vertical bar behind the word", "etxe|<ARR>\n", {"etxe <ARR> /"}, 4, 1},
    {"a vertical bar and further fields", "etxe|<ARR>\th\te\tHP\n", {"etxe <ARR> h/e"}, 4, 1},
    {"a vertical bar further on is text", "etxe\t<ARR>\th|x\n", {"etxe <ARR> h|x/"}, 4, 1},
    {"a vertical bar behind the tag costs the line", "etxe\t<ARR>|x\n", {}, NO_WORD, 0},
    {"a blank line in front", "\netxe\t<ARR>\n", {"etxe <ARR> /"}, 4, 1},
    {"blank lines between", "etxe\t<ARR>\n\n\nur\t<ARR>\n", {"etxe <ARR> /", "ur <ARR> /"}, 2,
     1},
    {"a line of one byte", "x\netxe\t<ARR>\n", {"etxe <ARR> /"}, 4, 1},
    {"a comment", "// etxe\t<ARR>\nur\t<ARR>\n", {"ur <ARR> /"}, 2, 1},
    {"a comment of two bytes", "//\nur\t<ARR>\n", {"ur <ARR> /"}, 2, 1},
    {"a comment of three slashes", "///\n", {}, NO_WORD, 0},
    {"one slash is text", "/a\t<ARR>\n", {"/a <ARR> /"}, 2, 1},
    {"two words with a blank", "etxe orratz\t<ARR>\n", {"etxe orratz <ARR> /"}, 11, 2},
    {"three words", "a b c\t<ARR>\n", {"a b c <ARR> /"}, 5, 3},
    {"kept: every blank counts", " a  b\t<ARR>\n", {" a  b <ARR> /"}, 5, 4},
    {"the shortest and the most words", "hiru\t<ARR>\nbat bi\t<ARR>\nbi\t<ARR>\nzazpiak\t<ARR>\n",
     {"hiru <ARR> /", "bat bi <ARR> /", "bi <ARR> /", "zazpiak <ARR> /"}, 2, 2},
    {"words of 3 and 7 bytes", "bat\t<ARR>\nzazpiak\t<ARR>\n",
     {"bat <ARR> /", "zazpiak <ARR> /"}, 3, 1},
    {"a word of one byte is passed over", "a\t<ARR>\netxe\t<ARR>\n", {"etxe <ARR> /"}, 4, 1},
    {"an empty word is passed over", "\t<ARR>\n", {}, NO_WORD, 0},
    {"kept: a tag without its end costs the line", "etxe\t<ARR\nur\t<ARR>\n", {"ur <ARR> /"}, 2,
     1},
    {"kept: a lone opening bracket costs the line", "etxe\t<\n", {}, NO_WORD, 0},
    {"kept: a carriage return behind the tag costs the line", "etxe\t<ARR>\r\nur\t<ARR>\n",
     {"ur <ARR> /"}, 2, 1},
    {"kept: a carriage return behind the last field stays", "etxe\t<ARR>\th\r\n",
     {"etxe <ARR> h\r/"}, 4, 1},
    {"a blank behind the tag costs the line", "etxe\t<ARR> \n", {}, NO_WORD, 0},
    {"an unknown tag makes a record", "etxe\t<XXX>\n", {"etxe <XXX> /"}, 4, 1},
    {"a tag without a name makes a record", "etxe\t<>\n", {"etxe <> /"}, 4, 1},
    {"the same word and tag twice make one record", "etxe\t<ARR>\thobe\netxe\t<ARR>\tx\n",
     {"etxe <ARR> hobe/"}, 4, 1},
    {"the same word with another tag", "etxe\t<ARR>\netxe\t<IZO>\n",
     {"etxe <ARR> /", "etxe <IZO> /"}, 4, 1},
    {"Latin-1 passes through", "\361abar\t<ARR>\t\361\n", {"\361abar <ARR> \361/"}, 5, 1},
    {"a long word", std::string(5000, 'a') + "\t<ARR>\n",
     {std::string(5000, 'a') + " <ARR> /"}, 5000, 1},
    {"kept: a word longer than 10,000 bytes changes nothing", std::string(10001, 'a') +
     "\t<IZB>\n", {std::string(10001, 'a') + " <IZB> /"}, NO_WORD, 1},
};

struct RefusedCase {
    std::string label, text;
    Strings records;  // of the lines before it
};

const RefusedCase REFUSED[] = {
    {"a word and no TAB", "etxe\n", {}},
    {"a word and an empty tag", "etxe\t\n", {}},
    {"an empty tag and further fields", "etxe\t\th\te\tHP\n", {}},
    {"a tag with no opening bracket", "etxe\tARR>\n", {}},
    {"a tag with neither", "etxe\tARR\n", {}},
    {"a tag behind a blank", "etxe\t <ARR>\n", {}},
    {"a lone closing bracket", "etxe\t>\n", {}},
    {"kept: two slashes behind a blank are an entry", " //\n", {}},
    {"kept: a word of one byte raises the error too", "a\t\n", {}},
    {"an empty word raises it", "\t\t<ARR>\n", {}},
    {"a vertical bar and no tag", "a|\n", {}},
    {"a blank line of blanks", "   \n", {}},
    {"a carriage return for an empty line is one byte", "\r\na\r\n", {}},
    {"the lines before it are read", "ur\t<ARR>\netxe\t<ARR>\nx\ty\nhau\t<ARR>\n",
     {"ur <ARR> /", "etxe <ARR> /"}},
};

struct AppendCase {
    std::string label, hobe, erabili, sai, line;
};

const AppendCase APPENDED[] = {
    {"no better form", "", "", "", "\netxe\t<ARR>\t\t\tHP"},
    {"kept: the mark of the line is always HP", "", "", "ABC", "\netxe\t<ARR>\t\t\tHP"},
    {"a better form", "h", "", "HP", "\netxe\t<ARR>\th\t\tHP"},
    {"a form to use", "", "e", "HP", "\netxe\t<ARR>\t\te\tHP"},
    {"kept: with both the form to use is not written", "h", "e", "HP",
     "\netxe\t<ARR>\th\t\tHP"},
};

template <class Action>
void expect_substr_error(Action&& action) {
    try {
        action();
        ADD_FAILURE() << "no error";
    } catch (const std::out_of_range& error) {
        EXPECT_NE(std::string(error.what()).find("basic_string::substr"), std::string::npos)
            << error.what();
    }
}

void add(HiztegiPertsonala& dictionary, const std::string& word, const std::string& tag) {
    dictionary.gehitu_sarrera(IN_MEMORY, word, tag, "", "", "");
}

}  // namespace

TEST(HiztegiPertsonala, StartsEmpty) {
    const HiztegiPertsonala dictionary;
    EXPECT_EQ(dictionary.fitxategia, "");
    EXPECT_TRUE(dictionary.sarrerak.empty());
    EXPECT_TRUE(dictionary.erroak.empty());
    EXPECT_EQ(dictionary.gutxieneko_luzera, 0);
    EXPECT_EQ(dictionary.gehienezko_hitzak, 0);
    EXPECT_TRUE(std::has_virtual_destructor<HiztegiPertsonala>::value);
}

TEST(HiztegiPertsonala, ReadsItsFile) {
    const TempDir folder;
    for (const ReadCase& c : READ) {
        SCOPED_TRACE(c.label);
        const std::string path = folder.write("hp.txt", c.text);
        const HiztegiPertsonala dictionary(path);
        EXPECT_EQ(dictionary.fitxategia, path);
        EXPECT_EQ(records_of(dictionary), c.records);
        EXPECT_EQ(dictionary.gutxieneko_luzera, c.shortest);
        EXPECT_EQ(dictionary.gehienezko_hitzak, c.most_words);
        EXPECT_EQ(read_file(path), c.text) << "reading leaves the file alone";
    }
}

TEST(HiztegiPertsonala, RefusesLinesWithoutATag) {
    const TempDir folder;
    for (const RefusedCase& c : REFUSED) {
        SCOPED_TRACE(c.label);
        const std::string path = folder.write("hp.txt", c.text);
        expect_substr_error([&] { const HiztegiPertsonala dictionary(path); });
        HiztegiPertsonala dictionary;
        dictionary.fitxategia = path;
        expect_substr_error([&] { dictionary.kargatu_fitxategia(); });
        EXPECT_EQ(records_of(dictionary), c.records);
    }
}

TEST(HiztegiPertsonala, AFileThatIsMissingIsEmpty) {
    const TempDir folder;
    for (const std::string& path : {folder.path("ez-dago.txt"), folder.path("ez/dago.txt"),
                                   folder.path(""), std::string()}) {
        SCOPED_TRACE(path);
        const std::string output = stdout_of([&] {
            const HiztegiPertsonala dictionary(path);
            EXPECT_TRUE(dictionary.sarrerak.empty());
            EXPECT_TRUE(dictionary.erroak.empty());
            EXPECT_EQ(dictionary.gutxieneko_luzera, NO_WORD);
            EXPECT_EQ(dictionary.gehienezko_hitzak, 0);
        });
        EXPECT_EQ(output, "") << "in silence";
    }
}

TEST(HiztegiPertsonala, KeepsTheSourceMark) {
    const TempDir folder;
    const HiztegiPertsonala dictionary(folder.write(
        "hp.txt", "etxe\t<ARR>\th\te\tEH\tx\t\nlagun\t<ARR>\t\t\tHP\r\nasto\t<ARR>\n"));
    EXPECT_EQ(dictionary.erroak.at("etxe")->sai, "EH\tx\t") << "further TABs stay";
    EXPECT_EQ(dictionary.erroak.at("lagun")->sai, "HP\r");
    EXPECT_EQ(dictionary.erroak.at("asto")->sai, "");
    EXPECT_EQ(dictionary.erroak.at("etxe")->hobe, "h");
    EXPECT_EQ(dictionary.erroak.at("etxe")->erabili, "e");
    for (const HPsarrera* record : dictionary.sarrerak) EXPECT_EQ(record->sai, "HP");
}

TEST(HiztegiPertsonala, ARepeatedLineStillCounts) {
    // The word is a repeat behind a vertical bar too.
    const TempDir folder;
    const std::string path = folder.write("hp.txt", "bat bi\t<ARR>\n");
    HiztegiPertsonala dictionary(path);
    EXPECT_EQ(dictionary.gutxieneko_luzera, 6);
    dictionary.kargatu_fitxategia();
    EXPECT_EQ(records_of(dictionary), (Strings{"bat bi <ARR> /"}));
    EXPECT_EQ(dictionary.gutxieneko_luzera, 6)
        << "a second reading turns each line away and counts it";
    EXPECT_EQ(dictionary.gehienezko_hitzak, 2);
    HiztegiPertsonala other;
    add(other, "bat bi", "<ARR>");
    other.fitxategia = path;
    other.kargatu_fitxategia();
    EXPECT_EQ(records_of(other), (Strings{"bat bi <ARR> /"}));
    EXPECT_EQ(other.gutxieneko_luzera, 6);
    EXPECT_EQ(other.gehienezko_hitzak, 2);
}

TEST(HiztegiPertsonala, AppendsALine) {
    const TempDir folder;
    for (const AppendCase& c : APPENDED) {
        SCOPED_TRACE(c.label);
        HiztegiPertsonala dictionary(folder.write("hp.txt", ""));
        dictionary.gehitu_sarrera(IN_FILE, "etxe", "<ARR>", c.hobe, c.erabili, c.sai);
        EXPECT_EQ(read_file(dictionary.fitxategia), c.line);
        EXPECT_EQ(records_of(dictionary), (Strings{"etxe <ARR> " + c.hobe + "/" + c.erabili}))
            << "the record has both";
        dictionary.gehitu_sarrera(IN_FILE, "etxe", "<ARR>", "x", "y", "z");
        EXPECT_EQ(read_file(dictionary.fitxategia), c.line) << "a repeat does nothing at all";
        dictionary.gehitu_sarrera(IN_MEMORY, "ur", "<ARR>", "", "", "");
        EXPECT_EQ(read_file(dictionary.fitxategia), c.line) << "memory only";
        dictionary.gehitu_sarrera(IN_FILE, "Ur berri", "<XYZ>", "", "", "");
        EXPECT_EQ(read_file(dictionary.fitxategia), c.line + "\nUr berri\t<XYZ>\t\t\tHP")
            << "an unknown tag is written too";
    }
}

TEST(HiztegiPertsonala, AppendsBehindWhatIsThere) {
    const TempDir folder;
    HiztegiPertsonala dictionary(folder.write("hp.txt", "// nireak\nur\t<ARR>\n"));
    dictionary.gehitu_sarrera(IN_FILE, "etxe", "<ARR>", "", "", "");
    EXPECT_EQ(read_file(dictionary.fitxategia),
              "// nireak\nur\t<ARR>\n\netxe\t<ARR>\t\t\tHP");
    EXPECT_EQ(dictionary.gutxieneko_luzera, 2);
    const HiztegiPertsonala again(dictionary.fitxategia);
    EXPECT_EQ(records_of(again), (Strings{"ur <ARR> /", "etxe <ARR> /"}));
    EXPECT_EQ(again.erroak.at("etxe")->sai, "HP");
}

TEST(HiztegiPertsonala, CreatesItsFile) {
    const TempDir folder;
    HiztegiPertsonala dictionary(folder.path("berria.txt"));
    dictionary.gehitu_sarrera(IN_FILE, "etxe", "<ARR>", "", "", "");
    EXPECT_EQ(read_file(dictionary.fitxategia), "\netxe\t<ARR>\t\t\tHP");
    EXPECT_EQ(dictionary.gutxieneko_luzera, NO_WORD) << "adding does not count";
}

TEST(HiztegiPertsonala, AFileThatCannotBeWrittenIsPassedOver) {
    const TempDir folder;
    for (const std::string& path : {folder.path("ez/dago.txt"), folder.path(""), std::string()}) {
        SCOPED_TRACE(path);
        HiztegiPertsonala dictionary(path);
        const std::string output = stdout_of([&] {
            dictionary.gehitu_sarrera(IN_FILE, "etxe", "<ARR>", "", "", "");
            dictionary.gehitu_sarrera(IN_FILE, "ur", "<ARR>", "", "", "");
            dictionary.kendu_sarrera(IN_FILE, "ur", "<ARR>");
        });
        EXPECT_EQ(output, "");
        EXPECT_EQ(records_of(dictionary), (Strings{"etxe <ARR> /"}));
    }
}

TEST(HiztegiPertsonala, RemovesAWord) {
    HiztegiPertsonala dictionary;
    add(dictionary, "etxe", "<ARR>");
    add(dictionary, "neska", "<ARR>");
    add(dictionary, "hartu", "<ADI>");
    dictionary.kendu_sarrera(IN_MEMORY, "neska", "<ARR>");
    EXPECT_EQ(records_of(dictionary), (Strings{"etxe <ARR> /", "hartu <ADI> /"}));
    EXPECT_EQ(dictionary.erroak.count("neska"), 0u);
    EXPECT_EQ(dictionary.erroak.count("nesk"), 0u);
    dictionary.kendu_sarrera(IN_MEMORY, "hartu", "<ADI>");
    EXPECT_EQ(records_of(dictionary), (Strings{"etxe <ARR> /"}));
    EXPECT_EQ(stems_of(dictionary), (Strings{"etxe = etxe <IZE><ARR> etxe <hp1>"}))
        << "all three entries of the verb";
    dictionary.kendu_sarrera(IN_MEMORY, "etxe", "<IZO>");
    dictionary.kendu_sarrera(IN_MEMORY, "etx", "<ARR>");
    dictionary.kendu_sarrera(IN_MEMORY, "ezezaguna", "<ARR>");
    EXPECT_EQ(records_of(dictionary), (Strings{"etxe <ARR> /"}));
    EXPECT_EQ(dictionary.erroak.size(), 1u);
}

struct RemoveCase {
    std::string label;
    std::vector<Strings> added;  // {word, tag}
    std::string word, tag;
    Strings records, stems;
};

const RemoveCase REMOVED[] = {
    {"kept: a word with a capital leaves its stems", {{"Etxe", "<ARR>"}}, "Etxe", "<ARR>", {},
     {"etxe = etxe <IZE><ARR> etxe <hp1>"}},
    {"kept: named in lower case it leaves its record", {{"Etxe", "<ARR>"}}, "etxe", "<ARR>",
     {"Etxe <ARR> /"}, {}},
    {"a proper name goes whole", {{"Ana", "<PIB>"}}, "Ana", "<PIB>", {}, {}},
    {"kept: an empty tag takes the stems and no record", {{"etxe", "<ARR>"}}, "etxe", "",
     {"etxe <ARR> /"}, {}},
    {"kept: part of a tag does likewise", {{"etxe", "<ARR>"}}, "etxe", "<IZE>",
     {"etxe <ARR> /"}, {}},
    {"an empty tag takes the record that has none", {{"etxe", ""}}, "etxe", "", {}, {}},
    {"one of two classes", {{"etxe", "<ARR>"}, {"etxe", "<IZO>"}}, "etxe", "<IZO>",
     {"etxe <ARR> /"}, {"etxe = etxe <IZE><ARR> etxe <hp1>"}},
    {"kept: the later word gets no stem back", {{"etxe", "<ARR>"}, {"etxe", "<IZO>"}}, "etxe",
     "<ARR>", {"etxe <IZO> /"}, {}},
    {"a stem that another word owns stays", {{"nesk", "<IZB>"}, {"neska", "<ARR>"}}, "neska",
     "<ARR>", {"nesk <IZB> /"}, {"nesk = nesk <IZE><IZB> nesk <hp17>"}},
};

TEST(HiztegiPertsonala, RemovesByLemmaAndTag) {
    for (const RemoveCase& c : REMOVED) {
        SCOPED_TRACE(c.label);
        HiztegiPertsonala dictionary;
        for (const Strings& entry : c.added) add(dictionary, entry[0], entry[1]);
        dictionary.kendu_sarrera(IN_MEMORY, c.word, c.tag);
        EXPECT_EQ(records_of(dictionary), c.records);
        EXPECT_EQ(stems_of(dictionary), c.stems);
    }
}

TEST(HiztegiPertsonala, RemovesEveryRecordThatIsEqual) {
    // The operations make no equal records; a host may.
    HiztegiPertsonala dictionary;
    for (const char* word : {"a", "x", "b", "x", "c"}) {
        dictionary.sarrerak.push_back(new HPsarrera(word, "<ARR>", "", "", "", "HP", ""));
    }
    dictionary.kendu_sarrera(IN_MEMORY, "x", "<ARR>");
    EXPECT_EQ(records_of(dictionary), (Strings{"a <ARR> /", "b <ARR> /", "c <ARR> /"}))
        << "the rest keeps its order";
}

TEST(HiztegiPertsonala, RemovedEntriesStayValid) {
    HiztegiPertsonala dictionary;
    add(dictionary, "etxe", "<ARR>");
    const HPsarrera* const record = dictionary.sarrerak[0];
    const HPsarrera* const stem = dictionary.erroak.at("etxe");
    dictionary.kendu_sarrera(IN_MEMORY, "etxe", "<ARR>");
    EXPECT_TRUE(dictionary.sarrerak.empty());
    EXPECT_TRUE(dictionary.erroak.empty());
    EXPECT_EQ(record->lema, "etxe");
    EXPECT_EQ(stem->paradigma, "<hp1>");
    add(dictionary, "etxe", "<ARR>");
    EXPECT_EQ(dictionary.erroak.size(), 1u) << "the word can be added again";
}

TEST(HiztegiPertsonala, RewritesItsFile) {
    const TempDir folder;
    const std::string text =
        "// nireak\nur\t<ARR>\th\te\tEH\n\nx\netxe|<ARR>\nbere\t<ARR\nasto\t<ARR>\t\te2\tHP\n";
    HiztegiPertsonala dictionary(folder.write("hp.txt", text));
    dictionary.kendu_sarrera(IN_MEMORY, "etxe", "<ARR>");
    EXPECT_EQ(read_file(dictionary.fitxategia), text) << "memory only";
    dictionary.kendu_sarrera(IN_FILE, "ez dago", "<ARR>");
    EXPECT_EQ(read_file(dictionary.fitxategia),
              "\nur\t<ARR>\th\te\tHP\nasto\t<ARR>\t\te2\tHP\n")
        << "kept: a word that isn't there, and comments are gone all the same";
    dictionary.gehitu_sarrera(IN_FILE, "mendi", "<ARR>", "h", "e", "EH");
    EXPECT_EQ(read_file(dictionary.fitxategia),
              "\nur\t<ARR>\th\te\tHP\nasto\t<ARR>\t\te2\tHP\n\nmendi\t<ARR>\th\t\tHP")
        << "kept: an empty line between a rewrite and what is appended";
    dictionary.kendu_sarrera(IN_FILE, "asto", "<ARR>");
    EXPECT_EQ(read_file(dictionary.fitxategia),
              "\nur\t<ARR>\th\te\tHP\nmendi\t<ARR>\th\te\tHP\n")
        << "a rewrite has both forms";
    const HiztegiPertsonala again(dictionary.fitxategia);
    EXPECT_EQ(records_of(again), (Strings{"ur <ARR> h/e", "mendi <ARR> h/e"}));
    dictionary.kendu_sarrera(IN_FILE, "ur", "<ARR>");
    dictionary.kendu_sarrera(IN_FILE, "mendi", "<ARR>");
    EXPECT_EQ(read_file(dictionary.fitxategia), "\n") << "no record: one line feed";
    EXPECT_EQ(dictionary.gutxieneko_luzera, 2) << "the integers tell of the file as read";
    EXPECT_EQ(dictionary.gehienezko_hitzak, 1);
}

TEST(HiztegiPertsonala, ARewriteMakesAFile) {
    const TempDir folder;
    HiztegiPertsonala dictionary(folder.path("berria.txt"));
    dictionary.kendu_sarrera(IN_FILE, "etxe", "<ARR>");
    EXPECT_EQ(read_file(dictionary.fitxategia), "\n");
}
