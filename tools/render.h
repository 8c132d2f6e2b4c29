// Texts in the engine's own mark-ups, paragraph by paragraph.
// Tests: tests/tools/command_line_test.py.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "lemara/checker.h"
#include "text_reader.h"

namespace lemara::tools {

struct RenderArguments {
    Format format = Format::multext;
    bool variants = false;  ///< see Checker::render
    Encoding encoding = Encoding::UTF_8;
    Paragraphs paragraphs = Paragraphs::LINES;
    std::size_t jobs = 1;  ///< threads; 0: as many as there are cores
    std::vector<std::string> files;
};

/// Writes what the checker makes of each paragraph that is not blank, numbered from 1
/// over all files, and shows it to `see`, in UTF-8. The exit status: FINDINGS if there
/// was something that is no UTF-8, FAILED if a file could not be read.
int render_texts(const Checker& checker, const RenderArguments& arguments,
                 const std::function<bool(const std::string&)>& see);

}  // namespace lemara::tools
