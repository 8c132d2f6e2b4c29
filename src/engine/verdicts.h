// What the engine thinks of a token, before it becomes mark-up.
// Tests: tests/engine/Lemara_check_test.cpp, tests/host/Checker_check_test.cpp.
#pragma once

#include <string>
#include <vector>

#include "Lemara.h"
#include "analysis/text_pieces.h"
#include "text/sentence_analysis.h"

namespace lemara {

/// True if no source knew the token.
bool is_unknown(const Tokena& token);

/// The multi-word entries that begin with an unknown token, shortest lemma first.
std::vector<Analisia> entries_behind(const Lemara& engine, const Tokena& token);

/// True if entries_behind gives any. Stops at the first.
bool has_entry_behind(const Lemara& engine, const Tokena& token);

/// What one analysis of a known token recommends.
struct Recommendation {
    const Analisia& analysis;
    bool instead;               ///< a form to use instead, not a better form
    const std::string& lemmas;  ///< what is recommended, several joined by "/"
    std::vector<Analisia>
        forms;  ///< the same, inflected as the token; empty if nothing fits
};

/// Calls `visit` with the recommendations for a known token. True if one analysis that is
/// not rare recommends nothing: it clears the token, whatever was visited before it.
template <class Visit>
bool for_each_recommendation(const Lemara& engine, const Tokena& token, Visit visit) {
    for (const Analisia& analysis : token.analisiak) {
        if (contains(analysis.analisia, "<Rare>")) continue;
        if (analysis.hobe.empty() && analysis.erabili.empty()) return true;
        const bool instead = analysis.hobe.empty();
        const std::string& lemmas = instead ? analysis.erabili : analysis.hobe;
        const Sarea* network = find_network(engine.sareak, analysis.hiztegia);
        visit(Recommendation{analysis, instead, lemmas,
                             network == nullptr
                                 ? std::vector<Analisia>()
                                 : network->ordeztuForma(lemmas, analysis)});
    }
    return false;
}

}  // namespace lemara
