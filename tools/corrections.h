// Corrections of a file: where, and what stands there then. Tests:
// tests/tools/corrections_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lemara::tools {

/// A stretch of a file, in bytes, and its new text.
struct Correction {
    std::size_t begin = 0, end = 0;
    std::string text;
};

/// The file with its corrections, which stand in order and apart from each other. All
/// other bytes stay as they are.
std::string corrected(std::string_view bytes, const std::vector<Correction>& corrections);

/// What the corrections change, as a unified diff without context; patch takes it.
std::string diff_of(const std::string& file, std::string_view bytes,
                    const std::vector<Correction>& corrections);

/// `form` for the place of `token`: where `token` goes on in the next line, so does
/// `form`. Empty if it can't, as it has another number of words.
std::string over_the_same_lines(std::string_view token, const std::string& form);

}  // namespace lemara::tools
