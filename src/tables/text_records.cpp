#include "tables/text_records.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <limits>

#include "Taula.h"
#include "analysis/text_pieces.h"

namespace lemara {
namespace {

constexpr std::int32_t END_OF_WORD = -1;

// Bytes that one read of a file's pass takes at most; a longer line is read as several.
constexpr std::size_t COUNT_READ = 997;
constexpr std::size_t LOAD_READ = 9997;

constexpr std::size_t SHORTEST_RECORD = 5;  // bytes of "0\ta\t1"
constexpr std::size_t SURE_DIGITS = 9;      // that any int holds

/// The number at the start of `text`, as atol reads it: blanks, a sign, digits; 0 for
/// anything else. A number beyond an int counts as the largest or smallest one.
int number_at(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r')))
        ++i;
    const bool negative = i < text.size() && text[i] == '-';
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    long value = 0;
    for (; i < text.size() && is_digit(text[i]); ++i) {
        value = std::min(value * 10 + (text[i] - '0'), 1L + INT_MAX);
    }
    return static_cast<int>(negative ? -value : std::min<long>(value, INT_MAX));
}

std::string_view from(std::string_view text, std::size_t index) {
    return index < text.size() ? text.substr(index) : std::string_view();
}

/// True for a final record; `state` is then its state.
bool read_final(std::string_view line, int& state) {
    if (!starts_with(line, "final")) return false;
    state = number_at(from(line, starts_with(line, "final: ") ? 7 : 6));
    return true;
}

/// True if the counting pass counts the line; `state` is then its number.
bool read_counted(std::string_view line, int& state) {
    if (read_final(line, state)) return true;
    if (line.empty() || !is_digit(line[0])) return false;
    state = number_at(line);
    return true;
}

/// The number on the last counted line, plus one. Lines of more than `most` bytes are
/// several.
int states_of(std::string_view text, std::size_t most) {
    // Kept on purpose: not the highest number but the last one. The last record of a
    // table names its highest state. So the lines are looked at from the back.
    for (std::size_t end = text.size(); end > 0;) {
        std::size_t begin = end - 1;
        while (begin > 0 && text[begin - 1] != '\n') --begin;
        for (std::size_t piece = begin + (end - 1 - begin) / most * most;;
             piece -= most) {
            const std::size_t size = std::min(most, end - piece);
            int state = 0;
            if (read_counted(up_to_nul(text.substr(piece, size)), state))
                return state == INT_MAX ? INT_MAX : state + 1;
            if (piece == begin) break;
        }
        end = begin;
    }
    return 1;
}

/// Splits a symbol field at its first ":".
SymbolPair split_symbols(std::string_view field) {
    const std::size_t colon = field.find(':');
    if (colon == std::string_view::npos || field.size() < 2) return {field, field};
    // Kept on purpose: "<>" is epsilon on the lower side alone. On the upper side the two
    // characters stay, and analyses show them.
    const std::string_view lower = field.substr(colon + 1);
    return {field.substr(0, colon), lower == "<>" ? std::string_view() : lower};
}

/// Numbers for texts, in the order in which they first come; from 1 on.
class TextNumbers {
public:
    TextNumbers() : slots_(1 << 10) {}

    /// The number of a text, and whether it is new. A new one must stay where it is.
    std::uint32_t number_of(std::string_view text, bool& is_new) {
        std::uint32_t& number = text.size() == 1
                                    ? bytes_[static_cast<std::uint8_t>(text[0])]
                                    : slot_for(text);
        is_new = number == 0;
        if (!is_new) return number;
        texts_.push_back(text);
        number = static_cast<std::uint32_t>(texts_.size());
        const std::uint32_t result = number;
        if (2 * texts_.size() > slots_.size()) widen();
        return result;
    }

private:
    static std::uint64_t hash_of(std::string_view text) {
        std::uint64_t hash = text.size();
        for (; !text.empty(); text.remove_prefix(std::min<std::size_t>(text.size(), 8))) {
            std::uint64_t word = 0;
            std::memcpy(&word, text.data(), std::min<std::size_t>(text.size(), 8));
            hash = (hash ^ word) * 0x9E3779B97F4A7C15u;
            hash ^= hash >> 32;
        }
        return hash;
    }

    std::uint32_t& slot_for(std::string_view text) {
        const std::size_t mask = slots_.size() - 1;
        std::size_t slot = hash_of(text) & mask;
        while (slots_[slot] != 0 && texts_[slots_[slot] - 1] != text)
            slot = (slot + 1) & mask;
        return slots_[slot];
    }

    void widen() {
        slots_.assign(2 * slots_.size(), 0);
        for (std::size_t i = 0; i < texts_.size(); ++i) {
            if (texts_[i].size() != 1)
                slot_for(texts_[i]) = static_cast<std::uint32_t>(i + 1);
        }
    }

    std::array<std::uint32_t, 256> bytes_{};  // of texts of one byte
    std::vector<std::uint32_t> slots_;        // of the others, open addressing
    std::vector<std::string_view> texts_;
};

/// Takes records as they come, and puts them in order of their states. In most texts they
/// come so: then there is nothing to be done, and their states needn't be kept.
class Collector {
public:
    Collector(std::size_t states, std::size_t bytes) {
        arcs_.begin.assign(states + 1, 0);
        arcs_.targets.reserve(bytes / USUAL_RECORD);
        arcs_.pairs.reserve(bytes / USUAL_RECORD);
        arcs_.symbols.push_back({});  // those of a final record
    }

    void final_record(std::int32_t state) {
        if (exists(state)) add(state, END_OF_WORD, ArcsByState::FINAL);
    }

    void arc(std::int32_t source, std::string_view field, std::int32_t target) {
        if (!exists(source)) return;
        bool is_new = false;
        const std::uint32_t number = numbers_.number_of(field, is_new);
        if (is_new) arcs_.symbols.push_back(split_symbols(field));
        add(source, target, number);
    }

    /// To be asked once.
    ArcsByState result() {
        std::uint32_t behind = 0;
        for (std::uint32_t& begin : arcs_.begin) begin = behind += begin;
        if (sorted_) return std::move(arcs_);
        ArcsByState result;
        result.targets.resize(arcs_.targets.size());
        result.pairs.resize(arcs_.pairs.size());
        std::vector<std::uint32_t> next = arcs_.begin;
        for (std::size_t i = 0; i < sources_.size(); ++i) {
            const std::uint32_t at = next[sources_[i]]++;
            result.targets[at] = arcs_.targets[i];
            result.pairs[at] = arcs_.pairs[i];
        }
        result.begin = std::move(arcs_.begin);
        result.symbols = std::move(arcs_.symbols);
        return result;
    }

private:
    static constexpr std::size_t USUAL_RECORD = 14;  // bytes, or a few more

    bool exists(std::int32_t state) const {
        return state >= 0 && static_cast<std::size_t>(state) < arcs_.begin.size() - 1;
    }

    void add(std::int32_t source, std::int32_t target, std::uint32_t pair) {
        const auto state = static_cast<std::uint32_t>(source);
        if (sorted_ && state < last_) remember_sources();
        if (!sorted_) sources_.push_back(state);
        last_ = state;
        ++arcs_.begin[state + 1];
        arcs_.targets.push_back(target);
        arcs_.pairs.push_back(pair);
    }

    /// Up to here they came in order, so their numbers tell them.
    void remember_sources() {
        sorted_ = false;
        sources_.reserve(arcs_.targets.capacity());
        for (std::uint32_t state = 0; state <= last_; ++state)
            sources_.insert(sources_.end(), arcs_.begin[state + 1], state);
    }

    ArcsByState arcs_;  // until the end, `begin` holds the number of arcs, one behind
    bool sorted_ = true;
    std::uint32_t last_ = 0;
    std::vector<std::uint32_t> sources_;  // if they don't come in order
    TextNumbers numbers_;
};

std::size_t tab_at(std::string_view line, std::size_t from) {
    while (from < line.size() && line[from] != '\t') ++from;
    return from;
}

/// Takes a record. What is missing in it counts as 0 or empty; but false, and nothing
/// taken, for an arc record with fewer than two TABs where that is `refused`.
bool read_record(std::string_view line, bool refused, Collector& records) {
    int state = 0;
    if (line[0] == 'f' && read_final(line, state)) {
        records.final_record(state);
        return true;
    }
    const std::size_t first = tab_at(line, 0);
    const std::size_t symbols = std::min(first + 1, line.size());
    const std::size_t second = tab_at(line, symbols);
    const bool whole = second < line.size();
    if (refused && !whole) return false;
    records.arc(number_at(line.substr(0, first)), line.substr(symbols, second - symbols),
                whole ? number_at(line.substr(second + 1)) : 0);
    return true;
}

/// One read of the file's pass, its line feed included.
void read_file_line(std::string_view line, Collector& records) {
    line = up_to_nul(line);
    if (!line.empty() && line.back() == '\n') line.remove_suffix(1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.size() >= SHORTEST_RECORD) read_record(line, false, records);
}

/// A number of a few digits in front of `mark`, which is skipped. False for anything
/// else.
bool skip_number(const char*& at, const char* end, char mark, std::int32_t& number) {
    const char* const begin = at;
    const char* const last = at + std::min<std::ptrdiff_t>(end - at, SURE_DIGITS);
    number = 0;
    for (; at != last && is_digit(*at); ++at) number = number * 10 + (*at - '0');
    return at != begin && at != end && *at++ == mark;
}

/// Takes the arc record that `text` begins with, if it is as records are: two numbers, a
/// field of printable bytes between them, a line feed. Its size, or 0 for the general
/// road: it looks at every byte only once.
std::size_t read_plain_arc(std::string_view text, Collector& records) {
    const char* at = text.data();
    const char* const end = at + std::min(text.size(), LOAD_READ);
    std::int32_t source = 0, target = 0;
    if (!skip_number(at, end, '\t', source)) return 0;
    const char* const field = at;
    while (at != end && static_cast<std::uint8_t>(*at) >= ' ') ++at;
    const auto size = static_cast<std::size_t>(at - field);
    if (size == 0 || at == end || *at++ != '\t') return 0;
    if (!skip_number(at, end, '\n', target)) return 0;
    records.arc(source, {field, size}, target);
    return static_cast<std::size_t>(at - text.data());
}

}  // namespace

int states_of_file(std::string_view text) { return states_of(text, COUNT_READ); }

int states_of_memory(std::string_view text) {
    return states_of(text, std::max<std::size_t>(text.size(), 1));
}

std::size_t trusted_states(long count, std::size_t bytes) {
    const long most = std::max(TRUSTED_STATES,
                               static_cast<long>(std::min<std::size_t>(bytes, INT_MAX)));
    return static_cast<std::size_t>(std::clamp(count, 0L, most));
}

ArcsByState arcs_of_file(std::string_view text, std::size_t states) {
    Collector records(states, text.size());
    while (!text.empty()) {
        if (const std::size_t size = read_plain_arc(text, records)) {
            text.remove_prefix(size);
            continue;
        }
        const std::size_t feed = text.substr(0, LOAD_READ).find('\n');
        const std::size_t size =
            feed == std::string_view::npos ? std::min(text.size(), LOAD_READ) : feed + 1;
        read_file_line(text.substr(0, size), records);
        text.remove_prefix(size);
    }
    return records.result();
}

ArcsByState arcs_of_memory(std::string_view text, std::size_t states) {
    Collector records(states, text.size());
    // Kept on purpose: what stands behind the last line feed is dropped, and an arc
    // record with a TAB missing ends the load. The file form does neither.
    for (std::size_t end = text.find('\n'); end != std::string_view::npos;
         end = text.find('\n')) {
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end + 1);
        if (line.size() >= SHORTEST_RECORD && !read_record(line, true, records)) break;
    }
    return records.result();
}

}  // namespace lemara
