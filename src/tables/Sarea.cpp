// Tests: tests/tables/Sarea_test.cpp.
#include "Sarea.h"

#include <stdexcept>
#include <utility>

#include "analysis/text_pieces.h"
#include "iragazkiak.h"
#include "karaktereak.h"

namespace {

constexpr int ORDINARY_RUN = 5;  // tokens of the longest run
constexpr int NUMBER_RUN = 7;    // the same for numbers, which are written in more pieces

void append(std::vector<Analisia>& list, std::vector<Analisia>&& more) {
    list.insert(list.end(), std::make_move_iterator(more.begin()),
                std::make_move_iterator(more.end()));
}

void restore_case(std::string& form, int case_class) {
    if (case_class == 2) form = touppercase(form);
    if (case_class != 1) return;
    if (form.empty()) throw std::out_of_range("basic_string::substr");
    form[0] = static_cast<char>(orbi_toupper(static_cast<unsigned char>(form[0])));
}

}  // namespace

Sarea::Sarea() : taula(nullptr), maila(0) {}

Sarea::Sarea(std::string key, std::string path, Taula* table)
    : izena(std::move(key)),
      fitxategia(std::move(path)),
      taula(table),
      maila(lemara::contains(izena, "zenbak") ? NUMBER_RUN : ORDINARY_RUN) {
    if (taula != nullptr) taula->hiztegia = izena;
}

Sarea::~Sarea() { delete taula; }

std::vector<Analisia> Sarea::ordeztuForma(const std::string& lemak,
                                          const Analisia& analisia) const {
    std::vector<Analisia> forms;
    if (taula == nullptr) return forms;
    const std::string tags = garbitu_upp(analisia.analisia);
    std::size_t start = 0;
    for (;;) {
        const std::size_t slash = lemak.find('/', start);
        append(forms,
               taula->sortuFormak(lemak.substr(start, slash - start), tags, false, true));
        if (slash == std::string::npos) break;
        start = slash + 1;
    }
    for (Analisia& record : forms) restore_case(record.forma, analisia.maiuskula);
    return forms;
}
