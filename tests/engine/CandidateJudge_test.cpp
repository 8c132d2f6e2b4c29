// The judge of candidates against Lemara::isValid of each candidate as a string, and the
// whole of the proposals against their stages in so many words; on engines over random
// tables.
#include "engine/CandidateJudge.h"

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "../tables/random_tables.h"
#include "small_engine.h"

namespace {

using lemara::CandidateJudge;
using lemara::Edit;
using lemara::test::RandomTables;
using lemara::test::table_from;
using Strings = std::vector<std::string>;

/// An engine with one to three networks and, one time in three, a dictionary.
class RandomEngine {
public:
    explicit RandomEngine(RandomTables& random) {
        if (random.once_in(2)) {
            add("eumorfo", random.table());
        } else {
            add("eumorfo", word_list(random));
        }
        if (random.once_in(2)) add("a", random.table());
        if (random.once_in(2)) add("hp", lemara::test::hp_table());
        if (random.once_in(8)) engine.sareak["hutsa"] = nullptr;
        if (random.once_in(8)) engine.sareak["taularik ez"] = new Sarea("t", "", nullptr);
        if (random.once_in(3)) {
            engine.hiztegiPertsonala = &dictionary;
            for (const char* word : {"bab", "ba", "abab", "aba"}) {
                dictionary.gehitu_sarrera(false, word, "<ARR>", "", "", "");
            }
            dictionary.gutxieneko_luzera = 2;
        }
    }

    const Taula& main_table() const { return *engine.sareak.at("eumorfo")->taula; }

    Lemara engine;
    HiztegiPertsonala dictionary;

private:
    /// Words of the letters that known errors are about, and what a percent sign splits
    /// into.
    static std::string word_list(RandomTables& random) {
        Strings words = {"%", "%a", "a", "ta"};
        for (int n = 0; n < 60; ++n) {
            std::string word;
            for (int i = 2 + random.below(3); i > 0; --i)
                word += "atzshxiu"[random.below(8)];
            words.push_back(word);
        }
        return lemara::test::Lexicon().words(words, "<X>").text();
    }

    void add(const std::string& key, const std::string& records) {
        engine.sareak[key] = new Sarea(key, key + ".sare", table_from(records).release());
    }
};

struct Tally {
    std::map<std::string, long> hits;

    void print() const {
        for (const auto& [what, count] : hits)
            std::cout << "  " << what << ": " << count << '\n';
    }
};

/// Judges every edit of every generator, both ways.
void compare_edits(const Lemara& engine, const std::string& word, Tally& tally) {
    CandidateJudge judge(engine, word);
    const auto judge_of = [&](const std::string& base, const char* generator) {
        return [&, generator](const Edit& edit) {
            const std::string candidate = lemara::applied(base, edit);
            const bool valid = engine.isValid(candidate, false);
            EXPECT_EQ(judge.is_valid(base, edit), valid)
                << candidate << ", from " << word;
            ++tally.hits["comparisons"];
            ++tally.hits[std::string(generator) + (valid ? ", valid" : ", not valid")];
            if (edit.inserted.find_first_of(" -") != std::string_view::npos) {
                ++tally.hits["a candidate with a gap"];
            }
            return true;
        };
    };
    lemara::for_each_swap(judge.typed(), judge_of(judge.typed(), "swaps"));
    lemara::for_each_known_error(judge.folded(),
                                 judge_of(judge.folded(), "known errors"));
    lemara::for_each_letter_too_many_or_few(judge.folded(),
                                            judge_of(judge.folded(), "letters"));
    lemara::for_each_missing_blank(judge.folded(), judge_of(judge.folded(), "blanks"));
    lemara::for_each_wrong_letter(judge.typed(),
                                  judge_of(judge.typed(), "wrong letters"));
}

char small_to_capital(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

/// The stages over all candidates at once.
Strings plain_proposals(const Lemara& engine, const std::string& word) {
    const std::map<int, Strings> candidates = proposamen_hautagaiak_lortu(word);
    const auto valid_of = [&](const std::vector<int>& keys, std::size_t limit) {
        Strings valid;
        for (const int key : keys) {
            for (const std::string& text : candidates.at(key)) {
                if (valid.size() < limit && engine.isValid(text, false))
                    valid.push_back(text);
            }
        }
        return valid;
    };
    Strings result = valid_of({1, 2, 3}, 1000000);
    if (result.empty()) result = valid_of({5, 4}, 5);
    if (result.empty()) result = valid_of({6}, 5);
    for (std::string& text : result) {
        if (word == touppercase(word)) {
            text = touppercase(text);
        } else if (!word.empty() && word[0] == small_to_capital(word[0]) &&
                   !text.empty()) {
            text[0] = small_to_capital(text[0]);
        }
    }
    return result;
}

std::string random_word(const RandomEngine& world, RandomTables& random) {
    std::string word = random.token(world.main_table());
    if (random.once_in(3)) {
        for (int n = 1 + random.below(4); n > 0; --n)
            word += "abtzsxiu\361AB"[random.below(11)];
    }
    // One thing wrong.
    if (!word.empty() && random.once_in(2))
        word[random.up_to(word.size() - 1)] = "abxz"[random.below(4)];
    if (random.once_in(20))
        word.insert(random.up_to(word.size()), 1, random.once_in(2) ? ' ' : '-');
    if (random.once_in(20)) word.insert(0, 1, '%');
    return word;
}

}  // namespace

TEST(CandidateJudge, GivesWhatIsValidGives) {
    Tally tally;
    testing::internal::CaptureStdout();
    for (unsigned seed = 1; seed <= 150 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTables random(seed);
        const RandomEngine world(random);
        for (int i = 0; i < 8; ++i) {
            const std::string word = random_word(world, random);
            compare_edits(world.engine, word, tally);
            if (word.find_first_of(" -") != std::string::npos)
                ++tally.hits["a word with a gap"];
        }
        if (world.engine.hiztegiPertsonala != nullptr)
            ++tally.hits["an engine with a dictionary"];
    }
    testing::internal::GetCapturedStdout();
    tally.print();
    EXPECT_GT(tally.hits["comparisons"], 100000);
    for (const char* what :
         {"swaps, valid", "swaps, not valid", "known errors, valid",
          "known errors, not valid", "letters, valid", "letters, not valid",
          "blanks, valid", "blanks, not valid", "wrong letters, valid",
          "wrong letters, not valid", "a word with a gap", "an engine with a dictionary",
          "a candidate with a gap"}) {
        EXPECT_GT(tally.hits[what], 0) << what;
    }
}

TEST(CandidateJudge, ProposalsAreThoseOfThePlainStages) {
    Tally tally;
    testing::internal::CaptureStdout();
    for (unsigned seed = 1001; seed <= 1400 && !HasFailure(); ++seed) {
        RandomTables random(seed);
        const RandomEngine world(random);
        for (int i = 0; i < 8; ++i) {
            const std::string word = random_word(world, random);
            if (word.find('\0') != std::string::npos) continue;
            const Strings expected = plain_proposals(world.engine, word);
            ++tally.hits[expected.empty() ? "no proposal" : "proposals"];
            EXPECT_EQ(world.engine.lortu_ezzg_proposamenak(word), expected)
                << "seed " << seed << ", word " << word;
        }
    }
    testing::internal::GetCapturedStdout();
    tally.print();
    EXPECT_GT(tally.hits["proposals"], 500);
    EXPECT_GT(tally.hits["no proposal"], 500);
}

TEST(CandidateJudge, VeryLongWordsAreJudgedAsStrings) {
    // (0)--a-->(0)--b-->((1)): the walk reads 999 bytes of what a candidate holds.
    Lemara engine;
    engine.sareak["eumorfo"] = new Sarea(
        "eumorfo", "", table_from("0\ta\t0\n0\tb\t1\nfinal: 1\nfinal: 0\n").release());
    long comparisons = 0;
    for (const std::size_t length : std::vector<std::size_t>{
             980, 982, 983, 984, 990, 997, 998, 999, 1000, 1001, 1020}) {
        const std::string word = std::string(length, 'a') + "b";
        CandidateJudge judge(engine, word);
        // Edits at the very end decide.
        for (std::size_t at = word.size() - 5; at < word.size(); ++at) {
            for (const Edit& edit :
                 {Edit{at, 1, ""}, Edit{at, 1, "b"}, Edit{at, 0, "aha"}, Edit{at, 0, "a"},
                  Edit{at, 1, "a"}}) {
                EXPECT_EQ(judge.is_valid(word, edit),
                          engine.isValid(lemara::applied(word, edit), false))
                    << length << " at " << at << " " << edit.inserted;
                ++comparisons;
            }
        }
    }
    EXPECT_GT(comparisons, 200);
}
