// The tables of a checker: the configuration that lists them, and loading them with
// errors as values. Tests: tests/host/Checker_open_test.cpp.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Sarea.h"
#include "lemara/checker.h"

namespace lemara::host {

constexpr std::size_t MOST_TABLES = 10;  // the engine loads no more

/// A network that a configuration lists.
struct ListedTable {
    std::string key;   ///< file name up to its first dot, without a final "PG"
    std::string path;  ///< as it is to be opened
    std::size_t line;  ///< of the configuration
};

/// Reads the configuration at `path`. A table is looked for from the working folder, then
/// beside the configuration.
std::optional<Problem> read_configuration(const std::string& path,
                                          std::vector<ListedTable>& tables);

/// Loads a network. `configuration` is named if the table is no good.
std::optional<Problem> load_network(const ListedTable& table,
                                    const std::string& configuration,
                                    std::unique_ptr<Sarea>& network);

}  // namespace lemara::host
