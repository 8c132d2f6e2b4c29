// What both searches over a table share: the budget, and the path of open states.
#pragma once

#include <cstdint>
#include <vector>

#include "Taula.h"

namespace lemara {

/// The work that one search may still do.
class Budget {
public:
    void spend(std::size_t units) { left_ -= static_cast<std::int64_t>(units); }
    bool spent() const { return left_ < 0; }

private:
    std::int64_t left_ = SEARCH_BUDGET;
};

constexpr std::size_t RESULT_COST = 64;

/// The open states of a search, from the start to the current one. An explicit stack: how
/// deep a path goes is a matter of the table's bytes, and those must not reach the thread's
/// own stack.
///
/// `Mark` is what the search remembers of a state beside its number and its next arc: the
/// lengths to which its texts are cut back.
template <class Mark>
class SearchPath {
public:
    struct Step {
        const Egoera* state;
        int number;
        std::size_t next_arc;
        std::size_t progress;
        Mark mark;
    };

    bool empty() const { return steps_.empty(); }
    Step& top() { return steps_.back(); }
    void pop() { steps_.pop_back(); }
    void clear() { steps_.clear(); }

    /// Opens a state, unless the path has been there since it last made progress.
    void open(const Egoera* state, int number, std::size_t progress, Mark mark,
              Budget& budget) {
        for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
            if (step->progress != progress) break;
            budget.spend(1);
            if (step->number == number) return;
        }
        steps_.push_back({state, number, 0, progress, mark});
    }

private:
    std::vector<Step> steps_;
};

/// The state of that number; null for one that doesn't exist.
inline const Egoera* state_of(const Taula& table, int number) {
    if (number < 0 || static_cast<std::size_t>(number) >= table.egoerak.size()) {
        return nullptr;
    }
    return table.egoerak[static_cast<std::size_t>(number)];
}

}  // namespace lemara
