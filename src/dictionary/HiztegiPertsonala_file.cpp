// The dictionary's file: loading it, and taking a word out of it.
// Tests: tests/dictionary/file_test.cpp.
#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "HiztegiPertsonala.h"
#include "analysis/text_pieces.h"
#include "dictionary/DictionaryIndex.h"

namespace {

constexpr int NO_WORD_YET =
    10000;  // start value of the shortest length; stays without a file
constexpr std::size_t SHORTEST_WORD = 2;  // bytes

/// The bytes of `rest` up to the first of `ends`, which is stepped over too.
std::string cut_field(std::string_view& rest, std::string_view ends) {
    const std::size_t end = rest.find_first_of(ends);
    std::string field(rest.substr(0, end));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return field;
}

struct Line {
    std::string word, tag, better, instead, source;
};

/// Takes an entry line apart; the tag is empty where it lacks its ">".
Line cut_line(std::string_view rest) {
    Line line;
    line.word = cut_field(rest, "\t|");
    line.tag = cut_field(rest, "\t");
    // Kept on purpose: a tag without its ">" costs the line, any other text in place of
    // the tag ends the load.
    if (line.tag.empty() || line.tag.front() != '<') {
        throw std::out_of_range("basic_string::substr");
    }
    if (line.tag.back() != '>') line.tag.clear();
    line.better = cut_field(rest, "\t");
    line.instead = cut_field(rest, "\t");
    line.source = std::string(rest);
    return line;
}

int words_in(const std::string& text) {
    return 1 + static_cast<int>(std::count(text.begin(), text.end(), ' '));
}

}  // namespace

void HiztegiPertsonala::kargatu_fitxategia() {
    gutxieneko_luzera = NO_WORD_YET;
    std::ifstream file(fitxategia, std::ios::binary);
    std::string text;
    while (std::getline(file, text)) {
        if (text.size() < 2 || lemara::starts_with(text, "//")) continue;
        const Line line = cut_line(text);
        if (line.word.size() < SHORTEST_WORD || line.tag.empty()) continue;
        gehitu_sarrera(false, line.word, line.tag, line.better, line.instead,
                       line.source);
        gehienezko_hitzak = std::max(gehienezko_hitzak, words_in(line.word));
        gutxieneko_luzera =
            std::min(gutxieneko_luzera, static_cast<int>(line.word.size()));
    }
}

void HiztegiPertsonala::kendu_sarrera(bool fitxategian, const std::string& sarrera,
                                      const std::string& kategoria) {
    for (HPsarrera* record : aurkibidea->find(sarrerak, sarrera, kategoria)) {
        const auto place = std::find(sarrerak.begin(), sarrerak.end(), record);
        if (place == sarrerak.end()) continue;  // a host took it out of the container
        sarrerak.erase(place);
        kenduak.emplace_back(record);
    }
    aurkibidea->remove(sarrera, kategoria);

    // Kept on purpose: paradigm entries of common words have their lemma in small
    // letters, so a word that was added with a capital keeps them until the next load.
    for (const std::string& key : aurkibidea->roots_of(erroak, sarrera)) {
        const auto root = erroak.find(key);
        if (root == erroak.end() ||
            !lemara::contains(root->second->kategoria, kategoria)) {
            continue;
        }
        kenduak.emplace_back(root->second);
        erroak.erase(root);
        aurkibidea->remove_root(key, sarrera);
    }

    if (!fitxategian) return;
    std::ofstream file(fitxategia, std::ios::binary | std::ios::trunc);
    for (const HPsarrera* record : sarrerak) {
        if (record == nullptr) continue;
        file << '\n'
             << record->lema << '\t' << record->kategoria << '\t' << record->hobe << '\t'
             << record->erabili << "\tHP";
    }
    file << '\n';
}
