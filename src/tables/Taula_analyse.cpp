// The analysis walk: a depth-first search that consumes the lowered token against the lower
// symbols of the arcs and gathers their upper symbols.
//
// Twin: tests/tables/plain_search.h. Tests: tests/tables/Taula_analyse_test.cpp.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Taula.h"
#include "analysis/text_pieces.h"
#include "iragazkiak.h"
#include "karaktereak.h"
#include "tables/Search.h"

namespace {

class AnalysisWalk {
public:
    /// `token` as typed, `rest` the lowered text to consume, `output` what stands already.
    AnalysisWalk(const Taula& table, const char* token, std::string_view rest,
                 std::string output)
        : table_(table),
          token_(token),
          all_capitals_(touppercase(token) == token),
          rest_(rest),
          output_(std::move(output)) {}

    /// Calls `emit` with each analysis string that is kept, in order.
    template <class Emit>
    void run(int start, Emit emit) {
        enter(start, 0, emit);
        while (!path_.empty() && !budget_.spent()) {
            auto& step = path_.top();
            output_.resize(step.mark);
            if (step.next_arc >= step.state->zubiak.size()) {
                path_.pop();
                continue;
            }
            const Zubia* arc = step.state->zubiak[step.next_arc++];
            if (arc == nullptr) continue;
            const std::string& lower = arc->beheko_ikurra;
            if (rest_.compare(step.progress, lower.size(), lower) != 0) continue;
            const std::size_t progress = step.progress + lower.size();
            output_ += arc->goiko_ikurra;
            budget_.spend(1 + (lower.size() + arc->goiko_ikurra.size()) / 64);
            if (output_.size() <= lemara::PATH_LIMIT) {
                enter(arc->hurrengo_egoera, progress, emit);
            }
        }
    }

private:
    template <class Emit>
    void enter(int number, std::size_t progress, Emit& emit) {
        if (number < 0) {
            end_of_word(progress, emit);
            return;
        }
        // A capitalised entry dies at its first letter for a token in small letters. The
        // whole check is asked, though with one byte of output only its first rule can fire.
        if (output_.size() == 1 &&
            !egiaztatuIzenBereziakEtaSinboloak(token_, output_.c_str()) && !all_capitals_) {
            return;
        }
        const Egoera* state = lemara::state_of(table_, number);
        if (state != nullptr) path_.open(state, number, progress, output_.size(), budget_);
    }

    template <class Emit>
    void end_of_word(std::size_t progress, Emit& emit) {
        if (progress < rest_.size()) return;
        if (!egiaztatuIzenBereziakEtaSinboloak(token_, output_.c_str())) return;
        if (!kenduHAULtxarrak(output_.c_str(), token_)) return;
        budget_.spend(lemara::RESULT_COST + output_.size());
        emit(output_);
    }

    const Taula& table_;
    const char* token_;
    const bool all_capitals_;
    const std::string_view rest_;
    std::string output_;
    lemara::SearchPath<std::size_t> path_;  // marks the length of the output
    lemara::Budget budget_;
};

/// 0 no capital in front, 2 no small letter, 1 between the two. A digit or sign in front
/// counts as a capital.
int case_class(const std::string& token) {
    const std::string upper = touppercase(token);
    if (token.empty() || token == upper) return 2;
    return token[0] == upper[0] ? 1 : 0;
}

/// True if the better form of a record is what stands in the text already.
bool replaces_itself(const Analisia& record, const std::string& token) {
    const std::string_view start = std::string_view(token).substr(0, record.lema.size());
    return !start.empty() && (start == record.erabili || start == record.hobe);
}

}  // namespace

std::vector<Analisia> Taula::analizatuTokena(std::string tokena) const {
    const std::string lowered =
        tolowercase(std::string(lemara::up_to_nul(tokena).substr(0, lemara::WALK_LIMIT)));
    const int maiuskula = case_class(tokena);
    std::vector<Analisia> records;
    AnalysisWalk walk(*this, tokena.c_str(), lowered, "");
    walk.run(0, [&](const std::string& text) {
        Analisia record(text, hiztegia);
        record.maiuskula = maiuskula;
        if (!replaces_itself(record, tokena)) records.push_back(std::move(record));
    });
    return records;
}

std::vector<std::string*>& Taula::birbilaTokena(const char* tokena,
                                                std::vector<std::string*>& emaitzak,
                                                int egoera, const char* hondarra,
                                                char* irteera) const {
    AnalysisWalk walk(*this, lemara::text_of(tokena).data(), lemara::text_of(hondarra),
                      std::string(lemara::text_of(irteera)));
    walk.run(egoera, [&](const std::string& text) {
        auto copy = std::make_unique<std::string>(text);
        emaitzak.push_back(copy.get());
        copy.release();
    });
    return emaitzak;
}
