// A question that adding and removing a word ask about each record.
#pragma once

#include <string>

#include "HPsarrera.h"

namespace lemara {

/// True for the record of a word with a class tag. A null record is nobody's.
inline bool is_record_of(const HPsarrera* record, const std::string& word,
                         const std::string& tag) {
    return record != nullptr && record->lema == word && record->kategoria == tag;
}

}  // namespace lemara
