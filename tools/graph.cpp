#include "graph.h"

#include <algorithm>

namespace lemara::tools {

ArcIndex::ArcIndex(std::size_t states, const std::vector<std::uint32_t>& sources)
    : first_(states + 1, 0), arcs_(sources.size() + 1) {
    for (const std::uint32_t source : sources) ++first_[source + 1];
    for (std::size_t state = 0; state < states; ++state)
        first_[state + 1] += first_[state];
    std::vector<std::size_t> next(first_.begin(), first_.end() - 1);
    for (std::size_t arc = 0; arc < sources.size(); ++arc) {
        arcs_[next[sources[arc]]++] = static_cast<std::uint32_t>(arc);
    }
}

std::vector<bool> reachable(const std::vector<std::uint32_t>& starts,
                            const ArcIndex& by_source,
                            const std::vector<std::uint32_t>& targets,
                            std::size_t states) {
    std::vector<bool> seen(states, false);
    std::vector<std::uint32_t> open;
    const auto enter = [&](std::uint32_t state) {
        if (seen[state]) return;
        seen[state] = true;
        open.push_back(state);
    };
    for (const std::uint32_t start : starts) enter(start);
    while (!open.empty()) {
        const std::uint32_t state = open.back();
        open.pop_back();
        for (const auto* arc = by_source.begin(state); arc != by_source.end(state);
             ++arc) {
            enter(targets[*arc]);
        }
    }
    return seen;
}

std::vector<std::uint32_t> components(std::size_t states, const ArcIndex& by_source,
                                      const std::vector<std::uint32_t>& targets) {
    constexpr std::uint32_t UNSEEN = 0;
    struct Frame {
        std::uint32_t state;
        const std::uint32_t* next;  // the arc to look at
    };
    std::vector<std::uint32_t> order(states, UNSEEN), low(states, 0),
        component(states, 0);
    std::vector<bool> open(states, false);
    std::vector<std::uint32_t> path;
    std::vector<Frame> calls;
    std::uint32_t seen = 0, found = 0;

    const auto enter = [&](std::uint32_t state) {
        order[state] = low[state] = ++seen;
        open[state] = true;
        path.push_back(state);
        calls.push_back({state, by_source.begin(state)});
    };
    const auto close = [&](std::uint32_t root) {
        std::uint32_t state = root;
        do {
            state = path.back();
            path.pop_back();
            open[state] = false;
            component[state] = found;
        } while (state != root);
        ++found;
    };

    for (std::uint32_t start = 0; start < states; ++start) {
        if (order[start] != UNSEEN) continue;
        enter(start);
        while (!calls.empty()) {
            const std::uint32_t state = calls.back().state;
            if (calls.back().next != by_source.end(state)) {
                const std::uint32_t target = targets[*calls.back().next++];
                if (order[target] == UNSEEN) {
                    enter(target);
                } else if (open[target]) {
                    low[state] = std::min(low[state], order[target]);
                }
                continue;
            }
            if (low[state] == order[state]) close(state);
            calls.pop_back();
            if (!calls.empty()) {
                const std::uint32_t caller = calls.back().state;
                low[caller] = std::min(low[caller], low[state]);
            }
        }
    }
    return component;
}

std::vector<bool> arcs_on_cycles(std::size_t states,
                                 const std::vector<std::uint32_t>& sources,
                                 const std::vector<std::uint32_t>& targets) {
    const std::vector<std::uint32_t> component =
        components(states, ArcIndex(states, sources), targets);
    std::vector<bool> result(sources.size());
    for (std::size_t arc = 0; arc < sources.size(); ++arc) {
        result[arc] = component[sources[arc]] == component[targets[arc]];
    }
    return result;
}

}  // namespace lemara::tools
