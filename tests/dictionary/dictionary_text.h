// A personal dictionary told in text, for comparison.
#pragma once

#include <string>
#include <vector>

#include "HiztegiPertsonala.h"

namespace lemara::test {

/// "key = lema kategoria erroa paradigma" of each paradigm entry, in key order.
inline std::vector<std::string> stems_of(const HiztegiPertsonala& dictionary) {
    std::vector<std::string> texts;
    for (const auto& [key, entry] : dictionary.erroak) {
        texts.push_back(key + " = " + entry->lema + ' ' + entry->kategoria + ' ' +
                        entry->erroa + ' ' + entry->paradigma);
    }
    return texts;
}

/// "lema kategoria hobe/erabili" of each record, in order.
inline std::vector<std::string> records_of(const HiztegiPertsonala& dictionary) {
    std::vector<std::string> texts;
    for (const HPsarrera* record : dictionary.sarrerak) {
        texts.push_back(record->lema + ' ' + record->kategoria + ' ' + record->hobe + '/' +
                        record->erabili);
    }
    return texts;
}

}  // namespace lemara::test
