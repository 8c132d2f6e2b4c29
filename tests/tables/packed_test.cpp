// One table in four forms (its graph walked by the plain twin, packed from text,
// compiled, and compiled for machines of the other byte order) gives one answer. Counts
// what was compared and which rules were met, and fails if a rule was not.
#include "tables/packed.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "lemara/compiled_table.h"
#include "plain_search.h"
#include "random_bytes.h"
#include "random_tables.h"
#include "support.h"
#include "table_text.h"
#include "tables/UpperArcs.h"
#include "tables/lazy_transducer.h"
#include "tables/token_walk.h"

namespace {

using lemara::test::Hits;
using lemara::test::load_text;
using lemara::test::PlainAnalysis;
using lemara::test::PlainGeneration;
using lemara::test::RandomTables;
using lemara::test::TempDir;
using lemara::test::write_anew;
using Strings = std::vector<std::string>;
using Records = std::vector<Analisia>;

constexpr unsigned FIRST_SEED = 20261121;
// Sanitized builds are some ten times slower and ask for less.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool SANITIZED = true;
#elif defined(__has_feature)
constexpr bool SANITIZED =
    __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool SANITIZED = false;
#endif
constexpr unsigned TABLES = SANITIZED ? 500 : 5000;
constexpr int TOKENS = 24, TARGETS = 10;

/// A table from text, and what is made of it. `text` keeps its graph for the twin.
class Forms {
public:
    explicit Forms(const std::string& records) {
        load_text(text, records);
        const std::string image = lemara::compile_table(text);
        defect = lemara::compiled_table_defect(image);
        compiled.fitxategia = write_anew(folder(), "own.sare", image);
        compiled.kargatu();
        other.fitxategia =
            write_anew(folder(), "other.sare", lemara::with_other_byte_order(image));
        other.kargatu();
        for (Taula* table : {&text, &compiled, &other}) table->hiztegia = "t";
    }

    Taula text, compiled, other;
    std::string defect;

    const Taula* all[3] = {&text, &compiled, &other};

private:
    static const TempDir& folder() {
        static const TempDir shared;
        return shared;
    }
};

bool same(const Analisia& a, const Analisia& b) {
    return a.analisia == b.analisia && a.lema == b.lema && a.etiketa == b.etiketa &&
           a.twol == b.twol && a.hiztegia == b.hiztegia && a.sai == b.sai &&
           a.hobe == b.hobe && a.erabili == b.erabili && a.tasuna == b.tasuna &&
           a.iritzia == b.iritzia && a.forma == b.forma && a.maiuskula == b.maiuskula;
}

bool same(const Records& a, const Records& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Analisia& x, const Analisia& y) { return same(x, y); });
}

Strings texts_of(const Records& records) {
    Strings texts;
    for (const Analisia& r : records) {
        texts.push_back(r.analisia + '|' + r.forma + '|' + std::to_string(r.maiuskula));
    }
    return texts;
}

struct Tally {
    Hits hits;
    long comparisons = 0, results = 0, given_up = 0;

    void expect(const Strings& features) const {
        lemara::test::expect_hits(hits, features);
        std::cout << "  comparisons: " << comparisons << ", with results: " << results
                  << ", too large for the twin: " << given_up << '\n';
        EXPECT_GT(results, comparisons / 24);
        EXPECT_LT(given_up, comparisons / 500);
    }
};

/// Counts analyses with a tag that no symbol holds whole.
void count_straddling(const Taula& table, const Strings& analyses, Hits& hits) {
    for (const std::string& analysis : analyses) {
        for (const char* tag : {"<PIB>", "<LIB>", "<IZB>", "<SNB>", "<SIG>", "<PSP>",
                                "<MAT>", "[h=a]", "[e=ab]"}) {
            if (!lemara::test::plain_contains(analysis, tag)) continue;
            bool whole = false;
            for (const Egoera* state : table.egoerak) {
                for (const Zubia* arc : state->zubiak) {
                    whole = whole || lemara::test::plain_contains(arc->goiko_ikurra, tag);
                }
            }
            if (!whole) ++hits[std::string(tag) + " over two symbols"];
        }
    }
}

bool plain_has_word(const Records& records) {
    return std::any_of(records.begin(), records.end(), [](const Analisia& record) {
        return !lemara::test::plain_contains(record.etiketa, "MAT");
    });
}

/// Counts tokens that the lazy form spells without the walk.
void count_spelt(const Taula& table, const std::string& token, std::size_t records,
                 Hits& hits) {
    const std::string text = token.c_str();
    lemara::LazyTransducer::Spelt way;
    const bool spelt =
        lemara::lazy_form(table).spell(text, way, [](std::string_view) { return true; });
    if (!spelt) return;
    ++hits[records == 0   ? "nothing spelt by steps"
           : records == 1 ? "an analysis spelt by steps"
                          : "several analyses spelt by steps"];
}

/// Compares all forms on one token. False if the twin gave up.
bool compare_token(const Forms& forms, const std::string& token, Tally& tally) {
    PlainAnalysis twin(forms.text, token, tally.hits);
    const Records expected = twin.run();
    if (twin.gave_up()) return ++tally.given_up, false;
    if (!expected.empty()) ++tally.results;
    const bool is_word = plain_has_word(expected);
    if (!is_word && !expected.empty()) ++tally.hits["analyses, and none without MAT"];
    for (const Taula* table : forms.all) {
        // First by the walk, then by the steps that are made at the second asking.
        for (int time = 1; time <= 3; ++time) {
            const Records found = table->analizatuTokena(token);
            EXPECT_TRUE(same(found, expected))
                << "asked for the " << time
                << ". time: " << testing::PrintToString(texts_of(found)) << "\n expected "
                << testing::PrintToString(texts_of(expected));
        }
        EXPECT_EQ(lemara::has_word(*table, token), is_word);
        EXPECT_EQ(lemara::has_word(*table, token), is_word) << "from memory";
        EXPECT_EQ(lemara::walk_finds_word(*table, token), is_word);
        tally.comparisons += 6;
        count_spelt(*table, token, expected.size(), tally.hits);
    }
    return true;
}

bool compare_target(const Forms& forms, const std::string& lemma, const std::string& tags,
                    bool stop, Tally& tally) {
    PlainGeneration twin(forms.text, lemma, tags, stop, tally.hits);
    const Records expected = twin.run();
    if (twin.gave_up()) return ++tally.given_up, false;
    if (!expected.empty()) ++tally.results;
    for (const Taula* table : forms.all) {
        const Records found = table->sortuFormak(lemma, tags, stop, false);
        EXPECT_TRUE(same(found, expected))
            << testing::PrintToString(texts_of(found)) << "\n expected "
            << testing::PrintToString(texts_of(expected));
        ++tally.comparisons;
    }
    return true;
}

/// The two steps from any state, behind any texts.
bool compare_steps(const Forms& forms, RandomTables& random, Tally& tally) {
    const auto states = static_cast<int>(forms.text.egoerak.size());
    const int state = random.once_in(10) ? -1 : random.below(states + 1);
    const std::string token = random.token(forms.text).c_str();
    const std::string rest =
        tolowercase(random.once_in(2) ? token : random.token(forms.text)).c_str();
    const std::string before = random.once_in(3)   ? ""
                               : random.once_in(2) ? "A"
                                                   : "ab<IZE>";

    PlainAnalysis twin(forms.text, token, tally.hits);
    const Strings expected = twin.strings_from(state, rest, before);
    PlainGeneration generation(forms.text, random.target(forms.text), "",
                               random.once_in(3), tally.hits);
    if (twin.gave_up()) return ++tally.given_up, false;
    if (!expected.empty()) ++tally.hits["strings from a state"];
    count_straddling(forms.text, expected, tally.hits);
    for (const Taula* table : forms.all) {
        std::vector<std::string*> owned;
        std::string output = before;
        table->birbilaTokena(token.c_str(), owned, state, rest.c_str(), output.data());
        Strings found;
        for (std::string* text : owned) {
            found.push_back(*text);
            delete text;
        }
        EXPECT_EQ(found, expected) << "state " << state << ", rest " << rest;
        EXPECT_EQ(output, before);
        ++tally.comparisons;
    }
    return true;
}

bool compare_generation_steps(const Forms& forms, RandomTables& random, Tally& tally) {
    const auto states = static_cast<int>(forms.text.egoerak.size());
    const int state = random.once_in(10) ? -1 : random.below(states + 1);
    const std::string upper = random.once_in(2)   ? ""
                              : random.once_in(2) ? "A"
                                                  : "ab<IZE>";
    const std::string lower = random.once_in(2) ? "" : random.once_in(2) ? "a" : "abb";
    const std::string target =
        (random.once_in(4) ? "" : upper) + random.target(forms.text);
    const bool stop = random.once_in(3);
    PlainGeneration twin(forms.text, target, "", stop, tally.hits);
    if (target.find("<>") != std::string::npos)
        return true;  // the step takes it as it is
    const Records expected = twin.run_from(state, upper, lower);
    if (twin.gave_up()) return ++tally.given_up, false;
    if (!expected.empty()) ++tally.hits["records from a state"];
    for (const Taula* table : forms.all) {
        Records found;
        std::string goikoa = upper, behekoa = lower;
        table->birsortuFormak(target.c_str(), found, state, goikoa.data(), behekoa.data(),
                              stop, false);
        EXPECT_TRUE(same(found, expected))
            << testing::PrintToString(texts_of(found)) << "\n expected "
            << testing::PrintToString(texts_of(expected)) << "\nstate " << state
            << ", target " << target << ", upper " << upper << ", lower " << lower;
        EXPECT_EQ(goikoa, upper);
        EXPECT_EQ(behekoa, twin.lower_left());
        if (behekoa != lower) ++tally.hits["a capital left in the caller's text"];
        ++tally.comparisons;
    }
    return true;
}

std::string field(const std::string& upper, const std::string& lower) {
    return upper + ':' + (lower.empty() ? "<>" : lower);
}

}  // namespace

TEST(Packed, AgreesWithTheTwinOnRandomTables) {
    Tally tally;
    for (unsigned seed = FIRST_SEED; seed < FIRST_SEED + TABLES; ++seed) {
        RandomTables random(seed);
        const Forms forms(random.table());
        ASSERT_EQ(forms.defect, "") << "seed " << seed;
        bool small = true;
        for (int i = 0; small && i < TOKENS; ++i) {
            const std::string token = random.token(forms.text);
            SCOPED_TRACE("seed " + std::to_string(seed) + ", token " + token);
            small =
                compare_token(forms, token, tally) && compare_steps(forms, random, tally);
            if (HasFailure()) break;
        }
        for (int i = 0; small && i < TARGETS; ++i) {
            const std::string target = random.target(forms.text);
            const std::size_t cut = random.up_to(target.size());
            std::string tags = target.substr(cut);
            if (random.once_in(6)) tags.insert(random.up_to(tags.size()), "<>");
            const bool stop = random.once_in(2);
            SCOPED_TRACE("seed " + std::to_string(seed) + ", target " +
                         target.substr(0, cut) + ", tags " + tags +
                         (stop ? ", stop" : ""));
            small = compare_target(forms, target.substr(0, cut), tags, stop, tally) &&
                    compare_generation_steps(forms, random, tally);
            if (HasFailure()) break;
        }
        if (HasFailure()) {
            int number = 0;
            for (const std::string& state : lemara::test::describe(forms.text)) {
                std::cout << number++ << ": " << state << '\n';
            }
            FAIL() << "seed " << seed;
        }
    }
    tally.expect({"a lower symbol of several bytes",
                  "an empty lower symbol",
                  "a marker in the analysis",
                  "a cycle in the analysis",
                  "the early cut at a capital",
                  "a person or a place",
                  "another name",
                  "a symbol",
                  "an end with input left",
                  "a path that doesn't fit the token's case",
                  "a false multiword",
                  "a target that doesn't exist",
                  "a record that is its own replacement",
                  "case class 0",
                  "case class 1",
                  "case class 2",
                  "analyses, and none without MAT",
                  "nothing spelt by steps",
                  "an analysis spelt by steps",
                  "several analyses spelt by steps",
                  "strings from a state",
                  "records from a state",
                  "a capital left in the caller's text",
                  "<PIB> over two symbols",
                  "<LIB> over two symbols",
                  "<IZB> over two symbols",
                  "<SNB> over two symbols",
                  "<SIG> over two symbols",
                  "<PSP> over two symbols",
                  "<MAT> over two symbols",
                  "[h=a] over two symbols",
                  "an empty upper symbol",
                  "an upper symbol of several bytes",
                  "a marker in the generation",
                  "a marker in the tags",
                  "a skipped tag in 0",
                  "a skipped tag in 1",
                  "a capital carried down",
                  "a capital of an earlier record",
                  "a cycle in the generation",
                  "an exact target",
                  "a stop at a tag",
                  "a tag before the end of the target",
                  "a path shorter than the target",
                  "<PSP in the target",
                  "<PSP excluded",
                  "<ELI_IZE in the target",
                  "<ELI_IZE excluded",
                  "ba<AUR> excluded",
                  "<ADL> excluded",
                  "<Rare> excluded"});
    EXPECT_GT(tally.comparisons, SANITIZED ? 100000 : 1000000);
}

// Loops that read one byte: (0)--a-->(0)--b-->((1)), and the same with two bytes at a
// time.
TEST(Packed, AgreesWithTheTwinAtTheEndOfTheWalk) {
    Tally tally;
    const Forms one("0\ta\t0\n0\tb:b\t1\n0\t<PIB>:<>\t1\nfinal: 1\n");
    const Forms two("0\taa:aa\t0\n0\tA:a\t1\n0\tb\t1\nfinal: 1\n");
    const std::size_t step = SANITIZED ? 4 : 1;
    for (std::size_t length = SANITIZED ? 995 : 990; length <= 1006; length += step) {
        for (const char* end : {"", "b", "ba", "bb", "A"}) {
            const std::string token = std::string(length, 'a') + end;
            for (const Forms* forms : {&one, &two}) {
                SCOPED_TRACE("length " + std::to_string(length) + end);
                EXPECT_TRUE(compare_token(*forms, token, tally));
                EXPECT_TRUE(compare_token(*forms, touppercase(token), tally));
                if (token.size() > 999 && !forms->text.analizatuTokena(token).empty()) {
                    ++tally.hits["a token that is read in part"];
                }
                // Generations: the target is cut one byte further on.
                EXPECT_TRUE(compare_target(*forms, token, "", false, tally));
                EXPECT_TRUE(compare_target(*forms, token, "<PIB>", true, tally));
            }
        }
    }
    tally.expect({"a token that is read in part"});
}

// One state with 1 to 1200 arcs, around each size at which its form or its search
// changes.
TEST(Packed, AgreesWithTheTwinOnStatesOfManyArcs) {
    Tally tally;
    RandomTables random(FIRST_SEED);
    for (const int count : {1,   3,   4,   15,  16,  17,  63,  64,  65,  127, 128,
                            129, 253, 254, 255, 256, 257, 319, 320, 321, 1200}) {
        std::string records;
        const auto letter = [&] {
            return std::string(1, static_cast<char>('a' + random.below(26)));
        };
        for (int i = 0; i < count; ++i) {
            std::string lower = random.once_in(40) ? "" : letter();
            if (random.once_in(3)) lower += letter();
            records += "0\t" + field("x" + std::to_string(i), lower) + '\t' +
                       std::to_string(random.below(3)) + '\n';
        }
        records += "1\ta\t2\nfinal: 1\n2\tb:<>\t1\nfinal: 2\n";
        const Forms forms(records);
        ASSERT_EQ(forms.defect, "");
        for (int i = 0; i < 120; ++i) {
            const std::string token = letter() + (random.once_in(2) ? letter() : "") +
                                      (random.once_in(3) ? "a" : "");
            SCOPED_TRACE(std::to_string(count) + " arcs, token " + token);
            compare_token(forms, token, tally);
            const std::string lemma = "x" + std::to_string(random.below(count));
            if (!compare_target(forms, lemma, random.once_in(2) ? "a" : "", false, tally))
                break;
        }
        if (count > 255) ++tally.hits["a state of more than 255 arcs"];
    }
    tally.expect({"a state of more than 255 arcs"});
}

// What a table says of its cycles is what a look at all paths of its graph says.
TEST(Packed, KnowsItsCycles) {
    std::map<std::uint32_t, long> seen;
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        RandomTables random(seed);
        const auto table = lemara::test::table_from(random.table());
        const std::size_t states = table->egoerak.size();
        std::uint32_t expected = 0;
        for (const bool empty_alone : {false, true}) {
            // Which states paths of one arc or more lead to, from each.
            std::vector<std::vector<bool>> leads(states, std::vector<bool>(states));
            for (std::size_t from = 0; from < states; ++from) {
                for (const Zubia* arc : table->egoerak[from]->zubiak) {
                    const auto to = static_cast<std::size_t>(arc->hurrengo_egoera);
                    if (arc->hurrengo_egoera < 0 || to >= states) continue;
                    if (!empty_alone || arc->beheko_ikurra.empty())
                        leads[from][to] = true;
                }
            }
            for (std::size_t by = 0; by < states; ++by) {
                for (std::size_t from = 0; from < states; ++from) {
                    for (std::size_t to = 0; leads[from][by] && to < states; ++to)
                        if (leads[by][to]) leads[from][to] = true;
                }
            }
            for (std::size_t state = 0; state < states; ++state) {
                if (leads[state][state])
                    expected |= empty_alone ? lemara::EMPTY_CYCLES : lemara::ANY_CYCLES;
            }
        }
        ASSERT_EQ(lemara::packed_form(*table).cycles, expected) << "seed " << seed;
        ++seen[expected];
    }
    EXPECT_GT(seen[0], 100);
    EXPECT_GT(seen[lemara::ANY_CYCLES], 100);
    EXPECT_GT(seen[lemara::ANY_CYCLES | lemara::EMPTY_CYCLES], 100);
}

// The way along a target leads through states of many arcs, which are found by the byte
// that is wanted at the second asking.
TEST(Packed, AgreesWithTheTwinOnTheWayThroughStatesOfManyArcs) {
    Tally tally;
    const Strings letters = {"a",  "b",   "c",  "A",  "B", "\361",
                             "ab", "cab", "x1", "<>", ""};
    const Strings tags = {"<IZE>",     "<ABS>", "<PSP>", "<ADL>",
                          "<ELI_IZE>", "<0Q>",  "<1O>"};
    long kept = 0;
    for (unsigned seed = 1; seed <= (SANITIZED ? 10 : 60); ++seed) {
        RandomTables random(FIRST_SEED + seed);
        std::string records;
        for (int state = 0; state < 4; ++state) {
            for (int i = 2 + random.below(12); i > 0; --i) {
                const Strings& uppers = state < 3 && !random.once_in(12) ? letters : tags;
                const std::string lower = random.once_in(3) ? "" : random.any_of(letters);
                records += std::to_string(state) + '\t' +
                           field(random.any_of(uppers), lower == "<>" ? "" : lower) +
                           '\t' + std::to_string(state + 1) + '\n';
            }
        }
        const Forms forms(records + "final: 3\nfinal: 4\n");
        ASSERT_EQ(forms.defect, "");
        for (int i = 0; i < 40; ++i) {
            const std::string target = random.target(forms.text);
            const bool stop = random.once_in(2);
            SCOPED_TRACE("seed " + std::to_string(seed) + ", target " + target);
            for (int time = 1; time <= 2; ++time) {
                if (!compare_target(forms, target, "", stop, tally)) break;
            }
        }
        for (const Taula* table : forms.all) {
            kept += static_cast<long>(lemara::upper_form(*table).size());
        }
    }
    tally.expect({"an upper symbol of several bytes", "a stop at a tag"});
    EXPECT_GT(kept, SANITIZED ? 100 : 1000);
}

// 300 states of 280 arcs with upper symbols of their own.
TEST(Packed, AgreesWithTheTwinOnMoreLabelsThanAnArcHolds) {
    Tally tally;
    RandomTables random(FIRST_SEED);
    std::string records;
    int label = 0;
    for (int s = 0; s < 300; ++s) {
        const std::string first(1, static_cast<char>('a' + s % 20));
        const std::string second(1, static_cast<char>('a' + s / 20));
        records += "0\t" + field("yz" + std::to_string(label++), first + second) + '\t' +
                   std::to_string(s + 1) + '\n';
    }
    for (int s = 1; s <= 300; ++s) {
        for (int a = 0; a < 280; ++a) {
            const std::string lower(1, static_cast<char>('a' + a % 26));
            records += std::to_string(s) + '\t' +
                       field("yz" + std::to_string(label++), lower) + "\t301\n";
        }
    }
    records += "final: 301\n";
    const Forms forms(records);
    ASSERT_EQ(forms.defect, "");
    const lemara::PackedView& view = lemara::packed_form(forms.compiled);
    ASSERT_GT(view.label_count, 65535u);
    ASSERT_NE(view.wide_labels, nullptr);
    for (int i = 0; i < 300; ++i) {
        std::string token;
        for (int n = 0; n < 3; ++n) token += static_cast<char>('a' + random.below(20));
        SCOPED_TRACE("token " + token);
        compare_token(forms, token, tally);
        if (i % 10 == 0) {
            compare_target(forms, "yz" + std::to_string(random.below(301)), "", true,
                           tally);
        }
    }
    tally.expect({"a lower symbol of several bytes"});
}

namespace {

/// The analyses of the table as its graph stands now.
Records by_the_graph(const Taula& table, const std::string& token) {
    Hits hits;
    return PlainAnalysis(table, token, hits).run();
}

struct Change {
    std::string label;
    void (*apply)(Taula&);
    std::string word;  // one that the change brings or takes away
    bool known;
};

// ur.sare once more: (0)--u-->(1)--r-->((2))--a-->((3)); the compiled form has it too.
const std::string UR = "0\tu\t1\n1\tr\t2\n2\t<ABS>:a\t3\nfinal: 2\nfinal: 3\n";

const Change CHANGES[] = {
    {"addZubiaTaulan",
     [](Taula& t) { t.addZubiaTaulan(0, false, new Zubia(1, "h", "h")); }, "hr", true},
    {"an arc to a state that isn't there yet",
     [](Taula& t) {
         t.addZubiaTaulan(0, false, new Zubia(4, "z", "z"));
         t.analizatuTokena("z");
         t.addEgoera(new Egoera({new Zubia(-1, "", "")}, true));
     },
     "z", true},
    {"addEgoera alone changes nothing", [](Taula& t) { t.addEgoera(new Egoera); }, "ura",
     true},
    {"Egoera::addZubia",
     [](Taula& t) {
         t.addEgoera(new Egoera);  // a compiled table has its graph from here on
         t.egoerak[1]->addZubia(new Zubia(3, "b", "b"));
     },
     "ub", true},
    {"Egoera::addZubia behind a search",
     [](Taula& t) {
         t.addEgoera(new Egoera);
         t.analizatuTokena("ub");
         t.egoerak[1]->addZubia(new Zubia(3, "b", "b"));
     },
     "ub", true},
    {"Egoera::deleteZubiak",
     [](Taula& t) {
         t.addEgoera(new Egoera);
         t.analizatuTokena("ur");
         t.egoerak[2]->deleteZubiak();
     },
     "ur", false},
    {"an arc where one was freed",
     [](Taula& t) {
         t.addEgoera(new Egoera);
         t.addZubiaTaulan(0, false, new Zubia(4, "z", "z"));
         t.egoerak[4]->addZubia(new Zubia(-1, "a", "a"));
         t.analizatuTokena("za");
         t.egoerak[4]->deleteZubiak();
         t.egoerak[4]->zubiak.clear();
         t.egoerak[4]->addZubia(new Zubia(-1, "b", "b"));
     },
     "zb", true},
    {"a symbol changed by hand, in front of an operation",
     [](Taula& t) {
         t.addEgoera(new Egoera);
         t.analizatuTokena("hr");
         t.egoerak[0]->zubiak[0]->beheko_ikurra = "h";
         t.addEgoera(new Egoera);
     },
     "hr", true},
    {"a target changed by hand, in front of an operation",
     [](Taula& t) {
         t.addEgoera(new Egoera);
         t.analizatuTokena("u");
         t.egoerak[0]->zubiak[0]->hurrengo_egoera = 2;
         t.addEgoera(new Egoera);
     },
     "u", true},
    {"deleteEgoerak", [](Taula& t) { t.deleteEgoerak(); }, "ur", false},
    {"deleteEgoerak, then new states",
     [](Taula& t) {
         t.deleteEgoerak();
         t.egoerak.clear();
         t.addEgoera(new Egoera({new Zubia(-1, "n", "n")}, true));
     },
     "n", true},
    {"kargatu once more", [](Taula& t) { t.kargatu(); }, "ura", true},
    {"text behind what is there", [](Taula& t) { load_text(t, "0\ti\t1\nfinal: 1\n"); },
     "i", true},
};

}  // namespace

TEST(Packed, FollowsChangesOfTheGraph) {
    const TempDir folder;
    const std::string text_path = folder.write("ur.sare", UR);
    const Taula original(text_path);
    const std::string image_path =
        folder.write("ur.bin", lemara::compile_table(original));
    for (const std::string& path : {text_path, image_path}) {
        for (const Change& change : CHANGES) {
            for (const bool asked_before : {false, true}) {
                SCOPED_TRACE(change.label + (asked_before ? ", asked before" : "") +
                             (path == image_path ? ", compiled" : ""));
                Taula table(path);
                if (asked_before) {
                    EXPECT_TRUE(lemara::has_word(table, "ur"));
                    EXPECT_FALSE(lemara::has_word(table, "zzz"));
                    lemara::has_word(table, change.word);
                }
                change.apply(table);
                for (const std::string& word :
                     {change.word, std::string("ur"), std::string("ura"),
                      std::string("hr"), std::string("zzz")}) {
                    EXPECT_TRUE(
                        same(table.analizatuTokena(word), by_the_graph(table, word)))
                        << word;
                    EXPECT_EQ(lemara::has_word(table, word),
                              plain_has_word(by_the_graph(table, word)))
                        << word;
                    Hits hits;
                    EXPECT_TRUE(same(table.sortuFormak(word, "", false, false),
                                     PlainGeneration(table, word, "", false, hits).run()))
                        << word;
                }
                EXPECT_EQ(lemara::has_word(table, change.word), change.known);
            }
        }
    }
}

TEST(Packed, ASecondLoadOfAnImageIsASecondLoadOfItsText) {
    const TempDir folder;
    int loaded = 0;
    for (unsigned seed = FIRST_SEED; seed < FIRST_SEED + 400; ++seed) {
        RandomTables random(seed);
        SCOPED_TRACE("seed " + std::to_string(seed));
        const std::string text = random.table();
        Taula once(write_anew(folder, "t.sare", text));
        if (lemara::packed_form(once).cycles != 0)
            continue;  // their paths are beyond number
        ++loaded;
        Taula compiled(write_anew(folder, "c.sare", lemara::compile_table(once)));
        once.kargatu();
        compiled.kargatu();
        for (int i = 0; i < 10; ++i) {
            const std::string token = random.token(once);
            EXPECT_TRUE(
                same(once.analizatuTokena(token), compiled.analizatuTokena(token)))
                << token;
        }
    }
    EXPECT_GT(loaded, 100);
}
