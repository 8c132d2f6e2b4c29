// What shells need to complete the command line, made from it as data. Tests:
// tests/tools/completions_test.py.
#pragma once

#include <string>

#include "command_tree.h"

namespace lemara::tools {

std::string bash_completion(const CommandNode& root);
std::string zsh_completion(const CommandNode& root);
std::string fish_completion(const CommandNode& root);

}  // namespace lemara::tools
