// Findings as text for people and as the formats that other programs read. All UTF-8.
// Tests: tests/tools/check_formats_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "lemara/checker.h"

namespace lemara::tools {

enum class CheckFormat { TEXT, JSON, JSONL, SARIF, GITHUB };

/// What stands in front of all findings, and behind them.
std::string report_head(CheckFormat format, const std::string& version);
std::string report_tail(CheckFormat format);

/// One finding in a file; `first` tells that none stands in front of it.
std::string report_entry(CheckFormat format, const std::string& file,
                         const Finding& finding, bool first);

/// One finding with its line, for a terminal: the message, the line cut to `width`
/// columns around the word, and a mark below it. `before` and `after` are what stands
/// around the word on its line, or as much of it as may be shown.
std::string with_its_line(const std::string& file, const Finding& finding,
                          std::string_view before, std::string_view after,
                          std::size_t width, bool coloured);

constexpr std::size_t SIDE_MARGINS =
    4;  // columns that with_its_line needs beyond `width`

/// What stands on the line of a text before the byte `at`, and from it on: some hundred
/// bytes at most, in whole characters.
std::string_view before_on_line(std::string_view text, std::size_t at);
std::string_view after_on_line(std::string_view text, std::size_t at);

}  // namespace lemara::tools
