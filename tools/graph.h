// Graphs in the form that the table tools need: states 0 to n-1 and their arcs, grouped
// by source. Tests: tests/tools/graph_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lemara::tools {

/// The arcs of each state as positions in a list of the caller's, in the order of that
/// list.
class ArcIndex {
public:
    /// `sources[i]` is the state that arc i belongs to; all are below `states`.
    ArcIndex(std::size_t states, const std::vector<std::uint32_t>& sources);

    const std::uint32_t* begin(std::size_t state) const { return &arcs_[first_[state]]; }
    const std::uint32_t* end(std::size_t state) const {
        return &arcs_[first_[state + 1]];
    }

private:
    std::vector<std::size_t> first_;  // one for each state and one behind the last
    std::vector<std::uint32_t> arcs_;
};

/// Which states can be reached from `starts` over the arcs `sources[i]` -> `targets[i]`.
std::vector<bool> reachable(const std::vector<std::uint32_t>& starts,
                            const ArcIndex& by_source,
                            const std::vector<std::uint32_t>& targets,
                            std::size_t states);

/// Which of the arcs lie on a cycle: both ends in one strongly connected component.
/// Source: R. Tarjan, Depth-first search and linear graph algorithms (1972), without
/// recursion, so that a long chain of states can't exhaust the stack.
std::vector<bool> arcs_on_cycles(std::size_t states,
                                 const std::vector<std::uint32_t>& sources,
                                 const std::vector<std::uint32_t>& targets);

/// The strongly connected component of each state; the numbers mean nothing by
/// themselves.
std::vector<std::uint32_t> components(std::size_t states, const ArcIndex& by_source,
                                      const std::vector<std::uint32_t>& targets);

}  // namespace lemara::tools
