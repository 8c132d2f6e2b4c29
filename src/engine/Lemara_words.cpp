// What a host asks about one word. Tests: tests/engine/Lemara_words_test.cpp.
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Lemara.h"
#include "analysis/text_pieces.h"
#include "engine/entries.h"
#include "engine/gaps.h"
#include "engine/unknown_forms.h"
#include "tables/token_walk.h"
#include "text/sentence_analysis.h"

using lemara::contains;

namespace {

constexpr char MAIN_NETWORK[] = "eumorfo";
constexpr std::string_view PARADIGM_NETWORK = "hp";

void append(std::vector<Analisia>& list, std::vector<Analisia>&& more) {
    for (Analisia& record : more) list.push_back(std::move(record));
}

/// The class that a wanted list of tags asks for. The order of the rows decides: a list
/// that holds two of them belongs to the upper row. A longer tag that contains one counts
/// too.
constexpr const char* WORD_CLASSES[][2] = {
    {"ARR", "<ARR>"}, {"IZO", "<IZO>"}, {"ADI", "<ADI>"},
    {"PIB", "<PIB>"}, {"LIB", "<LIB>"}, {"IZB", "<IZB>"},
};

bool is_entry_start(const Analisia& entry) {
    return entry.erabili.empty() && !contains(entry.etiketa, "EZZG");
}

}  // namespace

Paragrafoa Lemara::analizatu_paragrafoa(int, const std::string& testua) const {
    Paragrafoa paragraph(1,
                         testua);  // Kept on purpose: 1, whatever number was asked for.
    lemara::analyse_paragraph(paragraph, sareak, dictionary(), true);
    return paragraph;
}

std::vector<Analisia> Lemara::analizatuTokena(const std::string& tokena,
                                              const std::string& sarea) const {
    const Sarea* network = find_network(sarea);
    return network == nullptr ? std::vector<Analisia>()
                              : network->taula->analizatuTokena(tokena);
}

std::vector<Analisia> Lemara::analizatuTokena(const std::string& tokena) const {
    // Kept on purpose: every network, "hp" included, whatever run it takes; no
    // dictionary.
    std::vector<Analisia> analyses;
    for (const auto& entry : sareak)
        append(analyses, analizatuTokena(tokena, entry.first));
    return analyses;
}

bool Lemara::is_in_networks(const std::string& word) const {
    for (const auto& entry : sareak) {
        const Sarea* network = entry.second;
        if (network == nullptr || network->taula == nullptr) continue;
        if (std::string_view(network->taula->hiztegia) == PARADIGM_NETWORK) continue;
        // A good analysis with "MAT" in its tags makes no word valid for the speller.
        if (lemara::has_word(*network->taula, word)) return true;
    }
    return false;
}

bool Lemara::isValid(const std::string& hitza, bool sakon) const {
    if (lemara::has_gap(hitza)) return is_valid_text(hitza);
    if (hiztegiPertsonala != nullptr && is_in_dictionary(hitza)) return true;
    if (is_in_networks(hitza)) return true;
    return sakon && begins_entry(hitza);
}

bool Lemara::is_valid_text(const std::string& text) const {
    const Paragrafoa paragraph = analizatu_paragrafoa(1, text);
    if (paragraph.esaldiak.empty()) return false;  // no main network: no answer
    // The first sentence alone is judged.
    const std::vector<Tokena>& tokens = paragraph.esaldiak.front().tokenak;
    return std::none_of(tokens.begin(), tokens.end(), [](const Tokena& token) {
        return token.analisiak.size() == 1 &&
               contains(token.analisiak[0].etiketa, "EZZG");
    });
}

bool Lemara::is_in_dictionary(const std::string& word) const {
    if (hiztegiPertsonala->erroak.empty()) return false;
    return !hiztegiPertsonala
                ->analizatu(word, find_network(std::string(PARADIGM_NETWORK)))
                .empty();
}

bool Lemara::begins_entry(const std::string& word) const {
    std::string start = tolowercase(word) + ' ';
    const Sarea* network = find_network(MAIN_NETWORK);
    if (lemara::has_entry(network, start, is_entry_start)) return true;
    const char first = word.empty() ? '\0' : word[0];
    if (first != lemara::standard_toupper(first)) return false;
    start[0] = lemara::standard_toupper(start[0]);
    return lemara::has_entry(network, start, is_entry_start);
}

std::vector<Analisia> Lemara::bilatuHasiera(const std::string& hasiera,
                                            bool iragazi) const {
    const Sarea* network = find_network(MAIN_NETWORK);
    if (network == nullptr) return {};
    if (!iragazi) return lemara::all_forms(*network->taula, hasiera, true);
    std::vector<Analisia> entries;
    lemara::for_each_entry(network, hasiera, [&](Analisia&& entry) {
        entries.push_back(std::move(entry));
        return true;
    });
    return entries;
}

std::vector<Analisia> Lemara::sortuFormak(const std::string& hitza,
                                          const std::string& etiketa) const {
    const Sarea* network = find_network(MAIN_NETWORK);
    const std::vector<Analisia> analyses = analizatuTokena(hitza, MAIN_NETWORK);
    for (const Analisia& analysis : analyses) {
        const std::size_t at = analysis.analisia.find(etiketa);
        if (at == std::string::npos) continue;
        const std::string_view whole = analysis.analisia;
        return lemara::all_forms(*network->taula, whole.substr(0, at + etiketa.size()),
                                 false);
    }
    std::vector<Analisia> forms;
    if (!analyses.empty()) return forms;
    lemara::for_each_unknown_form(
        hitza, etiketa, find_network(std::string(PARADIGM_NETWORK)), [&](Analisia& form) {
            forms.push_back(std::move(form));
            return true;
        });
    return forms;
}

std::string Lemara::sortu_forma_ezezaguna(const std::string& hitza,
                                          const std::string& etiketa) const {
    const auto word_class =
        std::find_if(std::begin(WORD_CLASSES), std::end(WORD_CLASSES),
                     [&](const auto& row) { return contains(etiketa, row[0]); });
    std::string form = hitza;
    if (word_class == std::end(WORD_CLASSES)) return form;
    lemara::for_each_unknown_form(hitza, (*word_class)[1],
                                  find_network(std::string(PARADIGM_NETWORK)),
                                  [&](Analisia& candidate) {
                                      if (candidate.etiketa != etiketa) return true;
                                      form = std::move(candidate.forma);
                                      return false;
                                  });
    return form;
}
