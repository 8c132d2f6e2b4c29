#include "engine/CandidateJudge.h"

#include "analysis/text_pieces.h"
#include "engine/gaps.h"
#include "karaktereak.h"
#include "tables/token_walk.h"

namespace lemara {
namespace {

bool is_small(char c) { return c >= 'a' && c <= 'z'; }

}  // namespace

CandidateJudge::CandidateJudge(const Lemara& engine, const std::string& word)
    : engine_(engine),
      typed_(up_to_nul(word)),
      folded_(tolowercase(typed_)),
      // A word with a blank or hyphen is judged as text, and a very long one is cut.
      by_strings_(has_gap(typed_) || typed_.size() + 16 > WALK_LIMIT),
      has_dictionary_(engine.hiztegiPertsonala != nullptr &&
                      !engine.hiztegiPertsonala->erroak.empty()) {
    if (by_strings_) return;
    for (const auto& entry : engine.sareak) {
        const Sarea* network = entry.second;
        if (network == nullptr || network->taula == nullptr) continue;
        if (network->taula->hiztegia == "hp") continue;
        Network judged{&lazy_form(*network->taula), {}, {}};
        judged.prefixes.push_back(judged.words->start());
        for (const char c : folded_) {
            judged.prefixes.push_back(
                judged.words->next(judged.prefixes.back(), static_cast<std::uint8_t>(c)));
        }
        judged.endings.resize(judged.prefixes.size());
        networks_.push_back(std::move(judged));
    }
}

Answer CandidateJudge::ask(Network& network, const Edit& edit, bool small) const {
    Node node = network.prefixes[edit.at];
    for (const char c : edit.inserted) {
        node = network.words->next(node, lowered(static_cast<std::uint8_t>(c)));
    }
    const std::size_t rest = edit.at + edit.removed;
    Ending& ending = network.endings[rest];
    if (node != ending.from) {
        const Node last =
            network.words->follow(node, std::string_view(folded_).substr(rest));
        ending = {node, last};
    }
    return LazyTransducer::answer(ending.to, small);
}

bool CandidateJudge::is_valid(const std::string& base, const Edit& edit) {
    if (by_strings_ || has_gap(edit.inserted)) {
        return engine_.isValid(applied(base, edit), false);
    }
    bool small = false;
    if (edit.at > 0) {
        small = is_small(base[0]);
    } else if (!edit.inserted.empty()) {
        small = is_small(edit.inserted[0]);
    } else if (edit.removed < base.size()) {
        small = is_small(base[edit.removed]);
    }
    bool unsure = has_dictionary_;
    for (Network& network : networks_) {
        const Answer answer = ask(network, edit, small);
        if (answer == Answer::yes) return true;
        if (answer != Answer::no) unsure = true;
    }
    return unsure && engine_.isValid(applied(base, edit), false);
}

}  // namespace lemara
