// Form generation: a lemma and its tags against the upper side of the table. The search
// itself is in packed_walk.h. Tests: tests/tables/Taula_generate_test.cpp.
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Taula.h"
#include "iragazkiak.h"
#include "tables/packed_walk.h"
#include "tables/token_walk.h"

namespace {

/// Turns the results of a search into records, and gives them to `take` until it answers
/// false.
template <class Take>
auto recorder(const std::string& network, Take take) {
    return
        [&network, take](const char* upper, std::size_t size, lemara::PathText& lower) {
            aldatuMaiuskulakLow(upper, const_cast<char*>(lower.c_str()));
            Analisia record(std::string(upper, size), network);
            record.forma = std::string(lower.view());
            return take(std::move(record));
        };
}

/// The same for a vector, in place: a record is large to move.
auto collector(std::vector<Analisia>& records, const std::string& network) {
    return [&](const char* upper, std::size_t size, lemara::PathText& lower) {
        aldatuMaiuskulakLow(upper, const_cast<char*>(lower.c_str()));
        records.emplace_back(std::string(upper, size), network).forma = lower.view();
        return true;
    };
}

}  // namespace

void lemara::for_each_form(const Taula& table, const std::string& target,
                           bool stop_at_tag,
                           const std::function<bool(Analisia&&)>& take) {
    PackedGeneration search(packed_form(table), up_to_nul(target).substr(0, TARGET_LIMIT),
                            stop_at_tag);
    search.run(0, recorder(table.hiztegia, take));
}

std::vector<Analisia> Taula::sortuFormak(std::string lema, std::string etiketak,
                                         bool etiketanGelditu, bool) const {
    for (std::size_t at = etiketak.find("<>"); at != std::string::npos;
         at = etiketak.find("<>")) {
        etiketak.erase(at, 2);
    }
    const std::string target = lema + etiketak;
    std::vector<Analisia> records;
    lemara::PackedGeneration search(
        lemara::packed_form(*this),
        lemara::up_to_nul(target).substr(0, lemara::TARGET_LIMIT), etiketanGelditu);
    search.run(0, collector(records, hiztegia));
    return records;
}

std::vector<Analisia>& Taula::birsortuFormak(const char* helburua,
                                             std::vector<Analisia>& emaitzak, int egoera,
                                             char* goikoa, char* behekoa,
                                             bool etiketanGelditu, bool) const {
    const std::string_view lower = lemara::text_of(behekoa);
    lemara::PackedGeneration search(lemara::packed_form(*this), lemara::text_of(helburua),
                                    etiketanGelditu);
    search.start_with(lemara::text_of(goikoa), lower);
    search.run(egoera, collector(emaitzak, hiztegia));
    // Capitals stay in the caller's text, as they stay in the search's own.
    if (behekoa != nullptr) std::memcpy(behekoa, search.lower_data(), lower.size());
    return emaitzak;
}
