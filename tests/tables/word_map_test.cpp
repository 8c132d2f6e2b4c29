// The map of words gives back what was put, and nothing else.
#include "tables/word_map.h"

#include <gtest/gtest.h>

#include <atomic>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "lemara/compiled_table.h"
#include "random_tables.h"
#include "support.h"
#include "tables/token_walk.h"

namespace {

using lemara::WordMap;

constexpr std::size_t SLOTS = std::size_t{1} << 17;

/// Words of all lengths that it takes, and some more, of few letters, so that they begin
/// alike.
std::string any_word(std::mt19937& random) {
    std::string word(random() % 30, 'a');
    for (char& c : word) c = "ab\xFF"[random() % 3];
    if (!word.empty() && random() % 4 == 0) word[random() % word.size()] = '\0';
    while (!word.empty() && word.back() == '\0') word.pop_back();
    return word;
}

}  // namespace

TEST(WordMap, NothingIsEverGuessed) {
    std::mt19937 random(1);
    WordMap map(SLOTS);
    std::map<std::string, std::uint64_t> put;
    long known = 0, unknown = 0, too_long = 0;
    for (std::uint64_t value = 1; value <= 60000; ++value) {
        const std::string word = any_word(random);
        const auto expected = put.find(word);
        const std::uint64_t found = map.find(word);
        if (word.size() > WordMap::LONGEST) {
            ++too_long;
            EXPECT_EQ(found, WordMap::NOTHING);
            EXPECT_FALSE(map.put(word, value));
            EXPECT_EQ(map.find(word), WordMap::NOTHING);
        } else if (expected != put.end()) {
            ++known;
            EXPECT_EQ(found, expected->second);
            EXPECT_FALSE(map.put(word, value)) << "what is there stays";
            EXPECT_EQ(map.find(word), expected->second);
        } else {
            ++unknown;
            EXPECT_EQ(found, WordMap::NOTHING);
            EXPECT_TRUE(map.put(word, value));
            EXPECT_EQ(map.find(word), value);
            put.emplace(word, value);
        }
    }
    std::cout << "known " << known << ", unknown " << unknown << ", too long " << too_long
              << '\n';
    EXPECT_GT(known, 1000);
    EXPECT_GT(unknown, 1000);
    EXPECT_GT(too_long, 1000);
}

TEST(WordMap, WordsThatDifferInTheirLengthAloneAreTwo) {
    WordMap map(SLOTS);
    for (std::size_t size = 0; size <= WordMap::LONGEST; ++size)
        EXPECT_TRUE(map.put(std::string(size, 'a'), size + 1));
    for (std::size_t size = 0; size <= WordMap::LONGEST; ++size)
        EXPECT_EQ(map.find(std::string(size, 'a')), size + 1);
}

TEST(WordMap, NulsAtTheEndMakeNoOtherWord) {
    WordMap map(SLOTS);
    map.put("ur", 7);
    EXPECT_EQ(map.find(std::string_view("ur\0", 3)), 7u);
    EXPECT_EQ(map.find(std::string_view("ur\0a", 4)), WordMap::NOTHING);
}

TEST(WordMap, IsBounded) {
    WordMap map(1024);
    std::uint64_t kept = 0;
    for (std::uint64_t i = 1; i <= 5000; ++i) {
        EXPECT_EQ(map.has_room(), kept < 768 || i == kept + 1);
        if (map.put(std::to_string(i), i)) ++kept;
    }
    EXPECT_EQ(kept, 768u);
    EXPECT_FALSE(map.has_room());
    for (std::uint64_t i = 1; i <= 5000; ++i)
        EXPECT_EQ(map.find(std::to_string(i)), i <= kept ? i : WordMap::NOTHING);
}

TEST(WordMap, FollowsTheTable) {
    // An arc that a host adds makes a word of what was none.
    Taula table;
    table.kargatu_taula("0\ta\t1\n1\tb\t2\nfinal: 1\n", 3);
    EXPECT_FALSE(lemara::has_word(table, "ab"));
    EXPECT_FALSE(lemara::has_word(table, "ab"));
    table.egoerak.at(2)->addZubia(new Zubia(-1, "", ""));
    EXPECT_TRUE(lemara::has_word(table, "ab"));
}

TEST(WordMap, ANulBehindAWordIsNotForgotten) {
    // The better form is the word itself, but not the word and a NUL.
    const std::string text =
        "0\ta\t1\n1\tb\t2\n2\tc:<>\t3\n3\t[h=ab]:<>\t4\nfinal: 4\n";
    const std::string word = "ab", with_nul("ab\0", 3);
    for (const bool nul_first : {false, true}) {
        Taula table;
        table.kargatu_taula(text.c_str(), 5);
        for (int time = 0; time < 2; ++time) {
            if (nul_first) {
                EXPECT_TRUE(lemara::has_word(table, with_nul));
            }
            EXPECT_FALSE(lemara::has_word(table, word));
            EXPECT_TRUE(lemara::has_word(table, with_nul));
        }
    }
}

TEST(WordMapThreads, ReadsWhileAnotherWrites) {
    WordMap map(SLOTS);
    std::atomic<int> wrong{0};
    std::atomic<long> hits{0};
    lemara::test::in_threads(4, [&](unsigned t) {
        std::mt19937 random(t);
        for (int i = 0; i < 40000; ++i) {
            const std::uint64_t number = random() % 5000 + 1;
            const std::string word = "zenbakia: " + std::to_string(number);
            const std::uint64_t found = map.find(word);
            if (found != WordMap::NOTHING && found != number) ++wrong;
            if (found == number) ++hits;
            map.put(word, number);
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(hits, 1000);
}
