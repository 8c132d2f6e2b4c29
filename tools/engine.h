// The engine as the commands use it: that of a checker, with silence around it.
// Tests: tests/tools/command_line_test.py.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Lemara.h"
#include "checker.h"
#include "host/inside.h"
#include "output.h"
#include "text_reader.h"

namespace CLI {
class App;
}

namespace lemara::tools {

/// What all commands that use the engine can be told.
struct EngineArguments {
    std::string configuration;  ///< empty: the tables that came with the command
    std::string dictionary;     ///< empty: none
    Encoding encoding = Encoding::UTF_8;
};

/// Adds --config, --dictionary and --encoding.
void add_engine_options(CLI::App& command, EngineArguments& arguments);

/// A checker with the same tables. Without a dictionary that is named it uses none, so
/// that answers depend on nothing else.
CheckerArguments checker_arguments(const EngineArguments& arguments);

/// Adds --encoding.
void add_encoding_option(CLI::App& command, Encoding& encoding);

/// Adds --paragraphs and the files; without files the text is standard input.
void add_paragraph_options(CLI::App& command, Paragraphs& paragraphs,
                           std::vector<std::string>& files);

/// An engine and the channel for results. What the engine writes to standard output never
/// reaches the results.
class Session {
public:
    /// Errors: Failure for a configuration, table or dictionary that can't be used.
    explicit Session(const EngineArguments& arguments);

    const Lemara& engine() const { return host::engine_of(*checker_); }

    /// The network of that key; null if there is none.
    const Sarea* network(const std::string& key) const;

    /// Writes a result, given in the engine's encoding, or as it is.
    void write(const std::string& latin1) { results_.write(encoded(latin1, encoding_)); }
    void flush() { results_.flush(); }
    Results& results() { return results_; }

    /// What a print operation of the library wrote.
    template <class Print>
    std::string printed(Print print) {
        engine_output_.take();
        print();
        return engine_output_.take();
    }

    Encoding encoding() const { return encoding_; }

private:
    Results results_;             // made first: keeps the real standard output
    EngineOutput engine_output_;  // made before the engine and gone behind it
    Encoding encoding_;
    std::unique_ptr<Checker> checker_;
};

}  // namespace lemara::tools
