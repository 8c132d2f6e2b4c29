#include "att_convert.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "table_check.h"
#include "table_text.h"

namespace {

using lemara::tools::AttOptions;
using lemara::tools::Conversion;
using lemara::tools::table_from_att;

struct Case {
    std::string label, att, table;
};

const Case CASES[] = {
    {"a letter on both sides is written once", "0\t1\tk\tk\n1\n", "0\tk\t1\nfinal: 1\n"},
    {"a start that is final alone", "0\n", "final: 0\n"},
    {"upper epsilon is nothing", "0\t1\t@0@\tk\n1\n", "0\t:k\t1\nfinal: 1\n"},
    {"lower epsilon is the marker", "0\t1\t<IZE>\t@0@\n1\n",
     "0\t<IZE>:<>\t1\nfinal: 1\n"},
    {"epsilon on both sides", "0\t1\t@0@\t@0@\n1\n", "0\t:<>\t1\nfinal: 1\n"},
    {"the epsilon of HFST", "0\t1\t@_EPSILON_SYMBOL_@\ta\n1\n", "0\t:a\t1\nfinal: 1\n"},
    {"a blank", "0\t1\t \t \n1\n", "0\t \t1\nfinal: 1\n"},
    {"the blank and colon of HFST",
     "0\t1\t@_SPACE_@\t@_SPACE_@\n1\t2\t@_COLON_@\t@_COLON_@\n2\n",
     "0\t \t1\n1\t:\t2\nfinal: 2\n"},
    {"two symbols", "0\t1\ta\tb\n1\n", "0\ta:b\t1\nfinal: 1\n"},
    {"a lone colon", "0\t1\t:\t:\n1\n", "0\t:\t1\nfinal: 1\n"},
    {"a lower colon alone", "0\t1\t@0@\t:\n1\n", "0\t::\t1\nfinal: 1\n"},
    {"a lower colon under another letter", "0\t1\ta\t:\n1\n", "0\ta::\t1\nfinal: 1\n"},
    {"the marker as an upper symbol stands", "0\t1\t<>\ta\n1\n",
     "0\t<>:a\t1\nfinal: 1\n"},
    {"a tag on both sides", "0\t1\t<hp1>\t<hp1>\n1\n", "0\t<hp1>\t1\nfinal: 1\n"},
    {"UTF-8 becomes Latin-1", "0\t1\t\303\261\t\303\261\n1\n", "0\t\361\t1\nfinal: 1\n"},
    {"a final record is the first of its state", "0\t1\ta\ta\n1\t2\tb\tb\n1\n2\n",
     "0\ta\t1\nfinal: 1\n1\tb\t2\nfinal: 2\n"},
    {"arcs keep their order and give the numbers", "0\t9\tb\tb\n0\t4\ta\ta\n4\n9\n",
     "0\tb\t1\n0\ta\t2\nfinal: 1\nfinal: 2\n"},
    {"the states of a word stand side by side",
     "0\t1\ta\ta\n0\t2\tb\tb\n1\t3\tc\tc\n2\t3\td\td\n2\t4\te\te\n3\n4\n",
     "0\ta\t1\n0\tb\t3\n1\tc\t2\nfinal: 2\n3\td\t2\n3\te\t4\nfinal: 4\n"},
    {"state 0 is the start wherever it stands", "7\t3\tb\tb\n0\t7\ta\ta\n3\n",
     "0\ta\t1\n1\tb\t2\nfinal: 2\n"},
    {"what can't be reached goes", "0\t1\ta\ta\n5\t1\tb\tb\n1\n6\n",
     "0\ta\t1\nfinal: 1\n"},
    {"what leads nowhere goes, whatever it says",
     "0\t1\ta\ta\n0\t2\t@_UNKNOWN_SYMBOL_@\tb\n2\t2\tc\t@0@\n1\n", "0\ta\t1\nfinal: 1\n"},
    {"a cycle with letters stays", "0\t0\ta\ta\n0\n", "final: 0\n0\ta\t0\n"},
    {"of equal arcs one stays", "0\t1\ta\ta\n0\t1\tb\tb\n0\t1\ta\ta\n1\n",
     "0\ta\t1\n0\tb\t1\nfinal: 1\n"},
    {"huge numbers are just names",
     "0\t18446744073709551615\ta\ta\n18446744073709551615\n", "0\ta\t1\nfinal: 1\n"},
    {"weights of zero", "0\t1\ta\ta\t0.000000\n1\t0.0\n", "0\ta\t1\nfinal: 1\n"},
    {"line ends of Windows, and none at the end", "0\t1\ta\ta\r\n1",
     "0\ta\t1\nfinal: 1\n"},
};

TEST(AttConvert, WritesATable) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        const Conversion result = table_from_att(c.att, {});
        for (const auto& refusal : result.refusals) ADD_FAILURE() << refusal.text;
        EXPECT_EQ(result.table, c.table);
        EXPECT_EQ(result.weighted_line, 0u);
    }
}

struct RefusedCase {
    std::string label, att;
    std::size_t line;
    std::string text;  // a part of the message
};

const RefusedCase REFUSED[] = {
    {"identity", "0\t1\t@_IDENTITY_SYMBOL_@\t@_IDENTITY_SYMBOL_@\n1\n", 1,
     "arc 0 -> 1 \"@_IDENTITY_SYMBOL_@:@_IDENTITY_SYMBOL_@\": @_IDENTITY_SYMBOL_@ stands "
     "for"},
    {"unknown", "0\t1\ta\t@_UNKNOWN_SYMBOL_@\n1\n", 1, "@_UNKNOWN_SYMBOL_@ stands for"},
    {"flag diacritic", "0\t1\t@U.CASE.ERG@\t@U.CASE.ERG@\n1\n", 1,
     "flag diacritic @U.CASE"},
    {"other special symbol", "0\t1\t@_DEFAULT_SYMBOL_@\ta\n1\n", 1, "special symbol"},
    {"the arc is named by the numbers of the file", "0\t17\ta\ta\n17\t4\ta:\tb\n4\n", 2,
     "arc 17 -> 4 \"a::b\": a \":\" in the upper symbol"},
    {"a colon over nothing", "0\t1\t:\t@0@\n1\n", 1, "a \":\" in the upper symbol"},
    {"a colon over a letter", "0\t1\t:\ta\n1\n", 1, "a \":\" in the upper symbol"},
    {"a symbol with a colon on both sides", "0\t1\ta:b\ta:b\n1\n", 1,
     "a \":\" in the upper"},
    {"the marker as a lower symbol", "0\t1\ta\t<>\n1\n", 1, "would be read as epsilon"},
    {"the marker on both sides", "0\t1\t<>\t<>\n1\n", 1, "would be read as epsilon"},
    {"beyond Latin-1", "0\t1\t\342\200\231\t'\n1\n", 1, "Latin-1 has no U+2019"},
    {"a capital below", "0\t1\tA\tA\n1\n", 1, "capital on the lower side"},
    {"an accented capital below", "0\t1\t\303\221\t\303\221\n1\n", 1,
     "capital on the lower"},
    {"the sign 215 is lowered by the walk too", "0\t1\t\303\227\t\303\227\n1\n", 1,
     "capital"},
    {"a TAB by name", "0\t1\t@_TAB_@\ta\n1\n", 1, "a TAB can't stand"},
    {"a line feed by name", "0\t1\t@_NEWLINE_@\ta\n1\n", 1, "a line feed can't stand"},
    {"a control character", "0\t1\t\001\ta\n1\n", 1, "control character"},
    {"bytes that are not UTF-8", "0\t1\t\361\ta\n1\n", 1, "\"\\xF1:a\": not UTF-8"},
    {"an empty symbol", "0\t1\t\ta\n1\n", 1, "empty symbol"},
    {"a loop of an empty lower symbol", "0\t1\ta\ta\n1\t1\t<X>\t@0@\n1\n", 2,
     "on a cycle of empty lower symbols"},
    {"a cycle of two", "0\t1\ta\t@0@\n1\t0\t@0@\t@0@\n1\n", 1,
     "on a cycle of empty lower"},
    {"no final state", "0\t1\ta\ta\n", 0, "no word leads from state 0"},
    {"nothing at all", "", 0, "no word leads from state 0"},
    {"a state that is no number", "0\tx\ta\ta\n1\n", 1, "not a state number: \"x\""},
    {"a negative state", "0\t-1\ta\ta\n1\n", 1, "not a state number: \"-1\""},
    {"a final state that is no number", "0\t1\ta\ta\nend\n", 2,
     "not a state number: \"end\""},
    {"three fields", "0\t1\ta\n1\n", 1, "not AT&T text"},
    {"six fields", "0\t1\ta\ta\t0\t0\n1\n", 1, "not AT&T text"},
    {"a second network", "0\t1\ta\ta\n1\n--\n0\n", 3, "a second network"},
};

TEST(AttConvert, RefusesWhatATableCantSay) {
    for (const RefusedCase& c : REFUSED) {
        SCOPED_TRACE(c.label);
        const Conversion result = table_from_att(c.att, {});
        EXPECT_EQ(result.table, "");
        ASSERT_FALSE(result.refusals.empty());
        EXPECT_EQ(result.refusals[0].line, c.line);
        EXPECT_NE(result.refusals[0].text.find(c.text), std::string::npos)
            << result.refusals[0].text;
    }
}

TEST(AttConvert, LowersOnRequest) {
    AttOptions options;
    options.lower = true;
    EXPECT_EQ(table_from_att("0\t1\tA\tA\n1\n", options).table, "0\tA:a\t1\nfinal: 1\n");
    EXPECT_EQ(table_from_att("0\t1\t\303\221\t\303\221\n1\n", options).table,
              "0\t\321:\361\t1\nfinal: 1\n");
    // Two arcs that become one are written once.
    EXPECT_EQ(table_from_att("0\t1\ta\tA\n0\t1\ta\ta\n1\n", options).table,
              "0\ta\t1\nfinal: 1\n");
}

TEST(AttConvert, TellsOfWeights) {
    EXPECT_EQ(table_from_att("0\t1\ta\ta\t1.5\n1\n", {}).weighted_line, 1u);
    EXPECT_EQ(table_from_att("0\t1\ta\ta\t0.0\n1\t2.0\n", {}).weighted_line, 2u);
}

TEST(AttConvert, KeepsRecordsWithinTheLoadersLine) {
    // "0", TAB, the symbol, TAB, "1": four bytes around the symbol.
    const auto att_of = [](std::size_t length) {
        const std::string symbol = '<' + std::string(length - 2, 'X') + '>';
        return "0\t1\t" + symbol + "\t@0@\n1\n";
    };
    EXPECT_NE(table_from_att(att_of(997 - 4 - 3), {}).table, "");
    const Conversion longer = table_from_att(att_of(997 - 4 - 2), {});
    EXPECT_EQ(longer.table, "");
    ASSERT_EQ(longer.refusals.size(), 1u);
    EXPECT_NE(longer.refusals[0].text.find("more than 997 bytes"), std::string::npos);
}

/// All pairs (upper, lower) of paths of at most `limit` arcs, from AT&T text with
/// one-letter symbols; the obvious way.
std::set<std::string> pairs_of_att(const std::string& att, int limit) {
    std::multimap<std::string, std::vector<std::string>> arcs;
    std::set<std::string> finals;
    std::size_t at = 0;
    while (at < att.size()) {
        const std::size_t end = att.find('\n', at);
        std::vector<std::string> fields(1);
        for (; at < end; ++at) {
            if (att[at] == '\t') {
                fields.emplace_back();
            } else {
                fields.back() += att[at];
            }
        }
        ++at;
        if (fields.size() == 1) finals.insert(fields[0]);
        if (fields.size() == 4) arcs.emplace(fields[0], fields);
    }
    std::set<std::string> found;
    const auto visible = [](const std::string& s) { return s == "@0@" ? "" : s; };
    const auto walk = [&](const auto& self, const std::string& state,
                          const std::string& upper, const std::string& lower,
                          int left) -> void {
        if (finals.count(state) > 0) found.insert(upper + '/' + lower);
        if (left == 0) return;
        const auto range = arcs.equal_range(state);
        for (auto arc = range.first; arc != range.second; ++arc) {
            const auto& f = arc->second;
            self(self, f[1], upper + visible(f[2]), lower + visible(f[3]), left - 1);
        }
    };
    walk(walk, "0", "", "", limit);
    return found;
}

/// The same from a table.
std::set<std::string> pairs_of_table(const std::string& text, int limit) {
    const lemara::tools::TableText table(text);
    std::set<std::string> found;
    const auto walk = [&](const auto& self, std::uint32_t state, const std::string& upper,
                          const std::string& lower, int left) -> void {
        for (const auto& final : table.finals) {
            if (final.state == state) found.insert(upper + '/' + lower);
        }
        if (left == 0) return;
        for (const auto& arc : table.arcs) {
            if (arc.source != state) continue;
            const auto& pair = table.pairs[arc.pair];
            self(self, arc.target, upper + std::string(pair.upper),
                 lower + std::string(pair.lower), left - 1);
        }
    };
    walk(walk, 0, "", "", limit);
    return found;
}

TEST(AttConvert, AcceptsTheSamePairsAsTheNetwork) {
    constexpr int NETWORKS = 300, MOST_ARCS = 5;
    int written = 0;
    for (unsigned seed = 1; seed <= NETWORKS; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const auto below = [&](unsigned n) { return random() % n; };
        const char* const symbols[] = {"a", "b", "@0@", "<X>"};
        std::string att;
        for (auto i = 2 + below(10); i > 0; --i) {
            att += std::to_string(below(5)) + '\t' + std::to_string(below(5)) + '\t' +
                   symbols[below(4)] + '\t' + symbols[below(3)] + '\n';
        }
        att += std::to_string(below(5)) + '\n' + std::to_string(below(5)) + '\n';
        const Conversion result = table_from_att(att, {});
        if (!result.refusals.empty()) continue;
        ++written;
        EXPECT_EQ(pairs_of_table(result.table, MOST_ARCS), pairs_of_att(att, MOST_ARCS))
            << att;
        for (const auto& defect : lemara::tools::check_table(result.table)) {
            ADD_FAILURE() << defect.line << ": " << defect.text << "\n" << att;
        }
    }
    EXPECT_GT(written, NETWORKS / 4);  // the comparison must not run dry
}

}  // namespace
