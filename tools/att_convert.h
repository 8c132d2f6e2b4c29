// From AT&T text, as foma and HFST write it, to the table format.
// Tests: tests/tools/att_convert_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lemara::tools {

struct AttOptions {
    bool lower =
        false;  ///< lower the capitals of the lower side instead of refusing them
};

/// Why a network can't be written as a table.
struct Refusal {
    std::size_t line = 0;  ///< of the AT&T text, from 1; 0 if it concerns the whole
    std::string text;      ///< UTF-8
};

struct Conversion {
    std::string table;  ///< the table's text; empty if anything was refused
    std::size_t states = 0;
    std::size_t records = 0;
    std::size_t weighted_line =
        0;  ///< first line with a weight other than 0; weights are lost
    std::vector<Refusal> refusals;  ///< in the order of their lines
};

/// The table that accepts what the network in `att` accepts.
///
/// State 0 is the start on both sides; the others are numbered depth-first, and those
/// that can't be reached or lead nowhere are gone. A final record is the first of its
/// state, so that a word comes before longer ones; arcs keep their order. Of equal arcs
/// one is kept. Upper epsilon is written as nothing, lower epsilon as "<>".
///
/// Refused are, with the arc named: special symbols and flag diacritics; characters that
/// Latin-1 lacks, and control characters; an upper symbol with a ":", but for ":" on both
/// sides; a lower symbol that is "<>"; a capital on the lower side without
/// `options.lower`; cycles of empty lower symbols; records of more than 997 bytes. So is
/// a network that accepts nothing.
///
/// Cost: linear in the text, but for a sort of the arcs of each state.
Conversion table_from_att(std::string_view att, const AttOptions& options);

}  // namespace lemara::tools
