// The paradigm of a word that the lexicon lacks: a throw-away dictionary gives it stems
// and paradigm classes, and the network "hp" the endings.
#pragma once

#include <stdexcept>
#include <string>

#include "Analisia.h"
#include "HiztegiPertsonala.h"
#include "Sarea.h"
#include "tables/token_walk.h"

namespace lemara {

/// Calls `visit` with each form of `word`, as a record with the whole analysis and
/// `forma`, until it answers false. `class_tag` is "<ARR>" and the like. A null network
/// has no forms.
///
/// Throws std::out_of_range "basic_string::substr" for a network that generates a form
/// shorter than its class tag.
template <class Visit>
void for_each_unknown_form(const std::string& word, const std::string& class_tag,
                           const Sarea* hp, Visit visit) {
    if (hp == nullptr) return;
    HiztegiPertsonala dictionary;
    dictionary.gehitu_sarrera(false, word, class_tag, "", "", "");
    for (const auto& root : dictionary.erroak) {
        const HPsarrera& entry = *root.second;
        for (const Analisia& ending : all_forms(*hp->taula, entry.paradigma, false)) {
            if (ending.forma.size() < entry.paradigma.size()) {
                throw std::out_of_range("basic_string::substr");
            }
            Analisia record(entry.erroa + entry.kategoria + ending.analisia, "HP");
            record.forma = entry.erroa + ending.forma.substr(entry.paradigma.size());
            if (!visit(record)) return;
        }
    }
}

}  // namespace lemara
