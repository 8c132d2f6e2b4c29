// What is found where: `lemara doctor`.
#include <sys/stat.h>

#include <CLI/CLI.hpp>
#include <memory>

#include "checker.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "lemara/compiled_table.h"
#include "output.h"

namespace lemara::tools {

namespace {

std::string row(const std::string& name, const std::string& value) {
    constexpr std::size_t WIDTH = 16;
    std::string line = name;
    line.resize(WIDTH, ' ');
    return line + value + '\n';
}

std::string about_table(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return path + " (gone)";
    return path + " (" +
           (is_compiled_table(read_start(path, 8)) ? "compiled, " : "text, ") +
           std::to_string(status.st_size) + " bytes)";
}

std::string about_dictionary(const Checker& checker) {
    const std::string path = checker.dictionary();
    if (path.empty()) return "none: neither XDG_DATA_HOME nor HOME is set";
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return path + " (not made yet)";
    return path + " (" + std::to_string(checker.words().size()) + " words)";
}

void tell_search(Results& results, const std::string& configuration) {
    std::vector<std::string> looked;
    find_configuration(&looked);
    for (const std::string& place : looked) {
        results.write(row(place == looked.front() ? "looked at" : "",
                          place + (place == configuration ? "  <- taken" : "")));
    }
}

int examine(const CheckerArguments& arguments) {
    Results results;
    results.write(row("command", LEMARA_VERSION));
    results.write(row("library", version()));
    if (arguments.configuration.empty()) tell_search(results, find_configuration());
    results.flush();
    const auto checker = open_checker(arguments, true);  // tells what is wrong
    results.write(row("configuration", checker->configuration()));
    for (const std::string& table : checker->tables()) {
        results.write(row("table", about_table(table)));
    }
    results.write(row("dictionary", arguments.no_dictionary
                                        ? "none, as asked for"
                                        : about_dictionary(*checker)));
    const bool works = checker->valid("etxea");
    results.write(row("check", works ? "\"etxea\" is known: all is well"
                                     : "\"etxea\" is unknown: these tables are not the "
                                       "Basque lexicon"));
    results.flush();
    return works ? DONE : FINDINGS;
}

}  // namespace

void add_doctor(CLI::App& app, int& status) {
    CLI::App* command =
        app.add_subcommand("doctor", "Tell what is found where, and whether it works");
    auto arguments = std::make_shared<CheckerArguments>();
    add_checker_options(*command, *arguments);
    command->footer(
        "Exit status: 0 all is well; 1 the tables don't know a common word; 2 something "
        "can't be used.\n\nExample:\n  lemara doctor");
    command->callback([arguments, &status] { status = examine(*arguments); });
}

}  // namespace lemara::tools
