// Longest-match analysis: from each token the longest run that a source knows becomes one
// token. Tests: tests/text/Esaldia_analyse_test.cpp.
#include <algorithm>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Esaldia.h"
#include "analysis/messages.h"
#include "analysis/text_pieces.h"
#include "tables/token_walk.h"
#include "text/sentence_analysis.h"

namespace {

constexpr std::size_t LONGEST_RUN = 7;  // tokens tried together
constexpr std::size_t ADMISSION_LIMIT =
    989;  // bytes of run text up to which a token is let in
constexpr std::size_t CUT_LENGTH = 999;  // run texts of this length lose their last byte

/// The text of the tokens from `first` up to, and not with, `last`, with their own
/// blanks.
std::string run_text(const std::vector<Tokena>& tokens, std::size_t first,
                     std::size_t last) {
    std::string text;
    for (std::size_t i = first; i < last; ++i) {
        // Kept on purpose: a token that would pass the limit is left out, its blank is
        // not.
        if (tokens[i].testua.size() + text.size() <= ADMISSION_LIMIT) {
            text += tokens[i].testua;
        }
        if (tokens[i].hutsunea) text += ' ';
    }
    if (text.size() >= CUT_LENGTH) text.pop_back();
    if (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

/// The runs from one token on, from the longest to the shortest.
class Runs {
public:
    Runs(const std::vector<Tokena>& tokens, std::size_t first, std::size_t last)
        : tokens_(tokens),
          first_(first),
          longest_(last),
          text_(run_text(tokens, first, last)) {
        // Where no token is cut or left out, every run is the beginning of the longest.
        nested_ = true;
        std::size_t size = 0;
        for (std::size_t i = first; i < last; ++i) {
            const std::string& word = tokens[i].testua;
            nested_ = nested_ && !word.empty() && word.back() != ' ';
            ends_[i - first] = size += word.size();
            if (tokens[i].hutsunea) ++size;
        }
        nested_ = nested_ && size <= ADMISSION_LIMIT;
    }

    /// True if every run begins all longer ones.
    bool nested() const { return nested_; }

    /// Changes to the run that ends before `last`. True if it begins all longer ones.
    bool shorten(std::size_t last) {
        if (last == longest_) return nested_;
        if (nested_) {
            text_.resize(ends_[last - first_ - 1]);
            return true;
        }
        const std::string longer = std::move(text_);
        text_ = run_text(tokens_, first_, last);
        return lemara::starts_with(longer, text_);
    }

    std::string& text() { return text_; }

private:
    const std::vector<Tokena>& tokens_;
    const std::size_t first_, longest_;
    std::string text_;
    std::size_t ends_[LONGEST_RUN] = {};  // of the runs, as bytes of the text
    bool nested_;
};

void mark_unknown(Tokena& token, const std::string& text) {
    if (text == ":" || text == "[") return;
    if (text == "]") {
        lemara::messages() << " -->OJO arraroa:]" << std::flush;
        return;
    }
    token.analisiak.emplace_back(text + "<EZZG>", "");
    // The lemma is the token as it stands, whatever in it looks like notation.
    token.analisiak.front().lema = text;
    token.analisiak.front().etiketa = " EZZG";
}

bool is_admissible(const HiztegiPertsonala& dictionary, int token_count) {
    return !dictionary.erroak.empty() && token_count <= dictionary.gehienezko_hitzak;
}

void append_dictionary(const lemara::Networks& networks,
                       const HiztegiPertsonala& dictionary, const std::string& text,
                       int token_count, std::vector<Analisia>& analyses) {
    const Sarea* hp = lemara::find_network(networks, "hp");
    if (hp == nullptr || dictionary.erroak.empty() || token_count > hp->maila) return;
    for (Analisia& analysis : dictionary.analizatu(text, hp)) {
        analyses.push_back(std::move(analysis));
    }
}

}  // namespace

const Sarea* lemara::find_network(const Networks& networks, const std::string& key) {
    const auto found = networks.find(key);
    if (found == networks.end() || found->second == nullptr) return nullptr;
    return found->second->taula == nullptr ? nullptr : found->second;
}

lemara::RunAnalyser::RunAnalyser(const Networks& networks,
                                 const HiztegiPertsonala& dictionary,
                                 bool dictionary_first)
    : networks_(networks), dictionary_(dictionary), dictionary_first_(dictionary_first) {
    asked_.reserve(networks.size());
    for (const auto& entry : networks) {
        const Sarea* network = entry.second;
        if (network == nullptr || network->taula == nullptr) continue;
        if (network->taula->hiztegia == "hp") continue;
        asked_.push_back({network->taula, network->maila, WHOLE});
    }
}

void lemara::RunAnalyser::limit(const std::string& word, const std::string& text) {
    if (contains(text, std::string_view("\0", 1))) return;  // tables read up to it
    for (Asked& network : asked_)
        network.reach = known_reach(*network.table, word, text).value_or(WHOLE);
}

bool lemara::RunAnalyser::is_beyond_reach(std::size_t size, int token_count) const {
    if (is_admissible(dictionary_, token_count)) return false;
    return std::all_of(asked_.begin(), asked_.end(), [&](const Asked& network) {
        return network.longest_run < token_count ||
               std::min(size, WALK_LIMIT) > network.reach;
    });
}

void lemara::RunAnalyser::append_networks(const std::string& text, int token_count,
                                          bool is_prefix,
                                          std::vector<Analisia>& analyses) {
    for (Asked& network : asked_) {
        if (network.longest_run < token_count) continue;
        if (is_prefix && std::min(text.size(), WALK_LIMIT) > network.reach) continue;
        TokenAnalyses found = analyse_token(*network.table, text);
        network.reach = found.reach;
        if (analyses.empty()) {
            analyses = std::move(found.records);
        } else {
            for (Analisia& analysis : found.records)
                analyses.push_back(std::move(analysis));
        }
    }
}

std::vector<Analisia> lemara::RunAnalyser::analyse(const std::string& text,
                                                   int token_count, bool is_prefix) {
    std::vector<Analisia> analyses;
    const bool ask_dictionary = is_admissible(dictionary_, token_count);
    if (dictionary_first_ && ask_dictionary) {
        append_dictionary(networks_, dictionary_, text, token_count, analyses);
    }
    if (analyses.empty()) append_networks(text, token_count, is_prefix, analyses);
    if (!dictionary_first_ && ask_dictionary) {
        append_dictionary(networks_, dictionary_, text, token_count, analyses);
    }
    return analyses;
}

std::vector<Analisia> lemara::analyse_run(const Networks& networks,
                                          const HiztegiPertsonala& dictionary,
                                          const std::string& text, int token_count,
                                          bool dictionary_first) {
    RunAnalyser analyser(networks, dictionary, dictionary_first);
    analyser.start();
    return analyser.analyse(text, token_count, false);
}

void lemara::analyse_sentence(Esaldia& sentence, const Networks& networks,
                              const HiztegiPertsonala& dictionary, bool dictionary_first,
                              TokenPlaces* places) {
    std::vector<Tokena>& tokens = sentence.tokenak;
    RunAnalyser analyser(networks, dictionary, dictionary_first);
    // The run from `first` on becomes the token `merged`. Kept on purpose: text, blank
    // and analyses go there, and the case flag stays with its place. So the tokens behind
    // a merge carry the flags of the tokens that stood there before.
    std::size_t merged = 0;
    for (std::size_t first = 0; first < tokens.size(); ++merged) {
        std::size_t last = std::min(first + LONGEST_RUN, tokens.size());
        Runs runs(tokens, first, last);
        std::string& text = runs.text();
        std::vector<Analisia> analyses;
        if (runs.nested()) {
            analyser.start();
            if (last > first + 1) analyser.limit(tokens[first].testua, text);
        }
        for (;; --last) {
            // A run that passes a limit is not the beginning of a longer one.
            const bool is_prefix = runs.shorten(last);
            const int count = static_cast<int>(last - first);
            if (!is_prefix) analyser.start();
            if (!is_prefix || !analyser.is_beyond_reach(text.size(), count)) {
                analyses = analyser.analyse(text, count, is_prefix);
            }
            if (!analyses.empty() || last == first + 1) break;
        }
        Tokena& token = tokens[merged];
        token.hutsunea = tokens[last - 1].hutsunea;
        if (places != nullptr)
            (*places)[merged] = {(*places)[first].begin, (*places)[last - 1].end};
        if (analyses.empty()) {
            if (merged != first) token.testua = std::move(tokens[first].testua);
            mark_unknown(token, text);
        } else {
            token.testua = std::move(text);
            if (token.analisiak.empty()) {
                token.analisiak = std::move(analyses);
            } else {
                token.analisiak.insert(token.analisiak.end(),
                                       std::make_move_iterator(analyses.begin()),
                                       std::make_move_iterator(analyses.end()));
            }
        }
        first = last;
    }
    tokens.resize(merged);
    if (places != nullptr) places->resize(merged);
}

void Esaldia::analizatu(std::map<std::string, Sarea*> sareak,
                        const HiztegiPertsonala& hiztegia, bool hpLehenik) {
    lemara::analyse_sentence(*this, sareak, hiztegia, hpLehenik);
}

std::vector<Analisia> Esaldia::analizatuTokena(std::map<std::string, Sarea*> sareak,
                                               const HiztegiPertsonala& hiztegia,
                                               const std::string& text, int tokenKopurua,
                                               bool hpLehenik) const {
    return lemara::analyse_run(sareak, hiztegia, text, tokenKopurua, hpLehenik);
}

std::vector<Analisia> Esaldia::analizatuHiztegiPertsonalean(
    const std::map<std::string, Sarea*>& sareak, const HiztegiPertsonala& hiztegia,
    const std::string& text, std::vector<Analisia>& analisiak, int tokenKopurua) const {
    append_dictionary(sareak, hiztegia, text, tokenKopurua, analisiak);
    return analisiak;
}
