#include "Egoera.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "tables/bulk_memory.h"
#include "tables/forms.h"

Egoera::Egoera() : final(false) {}

Egoera::Egoera(std::vector<Zubia*> arcs, bool is_final)
    : final(is_final), zubiak(std::move(arcs)) {}

Egoera::~Egoera() = default;

void* Egoera::operator new(std::size_t size) { return ::operator new(size); }

void* Egoera::operator new(std::size_t size, const std::nothrow_t& nothrow) noexcept {
    return ::operator new(size, nothrow);
}

void Egoera::operator delete(void* place) noexcept { lemara::BulkRoom::free(place); }

void Egoera::addZubia(Zubia* zubia) {
    zubiak.push_back(zubia);
    lemara::note_graph_change();
}

bool Egoera::hasZubia(const std::string& ikurra) const {
    return std::any_of(zubiak.begin(), zubiak.end(), [&](const Zubia* arc) {
        return arc != nullptr && arc->beheko_ikurra == ikurra;
    });
}

void Egoera::deleteZubiak() {
    for (Zubia*& arc : zubiak) {
        delete arc;
        arc = nullptr;
    }
    lemara::note_graph_change();
}

void Egoera::printEgoera() const {
    std::cout << "\n\nfinal: " << (final ? 1 : 0) << ", zubiak: " << zubiak.size()
              << '\n';
    std::size_t number = 0;
    for (const Zubia* arc : zubiak) {
        ++number;
        if (arc == nullptr) continue;
        std::cout << "  " << number << ". zubia:" << arc->toString();
    }
    std::cout.flush();
}
