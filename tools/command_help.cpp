// Help in other forms: `lemara help`, which --help doesn't show. The build makes the
// manual pages and completions with it.
#include <sys/stat.h>

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

#include "choices.h"
#include "command_tree.h"
#include "commands.h"
#include "completions.h"
#include "failure.h"
#include "files.h"
#include "manual.h"
#include "output.h"

namespace lemara::tools {

namespace {

enum class Shell { NONE, BASH, ZSH, FISH };

struct HelpArguments {
    std::vector<std::string> command;
    bool man = false;
    std::string man_folder;
    Shell shell = Shell::NONE;
};

/// The command that the words name, and the one above it.
const CommandNode* find_command(const CommandNode& root,
                                const std::vector<std::string>& words,
                                const CommandNode*& parent) {
    const CommandNode* found = &root;
    parent = nullptr;
    for (const std::string& word : words) {
        parent = found;
        found = nullptr;
        for (const CommandNode& child : parent->commands) {
            if (child.path.back() == word) found = &child;
        }
        if (found == nullptr) {
            throw Failure("no command " + parent->name() + ' ' + word + "; see " +
                          parent->name() + " --help");
        }
    }
    return found;
}

void write_pages(const CommandNode& command, const CommandNode* parent,
                 const std::string& folder) {
    write_file(folder + '/' + command.name('-') + ".1",
               manual_page(command, parent, LEMARA_VERSION));
    for (const CommandNode& child : command.commands)
        write_pages(child, &command, folder);
}

std::string completion_for(Shell shell, const CommandNode& root) {
    switch (shell) {
        case Shell::ZSH:
            return zsh_completion(root);
        case Shell::FISH:
            return fish_completion(root);
        default:
            return bash_completion(root);
    }
}

int help(const CLI::App& app, const HelpArguments& arguments) {
    const CommandNode root = tree_of(app);
    const CommandNode* parent = nullptr;
    const CommandNode* command = find_command(root, arguments.command, parent);
    if (!arguments.man_folder.empty()) {
        write_pages(root, nullptr, arguments.man_folder);
        return DONE;
    }
    Results results;
    if (arguments.shell != Shell::NONE) {
        results.write(completion_for(arguments.shell, root));
    } else if (arguments.man) {
        results.write(manual_page(*command, parent, LEMARA_VERSION));
    } else {
        const CLI::App* asked = &app;
        for (const std::string& word : arguments.command)
            asked = asked->get_subcommand(word);
        results.write(help_of(*asked));
    }
    results.flush();
    return DONE;
}

}  // namespace

void add_help(CLI::App& app, int& status) {
    CLI::App* command = app.add_subcommand("help", "Tell of a command");
    auto arguments = std::make_shared<HelpArguments>();
    const std::map<std::string, Shell> shells{
        {"bash", Shell::BASH}, {"zsh", Shell::ZSH}, {"fish", Shell::FISH}};
    command->group("");  // --help is the way that is shown
    command->add_option("COMMAND", arguments->command, "the command, and one of its own");
    command->add_flag("--man", arguments->man, "write its manual page");
    command
        ->add_option("--man-pages", arguments->man_folder,
                     "write all pages into a folder")
        ->type_name("FOLDER");
    command->add_option("--completion", arguments->shell, "write completions for a shell")
        ->transform(one_of(shells))
        ->type_name("SHELL");
    command->footer(
        "Examples:\n  lemara help check\n  lemara help --man dict add | man -l -\n"
        "  lemara help --completion bash > lemara.bash");
    command->callback([&app, arguments, &status] { status = help(app, *arguments); });
}

}  // namespace lemara::tools
