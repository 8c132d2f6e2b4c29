#include "engine/CandidateJudge.h"

#include "analysis/text_pieces.h"
#include "karaktereak.h"
#include "tables/token_walk.h"

namespace lemara {
namespace {

bool has_gap(std::string_view text) { return text.find_first_of(" -") != std::string_view::npos; }

std::uint8_t lowered(char c) { return orbi_tolower(static_cast<unsigned char>(c)); }

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
        Network judged{&lazy_form(*network->taula), {}};
        judged.prefixes.push_back(judged.words->start());
        for (const char c : folded_) {
            judged.prefixes.push_back(
                judged.words->next(judged.prefixes.back(), static_cast<std::uint8_t>(c)));
        }
        networks_.push_back(std::move(judged));
    }
}

Answer CandidateJudge::ask(const Network& network, const Edit& edit, bool small) const {
    LazyTransducer::Node node = network.prefixes[edit.at];
    for (const char c : edit.inserted) node = network.words->next(node, lowered(c));
    for (std::size_t i = edit.at + edit.removed; i < folded_.size() && node > LazyTransducer::DEAD;
         ++i) {
        node = network.words->next(node, static_cast<std::uint8_t>(folded_[i]));
    }
    return network.words->answer(node, small);
}

bool CandidateJudge::is_valid(const std::string& base, const Edit& edit) const {
    if (by_strings_ || has_gap(edit.inserted)) {
        return engine_.isValid(applied(base, edit), false);
    }
    bool small = false;
    if (edit.at > 0) {
        small = orbi_islower(base[0]);
    } else if (!edit.inserted.empty()) {
        small = orbi_islower(edit.inserted[0]);
    } else if (edit.removed < base.size()) {
        small = orbi_islower(base[edit.removed]);
    }
    bool unsure = has_dictionary_;
    for (const Network& network : networks_) {
        const Answer answer = ask(network, edit, small);
        if (answer == Answer::yes) return true;
        if (answer != Answer::no) unsure = true;
    }
    return unsure && engine_.isValid(applied(base, edit), false);
}

}  // namespace lemara
