// The table object: what it owns and how it is printed. Loading is in Taula_load.cpp, the
// searches are in Taula_analyse.cpp and Taula_generate.cpp.
#include "Taula.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "tables/forms.h"
#include "tables/image.h"
#include "tables/inside.h"
#include "tables/token_walk.h"

long file_length = 0;

namespace {

bool is_index(int state, const std::vector<Egoera*>& states) {
    return state >= 0 && static_cast<std::size_t>(state) < states.size();
}

/// A state as it was in the graph that a table was packed from.
std::unique_ptr<Egoera> unfolded(const lemara::PackedView& view,
                                 const std::vector<lemara::StateRef>& places,
                                 lemara::StateRef ref) {
    auto result = std::make_unique<Egoera>();
    const lemara::PackedState state = view.state(ref);
    for (std::uint32_t i = 0; i < state.count; ++i) {
        const lemara::PackedArc& arc = state.arcs[i];
        const std::uint32_t label = view.label_of(arc);
        const auto place = std::lower_bound(places.begin(), places.end(), arc.target);
        const int target =
            arc.target < 0 ? arc.target : static_cast<int>(place - places.begin());
        result->zubiak.push_back(new Zubia(target, std::string(view.upper(label)),
                                           std::string(view.lower(label))));
        // As a load leaves it: what the last record of the state was.
        result->final = target < 0;
    }
    return result;
}

}  // namespace

lemara::Graph::Graph(Graph&& other) noexcept : owned(other.owned) {
    states.swap(other.states);
    other.owned = false;
}

lemara::Graph::~Graph() {
    if (!owned) return;
    for (Egoera* state : states) {
        state->deleteZubiak();
        delete state;
    }
}

lemara::Graph lemara::graph_of(const Taula& table) {
    Graph graph;
    const PackedView* view = TableInside::forms(table).folded_view(table.egoerak);
    if (view == nullptr) {
        graph.states = table.egoerak;
        return graph;
    }
    graph.owned = true;
    if (!defect_of_graph(*view).empty()) return graph;
    std::vector<StateRef> places;  // of the states, by number
    StateRef ref = 0;
    for (std::uint32_t i = 0; i < view->state_count; ++i, ref = view->behind(ref)) {
        places.push_back(ref);
    }
    for (const StateRef place : places) {
        graph.states.push_back(unfolded(*view, places, place).release());
    }
    return graph;
}

/// Puts the graph of a folded table into `egoerak`, before an operation changes it.
void Taula::unfold() {
    if (formak->folded_view(egoerak) == nullptr) return;
    lemara::Graph graph = lemara::graph_of(*this);
    graph.owned = false;
    egoerak.swap(graph.states);
    lemara::note_graph_change();
    lemara::packed_form(*this);  // in place of the other, which must not come back
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

Taula::~Taula() {
    if (!egoerak.empty()) deleteEgoerak();
}

void Taula::addZubiaTaulan(int egoera, bool final, Zubia* zubia) {
    unfold();
    if (!is_index(egoera, egoerak) ||
        egoerak[static_cast<std::size_t>(egoera)] == nullptr) {
        delete zubia;
        return;
    }
    Egoera& state = *egoerak[static_cast<std::size_t>(egoera)];
    state.final = final;
    state.addZubia(zubia);
}

void Taula::addEgoera(Egoera* egoera) {
    unfold();
    egoerak.push_back(egoera);
    lemara::note_graph_change();
}

void Taula::deleteEgoerak() {
    unfold();
    for (Egoera*& state : egoerak) {
        if (state == nullptr) continue;
        state->deleteZubiak();
        delete state;
        state = nullptr;
    }
    lemara::note_graph_change();
}

void Taula::printEgoera(int egoera) const {
    const lemara::Graph graph = lemara::graph_of(*this);
    if (!is_index(egoera, graph.states)) return;
    const Egoera* state = graph.states[static_cast<std::size_t>(egoera)];
    if (state != nullptr) state->printEgoera();
}

void Taula::printTaula() const {
    const lemara::Graph graph = lemara::graph_of(*this);
    std::cout << "Guztira " << graph.states.size() << " egoera\n";
    for (const Egoera* state : graph.states) {
        if (state != nullptr) state->printEgoera();
    }
    std::cout.flush();
}
