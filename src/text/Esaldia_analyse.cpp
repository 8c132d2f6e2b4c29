// Longest-match analysis: from each token the longest run that a source knows becomes one
// token. Tests: tests/text/Esaldia_analyse_test.cpp.
#include <algorithm>
#include <iostream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "Esaldia.h"
#include "analysis/text_pieces.h"
#include "text/sentence_analysis.h"

namespace {

constexpr std::size_t LONGEST_RUN = 7;       // tokens tried together
constexpr std::size_t ADMISSION_LIMIT = 989;  // bytes of run text up to which a token is let in
constexpr std::size_t CUT_LENGTH = 999;      // run texts of this length lose their last byte

/// The text of the tokens from `first` up to, and not with, `last`, with their own blanks.
std::string run_text(const std::vector<Tokena>& tokens, std::size_t first,
                     std::size_t last) {
    std::string text;
    for (std::size_t i = first; i < last; ++i) {
        // Kept on purpose: a token that would pass the limit is left out, its blank is not.
        if (tokens[i].testua.size() + text.size() <= ADMISSION_LIMIT) {
            text += tokens[i].testua;
        }
        if (tokens[i].hutsunea) text += ' ';
    }
    if (text.size() >= CUT_LENGTH) text.pop_back();
    if (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

/// Makes one token of a run and gives it the analyses.
void merge_run(std::vector<Tokena>& tokens, std::size_t first, std::size_t last,
               std::string text, std::vector<Analisia> analyses) {
    Tokena& token = tokens[first];
    token.hutsunea = tokens[last - 1].hutsunea;
    token.testua = std::move(text);
    token.analisiak.insert(token.analisiak.end(),
                           std::make_move_iterator(analyses.begin()),
                           std::make_move_iterator(analyses.end()));
    const std::size_t surplus = last - first - 1;
    if (surplus == 0) return;
    // Kept on purpose: text and blank alone move up. The case flags stay where they were, so
    // the tokens behind a merge carry those of the tokens that stood there before.
    for (std::size_t i = last; i < tokens.size(); ++i) {
        tokens[i - surplus].testua = std::move(tokens[i].testua);
        tokens[i - surplus].hutsunea = tokens[i].hutsunea;
    }
    tokens.resize(tokens.size() - surplus);
}

void mark_unknown(Tokena& token, const std::string& text) {
    if (text == ":" || text == "[") return;
    if (text == "]") {
        std::cout << " -->OJO arraroa:]" << std::flush;
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

void append_dictionary(const lemara::Networks& networks, const HiztegiPertsonala& dictionary,
                       const std::string& text, int token_count,
                       std::vector<Analisia>& analyses) {
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

std::vector<Analisia> lemara::analyse_run(const Networks& networks,
                                          const HiztegiPertsonala& dictionary,
                                          const std::string& text, int token_count,
                                          bool dictionary_first) {
    std::vector<Analisia> analyses;
    const bool ask_dictionary = is_admissible(dictionary, token_count);
    if (dictionary_first && ask_dictionary) {
        append_dictionary(networks, dictionary, text, token_count, analyses);
    }
    if (analyses.empty()) {
        for (const auto& entry : networks) {
            const Sarea* network = entry.second;
            if (network == nullptr || network->taula == nullptr) continue;
            if (network->taula->hiztegia == "hp" || network->maila < token_count) continue;
            for (Analisia& analysis : network->taula->analizatuTokena(text)) {
                analyses.push_back(std::move(analysis));
            }
        }
    }
    if (!dictionary_first && ask_dictionary) {
        append_dictionary(networks, dictionary, text, token_count, analyses);
    }
    return analyses;
}

void lemara::analyse_sentence(Esaldia& sentence, const Networks& networks,
                              const HiztegiPertsonala& dictionary, bool dictionary_first) {
    std::vector<Tokena>& tokens = sentence.tokenak;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        for (std::size_t last = std::min(i + LONGEST_RUN, tokens.size()); last > i; --last) {
            std::string text = run_text(tokens, i, last);
            std::vector<Analisia> analyses =
                analyse_run(networks, dictionary, text, static_cast<int>(last - i),
                            dictionary_first);
            if (!analyses.empty()) {
                merge_run(tokens, i, last, std::move(text), std::move(analyses));
                break;
            }
            if (last == i + 1) mark_unknown(tokens[i], text);
        }
    }
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
