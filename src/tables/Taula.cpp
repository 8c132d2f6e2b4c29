// The table object: what it owns and how it is printed. Loading is in Taula_load.cpp, the
// searches are in Taula_analyse.cpp and Taula_generate.cpp.
#include "Taula.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "tables/forms.h"
#include "tables/token_walk.h"

long file_length = 0;

namespace {

bool is_index(int state, const std::vector<Egoera*>& states) {
    return state >= 0 && static_cast<std::size_t>(state) < states.size();
}

}  // namespace

struct lemara::TableInside {
    static TableForms& forms(const Taula& table) { return *table.formak; }
};

const lemara::PackedView& lemara::packed_form(const Taula& table) {
    return TableInside::forms(table).packed(table.egoerak);
}

lemara::Acceptor& lemara::acceptor_of(const Taula& table) {
    return TableInside::forms(table).acceptor(table.egoerak);
}

Taula::Taula() : formak(std::make_unique<lemara::TableForms>()) {}

Taula::Taula(std::string path) : Taula() {
    fitxategia = std::move(path);
    kargatu();
}

Taula::Taula(std::string path, int count) : Taula() {
    fitxategia = std::move(path);
    egoerak.resize(static_cast<std::size_t>(std::max(count, 0)), nullptr);
}

Taula::~Taula() { deleteEgoerak(); }

void Taula::addZubiaTaulan(int egoera, bool final, Zubia* zubia) {
    if (!is_index(egoera, egoerak) || egoerak[static_cast<std::size_t>(egoera)] == nullptr) {
        delete zubia;
        return;
    }
    Egoera& state = *egoerak[static_cast<std::size_t>(egoera)];
    state.final = final;
    state.addZubia(zubia);
}

void Taula::addEgoera(Egoera* egoera) {
    egoerak.push_back(egoera);
    lemara::note_graph_change();
}

void Taula::deleteEgoerak() {
    for (Egoera*& state : egoerak) {
        if (state == nullptr) continue;
        state->deleteZubiak();
        delete state;
        state = nullptr;
    }
    lemara::note_graph_change();
}

void Taula::printEgoera(int egoera) const {
    if (!is_index(egoera, egoerak)) return;
    const Egoera* state = egoerak[static_cast<std::size_t>(egoera)];
    if (state != nullptr) state->printEgoera();
}

void Taula::printTaula() const {
    std::cout << "Guztira " << egoerak.size() << " egoera\n";
    for (const Egoera* state : egoerak) {
        if (state != nullptr) state->printEgoera();
    }
    std::cout.flush();
}
