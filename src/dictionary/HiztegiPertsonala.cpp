// The personal dictionary: its objects and the lookup. Adding is in
// HiztegiPertsonala_add.cpp, the file in HiztegiPertsonala_file.cpp, the forms of verbs
// in HiztegiPertsonala_verbs.cpp. Tests: tests/dictionary/lookup_test.cpp.
#include "HiztegiPertsonala.h"

#include <algorithm>
#include <string_view>

#include "analysis/text_pieces.h"
#include "iragazkiak.h"
#include "karaktereak.h"

namespace {

/// The byte at the start of a C string: NUL for an empty one.
char first_byte(const std::string& text) { return text.empty() ? '\0' : text[0]; }

/// Whether lowering changes the first byte decides, not what the walk makes of the word:
/// a digit in front gives 0 here.
int case_class(const std::string& lowered_start, const std::string& word) {
    if (first_byte(lowered_start) == first_byte(word)) return 0;
    return touppercase(word) == word ? 2 : 1;
}

}  // namespace

HiztegiPertsonala::HiztegiPertsonala() : gutxieneko_luzera(0), gehienezko_hitzak(0) {}

// An exception out of this body comes after the default constructor is done, so the
// destructor runs and frees what was loaded.
HiztegiPertsonala::HiztegiPertsonala(const std::string& path) : HiztegiPertsonala() {
    fitxategia = path;
    kargatu_fitxategia();
}

HiztegiPertsonala::~HiztegiPertsonala() {
    for (auto& root : erroak) delete root.second;
    for (HPsarrera* record : sarrerak) delete record;
}

std::vector<Analisia> HiztegiPertsonala::analizatu(const std::string& hitza,
                                                   const Sarea* sarea) const {
    std::vector<Analisia> result;
    if (sarea == nullptr || sarea->taula == nullptr || erroak.empty()) return result;
    const Taula& table = *sarea->taula;
    const std::string word = tolowercase(hitza);
    const std::string start =
        word.substr(0, static_cast<std::size_t>(std::max(gutxieneko_luzera, 0)));
    const int maiuskula = case_class(start, hitza);

    for (auto root = erroak.lower_bound(start); root != erroak.end(); ++root) {
        if (!lemara::starts_with(root->first, start)) break;
        if (root->second == nullptr) continue;
        const HPsarrera& entry = *root->second;
        // Kept on purpose: the stem of a name has its capitals and the lowered word has
        // none, so a name that was filed with a capital is not found here. Generation
        // finds it.
        if (!lemara::starts_with(word, entry.erroa)) continue;
        if (!egiaztatuIzenBereziak(hitza.c_str(), entry.lema.c_str())) continue;
        const std::string input = entry.paradigma + word.substr(entry.erroa.size());
        for (const Analisia& ending : table.analizatuTokena(input)) {
            Analisia record(entry.lema + entry.kategoria + ending.analisia,
                            table.hiztegia);
            record.hobe = entry.hobe;
            record.erabili = entry.erabili;
            record.sai = entry.sai;
            record.maiuskula = maiuskula;
            result.push_back(std::move(record));
        }
    }
    return result;
}
