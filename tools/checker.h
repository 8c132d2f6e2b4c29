// The checker as the commands open it. Tests: tests/tools/command_line_test.py.
#pragma once

#include <memory>
#include <string>

#include "lemara/checker.h"

namespace CLI {
class App;
}

namespace lemara::tools {

struct CheckerArguments {
    std::string configuration;  ///< empty: the tables that came with the command
    std::string dictionary;     ///< empty: the user's own
    bool no_dictionary = false;
};

/// Adds --config.
void add_configuration_option(CLI::App& command, std::string& configuration);

/// Adds --config, --dictionary and --no-dictionary.
void add_checker_options(CLI::App& command, CheckerArguments& arguments);

/// Opens the checker; what it passes over goes to standard error. Errors: Failure, also
/// for a dictionary that is named and isn't there, unless `may_be_new`.
std::unique_ptr<Checker> open_checker(const CheckerArguments& arguments,
                                      bool may_be_new = false);

}  // namespace lemara::tools
