// The searches of the library against their plain twins, on random small tables.
#include "plain_search.h"

#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "support.h"
#include "table_text.h"

namespace {

using lemara::test::Hits;
using lemara::test::PlainAnalysis;
using lemara::test::PlainGeneration;
using Strings = std::vector<std::string>;

constexpr unsigned FIRST_SEED = 20260101;
constexpr unsigned TABLES = 6000;

struct Symbols {
    std::string upper, lower;
};

const Symbols LETTERS[] = {
    {"a", "a"},   {"b", "b"},   {"a", "b"},    {"A", "a"},   {"B", "b"},  {"a", ""},
    {"b", ""},    {"", "a"},    {"", "b"},     {"A", ""},    {"ab", "ab"}, {"aB", "ab"},
    {"Ab", "ab"}, {"ab", ""},   {"", "ab"},    {"ba", "b"},  {"x1", "a"}, {"+", ""},
    {"<>", "a"},  {"<>", ""},   {"<>", "<>"},  {"\361", "\361"}, {"", ""},
};

const Symbols TAGS[] = {
    {"<IZE>", ""},    {"<IZE>", "a"},     {"<ABS>", "a"},   {"<0Q>", ""},   {"<0Q>", "b"},
    {"<1O>", ""},     {"<1O>", "a"},      {"<PSP>", ""},    {"<PSP>", "a"}, {"<PSP>", "b"},
    {"<ELI_IZE>", ""}, {"<ELI_IZE>", "b"}, {"<ADL>", ""},    {"<Rare>", ""}, {"ba<AUR>", "b"},
    {"[h=a]", ""},    {"[h=b]", ""},      {"[h=ab]", ""},   {"[h=Ab]", "a"}, {"[e=a]", ""},
    {"[e=b]", "b"},   {"[s=X]", ""},      {"<PIB>", ""},    {"<LIB>", "a"}, {"<IZB>", ""},
    {"<SNB>", ""},    {"<SIG>", ""},      {"bat<IZE>", "b"}, {"bat ere<", ""}, {"<>", ""},
    {"be<IZE>", "b"}, {"<hp1>", "<hp1>"},
};

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}

    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    bool once_in(int n) { return below(n) == 0; }

    template <class Row, std::size_t N>
    const Row& any_of(const Row (&rows)[N]) {
        return rows[below(static_cast<int>(N))];
    }

private:
    std::mt19937 engine_;
};

/// Few states, most arcs lead onwards, some lead back, some nowhere.
std::unique_ptr<Taula> random_table(Random& random) {
    auto table = std::make_unique<Taula>();
    table->hiztegia = "t";
    const int states = 2 + random.below(6);
    for (int s = 0; s < states; ++s) table->addEgoera(new Egoera);
    for (int s = 0; s < states; ++s) {
        const int arcs = 1 + random.below(3);
        for (int a = 0; a < arcs; ++a) {
            const bool letter = random.below(states) >= s;
            const Symbols& symbols = letter ? random.any_of(LETTERS) : random.any_of(TAGS);
            int target = s + 1 < states ? s + 1 + random.below(states - s - 1) : s;
            if (random.once_in(12)) target = random.below(states);
            if (random.once_in(60)) target = states + random.below(3);
            if (random.once_in(60)) target = -1 - random.below(3);
            table->addZubiaTaulan(s, false, new Zubia(target, symbols.upper, symbols.lower));
        }
        if (s == states - 1 || random.once_in(4)) {
            table->addZubiaTaulan(s, true, new Zubia(-1, "", ""));
        }
        if (random.once_in(40)) table->egoerak.back()->addZubia(nullptr);
    }
    return table;
}

/// The symbols of one random path: upper texts that a generation would keep, lower texts.
Symbols random_path(const Taula& table, Random& random) {
    Symbols texts;
    int state = 0;
    for (int length = 0; length < 8; ++length) {
        const Egoera* const here = lemara::test::plain_state(table, state);
        if (here == nullptr || here->zubiak.empty()) break;
        const Zubia* const arc = here->zubiak[static_cast<std::size_t>(
            random.below(static_cast<int>(here->zubiak.size())))];
        if (arc == nullptr) break;
        const std::string& upper = arc->goiko_ikurra;
        const bool digit = upper.size() > 1 && (upper[1] == '0' || upper[1] == '1');
        if (upper != "<>" && (!digit || random.once_in(8))) texts.upper += upper;
        texts.lower += arc->beheko_ikurra;
        state = arc->hurrengo_egoera;
    }
    return texts;
}

std::string random_token(const Taula& table, Random& random) {
    std::string token = random_path(table, random).lower;
    if (random.once_in(6)) {
        token.clear();
        for (int n = random.below(6); n > 0; --n) token += "abAB1\321"[random.below(6)];
    }
    const int mode = random.below(4);
    if (mode == 1) token = touppercase(token);
    if (mode == 2 && !token.empty()) token = touppercase(token.substr(0, 1)) + token.substr(1);
    if (random.once_in(12)) token += 'a';
    return token;
}

std::string text_of(const Analisia& r) {
    return r.analisia + '|' + r.lema + '|' + r.etiketa + '|' + r.twol + '|' + r.hiztegia + '|' +
           r.sai + '|' + r.hobe + '|' + r.erabili + '|' + r.tasuna + '|' + r.iritzia + '|' +
           r.forma + '|' + std::to_string(r.maiuskula);
}

Strings texts_of(const std::vector<Analisia>& records) {
    Strings texts;
    for (const Analisia& record : records) texts.push_back(text_of(record));
    return texts;
}

std::string drawn(const Taula& table) {
    std::string text;
    int number = 0;
    for (const std::string& state : lemara::test::describe(table)) {
        text += std::to_string(number++) + ": " + state + '\n';
    }
    return text;
}

struct Tally {
    Hits hits;
    long searches = 0, with_results = 0, given_up = 0;
};

void report(const std::string& title, const Tally& tally, const Strings& features) {
    std::cout << title << ": " << tally.searches << " searches, " << tally.with_results
              << " with results, " << tally.given_up << " too large for the twin\n";
    lemara::test::expect_hits(tally.hits, features);
    EXPECT_GT(tally.with_results, tally.searches / 10);
    EXPECT_LE(tally.given_up, tally.searches / 100);
}

}  // namespace

TEST(PlainSearch, AnalysesAgree) {
    Tally tally;
    for (unsigned seed = FIRST_SEED; seed < FIRST_SEED + TABLES; ++seed) {
        Random random(seed);
        const auto table = random_table(random);
        for (int i = 0; i < 5; ++i) {
            const std::string token = random_token(*table, random);
            PlainAnalysis twin(*table, token, tally.hits);
            const std::vector<Analisia> expected = twin.run();
            ++tally.searches;
            if (twin.gave_up()) {
                ++tally.given_up;
                continue;
            }
            if (!expected.empty()) ++tally.with_results;
            ASSERT_EQ(texts_of(table->analizatuTokena(token)), texts_of(expected))
                << "seed " << seed << ", token " << token << '\n' << drawn(*table);
        }
    }
    report("analyses", tally,
           {"a lower symbol of several bytes", "an empty lower symbol",
            "a marker in the analysis", "a cycle in the analysis", "the early cut at a capital",
            "a person or a place", "another name", "a symbol", "an end with input left",
            "a path that doesn't fit the token's case", "a false multiword",
            "a target that doesn't exist", "a record that is its own replacement",
            "case class 0", "case class 1", "case class 2"});
}

TEST(PlainSearch, GenerationsAgree) {
    Tally tally;
    for (unsigned seed = FIRST_SEED; seed < FIRST_SEED + TABLES; ++seed) {
        Random random(seed);
        const auto table = random_table(random);
        for (int i = 0; i < 6; ++i) {
            std::string target = random_path(*table, random).upper;
            if (random.once_in(3)) {
                target.resize(static_cast<std::size_t>(
                    random.below(static_cast<int>(target.size()) + 1)));
            }
            if (random.once_in(10)) target += random.any_of(TAGS).upper;
            const auto cut = static_cast<std::size_t>(
                random.below(static_cast<int>(target.size()) + 1));
            const std::string lemma = target.substr(0, cut);
            std::string tags = target.substr(cut);
            if (random.once_in(6)) {
                tags.insert(static_cast<std::size_t>(
                                random.below(static_cast<int>(tags.size()) + 1)),
                            "<>");
            }
            const bool stop = random.once_in(2);
            PlainGeneration twin(*table, lemma, tags, stop, tally.hits);
            const std::vector<Analisia> expected = twin.run();
            ++tally.searches;
            if (twin.gave_up()) {
                ++tally.given_up;
                continue;
            }
            if (!expected.empty()) ++tally.with_results;
            ASSERT_EQ(texts_of(table->sortuFormak(lemma, tags, stop, random.once_in(2))),
                      texts_of(expected))
                << "seed " << seed << ", lemma " << lemma << ", tags " << tags << ", stop "
                << stop << '\n' << drawn(*table);
        }
    }
    report("generations", tally,
           {"an empty upper symbol", "an upper symbol of several bytes",
            "a marker in the generation", "a marker in the tags", "a skipped tag in 0",
            "a skipped tag in 1", "a capital carried down", "a capital of an earlier record",
            "a cycle in the generation", "an exact target", "a stop at a tag",
            "a tag before the end of the target", "a path shorter than the target",
            "<PSP in the target", "<PSP excluded", "<ELI_IZE in the target",
            "<ELI_IZE excluded", "ba<AUR> excluded", "<ADL> excluded", "<Rare> excluded"});
}
