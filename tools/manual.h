// Manual pages from the command line as data. Tests: tests/tools/manual_test.py.
#pragma once

#include <string>

#include "command_tree.h"

namespace lemara::tools {

/// The page of a command, in the man macros and ASCII alone. `parent` is null for the
/// first.
std::string manual_page(const CommandNode& command, const CommandNode* parent,
                        const std::string& version);

}  // namespace lemara::tools
