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
    void write_raw(const std::string& bytes) { results_.write(bytes); }
    void flush() { results_.flush(); }

    /// What a print operation of the library wrote.
    template <class Print>
    std::string printed(Print print) {
        engine_output_.take();
        print();
        return engine_output_.take();
    }

    Encoding encoding() const { return encoding_; }

    /// The words of the command line; "-" or none stands for the lines of standard input.
    /// Calls `judge` with each word as typed and for the engine. True if all could be
    /// read.
    template <class Judge>
    bool for_each_word(const std::vector<std::string>& words, Judge judge);

private:
    Results results_;             // made first: keeps the real standard output
    EngineOutput engine_output_;  // made before the engine and gone behind it
    Encoding encoding_;
    std::unique_ptr<Checker> checker_;

    bool decode(const std::string& place, const std::string& typed, std::string& word);
};

template <class Judge>
bool Session::for_each_word(const std::vector<std::string>& words, Judge judge) {
    bool all_read = true;
    std::string word;
    const auto take = [&](const std::string& place, const std::string& typed) {
        if (decode(place, typed, word)) {
            judge(word);
        } else {
            all_read = false;
        }
    };
    const auto take_lines = [&] {
        LineReader lines("-");
        for (std::string line; lines.next(line);) {
            if (!line.empty()) take(lines.place(), line);
            flush();
        }
    };
    if (words.empty()) take_lines();
    for (const std::string& argument : words) {
        if (argument == "-") {
            take_lines();
        } else {
            take("command line", argument);
        }
    }
    return all_read;
}

}  // namespace lemara::tools
