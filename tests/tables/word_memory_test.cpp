// The memory of words gives back what was put, and nothing else.
#include "tables/word_memory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "lemara/compiled_table.h"
#include "random_tables.h"
#include "tables/token_walk.h"

namespace {

using lemara::WordMemory;

/// Words of all lengths around those of its pieces, few letters, so that they begin
/// alike.
std::string any_word(std::mt19937& random) {
    std::string word(random() % 110, 'a');
    for (char& c : word) c = "ab\xFF"[random() % 3];
    if (!word.empty() && random() % 4 == 0) word[random() % word.size()] = '\0';
    while (!word.empty() && word.back() == '\0') word.pop_back();
    return word;
}

}  // namespace

TEST(WordMemory, ForgottenWordsAreNeverGuessed) {
    std::mt19937 random(1);
    WordMemory memory;
    std::map<std::string, bool> put;
    long known = 0, unknown = 0, too_long = 0;
    for (int i = 0; i < 60000; ++i) {
        const std::string word = any_word(random);
        const auto found = memory.find(word);
        const auto expected = put.find(word);
        if (found.has_value()) {
            ASSERT_NE(expected, put.end()) << word;
            EXPECT_EQ(*found, expected->second);
            ++known;
        } else {
            ++unknown;
        }
        const bool answer = random() % 2 == 0;
        if (expected == put.end()) put.emplace(word, answer);
        memory.put(word, put[word]);
        // One thread alone: what was put is there, as far as words are remembered.
        const auto again = memory.find(word);
        if (word.size() > WordMemory::LONGEST) {
            ++too_long;
            EXPECT_FALSE(again.has_value());
        } else {
            ASSERT_TRUE(again.has_value());
            EXPECT_EQ(*again, put[word]);
        }
    }
    std::cout << "known " << known << ", unknown " << unknown << ", too long " << too_long
              << '\n';
    EXPECT_GT(known, 1000);
    EXPECT_GT(unknown, 1000);
    EXPECT_GT(too_long, 1000);
}

TEST(WordMemory, WordsThatDifferInTheirLengthAloneAreTwo) {
    WordMemory memory;
    for (std::size_t size = 0; size <= WordMemory::LONGEST; ++size)
        memory.put(std::string(size, 'a'), size % 2 == 0);
    for (std::size_t size = 0; size <= WordMemory::LONGEST; ++size) {
        const auto found = memory.find(std::string(size, 'a'));
        ASSERT_TRUE(found.has_value()) << size;
        EXPECT_EQ(*found, size % 2 == 0) << size;
    }
}

TEST(WordMemory, NulsAtTheEndMakeNoOtherWord) {
    WordMemory memory;
    memory.put("ur", true);
    EXPECT_EQ(memory.find(std::string_view("ur\0", 3)), std::optional<bool>(true));
    EXPECT_EQ(memory.find(std::string_view("ur\0a", 4)), std::nullopt);
}

TEST(WordMemory, IsBounded) {
    WordMemory memory;
    long kept = 0;
    for (int i = 0; i < 600000; ++i) {
        const std::string word = std::to_string(i);
        memory.put(word, i % 3 == 0);
        const auto found = memory.find(word);
        if (found) {
            ++kept;
            EXPECT_EQ(*found, i % 3 == 0);
        }
    }
    EXPECT_GT(kept, 300000);
    EXPECT_LT(kept, 500000);
    EXPECT_EQ(memory.find("0"), std::optional<bool>(true));  // what it has it keeps
}

TEST(WordMemory, FollowsTheTable) {
    // An arc that a host adds makes a word of what was none.
    Taula table;
    table.kargatu_taula("0\ta\t1\n1\tb\t2\nfinal: 1\n", 3);
    EXPECT_FALSE(lemara::has_word(table, "ab"));
    EXPECT_FALSE(lemara::has_word(table, "ab"));
    table.egoerak.at(2)->addZubia(new Zubia(-1, "", ""));
    EXPECT_TRUE(lemara::has_word(table, "ab"));
}

TEST(WordMemoryThreads, ReadsWhileAnotherWrites) {
    WordMemory memory;
    std::atomic<int> wrong{0};
    std::atomic<long> hits{0};
    std::vector<std::thread> threads;
    for (unsigned t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            std::mt19937 random(t);
            for (int i = 0; i < 40000; ++i) {
                const auto number = static_cast<unsigned>(random() % 5000);
                const std::string word =
                    "hitz luzeago bat, zenbakiduna: " + std::to_string(number);
                const bool answer = number % 7 == 0;
                const auto found = memory.find(word);
                if (found && *found != answer) ++wrong;
                if (found) ++hits;
                memory.put(word, answer);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(hits, 1000);
}
