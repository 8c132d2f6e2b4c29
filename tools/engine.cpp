#include "engine.h"

#include <CLI/CLI.hpp>
#include <map>

#include "choices.h"
#include "failure.h"

namespace lemara::tools {

void add_engine_options(CLI::App& command, EngineArguments& arguments) {
    add_configuration_option(command, arguments.configuration);
    command
        .add_option("--dictionary", arguments.dictionary,
                    "personal dictionary; without it none")
        ->type_name("FILE");
    add_encoding_option(command, arguments.encoding);
}

void add_encoding_option(CLI::App& command, Encoding& encoding) {
    const std::map<std::string, Encoding> encodings{{"utf-8", Encoding::UTF_8},
                                                    {"latin-1", Encoding::LATIN_1}};
    command
        .add_option("--encoding", encoding,
                    "encoding of text in and out: utf-8 (default) or latin-1")
        ->transform(one_of(encodings))
        ->type_name("NAME");
}

void add_paragraph_options(CLI::App& command, Paragraphs& paragraphs,
                           std::vector<std::string>& files) {
    const std::map<std::string, Paragraphs> ends{{"lines", Paragraphs::LINES},
                                                 {"blank", Paragraphs::BLANK}};
    command
        .add_option(
            "--paragraphs", paragraphs,
            "what a paragraph is: lines (default; each line is one) or blank (blank "
            "lines stand between them)")
        ->transform(one_of(ends))
        ->type_name("NAME");
    command.add_option("FILE", files, "text files; - or none for standard input");
}

CheckerArguments checker_arguments(const EngineArguments& arguments) {
    return {arguments.configuration, arguments.dictionary, arguments.dictionary.empty()};
}

Session::Session(const EngineArguments& arguments)
    : encoding_(arguments.encoding),
      checker_(open_checker(checker_arguments(arguments))) {
    if (!arguments.dictionary.empty() && network("hp") == nullptr) {
        throw Failure(
            "no network \"hp\", which a personal dictionary needs; list a table with "
            "that file name in the configuration");
    }
}

const Sarea* Session::network(const std::string& key) const {
    const auto found = engine().sareak.find(key);
    return found == engine().sareak.end() ? nullptr : found->second;
}

}  // namespace lemara::tools
