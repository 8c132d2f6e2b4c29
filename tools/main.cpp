// The command `lemara`: reads the command line and hands over to a subcommand.
#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>
#include <string>

#include "commands.h"
#include "failure.h"
#include "output.h"

namespace {

using namespace lemara::tools;

/// The innermost subcommand that the command line names.
const CLI::App* named_command(const CLI::App& app) {
    const auto chosen = app.get_subcommands();
    return chosen.empty() ? &app : named_command(*chosen.back());
}

std::string full_name(const CLI::App& command) {
    const CLI::App* parent = command.get_parent();
    return parent == nullptr ? command.get_name()
                             : full_name(*parent) + ' ' + command.get_name();
}

/// What is wrong with the command line. A word that nobody asked for explains more than
/// what is missing because of it.
std::string complaint(const CLI::App& command, const CLI::ParseError& error) {
    const auto rest = command.remaining(true);
    if (rest.empty()) return error.what();
    const bool is_option = rest.front().size() > 1 && rest.front()[0] == '-';
    const bool wants_command = command.get_require_subcommand_min() > 0;
    return (is_option       ? "unknown option "
            : wants_command ? "unknown command "
                            : "unexpected argument ") +
           rest.front();
}

int tell_usage(const CLI::App& app, const CLI::ParseError& error) {
    const CLI::App* command = named_command(app);
    if (error.get_exit_code() == 0) {
        Results results;
        results.write(dynamic_cast<const CLI::CallForVersion*>(&error) != nullptr
                          ? std::string(error.what()) + '\n'
                          : help_of(*command));
        results.flush();
        return DONE;
    }
    set_tool_name(full_name(*command));
    message(complaint(*command, error) + "; see " + full_name(*command) + " --help");
    return FAILED;
}

int run(int count, char** arguments) {
    int status = DONE;
    CLI::App app("Checks, analyses and inflects Basque text.", "lemara");
    app.set_version_flag("--version", "lemara " LEMARA_VERSION,
                         "Print the version and exit");
    app.require_subcommand(1);
    app.footer(
        "Exit status: 0 done; 1 done, with findings; 2 wrong usage, or a file that can't "
        "be "
        "used.\n\n"
        "\"lemara COMMAND --help\" tells more of each command.\n\n"
        "Environment: LEMARA_TABLES names the tables, a configuration or the folder of "
        "one; "
        "XDG_DATA_HOME\n(else ~/.local/share) holds lemara/hiztegia.txt, the personal "
        "dictionary; NO_COLOR forbids colours.\n\n"
        "As ispell, for editors: -a serves the pipe protocol; -l lists the unknown words "
        "of "
        "FILEs or standard\ninput, -G the known ones, -L the lines that hold unknown "
        "ones; "
        "-vv tells the version. With them go\n-d eu, -p DICTIONARY, -i ENCODING, "
        "--config, "
        "--dictionary and --no-dictionary.\n\n"
        "Examples:\n"
        "  printf 'Kaixo, mundua!\\n' | lemara check\n"
        "  lemara analyze --format cg3 letter.txt\n"
        "  lemara suggest etxxea");
    add_check(app, status);
    add_fix(app, status);
    add_analyze(app, status);
    add_coverage(app, status);
    add_dict(app, status);
    add_doctor(app, status);
    add_valid(app, status);
    add_suggest(app, status);
    add_generate(app, status);
    add_lookup(app, status);
    add_table(app, status);
    add_help(app, status);
    app.parse_complete_callback([&] { set_tool_name(full_name(*named_command(app))); });
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        return tell_usage(app, error);
    }
    return status;
}

}  // namespace

std::string lemara::tools::help_of(const CLI::App& command) {
    const CLI::App* parent = command.get_parent();
    return command.help(parent == nullptr ? "" : full_name(*parent));
}

int main(int count, char** arguments) {
    // A closed pipe and a file that may not grow are told like any other failed write.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        if (is_ispell_command_line(count, arguments)) {
            return run_as_ispell(count, arguments);
        }
        return run(count, arguments);
    } catch (const Failure& failure) {
        message(failure.what());
    } catch (const std::bad_alloc&) {
        message("not enough memory");
    } catch (const std::exception& error) {
        message(std::string("failed: ") + error.what());
    }
    return FAILED;
}
