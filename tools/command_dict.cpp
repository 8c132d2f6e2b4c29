// The personal dictionary: `lemara dict`.
#include <CLI/CLI.hpp>
#include <memory>

#include "checker.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "output.h"

namespace lemara::tools {

namespace {

constexpr std::size_t LARGEST_LIST = std::size_t{1} << 28;  // bytes

struct DictArguments {
    CheckerArguments checker;
    PersonalWord word;  // class and recommendations for all words
    std::vector<std::string> words;
    std::string file = "-";
};

/// Tells a word that was refused. Errors: Failure if the file is to blame.
int told(const std::optional<Problem>& problem, int status) {
    if (!problem) return status;
    if (!problem->file.empty()) throw Failure(problem->text());
    message(problem->text());
    return FINDINGS;
}

int add_words(const DictArguments& arguments) {
    const auto checker = open_checker(arguments.checker, true);
    int status = DONE;
    for (const std::string& word : arguments.words) {
        PersonalWord entry = arguments.word;
        entry.word = word;
        status = told(checker->add_word(entry), status);
    }
    return status;
}

int remove_words(const DictArguments& arguments) {
    const auto checker = open_checker(arguments.checker);
    int status = DONE;
    for (const std::string& word : arguments.words) {
        status = told(checker->remove_word(word, arguments.word.word_class), status);
    }
    return status;
}

int list_words(const DictArguments& arguments) {
    const auto checker = open_checker(arguments.checker);
    Results results;
    for (const PersonalWord& word : checker->words()) {
        std::string line = word.word + '\t' + word.word_class;
        if (!word.better.empty()) line += "\tbetter: " + word.better;
        if (!word.instead.empty()) line += "\tinstead: " + word.instead;
        results.write(line + '\n');
    }
    results.flush();
    return DONE;
}

int import_list(const DictArguments& arguments) {
    const std::string list = read_file(arguments.file, LARGEST_LIST);
    const auto checker = open_checker(arguments.checker, true);
    const ImportReport report = checker->import_words(list);
    if (report.problem) throw Failure(report.problem->text());
    for (Problem problem : report.refused) {
        if (problem.file.empty()) problem.file = shown_file(arguments.file);
        message(problem.text());
    }
    message(std::to_string(report.added) + " added, " + std::to_string(report.there) +
            " were there, " + std::to_string(report.refused.size()) + " refused");
    return report.refused.empty() ? DONE : FINDINGS;
}

int export_list(const DictArguments& arguments) {
    const auto checker = open_checker(arguments.checker);
    const std::string list = checker->export_words();
    if (arguments.file != "-") {
        write_file(arguments.file, list);
        return DONE;
    }
    Results results;
    results.write(list);
    results.flush();
    return DONE;
}

CLI::App* add_one(CLI::App& dict, int& status, const char* name, const char* about,
                  const char* footer, std::shared_ptr<DictArguments>& arguments,
                  int (*run)(const DictArguments&)) {
    CLI::App* command = dict.add_subcommand(name, about);
    arguments = std::make_shared<DictArguments>();
    add_checker_options(*command, arguments->checker);
    command->footer(footer);
    command->callback([held = arguments, run, &status] {
        if (held->checker.no_dictionary) {
            throw Failure("--no-dictionary leaves nothing to work on");
        }
        status = run(*held);
    });
    return command;
}

void add_class_option(CLI::App& command, PersonalWord& word, const char* about) {
    command.add_option("--class", word.word_class, about)->type_name("CLASS");
}

}  // namespace

void add_dict(CLI::App& app, int& status) {
    CLI::App* dict = app.add_subcommand("dict", "Keep the personal dictionary");
    dict->require_subcommand(1);
    dict->footer(
        "All tools share one dictionary, lemara/hiztegia.txt in $XDG_DATA_HOME or "
        "~/.local/share.\n\nExamples:\n"
        "  lemara dict add blog Ikoren\n"
        "  lemara dict list");
    std::shared_ptr<DictArguments> arguments;
    CLI::App* command = add_one(
        *dict, status, "add", "Add words, which are then known in all their forms",
        "Without a class a word that begins with a capital becomes a name (IZB), any "
        "other "
        "a common noun\n(ARR). Classes: ARR common noun, IZO adjective, ADI verb (in its "
        "participle), PIB person, LIB place,\nIZB other name.\n"
        "Exit status: 0 done; 1 a word was refused; 2 wrong usage, or a file that can't "
        "be "
        "used.\n\nExamples:\n"
        "  lemara dict add blog Ikoren\n"
        "  lemara dict add --class ADI klikatu",
        arguments, add_words);
    command->add_option("WORD", arguments->words, "words in their base form")->required();
    add_class_option(*command, arguments->word, "the class of all these words");
    command->add_option("--better", arguments->word.better,
                        "the better form of the word");
    command->add_option("--instead", arguments->word.instead, "the word to use instead");

    command =
        add_one(*dict, status, "remove", "Remove words",
                "Exit status: 0 done; 1 a word was not there; 2 wrong usage, or a file "
                "that can't be used.\n\nExample:\n  lemara dict remove blog",
                arguments, remove_words);
    command->add_option("WORD", arguments->words, "words in their base form")->required();
    add_class_option(*command, arguments->word, "only the entry of this class");

    add_one(*dict, status, "list", "Write the words with their classes",
            "Writes a line for each: word, TAB, class, and what is recommended in its "
            "place.\n"
            "Exit status: 0 done; 2 a file that can't be used.\n\nExample:\n"
            "  lemara dict list",
            arguments, list_words);

    command =
        add_one(*dict, status, "import", "Add the words of a list",
                "The list is UTF-8, a word a line, as other checkers keep it; a count "
                "in the first line and\nflags behind a slash are passed over.\n"
                "Exit status: 0 done; 1 a line was refused; 2 a file that can't be "
                "used.\n\nExample:\n  lemara dict import words.txt",
                arguments, import_list);
    command->add_option("FILE", arguments->file, "the list; - or none: standard input");

    command = add_one(*dict, status, "export", "Write the words as a list",
                      "Exit status: 0 done; 2 a file that can't be used.\n\nExample:\n"
                      "  lemara dict export words.txt",
                      arguments, export_list);
    command->add_option("FILE", arguments->file,
                        "the file to write; - or none: standard output");
}

}  // namespace lemara::tools
