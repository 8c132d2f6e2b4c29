// Wrong words and what the paragraph check must give for them.
#include <algorithm>
#include <iomanip>
#include <map>
#include <string>

#include "language.h"

namespace {

using namespace lemara::test;

constexpr double SHARE_WANTED = 0.90;  // of the pairs of each kind

struct Tally {
    std::size_t pairs = 0, found = 0, places = 0, first = 0;
};

/// The place of `right` in a list, from 1; 0 if it is not there.
std::size_t place_of(const std::string& right, const std::vector<std::string>& given) {
    const auto at = std::find(given.begin(), given.end(), right);
    return at == given.end() ? 0 : static_cast<std::size_t>(at - given.begin()) + 1;
}

/// The list of a verdict in which a pair of this kind has its right word.
const std::vector<std::string>& list_for(const std::string& kind,
                                         const Verdict& verdict) {
    if (kind == "better") return verdict.better;
    if (kind == "use") return verdict.instead;
    return verdict.proposals;
}

}  // namespace

TEST(Pairs, TheRightWordIsGivenForTheWrongOne) {
    std::map<std::string, Tally> tallies = {
        {"better", {}}, {"use", {}}, {"proposal", {}}};
    for (const Row& row : rows_of(LANGUAGE_DATA / "pairs.tsv", 3)) {
        const std::string &wrong = row.cells[0], &right = row.cells[1],
                          &kind = row.cells[2];
        ASSERT_EQ(tallies.count(kind), 1u) << row.place << ": no such kind: " << kind;
        const std::string label = row.place + ": " + utf8(wrong);
        Tally& tally = tallies[kind];
        ++tally.pairs;

        for (const Verdict& verdict : check(basque(), right, false)) {
            EXPECT_EQ(verdict.kind, "ok") << row.place << ": " << utf8(right);
        }
        const std::vector<Verdict> verdicts = check(basque(), wrong, true);
        EXPECT_EQ(verdicts.size(), 1u) << label << " is cut";
        if (verdicts.size() != 1) continue;
        const Verdict& verdict = verdicts[0];
        EXPECT_EQ(verdict.kind, kind == "proposal" ? "ezz" : "") << label;

        const std::size_t place = place_of(right, list_for(kind, verdict));
        if (place > 0) {
            ++tally.found;
            tally.places += place;
            tally.first += place == 1;
        } else if (kind == "proposal") {
            std::cout << label << ": no " << utf8(right)
                      << " among: " << joined(verdict.proposals) << '\n';
        } else {
            // A better form is in the lexicon by somebody's hand: each of them counts.
            ADD_FAILURE() << label << ": no " << utf8(right)
                          << " among better forms: " << joined(verdict.better)
                          << "; to use instead: " << joined(verdict.instead)
                          << "; proposals: " << joined(verdict.proposals);
        }
    }
    for (const auto& [kind, tally] : tallies) {
        ASSERT_GT(tally.pairs, 0u) << kind;
        ASSERT_GT(tally.found, 0u) << kind;
        const double share =
            static_cast<double>(tally.found) / static_cast<double>(tally.pairs);
        std::cout << kind << ": " << tally.found << " of " << tally.pairs << " found, "
                  << tally.first << " in place 1, mean place " << std::fixed
                  << std::setprecision(2)
                  << static_cast<double>(tally.places) / static_cast<double>(tally.found)
                  << '\n';
        EXPECT_GE(share, SHARE_WANTED) << kind;
    }
}
