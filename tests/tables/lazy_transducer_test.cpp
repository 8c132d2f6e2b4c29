// The lazy form says yes and no as the walk does, and spells what the walk spells, cold
// and warm, up to its bounds and beyond.
#include "tables/lazy_transducer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "lemara/compiled_table.h"
#include "random_tables.h"
#include "support.h"
#include "tables/packed_walk.h"
#include "tables/token_walk.h"

namespace {

using lemara::test::RandomTables;
using lemara::test::table_from;
using Strings = std::vector<std::string>;

struct Row {
    std::string label, records, word;
    bool known;
};

const Row ROWS[] = {
    {"a word", "0\ta\t1\nfinal: 1\n", "a", true},
    {"a beginning is no word", "0\ta\t1\n1\tb\t2\nfinal: 2\n", "a", false},
    {"more than a word is none", "0\ta\t1\nfinal: 1\n", "ab", false},
    {"capitals are lowered", "0\ta\t1\nfinal: 1\n", "A", true},
    {"the empty word", "0\ta\t1\nfinal: 0\n", "", true},
    {"the empty word of a table without states", "", "", false},
    {"a capitalised entry in small letters", "0\tA:a\t1\nfinal: 1\n", "a", false},
    {"a capitalised entry with its capital", "0\tA:a\t1\nfinal: 1\n", "A", true},
    {"an entry both ways", "0\tA:a\t1\n0\ta\t1\nfinal: 1\n", "a", true},
    {"a name in small letters", "0\ta\t1\n1\t<PIB>:<>\t2\nfinal: 2\n", "a", false},
    {"a name with its capital", "0\ta\t1\n1\t<PIB>:<>\t2\nfinal: 2\n", "A", true},
    {"a name's tag in two symbols", "0\ta\t1\n1\t<PI:<>\t2\n2\tB>:<>\t3\nfinal: 3\n", "a",
     false},
    {"it lets the capital pass", "0\ta\t1\n1\t<PI:<>\t2\n2\tB>:<>\t3\nfinal: 3\n", "A",
     true},
    {"a symbol must stand as it is written", "0\tX:x\t1\n1\t<SNB>:<>\t2\nfinal: 2\n", "X",
     true},
    {"and not otherwise", "0\tXy:xy\t1\n1\t<SNB>:<>\t2\nfinal: 2\n", "XY", false},
    {"MAT alone is no word", "0\ta\t1\n1\t<MAT>:<>\t2\nfinal: 2\n", "a", false},
    {"MAT and another way is one", "0\ta\t1\n1\t<MAT>:<>\t2\n1\t<X>:<>\t2\nfinal: 2\n",
     "a", true},
    {"MAT in two symbols", "0\ta\t1\n1\t<MA:<>\t2\n2\tT>:<>\t3\nfinal: 3\n", "a", false},
    {"MAT behind an end that makes it a word", "0\tk\t1\nfinal: 1\n1\t<MAT>:<>\t-1\n", "k",
     true},
    {"a better form behind such an end", "0\tk\t1\nfinal: 1\n1\t[h=k]:<>\t-1\n", "k", true},
    {"a symbol behind such an end", "0\tk\t1\nfinal: 1\n1\t<SIG>:<>\t-1\n", "K", true},
    {"a better form that is the word itself", "0\ta\t1\n1\t[h=a]:<>\t2\nfinal: 2\n", "a",
     false},
    {"a better form", "0\ta\t1\n1\t[h=b]:<>\t2\nfinal: 2\n", "a", true},
    {"a symbol of several bytes read in part", "0\tabc:abc\t1\nfinal: 1\n", "ab", false},
    {"a symbol of several bytes", "0\tabc:abc\t1\nfinal: 1\n", "abc", true},
    {"a byte that no symbol holds", "0\ta\t1\nfinal: 1\n", "a\351", false},
    {"an empty cycle in front of a capitalised entry",
     "0\t+:<>\t0\n0\tB:b\t1\nfinal: 1\n", "b", false},
    {"a NUL ends the word", "0\ta\t1\nfinal: 1\n", std::string("a\0b", 3), true},
};

/// Words of the table and words that are none.
std::vector<std::string> words_for(const Taula& table, RandomTables& random, int count) {
    std::vector<std::string> words;
    for (int i = 0; i < count; ++i) words.push_back(random.token(table));
    return words;
}

}  // namespace

TEST(LazyTransducer, AnswersRowByRow) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.label);
        const auto table = table_from(row.records);
        EXPECT_EQ(lemara::walk_finds_word(*table, row.word), row.known);
        EXPECT_EQ(lemara::has_word(*table, row.word), row.known) << "cold";
        EXPECT_EQ(lemara::has_word(*table, row.word), row.known) << "warm";
    }
}

TEST(LazyTransducer, IsAskedByPrefixesToo) {
    // Node by node, as the judge of candidates goes, and the whole word at once.
    long answers[4] = {0, 0, 0, 0};
    for (unsigned seed = 1; seed <= 800; ++seed) {
        RandomTables random(seed);
        const auto table = table_from(random.table());
        lemara::LazyTransducer& lazy = lemara::lazy_form(*table);
        for (const std::string& word : words_for(*table, random, 20)) {
            if (word.find('\0') != std::string::npos) continue;
            lemara::LazyTransducer::Node node = lazy.start();
            for (const char c : tolowercase(word)) {
                node = lazy.next(node, static_cast<std::uint8_t>(c));
            }
            const bool small = !word.empty() && orbi_islower(word[0]);
            const lemara::Answer answer = lazy.answer(node, small);
            ++answers[static_cast<int>(answer)];
            if (answer != lemara::Answer::no && answer != lemara::Answer::yes) continue;
            EXPECT_EQ(answer == lemara::Answer::yes,
                      lemara::walk_finds_word(*table, word))
                << "seed " << seed << ", word " << word;
        }
    }
    std::cout << "no " << answers[0] << ", yes " << answers[1] << ", ask the texts "
              << answers[2] << ", ask the walk " << answers[3] << '\n';
    for (const long count : answers) EXPECT_GT(count, 100);
}

TEST(LazyTransducer, AnswersForWholeWordsAtOnce) {
    // Once before any step is made, and once when those are that spelling makes.
    long answers[4] = {0, 0, 0, 0}, asked = 0;
    for (unsigned seed = 1; seed <= 800; ++seed) {
        RandomTables random(seed);
        const auto table = table_from(random.table());
        lemara::LazyTransducer lazy(lemara::packed_form(*table));
        std::vector<std::string> words;
        for (const std::string& any : words_for(*table, random, 20)) {
            words.push_back(std::string(any.c_str()).substr(0, lemara::WALK_LIMIT));
        }
        for (int time = 0; time < 2; ++time) {
            for (const std::string& word : words) {
                SCOPED_TRACE("seed " + std::to_string(seed) + ", word " + word);
                const std::string lowered = tolowercase(word);
                std::vector<std::string> expected;
                lemara::PackedAnalysis walk(lemara::packed_form(*table), word, lowered);
                walk.run(0, [&](std::string_view text) {
                    expected.emplace_back(text);
                    return true;
                });
                const auto counts = [&](std::string_view text) {
                    ++asked;
                    EXPECT_EQ(std::count(expected.begin(), expected.end(), text) > 0, true);
                    EXPECT_EQ(text.data()[text.size()], '\0');
                    return true;
                };
                const lemara::Answer answer = lazy.answer(word, counts);
                ++answers[static_cast<int>(answer)];
                if (time == 0 && !word.empty()) {
                    EXPECT_NE(answer, lemara::Answer::ask_the_texts);
                }
                if (answer == lemara::Answer::no || answer == lemara::Answer::yes) {
                    EXPECT_EQ(answer == lemara::Answer::yes, !expected.empty());
                }
                // None that counts: a word by a clean analysis, or none.
                const auto never = [](std::string_view) { return false; };
                if (lazy.answer(word, never) == lemara::Answer::yes) {
                    EXPECT_EQ(answer, lemara::Answer::yes);
                }
            }
            for (const std::string& word : words) {
                lemara::LazyTransducer::Spelt spelt;
                for (int again = 0; again < 3; ++again)
                    lazy.spell(word, spelt, [](std::string_view) { return true; });
            }
        }
    }
    std::cout << "no " << answers[0] << ", yes " << answers[1] << ", ask the texts "
              << answers[2] << ", ask the walk " << answers[3] << "; asked of " << asked
              << " analyses\n";
    for (const long count : answers) EXPECT_GT(count, 100);
    EXPECT_GT(asked, 1000);
}

TEST(LazyTransducer, SpellsWhatTheWalkSpells) {
    long spelt = 0, asked = 0, reached_less = 0;
    for (unsigned seed = 1; seed <= 800; ++seed) {
        RandomTables random(seed);
        const auto table = table_from(random.table());
        lemara::LazyTransducer& lazy = lemara::lazy_form(*table);
        for (const std::string& any : words_for(*table, random, 20)) {
            const std::string word = any.c_str();  // up to a NUL
            const std::string lowered = tolowercase(word).substr(0, lemara::WALK_LIMIT);
            std::vector<std::string> expected;
            lemara::PackedAnalysis walk(lemara::packed_form(*table), word, lowered);
            walk.run(0, [&](std::string_view text) {
                expected.emplace_back(text);
                return true;
            });
            for (int time = 1; time <= 4; ++time) {
                std::vector<std::string> found;
                lemara::LazyTransducer::Spelt way;
                const bool done = lazy.spell(word, way, [&](std::string_view text) {
                    EXPECT_EQ(text.data()[text.size()], '\0');
                    found.emplace_back(text);
                    return true;
                });
                EXPECT_TRUE(done || found.empty());
                std::vector<std::string> anew;
                lemara::LazyTransducer::Spelt way_anew;
                if (lazy.spell_anew(word, way_anew, [&](std::string_view text) {
                        anew.emplace_back(text);
                        return true;
                    })) {
                    EXPECT_EQ(anew, expected) << "not from memory";
                }
                if (!done) {
                    ++asked;
                    continue;
                }
                ++spelt;
                EXPECT_EQ(found, expected) << "seed " << seed << ", word " << word;
                // No path goes on behind it, as the walk tells from its own.
                EXPECT_GE(way.most, found.size());
                EXPECT_GE(way.reach, walk.reach());
                if (way.reach < word.size()) ++reached_less;
            }
        }
    }
    std::cout << "spelt " << spelt << ", of them not read to the end " << reached_less
              << "; the walk asked " << asked << '\n';
    EXPECT_GT(spelt, 10000);
    EXPECT_GT(reached_less, 1000);
    EXPECT_GT(asked, 1000);
}

TEST(LazyTransducer, KnowsFromAWordHowFarATextIsRead) {
    long told = 0, told_less = 0, silent = 0, spelt_on = 0;
    for (unsigned seed = 1; seed <= 800; ++seed) {
        RandomTables random(seed);
        const auto table = table_from(random.table());
        lemara::LazyTransducer& lazy = lemara::lazy_form(*table);
        const std::vector<std::string> words = words_for(*table, random, 12);
        for (const std::string& any : words) {
            const std::string word = any.c_str();
            for (int time = 1; time <= 3; ++time) {
                lemara::LazyTransducer::Spelt way;
                lazy.spell(word, way, [](std::string_view) { return true; });
            }
            for (const std::string& rest : words) {
                const std::string text = word + rest.c_str();
                const auto reach = lazy.known_reach(word, text);
                if (!reach) {
                    ++silent;
                    continue;
                }
                ++told;
                if (*reach < word.size()) ++told_less;
                if (*reach > word.size()) ++spelt_on;
                const std::string lowered =
                    tolowercase(text).substr(0, lemara::WALK_LIMIT);
                lemara::PackedAnalysis walk(lemara::packed_form(*table), text, lowered);
                walk.run(0, [&](std::string_view analysis) {
                    ADD_FAILURE()
                        << "seed " << seed << ": " << text << " is " << analysis;
                    return true;
                });
                EXPECT_GE(*reach, walk.reach()) << "seed " << seed << ", text " << text;
            }
        }
    }
    std::cout << "told " << told << ", of them within the word " << told_less
              << ", behind it " << spelt_on << "; not told " << silent << '\n';
    EXPECT_GT(told_less, 1000);
    EXPECT_GT(spelt_on, 300);
    EXPECT_GT(told - told_less, 1000);
    EXPECT_GT(silent, 1000);
}

TEST(LazyTransducer, StopsWhenItsVisitorHasEnough) {
    const auto table = table_from("0\ta\t1\n1\t<X>:<>\t2\n1\t<Y>:<>\t2\nfinal: 2\n");
    lemara::LazyTransducer& lazy = lemara::lazy_form(*table);
    std::vector<std::string> found;
    lemara::LazyTransducer::Spelt way;
    const auto ask = [&](bool go_on) {
        lazy.spell("a", way, [&](std::string_view text) {
            found.emplace_back(text);
            return go_on;
        });
    };
    ask(false);
    ask(false);
    EXPECT_EQ(found, Strings{"a<X>"});
    // What was broken off is not remembered as the whole.
    found.clear();
    ask(true);
    ask(true);
    EXPECT_EQ(found, (Strings{"a<X>", "a<Y>", "a<X>", "a<Y>"}));
    found.clear();
    ask(false);
    EXPECT_EQ(found, Strings{"a<X>"});
}

// A table in which each word makes new nodes: any of the last 24 letters decides.
// (0)--a,b-->(0), (0)--b-->(1)--a,b-->(2)-- ... -->((24))
TEST(LazyTransducer, BeyondItsBoundsTheWalkIsAsked) {
    std::string records = "0\ta\t0\n0\tb\t0\n0\tb\t1\n";
    for (int state = 1; state < 24; ++state) {
        for (const char* letter : {"a", "b"}) {
            records += std::to_string(state) + '\t' + letter + '\t' +
                       std::to_string(state + 1) + '\n';
        }
    }
    records += "final: 24\n";
    const auto table = table_from(records);
    std::mt19937 random(1);
    long asked = 0;
    for (int round = 0; round < 6000; ++round) {
        std::string word;
        for (int i = 0; i < 200; ++i) word += random() % 2 == 0 ? 'a' : 'b';
        lemara::LazyTransducer& lazy = lemara::lazy_form(*table);
        lemara::LazyTransducer::Node node = lazy.start();
        for (const char c : word) node = lazy.next(node, static_cast<std::uint8_t>(c));
        if (lazy.answer(node, true) == lemara::Answer::ask_the_walk) ++asked;
        ASSERT_EQ(lemara::has_word(*table, word), word[word.size() - 24] == 'b') << word;
    }
    std::cout << "words beyond the bound: " << asked << '\n';
    EXPECT_GT(asked, 0);
}

TEST(LazyTransducerThreads, FourThreadsMakeOneForm) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        RandomTables random(seed);
        const std::string text = random.table();
        const auto alone = table_from(text);
        if (lemara::packed_form(*alone).cycles != 0)
            continue;  // some have paths beyond number
        const std::vector<std::string> words = words_for(*alone, random, 60);
        std::vector<bool> known;
        for (const std::string& word : words)
            known.push_back(lemara::walk_finds_word(*alone, word));

        const lemara::test::TempDir folder;
        const Taula compiled(folder.write("t.sare", lemara::compile_table(*alone)));
        const auto fresh = table_from(text);
        std::atomic<int> wrong{0};
        lemara::test::in_threads(4, [&](unsigned t) {
            for (std::size_t i = 0; i < words.size(); ++i) {
                const std::size_t at = (i * (t + 1)) % words.size();
                for (const Taula* table :
                     {static_cast<const Taula*>(fresh.get()), &compiled}) {
                    if (lemara::has_word(*table, words[at]) != known[at]) ++wrong;
                    if (table->analizatuTokena(words[at]).empty() && known[at]) ++wrong;
                }
            }
        });
        EXPECT_EQ(wrong, 0) << "seed " << seed;
    }
}
