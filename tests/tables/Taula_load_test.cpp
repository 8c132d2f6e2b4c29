// The table model, its text format and the two loaders.
#include "Taula.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "lemara/compiled_table.h"
#include "support.h"
#include "table_text.h"

namespace {

using lemara::test::data_file;
using lemara::test::describe;
using lemara::test::KA;
using lemara::test::stdout_of;
using lemara::test::TempDir;
using Strings = std::vector<std::string>;

struct LoadCase {
    std::string label, text;
    Strings states;
};

// The same in the file and in memory.
const LoadCase BOTH_FORMS[] = {
    {"a final record for state 0", "final: 0\n", {"! #"}},
    {"the second form of a final record", "final\t0\n", {"! #"}},
    {"any one character may stand in the second form", "final:1\n", {"", "! #"}},
    {"the colon and a blank go together", "final: 12\n",
     {"", "", "", "", "", "", "", "", "", "", "", "", "! #"}},
    {"kept: a second blank is read over by the number", "final:  1\n", {"", "! #"}},
    {"no record begins with those letters but a final one", "finale\ta\t1\n", {"! #"}},
    {"a final record with no number counts as 0", "final: \n", {"! #"}},
    {"a final record of junk counts as 0", "final: x\n", {"! #"}},
    {"an arc of exactly five characters", "0\ta\t0\n", {"a/a>0"}},
    {"arcs keep the order of the file", "0\tb\t1\n0\ta\t1\n0\tc\t0\nfinal: 1\n",
     {"b/b>1 a/a>1 c/c>0", "! #"}},
    {"records of a state need not stand together", "0\ta\t1\n1\tb\t0\n0\tc\t1\nfinal: 1\n",
     {"a/a>1 c/c>1", "! b/b>0 #"}},
    {"kept: a final record in the middle leaves the flag false", "0\ta\t0\nfinal: 0\n0\tb\t0\n",
     {"a/a>0 # b/b>0"}},
    {"a final record at the end sets the flag", "0\ta\t0\nfinal: 0\n", {"! a/a>0 #"}},
    {"two final records give two ends", "final: 0\nfinal: 0\n", {"! # #"}},
    {"the four example lines",
     "0\tk\t1\n4\t<IZE>:<>\t9\n7\t<>:a\t8\nfinal: 9\n",
     {"k/k>1", "", "", "", "<IZE>/>9", "", "", "<>/a>8", "", "! #"}},
    {"upper and lower", "0\ta:b\t0\n", {"a/b>0"}},
    {"further colons stay below", "0\ta:b:c\t0\n", {"a/b:c>0"}},
    {"a lone colon is a colon on both sides", "0\t:\t0\n", {":/:>0"}},
    {"two colons: nothing above, a colon below", "0\t::\t0\n", {"/:>0"}},
    {"three colons: nothing above, two colons below", "0\t:::\t0\n", {"/::>0"}},
    {"nothing above", "0\t:a\t0\n", {"/a>0"}},
    {"nothing below", "0\ta:\t0\n", {"a/>0"}},
    {"the marker below is nothing", "0\ta:<>\t0\n", {"a/>0"}},
    {"kept: the marker above stays", "0\t<>:a\t0\n", {"<>/a>0"}},
    {"kept: the marker on both sides stays above", "0\t<>:<>\t0\n", {"<>/>0"}},
    {"kept: a marker with no colon stays on both sides", "0\t<>\t0\n", {"<>/<>>0"}},
    {"kept: a marker within the lower side stays", "0\ta:<>b\t0\n", {"a/<>b>0"}},
    {"nothing above and the marker below", "0\t:<>\t0\n", {"/>0"}},
    {"symbols of several letters", "0\t<IZE>:ak\t0\n", {"<IZE>/ak>0"}},
    {"a blank is a symbol", "0\t \t0\n", {" / >0"}},
    {"Latin-1 passes through", "0\t\361:\377\t0\n", {"\361/\377>0"}},
    {"an empty symbol field", "00\t\t0\n", {"/>0"}},
    {"what stands behind the target is left alone", "0\ta\t0 x\n", {"a/a>0"}},
    {"a third TAB is left alone", "0\ta\t0\t7\n", {"a/a>0"}},
    {"an empty target counts as 0", "00\ta\t\n", {"a/a>0"}},
    {"leading zeros", "00\ta\t01\nfinal: 01\n", {"a/a>1", "! #"}},
    {"kept: the last counted line tells the number of states", "0\ta\t1\n1\tb\t0\n",
     {"a/a>1", "b/b>0"}},
    {"kept: a target alone does not count", "0\ta\t5\n", {"a/a>5"}},
    {"kept: the highest state must come last", "2\ta\t0\n0\tb\t2\n", {"b/b>2"}},
    {"kept: a line that begins with a blank is no counted line but an arc",
     "final: 1\n 1\ta\t0\n", {"", "# a/a>0"}},
    {"a negative source does not exist", "-1\ta\t0\n", {""}},
    {"a negative target ends a word", "0\ta\t-1\n", {"a/a>-1"}},
    {"kept: a junk line with TABs becomes an arc of state 0", "abc\tx\ty\n", {"x/x>0"}},
    {"kept: a junk line may count on", "1x\ta\t0\nfinal: 1\n", {"", "! a/a>0 #"}},
};

// In the file alone: line ends, short lines, and lines with fewer than two TABs.
const LoadCase FILE_FORM[] = {
    {"an empty file gives one state", "", {""}},
    {"an empty line", "\n", {""}},
    {"carriage returns go", "0\ta\t0\r\nfinal: 0\r\n", {"! a/a>0 #"}},
    {"a carriage return alone is short", "\r\n", {""}},
    {"one carriage return goes, a second stays", "0\ta\t0\r\r\n", {"a/a>0"}},
    {"a carriage return doesn't help a short line", "0\ta\t\r\nfinal: 0\n", {"! #"}},
    {"the last line needs no line feed", "0\ta\t0\nfinal: 0", {"! a/a>0 #"}},
    {"the last line with a carriage return alone", "final: 0\r", {"! #"}},
    {"a record without its target is short", "0\ta\nfinal: 0\n", {"! #"}},
    {"a line of four is short", "0\ta\t\nfinal: 0\n", {"! #"}},
    {"a line of two fields counts with target 0", "final: 1\n1\tabc\n", {"", "# abc/abc>0"}},
    {"a line of one field counts with empty symbols", "hello\n", {"/>0"}},
    {"kept: a short line may still count", "2\n", {"", "", ""}},
    {"a bare final counts as 0", "final\n", {"! #"}},
    {"a bare final at the end of the file", "final", {"! #"}},
    {"final and one character counts as 0", "final5\n", {"! #"}},
    {"junk is an arc of state 0", "kaixo mundua\n", {"/>0"}},
    {"a NUL ends its line", std::string("0\ta\t0\0x\nfinal: 0\n", 17), {"! a/a>0 #"}},
    {"a NUL makes a line short", std::string("0\ta\0\t0\nfinal: 0\n", 16), {"! #"}},
};

// In memory alone.
const LoadCase MEMORY_FORM[] = {
    {"an empty text gives one state", "", {""}},
    {"kept: a last line with no line feed is dropped", "0\ta\t0\nfinal: 0", {"a/a>0"}},
    {"kept: and with it a lone record", "final: 3", {"", "", "", ""}},
    {"kept: a carriage return stays, harmless behind a number", "0\ta\t0\r\nfinal: 0\r\n",
     {"! a/a>0 #"}},
    {"kept: fewer than two TABs end the load", "0\ta\t0\n0\tabc\n0\tb\t0\nfinal: 0\n",
     {"a/a>0"}},
    {"kept: no TAB ends the load", "0\ta\t0\nhello\nfinal: 0\n", {"a/a>0"}},
    {"kept: a carriage return makes a short line long, and that ends the load",
     "0\ta\t0\n0\taa\r\nfinal: 0\n", {"a/a>0"}},
    {"a short line is passed over", "0\ta\t0\n\n0\ta\n0\t\t0\nfinal: 0\n", {"! a/a>0 #"}},
    {"short lines alone", "\n\n\n", {""}},
    {"a short line at the end", "0\ta\t0\n\n", {"a/a>0"}},
    {"a bare final counts as 0", "final\n", {"! #"}},
    {"a short line counts", "2\n\n", {"", "", ""}},
};

struct CountCase {
    std::string label, text;
    int count;
};

const CountCase COUNTS[] = {
    {"nothing", "", 1},
    {"no counted line", "x\ta\tb\n", 1},
    {"an arc counts its source", "7\ta\t9\n", 8},
    {"a final record", "final: 4\n", 5},
    {"the second form", "final\t4\n", 5},
    {"the last counted line decides", "7\ta\t9\nfinal: 2\n", 3},
    {"lines that don't count change nothing", "7\ta\t9\nabc\n\n -1\n", 8},
    {"kept: a blank in front and the line does not count", " 7\ta\t9\n", 1},
    {"kept: a sign in front and the line does not count", "-7\ta\t9\n", 1},
    {"a high byte is no digit", "\261\ta\t1\n", 1},
    {"a short line counts", "3\n", 4},
    {"the last line needs no line feed", "final: 4", 5},
    {"kept: a negative final record", "final: -1\n", 0},
    {"a number followed by junk", "12ab\n", 13},
    {"kept: the prefix with the blank comes first", "final: \t6\n", 7},
    {"a bare final", "final\n", 1},
};

struct LongLineCase {
    std::string label;
    std::size_t length;  // of the first line, without its line feed
    std::size_t states;
};

std::string symbol_line(std::size_t length) {
    // "0", TAB, a symbol that ends in "7", TAB, "0": the symbol fills the line.
    const std::string head = "0\ta";
    const std::string tail = "\t0";
    return head + std::string(length - head.size() - tail.size(), '7') + tail;
}

// The counting pass reads at most 997 bytes at once, so that the rest of a longer line is a
// line of its own.
const LongLineCase COUNT_LINES[] = {
    {"996 bytes", 996, 1},
    {"997 bytes: the line feed is a line of its own", 997, 1},
    {"kept: 998 bytes: the rest is the target", 998, 1},
    {"kept: 999 bytes: the rest is a TAB and the target, and does not count", 999, 1},
    {"kept: 1000 bytes: the rest begins with the symbol's last digit", 1000, 8},
    {"kept: 1001 bytes: two digits of the symbol", 1001, 78},
};

}  // namespace

TEST(Taula, StartsEmpty) {
    const Taula table;
    EXPECT_EQ(table.fitxategia, "");
    EXPECT_EQ(table.hiztegia, "");
    EXPECT_TRUE(table.egoerak.empty());
    EXPECT_TRUE(table.analizatuTokena("").empty());
    EXPECT_TRUE(table.analizatuTokena("a").empty());
    EXPECT_TRUE(table.sortuFormak("", "", false, false).empty());
    EXPECT_TRUE(std::has_virtual_destructor<Taula>::value);
}

TEST(Taula, MakesNullSlots) {
    Taula table("nowhere.sare", 3);
    EXPECT_EQ(table.fitxategia, "nowhere.sare");
    EXPECT_EQ(describe(table), (Strings{"null", "null", "null"}));
    EXPECT_TRUE(table.analizatuTokena("a").empty()) << "a null state is a dead end";
    EXPECT_TRUE(table.sortuFormak("a", "", false, false).empty());
    table.addEgoera(new Egoera);
    EXPECT_EQ(describe(table), (Strings{"null", "null", "null", ""}));
    table.addZubiaTaulan(0, true, new Zubia(1, "a", "a"));
    EXPECT_EQ(describe(table), (Strings{"null", "null", "null", ""}))
        << "a null slot is no state";
    EXPECT_EQ(stdout_of([&] { table.printEgoera(0); }), "");
}

TEST(Taula, LoadsTheSameFromFileAndMemory) {
    const TempDir folder;
    for (const LoadCase& c : BOTH_FORMS) {
        SCOPED_TRACE(c.label);
        Taula from_file(folder.write("t.sare", c.text));
        EXPECT_EQ(describe(from_file), c.states);
        Taula from_memory;
        lemara::test::load_text(from_memory, c.text);
        EXPECT_EQ(describe(from_memory), c.states);
        EXPECT_EQ(from_memory.fitxategia, "");
    }
}

TEST(Taula, LoadsTheFileForm) {
    const TempDir folder;
    for (const LoadCase& c : FILE_FORM) {
        SCOPED_TRACE(c.label);
        const Taula table(folder.write("t.sare", c.text));
        EXPECT_EQ(describe(table), c.states);
    }
}

// A text is packed from its records. That gives what its graph is packed to, which a second,
// null load makes anew; and a table that is loaded for searches alone unfolds to the graph.
TEST(Taula, TheGraphAndTheRecordsArePackedToTheSame) {
    const TempDir folder;
    std::vector<std::string> texts;
    for (const LoadCase& c : BOTH_FORMS) texts.push_back(c.text);
    for (const LoadCase& c : FILE_FORM) texts.push_back(c.text);
    texts.push_back("0\ta\t1\n0\ta:a\t1\n0\t:<>\t1\n0\t::<>\t1\nfinal: 1\n0\t<>:\t7\n");
    texts.push_back("final: -1\n");
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        const Taula with_graph(folder.write("t.sare", text));
        const std::string image = lemara::compile_table(with_graph);
        EXPECT_EQ(lemara::compile_table_text(text), image);
        Taula lean;
        lean.fitxategia = with_graph.fitxategia;
        EXPECT_EQ(lemara::load_for_searches(lean), !with_graph.egoerak.empty());
        EXPECT_TRUE(lean.egoerak.empty());
        EXPECT_EQ(lemara::compile_table(lean), image);
        for (const char* word : {"", "a", "b", "ab"}) {
            EXPECT_EQ(lemara::test::analyses_of(lean.analizatuTokena(word)),
                      lemara::test::analyses_of(with_graph.analizatuTokena(word)));
        }
    }
}

TEST(Taula, LoadsForSearchesAlone) {
    const TempDir folder;
    Taula table;
    table.fitxategia = folder.write("t.sare", KA);
    ASSERT_TRUE(lemara::load_for_searches(table));
    EXPECT_TRUE(table.egoerak.empty());
    EXPECT_EQ(table.analizatuTokena("ka").size(), 1u);
    EXPECT_EQ(stdout_of([&] { table.printTaula(); }),
              stdout_of([&] { Taula(table.fitxategia).printTaula(); }));
    table.addZubiaTaulan(2, false, new Zubia(3, "<ADJ>", ""));
    EXPECT_EQ(describe(table), (Strings{"k/k>1", "a/a>2", "<IZE>/>3 <ADJ>/>3", "! #"}))
        << "a change unfolds the graph";
    EXPECT_EQ(table.analizatuTokena("ka").size(), 2u);
    ASSERT_TRUE(lemara::load_for_searches(table));
    EXPECT_EQ(table.egoerak.size(), 8u) << "behind a graph there is a graph";
    EXPECT_EQ(table.analizatuTokena("ka").size(), 2u * 2u * 3u * 2u);

    Taula secret;
    secret.fitxategia = folder.write("SARE8", crypt_encode(KA));
    ASSERT_TRUE(lemara::load_for_searches(secret));
    EXPECT_TRUE(secret.egoerak.empty());
    EXPECT_EQ(secret.analizatuTokena("ka").size(), 1u);

    Taula twice;
    twice.fitxategia = folder.path("t.sare");
    lemara::load_for_searches(twice);
    lemara::load_for_searches(twice);
    Taula twice_kept(twice.fitxategia);
    twice_kept.kargatu();
    EXPECT_EQ(describe(twice), describe(twice_kept));

    Taula missing;
    missing.fitxategia = folder.path("ez.sare");
    EXPECT_EQ(stdout_of([&] { EXPECT_FALSE(lemara::load_for_searches(missing)); }),
              "[" + missing.fitxategia + " ]  kontatzeko taula ezin da ireki!");
    missing.fitxategia = folder.path("ez.SARE8");
    EXPECT_EQ(stdout_of([&] { EXPECT_FALSE(lemara::load_for_searches(missing)); }), "");
}

TEST(Taula, LoadsTheMemoryForm) {
    for (const LoadCase& c : MEMORY_FORM) {
        SCOPED_TRACE(c.label);
        Taula table;
        lemara::test::load_text(table, c.text);
        EXPECT_EQ(describe(table), c.states);
    }
}

TEST(Taula, MemoryFormMakesTheStatesItIsTold) {
    Taula table;
    table.kargatu_taula("0\ta\t2\nfinal: 2\nfinal: 5\n", 4);
    EXPECT_EQ(describe(table), (Strings{"a/a>2", "", "! #", ""}))
        << "a record of a state that doesn't exist is passed over";
    table.kargatu_taula("final: 1\n", 1);
    EXPECT_EQ(describe(table), (Strings{"a/a>2", "! #", "! #", "", ""}))
        << "a second load goes on with the old states";
    table.kargatu_taula("", 0);
    table.kargatu_taula("", -5);
    EXPECT_EQ(table.egoerak.size(), 5u);
}

TEST(Taula, CountsStates) {
    const TempDir folder;
    const Taula table;
    for (const CountCase& c : COUNTS) {
        SCOPED_TRACE(c.label);
        const std::string path = folder.write("t.sare", c.text);
        EXPECT_EQ(table.kontataulaSFST(path.c_str()), c.count);
        EXPECT_EQ(table.kontataulaSARE8(c.text.c_str()), c.count);
    }
    EXPECT_EQ(table.kontataulaSARE8("final: 4\n\0final: 9\n"), 5) << "a NUL ends the text";
    EXPECT_EQ(table.kontataulaSARE8("final: 4\n"), 5);
}

TEST(Taula, CountsAMissingFile) {
    const TempDir folder;
    const std::string path = folder.path("ez.sare");
    const Taula table;
    int count = 0;
    const std::string output =
        stdout_of([&] { count = table.kontataulaSFST(path.c_str()); });
    EXPECT_EQ(count, -1);
    EXPECT_EQ(output, "[" + path + " ]  kontatzeko taula ezin da ireki!");
}

TEST(Taula, AFileWithoutMeasureIsNotRead) {
    const TempDir folder;
    const std::string path = folder.write("t.sare", "final: 0\n");
    ASSERT_EQ(truncate(path.c_str(), (off_t{1} << 31) + 1), 0);
    int count = 0;
    stdout_of([&] { count = Taula().kontataulaSFST(path.c_str()); });
    EXPECT_EQ(count, -1);
}

TEST(Taula, LongLinesOfTheCountingPass) {
    const TempDir folder;
    for (const LongLineCase& c : COUNT_LINES) {
        SCOPED_TRACE(c.label);
        const std::string line = symbol_line(c.length);
        ASSERT_EQ(line.size(), c.length);
        const std::string path = folder.write("t.sare", line + "\n");
        const Taula table(path);
        EXPECT_EQ(table.kontataulaSFST(path.c_str()), static_cast<int>(c.states));
        ASSERT_EQ(table.egoerak.size(), c.states);
        const std::string symbol = line.substr(2, c.length - 4);
        EXPECT_EQ(describe(table.egoerak[0]), symbol + "/" + symbol + ">0")
            << "the loader reads on";
    }
}

TEST(Taula, LongLinesOfTheLoader) {
    // At most 9,997 bytes are read at once; the rest of the line is a line of its own.
    const TempDir folder;
    for (const std::size_t length : {9996u, 9997u}) {
        SCOPED_TRACE(length);
        const std::string line = symbol_line(length);
        const Taula table(folder.write("t.sare", line + "\nfinal: 0\n"));
        ASSERT_EQ(table.egoerak.size(), 1u);
        const std::string symbol = line.substr(2, length - 4);
        EXPECT_EQ(describe(table.egoerak[0]), "! " + symbol + "/" + symbol + ">0 #");
    }
    {
        SCOPED_TRACE("kept: 9,998 bytes: the target is cut off and too short to be a line");
        const Taula table(folder.write("t.sare", symbol_line(9998) + "\nfinal: 0\n"));
        ASSERT_EQ(table.egoerak.size(), 1u);
        const std::string symbol = "a" + std::string(9998 - 5, '7');
        EXPECT_EQ(describe(table.egoerak[0]), "! " + symbol + "/" + symbol + ">0 #");
    }
    {
        SCOPED_TRACE("kept: a rest of five bytes is a record");
        const std::string head = "0\t" + std::string(9997 - 4, 'a') + "\t0";
        ASSERT_EQ(head.size(), 9997u);
        const Taula table(folder.write("t.sare", head + "0\tb\t0\nfinal: 0\n"));
        ASSERT_EQ(table.egoerak.size(), 1u);
        const std::string symbol(9997 - 4, 'a');
        EXPECT_EQ(describe(table.egoerak[0]), "! " + symbol + "/" + symbol + ">0 b/b>0 #");
    }
}

TEST(Taula, MemoryFormReadsLongLines) {
    const std::string line = symbol_line(9998);
    Taula table;
    lemara::test::load_text(table, line + "\nfinal: 0\n");
    ASSERT_EQ(table.egoerak.size(), 1u);
    const std::string symbol = line.substr(2, line.size() - 4);
    EXPECT_EQ(describe(table.egoerak[0]), "! " + symbol + "/" + symbol + ">0 #");
    EXPECT_EQ(table.analizatuTokena(symbol).size(), 0u) << "longer than the walk reads";
}

TEST(Taula, DamagedNumbersOfStates) {
    const TempDir folder;
    const auto trusted = static_cast<std::size_t>(lemara::TRUSTED_STATES);
    struct Case {
        std::string label, text;
        std::size_t states;
    };
    const std::string padding(70000, '\n');
    const Case cases[] = {
        {"as many as are trusted", "final: 65535\n", trusted},
        {"one more than are trusted", "final: 65536\n", trusted},
        {"two billions", "final: 2000000000\n", trusted},
        {"the highest number", "final: 2147483646\n", trusted},
        {"a long text is trusted further", padding + "final: 65536\n", trusted + 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const Taula from_file(folder.write("t.sare", c.text));
        EXPECT_EQ(from_file.egoerak.size(), c.states);
        Taula from_memory;
        lemara::test::load_text(from_memory, c.text);
        EXPECT_EQ(from_memory.egoerak.size(), c.states);
    }
    // Numbers beyond an int: whatever they count as, nothing breaks.
    for (const char* text : {"final: 2147483647\n", "final: 99999999999999999999\n",
                             "final: -99999999999999999999\n", "4294967296\ta\t4294967296\n",
                             "0\ta\t99999999999999999999\nfinal: 0\n"}) {
        SCOPED_TRACE(text);
        const Taula from_file(folder.write("t.sare", text));
        EXPECT_LE(from_file.egoerak.size(), trusted);
        EXPECT_TRUE(from_file.analizatuTokena("b").empty());
    }
}

TEST(Taula, LoadsTwice) {
    const TempDir folder;
    Taula table(folder.write("t.sare", "0\ta\t1\nfinal: 1\n"));
    EXPECT_EQ(table.analizatuTokena("a").size(), 1u);
    table.kargatu();
    EXPECT_EQ(describe(table), (Strings{"a/a>1 a/a>1", "! # #", "", ""}))
        << "new empty states, and every arc once more";
    EXPECT_EQ(table.analizatuTokena("a").size(), 4u) << "two arcs, two ends";

    Taula word(folder.write("u.sare", "final: 0\n"));
    word.kargatu_taula();
    EXPECT_EQ(word.analizatuTokena("").size(), 2u) << "every result is doubled";
}

TEST(Taula, ConstructorStoresThePath) {
    const Taula table(data_file("ka.sare"));
    EXPECT_EQ(table.fitxategia, data_file("ka.sare"));
    EXPECT_EQ(table.hiztegia, "");
    EXPECT_EQ(describe(table), (Strings{"k/k>1", "a/a>2", "<IZE>/>3", "! #"}));
}

TEST(TaulaDeathTest, MissingFileEndsTheProcess) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const std::string path = "ez/dago/taula.sare";
    const std::string messages = "[" + path + " ]  kontatzeko taula ezin da ireki!" + path +
                                 " ez da existitzen.\n";
    // The messages are on standard output; a death test sees standard error.
    const auto load = [&] {
        std::fflush(stdout);
        dup2(STDERR_FILENO, STDOUT_FILENO);
        const Taula table(path);
    };
    EXPECT_EXIT(load(), testing::ExitedWithCode(0), testing::Eq(messages));
    const auto load_again = [&] {
        std::fflush(stdout);
        dup2(STDERR_FILENO, STDOUT_FILENO);
        Taula table;
        table.fitxategia = path;
        table.kargatu_taula();
    };
    EXPECT_EXIT(load_again(), testing::ExitedWithCode(0), testing::Eq(messages));
}

TEST(Taula, EncipheredFormRoundTrips) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    for (const std::string& text : {std::string(), std::string("a"), all, all + all + all,
                                    lemara::test::read_file(data_file("ur.sare"))}) {
        const std::string secret = crypt_encode(text);
        EXPECT_EQ(secret.size(), text.size());
        EXPECT_EQ(crypt_decode(secret), text);
        EXPECT_EQ(crypt_encode(crypt_decode(text)), text);
        if (text.size() > 20) {
            EXPECT_NE(secret, text);
        }
    }
}

TEST(Taula, LoadsTheEncipheredForm) {
    const TempDir folder;
    const std::string text = lemara::test::read_file(data_file("ur.sare"));
    const Taula plain(data_file("ur.sare"));
    const Taula secret(folder.write("ur.SARE8.bin", crypt_encode(text)));
    EXPECT_EQ(describe(secret), describe(plain));
    EXPECT_EQ(lemara::test::analyses_of(secret.analizatuTokena("ura")),
              (Strings{"ur<IZE><ABS>"}));
    const Taula dropped(folder.write("SARE8", crypt_encode("0\ta\t0\nfinal: 0")));
    EXPECT_EQ(describe(dropped), (Strings{"a/a>0"})) << "kept: the rules of the memory form";
    const Taula empty(folder.write("xSARE8x", ""));
    EXPECT_EQ(describe(empty), (Strings{""}));
    const Taula lower_case(folder.write("t.sare8", text));
    EXPECT_EQ(describe(lower_case), describe(plain)) << "the name is compared exactly";

    Taula missing;
    missing.fitxategia = folder.path("missing.SARE8");
    EXPECT_EQ(stdout_of([&] { missing.kargatu(); }), "") << "nothing is reported";
    EXPECT_TRUE(missing.egoerak.empty());
    EXPECT_EQ(stdout_of([&] { missing.kargatu_enkriptatua(); }), "");
    EXPECT_TRUE(missing.egoerak.empty());
}

TEST(Taula, IsBuiltByHand) {
    Taula table;
    table.addEgoera(new Egoera);
    table.addEgoera(new Egoera);
    table.addZubiaTaulan(0, false, new Zubia(1, "a", "a"));
    table.addZubiaTaulan(1, true, new Zubia(-1, "", ""));
    EXPECT_EQ(describe(table), (Strings{"a/a>1", "! #"}));
    EXPECT_EQ(table.analizatuTokena("a").size(), 1u);
    table.addZubiaTaulan(1, false, new Zubia(0, "b", "b"));
    EXPECT_EQ(describe(table), (Strings{"a/a>1", "# b/b>0"})) << "the flag is overwritten";
    EXPECT_EQ(table.analizatuTokena("aba").size(), 1u) << "the end of the word stays";
    table.addZubiaTaulan(2, true, new Zubia(0, "c", "c"));
    table.addZubiaTaulan(-1, true, new Zubia(0, "c", "c"));
    EXPECT_EQ(describe(table), (Strings{"a/a>1", "# b/b>0"}))
        << "a state that doesn't exist is left alone";
    table.addEgoera(nullptr);
    table.egoerak[0]->addZubia(nullptr);
    table.egoerak[0]->addZubia(new Zubia(2, "x", "x"));
    table.egoerak[0]->addZubia(new Zubia(99, "x", "x"));
    EXPECT_TRUE(table.analizatuTokena("x").empty()) << "dead ends";
    EXPECT_TRUE(table.sortuFormak("x", "", false, false).empty());
    EXPECT_EQ(table.analizatuTokena("a").size(), 1u);
}

TEST(Taula, DeletesItsStates) {
    Taula table;
    lemara::test::load_text(table, "0\ta\t1\nfinal: 1\n");
    table.deleteEgoerak();
    EXPECT_EQ(describe(table), (Strings{"null", "null"})) << "the vector keeps its size";
    EXPECT_TRUE(table.analizatuTokena("a").empty());
    table.deleteEgoerak();
}

TEST(Taula, Prints) {
    Taula table;
    EXPECT_EQ(stdout_of([&] { table.printTaula(); }), "Guztira 0 egoera\n");
    lemara::test::load_text(table, "0\tA:b\t1\nfinal: 1\n");
    const std::string state_0 =
        "\n\nfinal: 0, zubiak: 1\n  1. zubia:\n   - hurrengo_egoera: 1\n"
        "   - goiko_ikurra: A\n   - beheko_ikurra: b\n";
    const std::string state_1 =
        "\n\nfinal: 1, zubiak: 1\n  1. zubia:\n   - hurrengo_egoera: -1\n"
        "   - goiko_ikurra: \n   - beheko_ikurra: \n";
    EXPECT_EQ(stdout_of([&] { table.printEgoera(0); }), state_0);
    EXPECT_EQ(stdout_of([&] { table.printEgoera(1); }), state_1);
    EXPECT_EQ(stdout_of([&] { table.printEgoera(2); }), "");
    EXPECT_EQ(stdout_of([&] { table.printEgoera(-1); }), "");
    EXPECT_EQ(stdout_of([&] { table.printTaula(); }), "Guztira 2 egoera\n" + state_0 + state_1);
}
