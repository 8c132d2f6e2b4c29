#include "table_check.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "table_text.h"

namespace {

using lemara::tools::check_table;
using lemara::tools::Defect;
using lemara::tools::split_field;
using lemara::tools::table_stats;

std::vector<std::string> told(const std::string& table) {
    std::vector<std::string> lines;
    for (const Defect& d : check_table(table)) {
        lines.push_back(std::to_string(d.line) + ": " + d.text);
    }
    return lines;
}

struct Case {
    std::string label, table;
    std::vector<std::string> defects;
};

const Case CASES[] = {
    {"a sound table", "0\tk\t1\n1\ta\t2\n2\t<IZE>:<>\t3\nfinal: 3\n", {}},
    {"the other final record, and line ends of Windows", "0\tk\t1\r\nfinal\t1\r\n", {}},
    {"a lone colon", "0\t:\t1\nfinal: 1\n", {}},
    {"a cycle of letters", "final: 0\n0\ta\t0\n", {}},
    {"the marker as an upper symbol", "0\t<>:a\t1\nfinal: 1\n", {}},
    {"an empty file", "", {"0: no word leads from state 0 to a final state"}},
    {"a short line",
     "0\tk\t1\n\nfinal: 1\n",
     {"2: line of 0 bytes; the loader passes over lines shorter than 5"}},
    {"an arc without its target",
     "0\tk\t1\n0\tk\nfinal: 1\n",
     {"2: line of 3 bytes; the loader passes over lines shorter than 5"}},
    {"a junk line",
     "0\tk\t1\nhello there\nfinal: 1\n",
     {"2: not a record: an arc is SOURCE, SYMBOLS, TARGET with a TAB between them"}},
    {"a source that is no number",
     "0\tk\t1\nx0\tk\t1\nfinal: 1\n",
     {"2: bad number for the source state: \"x0\""}},
    {"a target that is no number",
     "0\tk\t1\n0\tb\t1x\nfinal: 1\n",
     {"2: bad number for the target state: \"1x\""}},
    {"a negative target",
     "0\tk\t1\n0\tb\t-1\nfinal: 1\n",
     {"2: bad number for the target state: \"-1\""}},
    {"a final record without a number",
     "0\tk\t1\nfinal: 1\nfinal\n",
     {"3: bad number for the final state: \"\""}},
    {"a number beyond 31 bits",
     "0\tk\t1\n0\tb\t2147483647\nfinal: 1\n",
     {"2: the number of the target state is too high: 2147483647"}},
    {"a number in the billions takes no memory",
     "0\tk\t1\n0\tb\t2000000000\nfinal: 1\n",
     {"2: no word ends behind state 2000000000",
      "2: the target 2000000000 is outside the count of 2 states",
      "3: the last record names state 1 and must name the highest, 2000000000"}},
    {"the last record is not the highest",
     "0\tk\t1\nfinal: 1\n0\tb\t1\n",
     {"1: the target 1 is outside the count of 1 states",
      "2: the final state 1 is outside the count of 1 states",
      "3: the last record names state 0 and must name the highest, 1",
      "3: the target 1 is outside the count of 1 states"}},
    {"no symbols",
     "0\tkk\t1\n1\t\t22\nfinal: 22\n",
     {"2: no symbols; the arc reads and writes nothing"}},
    {"a capital below",
     "0\tK\t1\nfinal: 1\n",
     {"1: capital in the lower symbol \"K\"; words are lowered before they are "
      "compared"}},
    {"a capital above", "0\tK:k\t1\nfinal: 1\n", {}},
    {"an accented capital below",
     "0\t\361:\321\t1\nfinal: 1\n",
     {"1: capital in the lower symbol \"\303\221\"; words are lowered before they are "
      "compared"}},
    {"the marker with no colon",
     "0\t<>\t1\nfinal: 1\n",
     {"1: \"<>\" with no colon stands for itself on both sides; an empty lower symbol is "
      "written UPPER:<>"}},
    {"UTF-8",
     "0\t\303\261\t1\nfinal: 1\n",
     {"1: UTF-8 in the symbol \"\303\261\"; a table is Latin-1"}},
    {"a control character",
     "0\ta\001:b\t1\nfinal: 1\n",
     {"1: control character in the symbol \"a\\x01\""}},
    {"a NUL",
     std::string("0\tk\t1\n0\t\0b\t1\nfinal: 1\n", 22),
     {"2: a NUL byte ends the line for the loader"}},
    {"an unreachable state",
     "0\tk\t1\nfinal: 1\n2\ta\t1\n",
     {"3: state 2 can't be reached from state 0"}},
    {"a dead end",
     "0\tk\t1\n0\tb\t2\nfinal: 1\n2\tc\t2\n",
     {"4: no word ends behind state 2"}},
    {"no final record",
     "0\tk\t1\n1\ta\t1\n",
     {"0: no word leads from state 0 to a final state"}},
    {"a cycle of empty lower symbols",
     "0\tk\t1\n1\tx:<>\t2\n2\t:<>\t1\nfinal: 2\n",
     {"2: on a cycle of empty lower symbols", "3: on a cycle of empty lower symbols"}},
    {"an arc behind such a cycle is not on it",
     "0\tx:<>\t0\n0\ty:<>\t1\nfinal: 1\n",
     {"1: on a cycle of empty lower symbols"}},
    {"a tag that never closes",
     "0\tk\t1\n1\t<IZE:<>\t2\nfinal: 2\n",
     {"2: a tag that never closes begins in \"<IZE\""}},
    {"a tag that closes on a later arc",
     "0\tk\t1\n1\t<IZ:<>\t2\n2\tE>:<>\t3\nfinal: 3\n",
     {}},
    {"a tag that closes on one path only",
     "0\tk\t1\n1\t<IZ:<>\t2\n2\tE>:<>\t3\n2\tE:<>\t3\nfinal: 3\n",
     {"2: a tag that never closes begins in \"<IZ\""}},
    {"every tag that never closes",
     "0\t<A:k\t1\n0\t<B:b\t1\nfinal: 1\n",
     {"1: a tag that never closes begins in \"<A\"",
      "2: a tag that never closes begins in \"<B\""}},
    {"a sign < that a later tag closes", "0\t<\t1\n1\t<SIG>:<>\t2\nfinal: 2\n", {}},
    {"a bracket group last",
     "0\tk\t1\n1\t<IZE>:<>\t2\n2\t[h=b]:<>\t3\nfinal: 3\n",
     {"3: an analysis ends with the bracket group that closes in \"[h=b]\""}},
    {"a bracket group before a tag",
     "0\tk\t1\n1\t[h=b]:<>\t2\n2\t<IZE>:<>\t3\nfinal: 3\n",
     {}},
    {"a bracket group letter by letter, last",
     "0\tk\t1\n1\t[:<>\t2\n2\th:<>\t3\n3\t=:<>\t4\n4\t]:<>\t5\n5\t:a\t6\nfinal: 6\n",
     {"5: an analysis ends with the bracket group that closes in \"]\""}},
    {"a bracket group that never closes",
     "0\tk\t1\n1\t[h=b:<>\t2\n2\t<A>:<>\t3\nfinal: 3\n",
     {"2: a bracket group that never closes begins in \"[h=b\""}},
    {"a sign [ is no bracket group", "0\t[\t1\n1\t<PUN>:<>\t2\nfinal: 2\n", {}},
    {"a repeated arc",
     "0\tk\t1\n0\tb\t1\n0\tk\t1\nfinal: 1\n",
     {"3: repeats the arc of line 1; each analysis over it comes out twice"}},
    {"a repeated final record",
     "0\tk\t1\nfinal: 1\nfinal\t1\n",
     {"3: repeats the final record of line 2"}},
    {"no line feed at the end",
     "0\tk\t1\nfinal: 1",
     {"2: no line feed at the end; the enciphered form would lose this line"}},
};

TEST(TableCheck, ListsEveryDefect) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(told(c.table), c.defects);
    }
}

TEST(TableCheck, KnowsTheLongestLine) {
    // "0", TAB, the tag, ":<>", TAB, "1": seven bytes around the tag.
    const auto table_of = [](std::size_t line) {
        return "0\t<" + std::string(line - 7 - 2, 'X') + ">:<>\t1\nfinal: 1\n";
    };
    EXPECT_EQ(told(table_of(997)), std::vector<std::string>{});
    const std::vector<std::string> longer = told(table_of(998));
    ASSERT_EQ(longer.size(), 1u);
    EXPECT_EQ(longer[0], "1: the line has 998 bytes; the loader takes 997");
}

struct FieldCase {
    std::string label, field, upper, lower;
};

const FieldCase FIELDS[] = {
    {"no colon", "a", "a", "a"},
    {"a tag", "<IZE>", "<IZE>", "<IZE>"},
    {"two sides", "a:b", "a", "b"},
    {"further colons are lower", "a:b:c", "a", "b:c"},
    {"a colon", ":", ":", ":"},
    {"two colons", "::", "", ":"},
    {"empty upper side", ":a", "", "a"},
    {"empty lower side", "a:", "a", ""},
    {"the marker below is nothing", "<IZE>:<>", "<IZE>", ""},
    {"the marker above stays", "<>:a", "<>", "a"},
    {"the marker alone", "<>", "<>", "<>"},
};

TEST(TableText, SplitsASymbolField) {
    for (const FieldCase& c : FIELDS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(split_field(c.field).upper, c.upper);
        EXPECT_EQ(split_field(c.field).lower, c.lower);
    }
}

TEST(TableCheck, TakesAnyBytes) {
    const std::string pieces[] = {"0",
                                  "1",
                                  "7",
                                  "\t",
                                  "\n",
                                  "final: ",
                                  "final",
                                  ":",
                                  "<",
                                  ">",
                                  "[h=",
                                  "]",
                                  "a",
                                  "\303\261",
                                  "\r",
                                  "99999999999999999999",
                                  std::string(1, '\0')};
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        std::mt19937 random(seed);
        std::string table;
        for (auto i = random() % 60; i > 0; --i) table += pieces[random() % 17];
        check_table(table);
        table_stats(table);
    }
    SUCCEED();
}

TEST(TableStats, CountsAndMeasures) {
    // (0)--k-->(1)--a-->((2))--<IZE>:<>-->((3)) and (0)--:kk-->(2)
    const auto stats =
        table_stats("0\tk\t1\n0\t:kk\t2\n1\ta\t2\nfinal: 2\n2\t<IZE>:<>\t3\nfinal: 3\n");
    EXPECT_EQ(stats.bytes, 51u);
    EXPECT_EQ(stats.states, 4u);
    EXPECT_EQ(stats.arcs, 4u);
    EXPECT_EQ(stats.finals, 2u);
    EXPECT_EQ(stats.pairs, 4u);
    EXPECT_EQ(stats.upper_symbols, 3u);
    EXPECT_EQ(stats.lower_symbols, 3u);
    EXPECT_EQ(stats.tags, 1u);
    EXPECT_EQ(stats.most_arcs, 2u);
    EXPECT_EQ(stats.longest_record, 12u);
    EXPECT_TRUE(stats.finite);
    EXPECT_EQ(stats.words, 4);
    EXPECT_EQ(stats.longest_path, 3u);
    EXPECT_EQ(stats.longest_word, 2u);
    EXPECT_EQ(stats.longest_analysis, 7u);
    EXPECT_FALSE(table_stats("final: 0\n0\ta\t0\n").finite);
}

}  // namespace
