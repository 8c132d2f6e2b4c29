// The records of a table file, read as the loader reads them.
// Tests: tests/tools/table_check_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace lemara::tools {

/// A pair of symbols; views into the table's text.
struct SymbolPair {
    std::string_view upper, lower;
};

/// The two sides of a symbol field.
SymbolPair split_field(std::string_view field);

/// An arc whose ends are positions in TableText::names.
struct TableArc {
    std::uint32_t source, target;
    std::uint32_t pair;  ///< position in TableText::pairs
    std::uint32_t line;
};

struct TableFinal {
    std::uint32_t state, line;
};

/// A line that is not a record, and why.
struct BadLine {
    std::size_t line;
    std::string text;
};

/// A table's records. The text must outlive it.
struct TableText {
    explicit TableText(std::string_view text);

    std::vector<TableArc> arcs;
    std::vector<TableFinal> finals;
    std::vector<SymbolPair> pairs;
    std::vector<std::uint64_t> names;  ///< state numbers of the file; the first one is 0
    std::vector<BadLine> bad_lines;
    std::uint64_t last_counted = 0;  ///< the number that gives the loader its count
    std::size_t last_counted_line = 0;
    std::size_t lines = 0;
    std::size_t longest_line = 0;  ///< bytes

private:
    std::unordered_map<std::uint64_t, std::uint32_t> states_;
    std::unordered_map<std::string_view, std::uint32_t> fields_;

    void read_line(std::string_view record);
    void read_final(std::string_view number);
    void read_arc(std::string_view record);
    bool read_state(std::string_view text, const char* what, std::uint64_t& number);
    std::uint32_t state_of(std::uint64_t name);
    std::uint32_t pair_of(std::string_view field);
    void count(std::uint64_t name);
    void reject(std::string text);
};

}  // namespace lemara::tools
