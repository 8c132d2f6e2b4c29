// What was found out before is given again as it was, or found out anew.
#include "tables/known_texts.h"

#include <gtest/gtest.h>

#include <atomic>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "random_tables.h"
#include "support.h"
#include "tables/known_beginnings.h"
#include "tables/token_walk.h"

namespace {

using lemara::test::RandomTables;
using lemara::test::table_from;
using Strings = std::vector<std::string>;
using Known = lemara::KnownTexts<int>;

constexpr std::size_t SLOTS = std::size_t{1} << 12;

Strings texts_of(const Known::List& list) {
    Strings texts;
    list.for_each([&](std::string_view text) {
        EXPECT_EQ(text.data()[text.size()], '\0');
        texts.emplace_back(text);
        return true;
    });
    return texts;
}

void keep(Known& known, const std::string& word, int about, const Strings& texts) {
    Known::Notes notes = known.notes_for(word);
    for (const std::string& text : texts) {
        if (notes.taken()) notes.add(text);
    }
    known.keep(word, about, notes);
}

/// An entry as texts: its analysis, then its form.
Strings entries(const Taula& table, const std::string& beginning, std::size_t most) {
    Strings texts;
    lemara::for_each_form(table, beginning, true, [&](Analisia&& record) {
        texts.push_back(record.analisia + '|' + record.forma);
        return texts.size() < most;
    });
    return texts;
}

constexpr std::size_t ALL = 1000000;

}  // namespace

TEST(KnownTexts, GivesAgainWhatWasKept) {
    std::mt19937 random(7);
    Known known(SLOTS);
    std::map<std::string, std::pair<int, Strings>> kept;
    long again = 0, left_out = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string word = std::to_string(random() % 5000);
        Strings texts(random() % 6);
        std::size_t bytes = 0;
        bool fits = true;
        for (std::string& text : texts) {
            text.assign(random() % (random() % 20 == 0 ? 300 : 30), 'x');
            for (char& c : text) c = static_cast<char>(random());
            fits = fits && text.size() <= Known::LONGEST_TEXT;
            bytes += text.size() + 3;
        }
        fits = fits && bytes <= Known::MOST_BYTES;
        const Known::List* list = known.find(word);
        const auto expected = kept.find(word);
        ASSERT_EQ(list != nullptr, expected != kept.end()) << word;
        if (list != nullptr) {
            ++again;
            EXPECT_EQ(list->about, expected->second.first);
            EXPECT_EQ(texts_of(*list), expected->second.second);
            continue;
        }
        keep(known, word, round, texts);
        const bool has_room = kept.size() < SLOTS / 4 * 3;
        if (fits && has_room) kept[word] = {round, texts};
        if (!fits || !has_room) ++left_out;
        EXPECT_EQ(known.find(word) != nullptr, fits && has_room);
    }
    std::cout << "given again " << again << ", left out " << left_out << '\n';
    EXPECT_EQ(kept.size(), SLOTS / 4 * 3);
    EXPECT_GT(again, 1000);
    EXPECT_GT(left_out, 1000);
}

TEST(KnownTexts, TakesListsUpToItsBounds) {
    Known known(SLOTS);
    const std::string longest(Known::LONGEST_TEXT, 'a');
    keep(known, "bat", 1, {longest});
    keep(known, "bi", 2, {longest + 'a'});
    keep(known, "", 3, {});
    keep(known, std::string(Known::LONGEST_WORD, 'b'), 4, {"", ""});
    keep(known, std::string(Known::LONGEST_WORD + 1, 'b'), 5, {""});
    ASSERT_NE(known.find("bat"), nullptr);
    EXPECT_EQ(texts_of(*known.find("bat")), Strings{longest});
    EXPECT_EQ(known.find("bi"), nullptr);
    ASSERT_NE(known.find(""), nullptr);
    EXPECT_EQ(known.find("")->count(), 0);
    ASSERT_NE(known.find(std::string(Known::LONGEST_WORD, 'b')), nullptr);
    EXPECT_EQ(known.find(std::string(Known::LONGEST_WORD, 'b'))->count(), 2);
    EXPECT_EQ(known.find(std::string(Known::LONGEST_WORD + 1, 'b')), nullptr);
    // Each text costs its size, a NUL and two bytes more.
    Strings filling(7, longest);
    filling.push_back(
        std::string(Known::MOST_BYTES - 7 * (Known::LONGEST_TEXT + 3) - 3, 'c'));
    keep(known, "full", 6, filling);
    ASSERT_NE(known.find("full"), nullptr);
    EXPECT_EQ(texts_of(*known.find("full")), filling);
    filling.back() += 'c';
    keep(known, "more", 7, filling);
    EXPECT_EQ(known.find("more"), nullptr);
}

TEST(KnownTextsThreads, ReadsWhileAnotherWrites) {
    Known known(SLOTS);
    std::atomic<int> wrong{0};
    std::atomic<long> hits{0};
    lemara::test::in_threads(4, [&](unsigned t) {
        std::mt19937 random(t);
        for (int i = 0; i < 20000; ++i) {
            const int number = static_cast<int>(random() % 2000);
            const std::string word = std::to_string(number);
            const Strings texts = {word + 'a', word + 'b'};
            if (const Known::List* list = known.find(word)) {
                ++hits;
                if (list->about != number || texts_of(*list) != texts) ++wrong;
            } else {
                keep(known, word, number, texts);
            }
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(hits, 1000);
}

// The memory is asked by sortuFormak; the step behind it searches anew each time.
TEST(KnownBeginnings, AreWhatASearchFinds) {
    long some = 0, broken_off = 0, recited = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        RandomTables random(seed);
        const auto table = table_from(random.table());
        for (int i = 0; i < 30; ++i) {
            const std::string target = random.target(*table).substr(0, 30);
            SCOPED_TRACE("seed " + std::to_string(seed) + ", target " + target);
            char upper[1] = "", lower[1] = "";
            std::vector<Analisia> found;
            table->birsortuFormak(target.c_str(), found, 0, upper, lower, true, false);
            Strings expected;
            for (const Analisia& record : found)
                expected.push_back(record.analisia + '|' + record.forma);
            // What was broken off is not remembered as the whole.
            const std::size_t most = 1 + random.up_to(3);
            Strings first = expected;
            if (first.size() > most) {
                first.resize(most);
                ++broken_off;
            }
            ASSERT_EQ(entries(*table, target, most), first);
            ASSERT_EQ(entries(*table, target, ALL), expected);
            recited += lemara::known_beginnings(*table).recite(
                target, [](std::string_view, std::string_view) { return false; });
            ASSERT_EQ(entries(*table, target, ALL), expected);
            ASSERT_EQ(entries(*table, target, most), first);
            some += !expected.empty();
        }
    }
    std::cout << "with entries " << some << ", broken off " << broken_off << ", recited "
              << recited << '\n';
    EXPECT_GT(some, 1000);
    EXPECT_GT(broken_off, 300);
    EXPECT_GT(recited, 5000);
}

TEST(KnownBeginnings, FollowTheTable) {
    const auto table = table_from("0\ta\t1\n1\t<X>:<>\t2\nfinal: 2\n");
    EXPECT_EQ(entries(*table, "a", ALL), Strings{"a<X>|a"});
    EXPECT_EQ(entries(*table, "b", ALL), Strings{});
    table->addZubiaTaulan(0, false, new Zubia(1, "b", "b"));
    EXPECT_EQ(entries(*table, "a", ALL), Strings{"a<X>|a"});
    EXPECT_EQ(entries(*table, "b", ALL), Strings{"b<X>|b"});
}
