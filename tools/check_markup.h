// The paragraph check in the engine's own mark-up. Tests: tests/tools/command_line_test.py.
#pragma once

#include <string>
#include <vector>

#include "engine.h"

namespace lemara::tools {

struct MarkupArguments {
    EngineArguments engine;
    Paragraphs paragraphs = Paragraphs::LINES;
    bool no_suggest = false;
    std::vector<std::string> files;
};

/// Writes a verdict for each token of the files; the exit status.
int check_as_markup(const MarkupArguments& arguments);

}  // namespace lemara::tools
