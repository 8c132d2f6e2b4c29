// Which candidates for a misspelt word reach the user. Tests:
// tests/engine/Lemara_proposals_test.cpp.
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "Lemara.h"
#include "analysis/text_pieces.h"
#include "engine/CandidateJudge.h"
#include "engine/propose.h"
#include "proposals/edits.h"

namespace {

constexpr std::size_t MOST_LATE_PROPOSALS = 5;  // binds the second and third stage alone

/// Gives the proposals the case of the word as it was typed.
void restore_case(const std::string& word, std::vector<std::string>& proposals) {
    if (word == touppercase(word)) {
        for (std::string& proposal : proposals)
            proposal = touppercase(std::move(proposal));
        return;
    }
    // Kept on purpose: the standard conversion, which knows ASCII alone. A word that
    // begins with an accented small letter counts as capitalised, and a proposal that
    // begins with one keeps it.
    if (word[0] != lemara::standard_toupper(word[0])) return;
    for (std::string& proposal : proposals) {
        if (!proposal.empty()) proposal[0] = lemara::standard_toupper(proposal[0]);
    }
}

}  // namespace

std::vector<std::string> lemara::propose(const Lemara& engine, const std::string& hitza,
                                         const std::function<bool()>& go_on) {
    CandidateJudge judge(engine, hitza);
    std::vector<std::string> proposals;

    // Visitors that keep the edits of a word that are valid: all of them, or up to the
    // limit.
    const auto keep_from = [&](const std::string& word, std::size_t limit) {
        return [&, limit](const Edit& edit) {
            if (go_on && !go_on()) return false;
            if (judge.is_valid(word, edit)) proposals.push_back(applied(word, edit));
            return proposals.size() < limit;
        };
    };
    const auto all_of = [&](const std::string& word) {
        return keep_from(word, std::numeric_limits<std::size_t>::max());
    };
    const auto some_of = [&](const std::string& word) {
        return keep_from(word, MOST_LATE_PROPOSALS);
    };

    for (std::string& candidate : sortu_proposamen_hautagaiak_MAI(hitza.c_str())) {
        if (engine.isValid(candidate, false)) proposals.push_back(std::move(candidate));
    }
    for_each_swap(judge.typed(), all_of(judge.typed()));
    for_each_known_error(judge.folded(), all_of(judge.folded()));
    if (proposals.empty()) {
        for_each_letter_too_many_or_few(judge.folded(), some_of(judge.folded()));
        // Kept on purpose: missing blanks come behind letters, in what is generated
        // before.
        if (proposals.size() < MOST_LATE_PROPOSALS) {
            for_each_missing_blank(judge.folded(), some_of(judge.folded()));
        }
    }
    if (proposals.empty()) {
        for_each_wrong_letter(judge.typed(), some_of(judge.typed()));
    }
    restore_case(hitza, proposals);
    return proposals;
}

std::vector<std::string> Lemara::lortu_ezzg_proposamenak(const std::string& hitza) const {
    return lemara::propose(*this, hitza, nullptr);
}
