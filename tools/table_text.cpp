#include "table_text.h"

#include <algorithm>
#include <charconv>

#include "table_format.h"
#include "text_encoding.h"

namespace lemara::tools {

SymbolPair split_field(std::string_view field) {
    const std::size_t colon = field.find(':');
    if (colon == field.npos || field.size() < 2) return {field, field};
    const std::string_view lower = field.substr(colon + 1);
    return {field.substr(0, colon), lower == EPSILON ? std::string_view() : lower};
}

TableText::TableText(std::string_view text) {
    state_of(0);
    const bool unended = !text.empty() && text.back() != '\n';
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view record = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!record.empty() && record.back() == '\r') record.remove_suffix(1);
        ++lines;
        longest_line = std::max(longest_line, record.size());
        read_line(record);
    }
    if (unended)
        reject("no line feed at the end; the enciphered form would lose this line");
}

void TableText::read_line(std::string_view record) {
    if (record.size() > LONGEST_RECORD) {
        reject("the line has " + std::to_string(record.size()) +
               " bytes; the loader takes " + std::to_string(LONGEST_RECORD));
    }
    if (record.find('\0') != record.npos) {
        reject("a NUL byte ends the line for the loader");
        return;
    }
    if (record.size() < SHORTEST_RECORD) {
        reject("line of " + std::to_string(record.size()) +
               " bytes; the loader passes over lines shorter than " +
               std::to_string(SHORTEST_RECORD));
    } else if (record.substr(0, FINAL_RECORD.size()) == FINAL_RECORD) {
        read_final(record.substr(FINAL_RECORD.size()));
    } else if (record.substr(0, 5) == "final") {
        read_final(record.substr(std::min<std::size_t>(6, record.size())));
    } else {
        read_arc(record);
    }
}

void TableText::read_final(std::string_view number) {
    std::uint64_t name = 0;
    if (!read_state(number, "final state", name)) return;
    count(name);
    finals.push_back({state_of(name), static_cast<std::uint32_t>(lines)});
}

void TableText::read_arc(std::string_view record) {
    const std::size_t first = record.find('\t');
    const std::size_t second =
        first == record.npos ? first : record.find('\t', first + 1);
    if (second == record.npos) {
        return reject(
            "not a record: an arc is SOURCE, SYMBOLS, TARGET with a TAB between them");
    }
    std::uint64_t source = 0, target = 0;
    const std::string_view field = record.substr(first + 1, second - first - 1);
    if (!read_state(record.substr(0, first), "source state", source)) return;
    count(source);
    if (!read_state(record.substr(second + 1), "target state", target)) return;
    if (field.empty()) reject("no symbols; the arc reads and writes nothing");
    const std::uint32_t from = state_of(source), to = state_of(target);
    arcs.push_back({from, to, pair_of(field), static_cast<std::uint32_t>(lines)});
}

bool TableText::read_state(std::string_view text, const char* what,
                           std::uint64_t& number) {
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        reject(std::string("bad number for the ") + what + ": \"" + printable(text) +
               '"');
        return false;
    }
    if (number > HIGHEST_STATE) {
        reject(std::string("the number of the ") + what +
               " is too high: " + std::string(text));
        return false;
    }
    return true;
}

std::uint32_t TableText::state_of(std::uint64_t name) {
    const auto [at, is_new] =
        states_.emplace(name, static_cast<std::uint32_t>(names.size()));
    if (is_new) names.push_back(name);
    return at->second;
}

std::uint32_t TableText::pair_of(std::string_view field) {
    const auto [at, is_new] =
        fields_.emplace(field, static_cast<std::uint32_t>(pairs.size()));
    if (is_new) pairs.push_back(split_field(field));
    return at->second;
}

void TableText::count(std::uint64_t name) {
    last_counted = name;
    last_counted_line = lines;
}

void TableText::reject(std::string text) {
    bad_lines.push_back({lines, std::move(text)});
}

}  // namespace lemara::tools
