// Which candidates for a misspelt word reach the user. Tests:
// tests/engine/Lemara_proposals_test.cpp.
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Lemara.h"
#include "analysis/text_pieces.h"

namespace {

constexpr std::size_t MOST_LATE_PROPOSALS = 5;  // binds the second and third stage alone

/// Gives the proposals the case of the word as it was typed.
void restore_case(const std::string& word, std::vector<std::string>& proposals) {
    if (word == touppercase(word)) {
        for (std::string& proposal : proposals) proposal = touppercase(std::move(proposal));
        return;
    }
    // Kept on purpose: the standard conversion, which knows ASCII alone. A word that begins
    // with an accented small letter counts as capitalised, and a proposal that begins with
    // one keeps it.
    if (word[0] != lemara::standard_toupper(word[0])) return;
    for (std::string& proposal : proposals) {
        if (!proposal.empty()) proposal[0] = lemara::standard_toupper(proposal[0]);
    }
}

}  // namespace

std::vector<std::string> Lemara::lortu_ezzg_proposamenak(const std::string& hitza) const {
    const std::map<int, std::vector<std::string>> candidates =
        proposamen_hautagaiak_lortu(hitza);
    std::vector<std::string> proposals;

    const auto take_all = [&](int key) {
        for (const std::string& candidate : candidates.at(key)) {
            if (isValid(candidate, false)) proposals.push_back(candidate);
        }
    };
    const auto take_some = [&](int key) {
        for (const std::string& candidate : candidates.at(key)) {
            if (proposals.size() >= MOST_LATE_PROPOSALS) return;
            if (isValid(candidate, false)) proposals.push_back(candidate);
        }
    };

    for (const int key : {1, 2, 3}) take_all(key);
    if (proposals.empty()) {
        // Kept on purpose: 5 is read before 4.
        for (const int key : {5, 4}) take_some(key);
    }
    if (proposals.empty()) take_some(6);
    restore_case(hitza, proposals);
    return proposals;
}
