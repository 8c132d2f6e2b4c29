// The questions of `lemara fix`, a line each, on the terminal. Tests:
// tests/tools/fix_test.py.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "files.h"
#include "lemara/checker.h"

namespace lemara::tools {

enum class Decision {
    REPLACE,
    ACCEPT,     ///< it may stay
    NEXT_FILE,  ///< leave the rest of this file as it is
    STOP,       ///< ask no more
    ABANDON,    ///< ask no more, and forget what was decided in this file
};

struct Answer {
    Decision decision = Decision::ACCEPT;
    std::string text;  ///< with REPLACE
};

/// Asks on standard error and reads from standard input.
class FixDialogue {
public:
    explicit FixDialogue(Checker& checker);

    /// True for what the user has accepted or added in the meantime.
    bool is_settled(const Finding& finding) const;

    /// What is to become of a finding at its place in `text`.
    Answer ask(const std::string& file, const Finding& finding, std::string_view text);

private:
    Checker& checker_;
    LineReader lines_{"-"};
    bool coloured_;
    std::set<std::string> accepted_;
    bool added_ = false;

    bool read(const std::string& prompt, std::string& line);
    bool type_replacement(std::string& text);
    bool add_to_dictionary(const std::string& token);
};

}  // namespace lemara::tools
