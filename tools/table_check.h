// What can be wrong with a table file.
// Tests: tests/tools/table_check_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lemara::tools {

/// A line of a table and what is wrong with it.
struct Defect {
    std::size_t line = 0;  ///< from 1; 0 if it concerns the whole table
    std::string text;      ///< UTF-8
};

/// All defects of a table, in the order of their lines. Each state, cycle and pair of
/// symbols is told once for each line that has a part in it.
///
/// What counts as a defect, and why, is told in docs/table-format.md.
/// Cost: linear in the text, but for sorts of lines.
std::vector<Defect> check_table(std::string_view table);

/// Figures on a table.
struct TableStats {
    std::size_t bytes = 0, lines = 0;
    std::size_t states = 0;  ///< as the loader counts them
    std::size_t arcs = 0, finals = 0;
    std::size_t upper_symbols = 0, lower_symbols = 0, pairs = 0;  ///< different ones
    std::size_t tags = 0;              ///< different upper symbols that are one tag
    std::size_t most_arcs = 0;         ///< of one state
    std::size_t longest_record = 0;    ///< bytes
    bool finite = true;                ///< the table has no cycle that can be reached
    std::size_t longest_word = 0;      ///< bytes of the lower side, if finite
    std::size_t longest_analysis = 0;  ///< bytes of the upper side, if finite
    std::size_t longest_path = 0;      ///< arcs, if finite
    double words = 0;                  ///< paths to an end of a word, if finite
};

/// The figures of a table without defects; records that can't be read are left out.
TableStats table_stats(std::string_view table);

}  // namespace lemara::tools
