// The idea: read the records as the loader does, look at each pair of symbols once, and
// answer what concerns whole paths by searches over the graph of states, each linear.
// Tests: tests/tools/table_check_test.cpp.
#include "table_check.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <tuple>
#include <unordered_set>

#include "graph.h"
#include "table_format.h"
#include "table_text.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

using std::size_t;
using std::uint32_t;

std::string shown(std::string_view latin1) {
    return '"' + printable(utf8_from_latin1(latin1)) + '"';
}

/// True for letters beyond ASCII that make sense as UTF-8 and hardly as Latin-1.
bool looks_like_utf8(std::string_view symbol) {
    const bool ascii = std::all_of(symbol.begin(), symbol.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x80;
    });
    return !ascii && find_invalid_utf8(symbol) == symbol.npos;
}

/// What is wrong with a pair of symbols, wherever it stands.
std::vector<std::string> defects_of_pair(const SymbolPair& pair) {
    std::vector<std::string> found;
    if (!looks_like_utf8(pair.lower) &&
        std::any_of(pair.lower.begin(), pair.lower.end(),
                    [](char c) { return lowered(c) != c; })) {
        found.push_back("capital in the lower symbol " + shown(pair.lower) +
                        "; words are lowered before they are compared");
    }
    if (pair.lower == EPSILON) {
        found.push_back(
            "\"<>\" with no colon stands for itself on both sides; an empty "
            "lower symbol is written UPPER:<>");
    }
    for (const std::string_view symbol : {pair.upper, pair.lower}) {
        if (looks_like_utf8(symbol)) {
            found.push_back("UTF-8 in the symbol \"" + printable(symbol) +
                            "\"; a table is Latin-1");
        } else if (std::any_of(symbol.begin(), symbol.end(), is_control)) {
            found.push_back("control character in the symbol " + shown(symbol));
        } else {
            continue;
        }
        if (pair.upper == pair.lower) break;
    }
    return found;
}

/// Where the reader of an analysis stands behind a part of it.
enum Place : unsigned { TEXT, TAG, BRACKET, KEY, GROUP, BEHIND_GROUP, PLACES };

Place step(Place place, char c) {
    switch (place) {
        case TAG:
            return c == '>' ? TEXT : TAG;
        case GROUP:
            return c == ']' ? BEHIND_GROUP : GROUP;
        case BRACKET:
            if (c >= 'a' && c <= 'z') return KEY;
            break;
        case KEY:
            if (c == '=') return GROUP;
            break;
        default:
            break;
    }
    return c == '<' ? TAG : c == '[' ? BRACKET : TEXT;
}

struct Step {
    Place place;
    bool entered;  // the symbol came to this place by itself
};

Step read_symbol(Place place, std::string_view symbol) {
    bool entered = false;
    for (const char c : symbol) {
        const Place next = step(place, c);
        if (next != place) entered = true;
        place = next;
    }
    return {place, entered};
}

/// A way in which an analysis may not end, and what it says of the symbol that began it.
struct BadEnd {
    Place place;
    char closer;  // the byte that would mend it; 0: any byte
    const char* text;
};
constexpr BadEnd BAD_ENDS[] = {
    {TAG, '>', "a tag that never closes begins in "},
    {GROUP, ']', "a bracket group that never closes begins in "},
    {BEHIND_GROUP, 0, "an analysis ends with the bracket group that closes in "},
};

class TableCheck {
public:
    explicit TableCheck(std::string_view table) : table_(table) {}

    std::vector<Defect> run() {
        for (const BadLine& bad : table_.bad_lines) add(bad.line, bad.text);
        check_count();
        check_pairs();
        check_repeats();
        check_ways();
        check_cycles();
        check_ends();
        std::stable_sort(found_.begin(), found_.end(),
                         [](const Defect& a, const Defect& b) {
                             return std::tie(a.line, a.text) < std::tie(b.line, b.text);
                         });
        return std::move(found_);
    }

private:
    const TableText table_;
    std::vector<Defect> found_;

    void add(size_t line, std::string text) { found_.push_back({line, std::move(text)}); }

    size_t states() const { return table_.names.size(); }
    std::string name(uint32_t state) const { return std::to_string(table_.names[state]); }

    std::vector<uint32_t> sources() const {
        std::vector<uint32_t> list;
        for (const TableArc& arc : table_.arcs) list.push_back(arc.source);
        return list;
    }
    std::vector<uint32_t> targets() const {
        std::vector<uint32_t> list;
        for (const TableArc& arc : table_.arcs) list.push_back(arc.target);
        return list;
    }

    void check_count() {
        const std::uint64_t last = table_.last_counted;
        const std::string count = std::to_string(last + 1);
        std::uint64_t highest = 0;
        for (const TableArc& arc : table_.arcs) {
            highest =
                std::max({highest, table_.names[arc.source], table_.names[arc.target]});
            if (table_.names[arc.target] > last) {
                add(arc.line, "the target " + name(arc.target) +
                                  " is outside the count of " + count + " states");
            }
            if (table_.names[arc.source] > last) {
                add(arc.line, "the source " + name(arc.source) +
                                  " is outside the count of " + count + " states");
            }
        }
        for (const TableFinal& final : table_.finals) {
            highest = std::max(highest, table_.names[final.state]);
            if (table_.names[final.state] > last) {
                add(final.line, "the final state " + name(final.state) +
                                    " is outside the count of " + count + " states");
            }
        }
        if (highest > last) {
            add(table_.last_counted_line,
                "the last record names state " + std::to_string(last) +
                    " and must name the highest, " + std::to_string(highest));
        }
    }

    void check_pairs() {
        std::vector<std::vector<std::string>> defects;
        for (const SymbolPair& pair : table_.pairs)
            defects.push_back(defects_of_pair(pair));
        for (const TableArc& arc : table_.arcs) {
            for (const std::string& text : defects[arc.pair]) add(arc.line, text);
        }
    }

    void check_repeats() {
        const auto key = [](const TableArc& arc) {
            return std::tie(arc.source, arc.pair, arc.target, arc.line);
        };
        std::vector<TableArc> arcs = table_.arcs;
        std::sort(arcs.begin(), arcs.end(),
                  [&](const TableArc& a, const TableArc& b) { return key(a) < key(b); });
        for (size_t i = 1; i < arcs.size(); ++i) {
            const TableArc &a = arcs[i - 1], &b = arcs[i];
            if (a.source == b.source && a.pair == b.pair && a.target == b.target) {
                add(b.line, "repeats the arc of line " + std::to_string(a.line) +
                                "; each analysis over it comes out twice");
            }
        }
        std::vector<uint32_t> first(states(), 0);
        for (const TableFinal& final : table_.finals) {
            if (first[final.state] != 0) {
                add(final.line, "repeats the final record of line " +
                                    std::to_string(first[final.state]));
            } else {
                first[final.state] = final.line;
            }
        }
    }

    /// The line that first tells of each state: as a source or final, else as a target.
    std::vector<uint32_t> first_lines() const {
        std::vector<uint32_t> own(states(), 0), as_target(states(), 0);
        const auto note = [](uint32_t& line, uint32_t candidate) {
            if (line == 0 || candidate < line) line = candidate;
        };
        for (const TableArc& arc : table_.arcs) {
            note(own[arc.source], arc.line);
            note(as_target[arc.target], arc.line);
        }
        for (const TableFinal& final : table_.finals) note(own[final.state], final.line);
        for (size_t state = 0; state < states(); ++state) {
            if (own[state] == 0) own[state] = as_target[state];
        }
        return own;
    }

    void check_ways() {
        std::vector<uint32_t> ends;
        for (const TableFinal& final : table_.finals) ends.push_back(final.state);
        const std::vector<bool> reached =
            reachable({0}, ArcIndex(states(), sources()), targets(), states());
        const std::vector<bool> alive =
            reachable(ends, ArcIndex(states(), targets()), sources(), states());
        if (!alive[0]) add(0, "no word leads from state 0 to a final state");
        const std::vector<uint32_t> lines = first_lines();
        for (uint32_t state = 1; state < states(); ++state) {
            if (!reached[state]) {
                add(lines[state],
                    "state " + name(state) + " can't be reached from state 0");
            } else if (!alive[state] && alive[0]) {
                add(lines[state], "no word ends behind state " + name(state));
            }
        }
    }

    void check_cycles() {
        std::vector<const TableArc*> silent;
        std::vector<uint32_t> sources, targets;
        for (const TableArc& arc : table_.arcs) {
            if (!table_.pairs[arc.pair].lower.empty()) continue;
            silent.push_back(&arc);
            sources.push_back(arc.source);
            targets.push_back(arc.target);
        }
        const std::vector<bool> cyclic = arcs_on_cycles(states(), sources, targets);
        for (size_t i = 0; i < silent.size(); ++i) {
            if (cyclic[i]) add(silent[i]->line, "on a cycle of empty lower symbols");
        }
    }

    /// The places in which an analysis can stand at each state, a bit for each.
    std::vector<unsigned> places() const {
        const ArcIndex by_source(states(), sources());
        std::vector<unsigned> seen(states(), 0);
        std::vector<std::pair<uint32_t, Place>> open;
        const auto enter = [&](uint32_t state, Place place) {
            if (seen[state] >> place & 1u) return;
            seen[state] |= 1u << place;
            open.emplace_back(state, place);
        };
        enter(0, TEXT);
        while (!open.empty()) {
            const auto [state, place] = open.back();
            open.pop_back();
            for (const auto* at = by_source.begin(state); at != by_source.end(state);
                 ++at) {
                const TableArc& arc = table_.arcs[*at];
                enter(arc.target, read_symbol(place, table_.pairs[arc.pair].upper).place);
            }
        }
        return seen;
    }

    /// The states from which a word can end without leaving the place of `end`.
    std::vector<bool> stuck(const BadEnd& end) const {
        std::vector<uint32_t> from, to, finals;
        for (const TableArc& arc : table_.arcs) {
            const std::string_view upper = table_.pairs[arc.pair].upper;
            const bool stays =
                end.closer == 0 ? upper.empty() : upper.find(end.closer) == upper.npos;
            if (!stays) continue;
            from.push_back(arc.source);
            to.push_back(arc.target);
        }
        for (const TableFinal& final : table_.finals) finals.push_back(final.state);
        return reachable(finals, ArcIndex(states(), to), from, states());
    }

    void check_ends() {
        const std::vector<unsigned> before = places();
        for (const BadEnd& end : BAD_ENDS) {
            const std::vector<bool> stuck_behind = stuck(end);
            for (const TableArc& arc : table_.arcs) {
                const std::string_view upper = table_.pairs[arc.pair].upper;
                if (!stuck_behind[arc.target]) continue;
                for (unsigned place = 0; place < PLACES; ++place) {
                    if (!(before[arc.source] >> place & 1u)) continue;
                    const Step behind = read_symbol(static_cast<Place>(place), upper);
                    if (behind.place != end.place || !behind.entered) continue;
                    add(arc.line, end.text + shown(upper));
                    break;
                }
            }
        }
    }
};

bool is_tag(std::string_view symbol) {
    return symbol.size() > 2 && symbol.front() == '<' &&
           symbol.find('>') == symbol.size() - 1;
}

/// The longest paths and the number of all, by a walk in topological order.
void measure_paths(const TableText& table, TableStats& stats) {
    const size_t states = table.names.size();
    std::vector<uint32_t> sources, targets;
    for (const TableArc& arc : table.arcs) {
        sources.push_back(arc.source);
        targets.push_back(arc.target);
    }
    const ArcIndex by_source(states, sources);
    const std::vector<bool> reached = reachable({0}, by_source, targets, states);
    std::vector<uint32_t> waiting(states,
                                  0);  // arcs into a state that are not yet walked
    for (const TableArc& arc : table.arcs) {
        if (reached[arc.source]) ++waiting[arc.target];
    }
    struct Longest {
        size_t word = 0, analysis = 0, path = 0;
        double paths = 0;
    };
    std::vector<Longest> longest(states);
    std::vector<bool> is_final(states, false);
    for (const TableFinal& final : table.finals) is_final[final.state] = true;

    size_t walked = 0;
    std::vector<uint32_t> open;
    if (waiting[0] == 0) open.push_back(0);
    longest[0].paths = 1;
    while (!open.empty()) {
        const uint32_t state = open.back();
        const Longest here = longest[state];
        open.pop_back();
        ++walked;
        if (is_final[state]) {
            stats.longest_word = std::max(stats.longest_word, here.word);
            stats.longest_analysis = std::max(stats.longest_analysis, here.analysis);
            stats.longest_path = std::max(stats.longest_path, here.path);
            stats.words += here.paths;
        }
        for (const auto* at = by_source.begin(state); at != by_source.end(state); ++at) {
            const TableArc& arc = table.arcs[*at];
            const SymbolPair& pair = table.pairs[arc.pair];
            Longest& there = longest[arc.target];
            there.word = std::max(there.word, here.word + pair.lower.size());
            there.analysis = std::max(there.analysis, here.analysis + pair.upper.size());
            there.path = std::max(there.path, here.path + 1);
            there.paths += here.paths;
            if (--waiting[arc.target] == 0) open.push_back(arc.target);
        }
    }
    stats.finite =
        walked == static_cast<size_t>(std::count(reached.begin(), reached.end(), true));
}

}  // namespace

std::vector<Defect> check_table(std::string_view table) {
    return TableCheck(table).run();
}

TableStats table_stats(std::string_view text) {
    const TableText table(text);
    TableStats stats;
    stats.bytes = text.size();
    stats.lines = table.lines;
    stats.states = static_cast<size_t>(table.last_counted) + 1;
    stats.arcs = table.arcs.size();
    stats.finals = table.finals.size();
    stats.pairs = table.pairs.size();
    stats.longest_record = table.longest_line;
    std::unordered_set<std::string_view> upper, lower;
    for (const SymbolPair& pair : table.pairs) {
        if (!pair.upper.empty() && upper.insert(pair.upper).second) {
            stats.tags += is_tag(pair.upper);
        }
        if (!pair.lower.empty()) lower.insert(pair.lower);
    }
    stats.upper_symbols = upper.size();
    stats.lower_symbols = lower.size();
    std::vector<size_t> arcs(table.names.size(), 0);
    for (const TableArc& arc : table.arcs) {
        stats.most_arcs = std::max(stats.most_arcs, ++arcs[arc.source]);
    }
    measure_paths(table, stats);
    return stats;
}

}  // namespace lemara::tools
