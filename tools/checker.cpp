#include "checker.h"

#include <CLI/CLI.hpp>

#include "failure.h"
#include "files.h"
#include "output.h"

namespace lemara::tools {

void add_configuration_option(CLI::App& command, std::string& configuration) {
    command
        .add_option(
            "--config", configuration,
            "configuration file that lists the tables, one a line; without it the "
            "tables that came with lemara")
        ->type_name("FILE");
}

void add_checker_options(CLI::App& command, CheckerArguments& arguments) {
    add_configuration_option(command, arguments.configuration);
    command
        .add_option("--dictionary", arguments.dictionary,
                    "personal dictionary; without it lemara/hiztegia.txt in "
                    "$XDG_DATA_HOME or ~/.local/share")
        ->type_name("FILE");
    command.add_flag("--no-dictionary", arguments.no_dictionary,
                     "use no personal dictionary");
}

std::unique_ptr<Checker> open_checker(const CheckerArguments& arguments,
                                      bool may_be_new) {
    Settings settings;
    settings.configuration = arguments.configuration;
    settings.dictionary = arguments.dictionary;
    settings.use_dictionary = !arguments.no_dictionary;
    if (!arguments.dictionary.empty() && !may_be_new)
        require_regular(arguments.dictionary);
    Checker::Opened opened = Checker::open(settings);
    if (opened.checker == nullptr) {
        throw Failure(opened.problems.empty() ? "cannot open the checker"
                                              : opened.problems.back().text());
    }
    for (const Problem& problem : opened.problems) message(problem.text());
    return std::move(opened.checker);
}

}  // namespace lemara::tools
