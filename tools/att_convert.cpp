#include "att_convert.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <unordered_map>

#include "graph.h"
#include "table_format.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

using std::size_t;
using std::uint32_t;
using std::uint64_t;

constexpr size_t MOST_FIELDS = 5;

/// One symbol of the AT&T text; the same text has one number.
struct Symbol {
    std::string latin1;   // empty for epsilon
    std::string refusal;  // why no table can hold it; empty if one can
};

/// One pair of symbols as it stands in a record.
struct Field {
    std::string text;
    std::string refusal;
    bool empty_lower = false;
};

struct Arc {
    uint32_t source, target, field;
    uint32_t line;
};

std::string code_point(char32_t character) {
    char text[16];
    std::snprintf(text, sizeof text, "U+%04X", static_cast<unsigned>(character));
    return text;
}

bool is_flag_diacritic(std::string_view symbol) {
    return symbol.size() >= 5 && symbol.front() == '@' && symbol.back() == '@' &&
           symbol[2] == '.' && std::string_view("PNRDCU").find(symbol[1]) != symbol.npos;
}

bool is_special(std::string_view symbol) {
    return symbol.size() >= 5 && symbol.substr(0, 2) == "@_" &&
           symbol.substr(symbol.size() - 2) == "_@";
}

Symbol read_symbol(std::string_view text) {
    if (text == "@0@" || text == "@_EPSILON_SYMBOL_@") return {};
    if (text == "@_SPACE_@") return {" ", ""};
    if (text == "@_COLON_@") return {":", ""};
    if (text == "@_TAB_@") return {"", "a TAB can't stand in a table"};
    if (text == "@_NEWLINE_@") return {"", "a line feed can't stand in a table"};
    if (text == "@_IDENTITY_SYMBOL_@" || text == "@_UNKNOWN_SYMBOL_@") {
        return {"",
                std::string(text) +
                    " stands for any other character, and a table has no such symbol; "
                    "intersect the network with its alphabet"};
    }
    if (is_special(text)) return {"", "special symbol " + std::string(text)};
    if (is_flag_diacritic(text)) {
        return {"", "flag diacritic " + std::string(text) +
                        "; compile it out (foma: eliminate flags)"};
    }
    if (text.empty()) return {"", "empty symbol; epsilon is @0@"};
    if (find_invalid_utf8(text) != text.npos) return {"", "not UTF-8"};
    Symbol symbol;
    char32_t missing = 0;
    if (!latin1_exactly(text, symbol.latin1, missing)) {
        symbol.refusal = "Latin-1 has no " + code_point(missing);
    } else if (std::any_of(symbol.latin1.begin(), symbol.latin1.end(), is_control)) {
        symbol.refusal = "control character in a symbol";
    }
    return symbol;
}

std::string in_lower_case(std::string text) {
    for (char& c : text) c = lowered(c);
    return text;
}

/// How a pair stands in the symbol field of a record.
Field write_field(const Symbol& upper_symbol, const Symbol& lower_symbol,
                  const AttOptions& options) {
    Field field;
    field.refusal =
        !upper_symbol.refusal.empty() ? upper_symbol.refusal : lower_symbol.refusal;
    if (!field.refusal.empty()) return field;

    const std::string& upper = upper_symbol.latin1;
    std::string lower = in_lower_case(lower_symbol.latin1);
    if (!options.lower && lower != lower_symbol.latin1) {
        field.refusal =
            "capital on the lower side, where no word would match; --lower lowers it";
        return field;
    }
    field.empty_lower = lower.empty();
    if (lower == EPSILON) {
        field.refusal = "the lower symbol \"<>\" would be read as epsilon";
    } else if (upper == ":" && lower == ":") {
        field.text = ":";
    } else if (upper.find(':') != upper.npos) {
        field.refusal = "a \":\" in the upper symbol would be read as the end of it";
    } else if (upper == lower && !upper.empty()) {
        field.text = upper;
    } else {
        field.text = upper + ':' + (lower.empty() ? std::string(EPSILON) : lower);
    }
    return field;
}

bool read_number(std::string_view text, uint64_t& number) {
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

bool is_zero_weight(std::string_view text) {
    return text.find_first_not_of("+-0.") == text.npos;
}

/// The network as the text gives it, and the numbers for its states, symbols and pairs.
class AttNetwork {
public:
    AttNetwork(std::string_view text, const AttOptions& options, Conversion& result)
        : options_(options), result_(result) {
        state_of(0);
        read(text);
    }

    std::vector<Arc> arcs;
    std::vector<bool> finals;
    std::vector<Field> fields;

    size_t states() const { return names_.size(); }

    std::string describe(const Arc& arc) const {
        const uint64_t pair = pair_of_field_[arc.field];
        return "arc " + std::to_string(names_[arc.source]) + " -> " +
               std::to_string(names_[arc.target]) + " \"" +
               printable(symbol_texts_[pair >> 32]) + ':' +
               printable(symbol_texts_[pair & 0xFFFFFFFF]) + '"';
    }

private:
    const AttOptions& options_;
    Conversion& result_;
    std::vector<uint64_t> names_;  // a state's number in the text
    std::unordered_map<uint64_t, uint32_t> states_;
    std::unordered_map<std::string_view, uint32_t> symbol_numbers_;
    std::vector<std::string_view> symbol_texts_;
    std::vector<Symbol> symbols_;
    std::unordered_map<uint64_t, uint32_t> field_numbers_;  // by upper << 32 | lower
    std::vector<uint64_t> pair_of_field_;

    uint32_t state_of(uint64_t name) {
        const auto [at, is_new] =
            states_.emplace(name, static_cast<uint32_t>(names_.size()));
        if (is_new) {
            names_.push_back(name);
            finals.push_back(false);
        }
        return at->second;
    }

    uint64_t symbol_of(std::string_view text) {
        const auto [at, is_new] =
            symbol_numbers_.emplace(text, static_cast<uint32_t>(symbols_.size()));
        if (is_new) {
            symbol_texts_.push_back(text);
            symbols_.push_back(read_symbol(text));
        }
        return at->second;
    }

    uint32_t field_of(std::string_view upper, std::string_view lower) {
        const uint64_t upper_number = symbol_of(upper), lower_number = symbol_of(lower);
        const uint64_t pair = upper_number << 32 | lower_number;
        const auto [at, is_new] =
            field_numbers_.emplace(pair, static_cast<uint32_t>(fields.size()));
        if (is_new) {
            pair_of_field_.push_back(pair);
            fields.push_back(
                write_field(symbols_[upper_number], symbols_[lower_number], options_));
        }
        return at->second;
    }

    void refuse(size_t line, std::string text) {
        result_.refusals.push_back({line, std::move(text)});
    }

    void note_weight(size_t line, std::string_view weight) {
        if (result_.weighted_line == 0 && !is_zero_weight(weight)) {
            result_.weighted_line = line;
        }
    }

    void read(std::string_view text) {
        size_t line = 0;
        while (!text.empty()) {
            const size_t end = std::min(text.find('\n'), text.size());
            std::string_view record = text.substr(0, end);
            text.remove_prefix(std::min(end + 1, text.size()));
            ++line;
            if (!record.empty() && record.back() == '\r') record.remove_suffix(1);
            if (!record.empty()) read_record(record, line);
        }
    }

    void read_record(std::string_view record, size_t line) {
        std::string_view parts[MOST_FIELDS];
        size_t count = 0;
        while (count < MOST_FIELDS) {
            const size_t tab = record.find('\t');
            parts[count++] = record.substr(0, tab);
            if (tab == record.npos) break;
            record.remove_prefix(tab + 1);
            if (count == MOST_FIELDS) ++count;
        }
        if (count == 1 || count == 2) return read_final(parts, count, line);
        if (count == 4 || count == 5) return read_arc(parts, count, line);
        refuse(line,
               "not AT&T text: an arc is SOURCE, TARGET, UPPER, LOWER with a TAB between "
               "them, a final state is its number alone");
    }

    void read_final(const std::string_view* parts, size_t count, size_t line) {
        uint64_t state = 0;
        if (!read_number(parts[0], state)) {
            if (parts[0] == "--")
                return refuse(line, "a second network; the file must hold one");
            return refuse(line, "not a state number: \"" + printable(parts[0]) + '"');
        }
        if (count == 2) note_weight(line, parts[1]);
        finals[state_of(state)] = true;
    }

    void read_arc(const std::string_view* parts, size_t count, size_t line) {
        uint64_t source = 0, target = 0;
        for (const auto& [part, number] :
             {std::pair(parts[0], &source), {parts[1], &target}}) {
            if (!read_number(part, *number)) {
                return refuse(line, "not a state number: \"" + printable(part) + '"');
            }
        }
        if (count == 5) note_weight(line, parts[4]);
        const uint32_t from = state_of(source), to = state_of(target);
        arcs.push_back(
            {from, to, field_of(parts[2], parts[3]), static_cast<uint32_t>(line)});
    }
};

/// Leaves the arcs between states that can be reached and lead to a final one; true for
/// these states in the result.
std::vector<bool> trim(AttNetwork& network) {
    const size_t states = network.states();
    std::vector<uint32_t> sources, targets, ends;
    for (const Arc& arc : network.arcs) {
        sources.push_back(arc.source);
        targets.push_back(arc.target);
    }
    for (uint32_t state = 0; state < states; ++state) {
        if (network.finals[state]) ends.push_back(state);
    }
    std::vector<bool> useful = reachable({0}, ArcIndex(states, sources), targets, states);
    const std::vector<bool> alive =
        reachable(ends, ArcIndex(states, targets), sources, states);
    for (size_t state = 0; state < states; ++state) {
        if (!alive[state]) useful[state] = false;
    }
    network.arcs.erase(
        std::remove_if(
            network.arcs.begin(), network.arcs.end(),
            [&](const Arc& arc) { return !useful[arc.source] || !useful[arc.target]; }),
        network.arcs.end());
    return useful;
}

void refuse_symbols(const AttNetwork& network, std::vector<Refusal>& refusals) {
    for (const Arc& arc : network.arcs) {
        const std::string& why = network.fields[arc.field].refusal;
        if (!why.empty())
            refusals.push_back({arc.line, network.describe(arc) + ": " + why});
    }
}

void refuse_cycles(const AttNetwork& network, std::vector<Refusal>& refusals) {
    std::vector<const Arc*> silent;
    std::vector<uint32_t> sources, targets;
    for (const Arc& arc : network.arcs) {
        if (!network.fields[arc.field].empty_lower) continue;
        silent.push_back(&arc);
        sources.push_back(arc.source);
        targets.push_back(arc.target);
    }
    const std::vector<bool> cyclic = arcs_on_cycles(network.states(), sources, targets);
    for (size_t i = 0; i < silent.size(); ++i) {
        if (!cyclic[i]) continue;
        refusals.push_back({silent[i]->line, network.describe(*silent[i]) +
                                                 ": on a cycle of empty lower symbols"});
    }
}

/// Writes the states depth first, so that those of one word stand side by side: a search
/// goes from one to the next, and finds them in the memory that it has touched already.
/// Arcs keep their order.
class TableWriter {
public:
    TableWriter(const AttNetwork& network, Conversion& result)
        : network_(network), result_(result), arcs_(index(network)) {}

    void write() {
        unify_fields();
        const std::vector<uint32_t> order = number_states();
        result_.states = order.size();
        for (const uint32_t state : order) write_state(state);
    }

private:
    static constexpr uint32_t UNNUMBERED = 0xFFFFFFFF;

    const AttNetwork& network_;
    Conversion& result_;
    ArcIndex arcs_;
    std::vector<uint32_t> number_;   // in the table, by state
    std::vector<uint32_t> unified_;  // the first field with the same text, by field

    static ArcIndex index(const AttNetwork& network) {
        std::vector<uint32_t> sources;
        for (const Arc& arc : network.arcs) sources.push_back(arc.source);
        return ArcIndex(network.states(), sources);
    }

    /// Numbers the states as the search first comes to them. The states by their numbers.
    std::vector<uint32_t> number_states() {
        std::vector<uint32_t> order, open{0};
        number_.assign(network_.states(), UNNUMBERED);
        while (!open.empty()) {
            const uint32_t state = open.back();
            open.pop_back();
            if (number_[state] != UNNUMBERED) continue;
            number_[state] = static_cast<uint32_t>(order.size());
            order.push_back(state);
            for (const auto* arc = arcs_.end(state); arc != arcs_.begin(state);) {
                const uint32_t target = network_.arcs[*--arc].target;
                if (number_[target] == UNNUMBERED) open.push_back(target);
            }
        }
        return order;
    }

    // Lowering makes one field of several.
    void unify_fields() {
        std::unordered_map<std::string_view, uint32_t> first;
        for (const Field& field : network_.fields) {
            const auto number = static_cast<uint32_t>(unified_.size());
            unified_.push_back(first.emplace(field.text, number).first->second);
        }
    }

    void append_number(uint32_t number) {
        char digits[16];
        const auto written = std::to_chars(digits, digits + sizeof digits, number);
        result_.table.append(digits, written.ptr);
    }

    /// The arcs of a state that repeat an earlier one.
    std::vector<uint32_t> repeats_of(uint32_t state) const {
        std::vector<uint32_t> sorted(arcs_.begin(state), arcs_.end(state));
        const auto key = [&](uint32_t arc) {
            return std::pair(unified_[network_.arcs[arc].field],
                             network_.arcs[arc].target);
        };
        std::sort(sorted.begin(), sorted.end(), [&](uint32_t a, uint32_t b) {
            return std::pair(key(a), a) < std::pair(key(b), b);
        });
        std::vector<uint32_t> repeats;
        for (size_t i = 1; i < sorted.size(); ++i) {
            if (key(sorted[i - 1]) == key(sorted[i])) repeats.push_back(sorted[i]);
        }
        std::sort(repeats.begin(), repeats.end());
        return repeats;
    }

    void write_state(uint32_t state) {
        if (network_.finals[state]) {
            result_.table += FINAL_RECORD;
            append_number(number_[state]);
            result_.table += '\n';
            ++result_.records;
        }
        const std::vector<uint32_t> repeats = repeats_of(state);
        for (const auto* arc = arcs_.begin(state); arc != arcs_.end(state); ++arc) {
            if (!std::binary_search(repeats.begin(), repeats.end(), *arc)) {
                write_arc(network_.arcs[*arc]);
            }
        }
    }

    void write_arc(const Arc& arc) {
        const size_t start = result_.table.size();
        append_number(number_[arc.source]);
        result_.table += '\t';
        result_.table += network_.fields[arc.field].text;
        result_.table += '\t';
        append_number(number_[arc.target]);
        if (result_.table.size() - start > LONGEST_RECORD) {
            result_.refusals.push_back(
                {arc.line, network_.describe(arc) + ": the record has more than " +
                               std::to_string(LONGEST_RECORD) + " bytes"});
        }
        result_.table += '\n';
        ++result_.records;
    }
};

}  // namespace

Conversion table_from_att(std::string_view att, const AttOptions& options) {
    Conversion result;
    AttNetwork network(att, options, result);
    if (!result.refusals.empty()) return result;
    const std::vector<bool> useful = trim(network);
    if (!useful[0]) {
        result.refusals.push_back({0, "no word leads from state 0 to a final state"});
        return result;
    }
    refuse_symbols(network, result.refusals);
    refuse_cycles(network, result.refusals);
    if (result.refusals.empty()) TableWriter(network, result).write();
    if (!result.refusals.empty()) result.table.clear();
    std::stable_sort(result.refusals.begin(), result.refusals.end(),
                     [](const Refusal& a, const Refusal& b) { return a.line < b.line; });
    return result;
}

}  // namespace lemara::tools
