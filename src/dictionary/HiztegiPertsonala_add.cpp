// Adding a word: which paradigms it takes, by its class tag and its last letters, and
// which stem goes with each. Tests: tests/dictionary/add_test.cpp.
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "HiztegiPertsonala.h"
#include "analysis/text_pieces.h"
#include "dictionary/records.h"
#include "karaktereak.h"

namespace {

/// A stem and the paradigm that it takes.
struct Paradigm {
    std::string tags;
    std::string name;
    std::string stem;
};

using Paradigms = std::vector<Paradigm>;

bool is_one_of(char c, std::string_view letters) {
    return letters.find(c) != std::string_view::npos;
}

bool is_r(char c) { return is_one_of(c, "Rr"); }

/// Nouns, and adjectives with the paradigm of degrees behind the one that it shares a key
/// with. Kept on purpose: that key is taken by then, so "<hp7>" is filed nowhere.
Paradigms common_word(const std::string& word, char last, bool adjective) {
    const std::string tags = adjective ? "<ADJ><IZO>" : "<IZE><ARR>";
    Paradigms rows;
    if (is_one_of(last, "EIOUeiou")) {
        rows.push_back({tags, "<hp1>", word});
    } else if (is_one_of(last, "Aa")) {
        rows.push_back({tags, "<hp3>", word});
        rows.push_back({tags, "<hp2>", word.substr(0, word.size() - 1)});
    } else if (is_r(last)) {
        rows.push_back({tags, "<hp6>", word});
        rows.push_back({tags, "<hp5>", word + "r"});
    } else {
        rows.push_back({tags, "<hp4>", word});
    }
    if (adjective) rows.push_back({tags, "<hp7>", rows.back().stem});
    return rows;
}

Paradigms verb(const HiztegiPertsonala& dictionary, const std::string& participle,
               char last) {
    // Kept on purpose: "l" and "n" in small letters alone, where the other classes know
    // both.
    const std::string name = last == 'l' ? "<hp23>" : last == 'n' ? "<hp22>" : "<hp21>";
    return {
        {"<ADI><ADI_IZE>", "<hp20>", tolowercase(dictionary.lortuAditzizen(participle))},
        {"<ADI><PART>", name, tolowercase(participle)},
        {"<ADI><ADOIN>", "<hp24>", tolowercase(dictionary.lortuAdoin(participle))},
    };
}

Paradigms person(const std::string& name, char last) {
    const std::string tags = "<IZE><PIB>";
    if (is_one_of(last, "AEIOUaeiou")) return {{tags, "<hp8>", name}};
    if (is_r(last)) return {{tags, "<hp10>", name}, {tags, "<hp11>", name + "r"}};
    return {{tags, "<hp9>", name}};
}

Paradigms place(const std::string& name, char last) {
    const std::string tags = "<IZE><LIB>";
    if (is_one_of(last, "AEIOUaeiou")) return {{tags, "<hp12>", name}};
    if (is_one_of(last, "LNln")) return {{tags, "<hp25>", name}};
    if (is_r(last)) return {{tags, "<hp14>", name}, {tags, "<hp15>", name + "r"}};
    if (!is_one_of(last, "SXZsxz")) return {{tags, "<hp13>", name}};
    if (name.size() < 2) throw std::out_of_range("basic_string::at");
    // Kept on purpose: a "t" in small letters alone.
    if (name[name.size() - 2] != 't') return {{tags, "<hp13>", name}};
    const std::string without_t = name.substr(0, name.size() - 2) + last;
    return {{tags, "<hp19>", name}, {tags, "<hp18>", without_t}};
}

Paradigms other_name(const std::string& name, char last) {
    const bool vowel = is_one_of(last, "AEIOUaeiou");
    return {{"<IZE><IZB>", vowel ? "<hp16>" : "<hp17>", name}};
}

Paradigms paradigms_of(const HiztegiPertsonala& dictionary, const std::string& word,
                       const std::string& tag) {
    const char last = word.empty() ? '\0' : word.back();
    if (tag == "<ARR>") return common_word(tolowercase(word), last, false);
    if (tag == "<IZO>") return common_word(tolowercase(word), last, true);
    if (tag == "<ADI>") return verb(dictionary, word, last);
    if (tag == "<PIB>") return person(word, last);
    if (tag == "<LIB>") return place(word, last);
    if (tag == "<IZB>") return other_name(word, last);
    return {};
}

bool is_name_class(const std::string& tag) {
    return tag == "<PIB>" || tag == "<LIB>" || tag == "<IZB>";
}

/// The line of a new word. Kept on purpose: of two recommendations only the better form
/// is written, and the source mark is always "HP".
std::string file_line(const std::string& word, const std::string& tag,
                      const std::string& better, const std::string& instead) {
    const std::string start = word + '\t' + tag + '\t';
    if (!better.empty()) return start + better + "\t\tHP";
    return start + '\t' + instead + "\tHP";
}

}  // namespace

void HiztegiPertsonala::gehitu_sarrera(bool fitxategian, const std::string& sarrera,
                                       const std::string& kategoria,
                                       const std::string& hobe,
                                       const std::string& erabili,
                                       const std::string& sai) {
    for (const HPsarrera* record : sarrerak) {
        if (lemara::is_record_of(record, sarrera, kategoria)) return;
    }
    gehitu_berria(fitxategian, sarrera, kategoria, hobe, erabili, sai);
}

void HiztegiPertsonala::gehitu_berria(bool fitxategian, const std::string& sarrera,
                                      const std::string& kategoria,
                                      const std::string& hobe, const std::string& erabili,
                                      const std::string& sai) {
    if (fitxategian) {
        std::ofstream file(fitxategia, std::ios::binary | std::ios::app);
        file << '\n' << file_line(sarrera, kategoria, hobe, erabili);
    }
    auto record =
        std::make_unique<HPsarrera>(sarrera, kategoria, "", hobe, erabili, "HP", "");
    sarrerak.push_back(record.get());
    record.release();

    const std::string lemma = is_name_class(kategoria) ? sarrera : tolowercase(sarrera);
    for (const Paradigm& row : paradigms_of(*this, sarrera, kategoria)) {
        auto entry = std::make_unique<HPsarrera>(lemma, row.tags, row.stem, hobe, erabili,
                                                 sai, row.name);
        // A stem that is taken stays with the word that had it first.
        if (erroak.emplace(tolowercase(row.stem), entry.get()).second) entry.release();
    }
}
