// The subcommands of `lemara`, one file each.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace lemara::tools {

/// Each adds one subcommand. When the command line names it, its callback does the work,
/// writes the exit status to `status` and may throw Failure.
void add_analyze(CLI::App& app, int& status);
void add_check(CLI::App& app, int& status);
void add_coverage(CLI::App& app, int& status);
void add_dict(CLI::App& app, int& status);
void add_doctor(CLI::App& app, int& status);
void add_fix(CLI::App& app, int& status);
void add_generate(CLI::App& app, int& status);
void add_help(CLI::App& app, int& status);
void add_lookup(CLI::App& app, int& status);
void add_suggest(CLI::App& app, int& status);
void add_table(CLI::App& app, int& status);
void add_valid(CLI::App& app, int& status);

/// What --help writes.
std::string help_of(const CLI::App& command);

/// True if the command line is one of ispell's: options and no subcommand.
bool is_ispell_command_line(int count, char** arguments);

/// Answers it; the exit status. Errors: Failure.
int run_as_ispell(int count, char** arguments);

}  // namespace lemara::tools
