// The dictionary's file: loading it, and taking a word out of it.
// Tests: tests/dictionary/file_test.cpp.
#include <algorithm>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "HiztegiPertsonala.h"
#include "analysis/text_pieces.h"
#include "dictionary/records.h"

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
    // What gehitu_sarrera would scan for, line by line. Nobody changes the records by
    // hand meanwhile.
    std::set<std::pair<std::string, std::string>> known;
    for (const HPsarrera* record : sarrerak) {
        if (record != nullptr) known.emplace(record->lema, record->kategoria);
    }
    std::string text;
    while (std::getline(file, text)) {
        if (text.size() < 2 || lemara::starts_with(text, "//")) continue;
        const Line line = cut_line(text);
        if (line.word.size() < SHORTEST_WORD || line.tag.empty()) continue;
        if (known.emplace(line.word, line.tag).second) {
            gehitu_berria(false, line.word, line.tag, line.better, line.instead,
                          line.source);
        }
        gehienezko_hitzak = std::max(gehienezko_hitzak, words_in(line.word));
        gutxieneko_luzera =
            std::min(gutxieneko_luzera, static_cast<int>(line.word.size()));
    }
}

void HiztegiPertsonala::kendu_sarrera(bool fitxategian, const std::string& sarrera,
                                      const std::string& kategoria) {
    const auto gone = std::stable_partition(
        sarrerak.begin(), sarrerak.end(), [&](const HPsarrera* record) {
            return !lemara::is_record_of(record, sarrera, kategoria);
        });
    std::size_t place = kenduak.size();
    kenduak.resize(place + static_cast<std::size_t>(sarrerak.end() - gone));
    for (auto record = gone; record != sarrerak.end(); ++record)
        kenduak[place++].reset(*record);
    sarrerak.erase(gone, sarrerak.end());

    // Kept on purpose: paradigm entries of common words have their lemma in small
    // letters, so a word that was added with a capital keeps them until the next load.
    for (auto root = erroak.begin(); root != erroak.end();) {
        HPsarrera* const entry = root->second;
        if (entry != nullptr && entry->lema == sarrera &&
            lemara::contains(entry->kategoria, kategoria)) {
            kenduak.emplace_back(entry);
            root = erroak.erase(root);
        } else {
            ++root;
        }
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
