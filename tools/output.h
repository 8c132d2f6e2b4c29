// The two channels of a tool: results on standard output, everything else on standard
// error. Tests: tests/tools/command_line_test.py.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lemara::tools {

/// Results, collected and written to what standard output was when the object was made.
class Results {
public:
    Results();
    ~Results();
    Results(const Results&) = delete;
    Results& operator=(const Results&) = delete;

    /// Errors: Failure "cannot write standard output: REASON".
    void write(std::string_view text);
    void flush();

private:
    int descriptor_;
    std::string waiting_;
};

/// Keeps what the engine writes to standard output out of the results: from now on
/// standard output is a buffer in memory. Make it behind Results, one in a process.
class EngineOutput {
public:
    EngineOutput();
    ~EngineOutput();
    EngineOutput(const EngineOutput&) = delete;
    EngineOutput& operator=(const EngineOutput&) = delete;

    /// What was written since the last call.
    std::string take();

private:
    int buffer_;
};

/// Sets the name that stands before every message: "lemara check".
void set_tool_name(std::string name);

/// Writes "TOOL: TEXT" and a line feed to standard error.
void message(const std::string& text);

}  // namespace lemara::tools
