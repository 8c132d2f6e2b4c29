// Form generation: a lemma and its tags against the upper side of the table. The search
// itself is in packed_walk.h. Tests: tests/tables/Taula_generate_test.cpp.
#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "Taula.h"
#include "analysis/RecordText.h"
#include "iragazkiak.h"
#include "tables/known_beginnings.h"
#include "tables/packed_walk.h"
#include "tables/token_walk.h"

namespace {

/// True if a capital stands in front of the first tag, as far as 16 bytes tell.
bool may_hold_capital(std::string_view upper) {
    if (upper.size() < 16) return true;
#ifdef __SSE2__
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(upper.data()));
    // Signed bytes: those from 128 on are below "A".
    const __m128i capital = _mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8('A' - 1)),
                                          _mm_cmplt_epi8(bytes, _mm_set1_epi8('Z' + 1)));
    const __m128i open = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('<'));
    const auto capitals = static_cast<unsigned>(_mm_movemask_epi8(capital));
    const auto opens = static_cast<unsigned>(_mm_movemask_epi8(open));
    return opens == 0 || (capitals & ((opens & -opens) - 1)) != 0;
#else
    return true;
#endif
}

/// aldatuMaiuskulakLow, which has nothing to carry as a rule.
void carry_capitals(std::string_view upper, lemara::PathText& lower) {
    if (may_hold_capital(upper)) {
        aldatuMaiuskulakLow(upper.data(), const_cast<char*>(lower.c_str()));
    }
}

std::string_view cut_target(std::string_view target) {
    return lemara::up_to_nul(target).substr(0, lemara::TARGET_LIMIT);
}

/// Calls `take` with the upper text and the form of each result, until it answers false.
template <class Take>
void search_forms(const Taula& table, std::string_view target, bool stop_at_tag,
                  Take take) {
    lemara::PackedGeneration search(lemara::upper_form(table), target, stop_at_tag);
    search.run(0, [&](std::string_view upper, lemara::PathText& lower) {
        carry_capitals(upper, lower);
        return take(upper, std::string_view(lower.c_str(), lower.size()));
    });
}

/// The same for results that are cut at their first tag. Remembers them.
template <class Take>
void find_entries(const Taula& table, std::string_view target, Take take) {
    lemara::KnownBeginnings& known = lemara::known_beginnings(table);
    if (known.recite(target, take)) return;
    lemara::KnownBeginnings::Notes notes = known.notes_for(target);
    bool goes_on = true;
    search_forms(table, target, true, [&](std::string_view upper, std::string_view form) {
        notes.add(upper, form);
        goes_on = take(upper, form);
        return goes_on;
    });
    if (goes_on) known.keep(target, notes);
}

/// Either of the two.
template <class Take>
void generate(const Taula& table, std::string_view target, bool stop_at_tag, Take take) {
    target = cut_target(target);
    if (stop_at_tag) {
        find_entries(table, target, take);
    } else {
        search_forms(table, target, false, take);
    }
}

/// The results of a search as bare texts. A record is large to move, so records are made
/// when it is known how many there are.
class Results {
public:
    bool operator()(std::string_view upper, std::string_view form) {
        texts_.append(upper);
        texts_.append(form);
        sizes_.push({upper.size(), form.size()});
        return true;
    }

    void append_to(std::vector<Analisia>& records, const std::string& network) const {
        const std::size_t needed = records.size() + sizes_.size();
        // Twofold at least, so that many calls for one vector stay linear.
        if (needed > records.capacity())
            records.reserve(std::max(needed, 2 * records.capacity()));
        std::string_view rest = texts_.view();
        for (std::size_t i = 0; i < sizes_.size(); ++i) {
            const auto [upper, lower] = sizes_[i];
            records.emplace_back(lemara::RecordText{rest.substr(0, upper), network,
                                                    rest.substr(upper, lower)});
            rest.remove_prefix(upper + lower);
        }
    }

private:
    struct Sizes {
        std::size_t upper, lower;
    };

    lemara::PathText texts_;
    lemara::InlineStack<Sizes, 16> sizes_;
};

}  // namespace

void lemara::for_each_form(const Taula& table, std::string_view target, bool stop_at_tag,
                           const std::function<bool(Analisia&&)>& take) {
    generate(table, target, stop_at_tag,
             [&](std::string_view upper, std::string_view form) {
                 return take(Analisia(RecordText{upper, table.hiztegia, form}));
             });
}

std::vector<Analisia> lemara::all_forms(const Taula& table, std::string_view target,
                                        bool stop_at_tag) {
    Results results;
    generate(table, target, stop_at_tag, std::ref(results));
    std::vector<Analisia> records;
    results.append_to(records, table.hiztegia);
    return records;
}

std::vector<Analisia> Taula::sortuFormak(std::string lema, std::string etiketak,
                                         bool etiketanGelditu, bool) const {
    for (std::size_t at = etiketak.find("<>"); at != std::string::npos;
         at = etiketak.find("<>")) {
        etiketak.erase(at, 2);
    }
    return lemara::all_forms(*this, lema + etiketak, etiketanGelditu);
}

std::vector<Analisia>& Taula::birsortuFormak(const char* helburua,
                                             std::vector<Analisia>& emaitzak, int egoera,
                                             char* goikoa, char* behekoa,
                                             bool etiketanGelditu, bool) const {
    const std::string_view lower = lemara::text_of(behekoa);
    lemara::PackedGeneration search(lemara::upper_form(*this), lemara::text_of(helburua),
                                    etiketanGelditu);
    search.start_with(lemara::text_of(goikoa), lower);
    Results results;
    search.run(egoera, [&](std::string_view upper, lemara::PathText& form) {
        carry_capitals(upper, form);
        return results(upper, form.view());
    });
    results.append_to(emaitzak, hiztegia);
    // Capitals stay in the caller's text, as they stay in the search's own.
    if (behekoa != nullptr) std::memcpy(behekoa, search.lower_data(), lower.size());
    return emaitzak;
}
