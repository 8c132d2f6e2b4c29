// Loading a table: from its text, in a file or in memory, or from a compiled one. What
// the text says is told by text_records.h.
//
// A table that was empty is packed from the records themselves, and its graph, if it is
// to have one, is built from them too. Tests: tests/tables/Taula_load_test.cpp.
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "Taula.h"
#include "analysis/messages.h"
#include "analysis/text_pieces.h"
#include "lemara/compiled_table.h"
#include "tables/bulk_memory.h"
#include "tables/file_bytes.h"
#include "tables/forms.h"
#include "tables/image.h"
#include "tables/inside.h"
#include "tables/text_records.h"
#include "tables/token_walk.h"

namespace {

using lemara::ArcsByState;

void append_states(std::vector<Egoera*>& states, std::size_t count) {
    lemara::Bulk<Egoera> made(count);
    states.reserve(states.size() + count);
    for (std::size_t i = 0; i < count; ++i) states.push_back(made.make());
}

/// Gives the arcs to their states. A null state gets none.
void append_arcs(const std::vector<Egoera*>& states, const ArcsByState& arcs) {
    std::vector<Zubia> patterns;  // an arc of each pair of symbols
    patterns.reserve(arcs.symbols.size());
    for (const lemara::SymbolPair& pair : arcs.symbols)
        patterns.emplace_back(0, std::string(pair.upper), std::string(pair.lower));
    lemara::Bulk<Zubia> made(arcs.targets.size());
    for (std::size_t i = 0; i < states.size(); ++i) {
        const std::uint32_t begin = arcs.begin[i], end = arcs.begin[i + 1];
        if (states[i] == nullptr || begin == end) continue;
        std::vector<Zubia*>& own = states[i]->zubiak;
        own.reserve(own.size() + end - begin);
        for (std::uint32_t k = begin; k < end; ++k) {
            Zubia* const arc = made.make(patterns[arcs.pairs[k]]);
            arc->hurrengo_egoera = arcs.targets[k];
            own.push_back(arc);
        }
        // Kept on purpose: every record writes the state's `final`, so an arc behind a
        // final record leaves it false. The pseudo-arc alone lets a word end.
        states[i]->final = arcs.pairs[end - 1] == ArcsByState::FINAL;
    }
}

void tell_unreadable(std::string_view path) {
    lemara::messages() << '[' << path << " ]  kontatzeko taula ezin da ireki!"
                       << std::flush;
}

/// A byte stream that both directions of the cipher share.
std::string with_key_stream(const std::string& text) {
    std::string result = text;
    unsigned int key = 0x5A2E8u;
    for (char& c : result) {
        key = key * 1664525u + 1013904223u;
        c = static_cast<char>(static_cast<unsigned char>(c) ^ (key >> 24));
    }
    return result;
}

}  // namespace

std::string crypt_encode(const std::string& text) { return with_key_stream(text); }

std::string crypt_decode(const std::string& text) { return with_key_stream(text); }

/// Loads the file if it is a compiled table; false if it is something else. A damaged
/// image brings nothing.
bool Taula::load_image() {
    bool compiled = false;
    auto image = lemara::Image::open(fitxategia, compiled);
    if (image == nullptr) return compiled;
    if (egoerak.empty() && formak->folded_view(egoerak) == nullptr) {
        formak->use(std::move(image));
        return true;
    }
    // Behind what is there already: states at the end, arcs to the states of their
    // number.
    Taula loaded;
    loaded.formak->use(std::move(image));
    loaded.unfold();
    unfold();
    const std::size_t count = loaded.egoerak.size();
    for (std::size_t i = 0; i < count; ++i) egoerak.push_back(new Egoera());
    for (std::size_t i = 0; i < count; ++i) {
        if (egoerak[i] == nullptr) continue;
        auto& arcs = loaded.egoerak[i]->zubiak;
        if (!arcs.empty()) egoerak[i]->final = loaded.egoerak[i]->final;
        egoerak[i]->zubiak.insert(egoerak[i]->zubiak.end(), arcs.begin(), arcs.end());
        arcs.clear();
    }
    lemara::note_graph_change();
    lemara::packed_form(*this);
    return true;
}

void Taula::kargatu() {
    if (load_image()) return;
    if (lemara::contains(fitxategia, "SARE8")) {
        kargatu_enkriptatua();
    } else {
        kargatu_taula();
    }
}

bool lemara::load_for_searches(Taula& table) {
    return TableInside::load_for_searches(table);
}

bool Taula::load_for_searches() {
    if (load_image()) {
        // It stands for the graph already.
    } else if (lemara::contains(fitxategia, "SARE8")) {
        load_enciphered_file(false);
    } else {
        load_text_file(false);
    }
    return lemara::packed_form(*this).state_count > 0;
}

void Taula::kargatu_enkriptatua() { load_enciphered_file(true); }

void Taula::load_enciphered_file(bool with_graph) {
    lemara::FileBytes file;
    if (!file.read(fitxategia)) return;
    const std::string deciphered = crypt_decode(std::string(file.view()));
    const std::string_view text = lemara::up_to_nul(deciphered);
    load_memory(text, lemara::states_of_memory(text), with_graph);
}

void Taula::kargatu_taula() {
    if (load_text_file(true)) return;
    lemara::messages() << fitxategia << " ez da existitzen.\n" << std::flush;
    std::exit(0);
}

/// False, with a message, if the file can't be opened.
bool Taula::load_text_file(bool with_graph) {
    lemara::FileBytes file;
    if (!file.read(fitxategia)) {
        tell_unreadable(fitxategia);
        return false;
    }
    const std::string_view text = file.view();
    const std::size_t count =
        lemara::trusted_states(lemara::states_of_file(text), text.size());
    unfold();
    take(lemara::arcs_of_file(text, egoerak.size() + count), with_graph);
    return true;
}

void Taula::kargatu_taula(const char* testua, long kopurua) {
    load_memory(lemara::text_of(testua), kopurua, true);
}

void Taula::load_memory(std::string_view text, long count, bool with_graph) {
    unfold();
    const std::size_t all = egoerak.size() + lemara::trusted_states(count, text.size());
    take(lemara::arcs_of_memory(text, all), with_graph);
}

/// Adds new states, and arcs to these and the old ones. Only a table that was empty can
/// do without its graph.
void Taula::take(lemara::ArcsByState&& arcs, bool with_graph) {
    const std::size_t before = egoerak.size();
    if (before == 0 && !with_graph) {
        formak->use(std::make_unique<lemara::PackedTable>(std::move(arcs)), egoerak);
        return;
    }
    append_states(egoerak, arcs.state_count() - before);
    append_arcs(egoerak, arcs);
    if (before == 0) {
        formak->use(std::make_unique<lemara::PackedTable>(std::move(arcs)), egoerak);
    } else {
        lemara::note_graph_change();
        lemara::packed_form(*this);
    }
}

int Taula::kontataulaSFST(const char* path) const {
    lemara::FileBytes file;
    if (path == nullptr || !file.read(path)) {
        tell_unreadable(lemara::text_of(path));
        return -1;
    }
    return lemara::states_of_file(file.view());
}

int Taula::kontataulaSARE8(const char* testua) const {
    return lemara::states_of_memory(lemara::text_of(testua));
}
