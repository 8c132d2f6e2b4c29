// The two files that an engine is made of, read and judged before the library sees them:
// the library would pass over what is wrong in silence, throw, or end the process. Tests:
// tests/tools/configuration_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lemara::tools {

constexpr std::size_t MOST_TABLES = 10;  // the engine loads no more

/// A network that a configuration lists.
struct ListedTable {
    std::string key;   ///< file name up to its first dot, without a final "PG"
    std::string path;  ///< as the library is to open it
    std::size_t line;  ///< of the configuration
};

/// The tables that the configuration file lists, each of them a readable file that begins
/// like a table. Relative paths are looked for in `folder`; empty means the working
/// folder. Errors: Failure "PATH:LINE: REASON", also for a configuration without
/// "eumorfo".
std::vector<ListedTable> read_configuration(const std::string& path,
                                            const std::string& folder);

/// Fails if the personal dictionary at `path` can't be used: a missing file, a line
/// without a class tag (the library would end the load there), or UTF-8 in place of
/// Latin-1. The result tells of lines that the library passes over: "PATH:LINE: REASON".
std::vector<std::string> check_dictionary(const std::string& path);

}  // namespace lemara::tools
