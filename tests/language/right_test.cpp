// What is right must come out as right, and what is wrong beside it as wrong: sentences
// and everyday words, through the paragraph check over the built tables.
#include <string>

#include "language.h"

namespace {

using namespace lemara::test;

/// Reports each token of the file's lines that is unknown or gets a better form.
void expect_all_right(const std::string& file) {
    std::size_t tokens = 0;
    for (const Row& row : rows_of(LANGUAGE_DATA / file, 1)) {
        const std::vector<Verdict> verdicts = check(basque(), row.cells[0], false);
        EXPECT_FALSE(verdicts.empty()) << row.place << ": no token";
        tokens += verdicts.size();
        for (const Verdict& verdict : verdicts) {
            if (verdict.kind == "ok") continue;
            std::vector<std::string> given = verdict.better;
            given.insert(given.end(), verdict.instead.begin(), verdict.instead.end());
            given.insert(given.end(), verdict.proposals.begin(), verdict.proposals.end());
            ADD_FAILURE() << row.place << ": " << utf8(verdict.text)
                          << (verdict.kind == "ezz" ? " is unknown"
                                                    : " has a better form")
                          << "; given: " << joined(given);
        }
    }
    std::cout << file << ": " << tokens << " tokens\n";
}

}  // namespace

TEST(RightText, EveryTokenOfEverySentenceIsRight) { expect_all_right("right.txt"); }

TEST(RightText, EverydayWordsAreRight) { expect_all_right("vocabulary.txt"); }

TEST(WrongText, TheUnknownTokensAreFoundAndNoOthers) {
    for (const Row& row : rows_of(LANGUAGE_DATA / "wrong.tsv", 2)) {
        std::string unknown;
        for (const Verdict& verdict : check(basque(), row.cells[0], false)) {
            if (verdict.kind == "ezz") {
                unknown += (unknown.empty() ? "" : " ") + utf8(verdict.text);
            }
        }
        EXPECT_EQ(unknown, row.cells[1]) << row.place;
    }
}
