// Form generation: the same arcs searched from the upper side. The upper symbols are compared
// with a target, the lower ones gather into the form. A path is judged when it enters a
// state, so an arc is always taken first and thrown away then.
//
// Twin: tests/tables/plain_search.h. Tests: tests/tables/Taula_generate_test.cpp.
#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Taula.h"
#include "analysis/text_pieces.h"
#include "iragazkiak.h"
#include "tables/Search.h"

using lemara::contains;

namespace {

class Generation {
public:
    Generation(const Taula& table, std::string_view target, bool stop_at_tag,
               std::string upper, std::string lower, std::vector<Analisia>& records)
        : table_(table),
          target_(target),
          target_elided_(contains(target, "<ELI_IZE")),
          target_postposition_(contains(target, "<PSP")),
          stop_at_tag_(stop_at_tag),
          upper_(std::move(upper)),
          lower_(std::move(lower)),
          records_(records) {}

    void run(int start) {
        enter(start);
        while (!path_.empty() && !budget_.spent()) {
            auto& step = path_.top();
            upper_.resize(step.mark.upper);
            // Kept on purpose: cut by length alone. A capital that a record carried into
            // the part that stays is there for the next record too.
            lower_.resize(step.mark.lower);
            if (step.next_arc >= step.state->zubiak.size()) {
                path_.pop();
                continue;
            }
            const Zubia* arc = step.state->zubiak[step.next_arc++];
            if (arc == nullptr) continue;
            if (!is_skipped(arc->goiko_ikurra)) upper_ += arc->goiko_ikurra;
            lower_ += arc->beheko_ikurra;
            budget_.spend(1 + (upper_.size() + arc->beheko_ikurra.size()) / 64);
            if (std::max(upper_.size(), lower_.size()) <= lemara::PATH_LIMIT) {
                enter(arc->hurrengo_egoera);
            }
        }
    }

    const std::string& lower() const { return lower_; }

private:
    struct Lengths {
        std::size_t upper, lower;
    };

    /// The marker, quality tags and opinion tags never reach a generated analysis.
    static bool is_skipped(const std::string& symbol) {
        // Kept on purpose: the second byte alone tells a quality or opinion tag, so a symbol
        // of two letters such as "a1" is skipped as well.
        return symbol == "<>" || (symbol.size() > 1 && (symbol[1] == '0' || symbol[1] == '1'));
    }

    std::size_t progress() const { return std::min(upper_.size(), target_.size()); }

    bool agrees() const {
        const std::size_t n = progress();
        return upper_.compare(0, n, target_, 0, n) == 0;
    }

    bool is_excluded() const {
        return (contains(upper_, "<ELI_IZE") && !target_elided_) ||
               (contains(upper_, "<PSP") && !target_postposition_) ||
               contains(upper_, "ba<AUR>") || contains(upper_, "<ADL>") ||
               contains(upper_, "<Rare>");
    }

    void enter(int number) {
        if (number < 0) {
            // A path that ends before the target does is a result all the same.
            if (agrees()) emit();
            return;
        }
        const Egoera* state = lemara::state_of(table_, number);
        if (state == nullptr) return;
        if (target_elided_ && upper_ == target_) {
            emit();
            return;
        }
        if (!agrees()) return;
        if (stop_at_tag_ && contains(upper_, "<")) {
            if (upper_.size() >= target_.size()) emit();
            return;
        }
        if (is_excluded()) return;
        path_.open(state, number, progress(), {upper_.size(), lower_.size()}, budget_);
    }

    void emit() {
        budget_.spend(lemara::RESULT_COST + upper_.size() + lower_.size());
        aldatuMaiuskulakLow(upper_.c_str(), lower_.data());
        records_.emplace_back(upper_, table_.hiztegia);
        records_.back().forma = lower_;
    }

    const Taula& table_;
    const std::string_view target_;
    const bool target_elided_;
    const bool target_postposition_;
    const bool stop_at_tag_;
    std::string upper_, lower_;
    std::vector<Analisia>& records_;
    lemara::SearchPath<Lengths> path_;
    lemara::Budget budget_;
};

}  // namespace

std::vector<Analisia> Taula::sortuFormak(std::string lema, std::string etiketak,
                                         bool etiketanGelditu, bool) const {
    for (std::size_t at = etiketak.find("<>"); at != std::string::npos;
         at = etiketak.find("<>")) {
        etiketak.erase(at, 2);
    }
    const std::string target = lema + etiketak;
    std::vector<Analisia> records;
    Generation(*this, lemara::up_to_nul(target).substr(0, lemara::TARGET_LIMIT),
               etiketanGelditu, "", "", records)
        .run(0);
    return records;
}

std::vector<Analisia>& Taula::birsortuFormak(const char* helburua,
                                             std::vector<Analisia>& emaitzak, int egoera,
                                             char* goikoa, char* behekoa,
                                             bool etiketanGelditu, bool) const {
    const std::string lower(lemara::text_of(behekoa));
    Generation search(*this, lemara::text_of(helburua), etiketanGelditu,
                      std::string(lemara::text_of(goikoa)), lower, emaitzak);
    search.run(egoera);
    // Capitals stay in the caller's text, as they stay in the search's own.
    if (behekoa != nullptr) std::memcpy(behekoa, search.lower().data(), lower.size());
    return emaitzak;
}
