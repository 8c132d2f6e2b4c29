// The table object: what it owns and how it is printed. Loading is in Taula_load.cpp, the
// searches are in Taula_analyse.cpp and Taula_generate.cpp.
#include "Taula.h"

#include <algorithm>
#include <iostream>
#include <utility>

long file_length = 0;

namespace {

bool is_index(int state, const std::vector<Egoera*>& states) {
    return state >= 0 && static_cast<std::size_t>(state) < states.size();
}

}  // namespace

Taula::Taula() = default;

Taula::Taula(std::string path) : fitxategia(std::move(path)) { kargatu(); }

Taula::Taula(std::string path, int count)
    : fitxategia(std::move(path)),
      egoerak(static_cast<std::size_t>(std::max(count, 0)), nullptr) {}

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

void Taula::addEgoera(Egoera* egoera) { egoerak.push_back(egoera); }

void Taula::deleteEgoerak() {
    for (Egoera*& state : egoerak) {
        if (state == nullptr) continue;
        state->deleteZubiak();
        delete state;
        state = nullptr;
    }
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
