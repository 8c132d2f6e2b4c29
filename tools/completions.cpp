#include "completions.h"

#include <functional>

namespace lemara::tools {

namespace {

void for_each_command(const CommandNode& command,
                      const std::function<void(const CommandNode&)>& visit) {
    visit(command);
    for (const CommandNode& child : command.commands) for_each_command(child, visit);
}

template <class List, class Show>
std::string joined(const List& list, const char* between, Show show) {
    std::string result;
    for (const auto& item : list) {
        if (!result.empty()) result += between;
        result += show(item);
    }
    return result;
}

std::string joined(const std::vector<std::string>& list, const char* between) {
    return joined(list, between, [](const std::string& item) { return item; });
}

std::vector<std::string> option_names(const CommandNode& command) {
    std::vector<std::string> names;
    for (const OptionNode& option : command.options) {
        names.insert(names.end(), option.names.begin(), option.names.end());
    }
    return names;
}

std::vector<std::string> command_names(const CommandNode& command) {
    std::vector<std::string> names;
    for (const CommandNode& child : command.commands) names.push_back(child.path.back());
    return names;
}

bool takes_files(const CommandNode& command) {
    for (const OptionNode& argument : command.arguments) {
        if (argument.is_file()) return true;
    }
    return false;
}

/// For a shell, between single quotes; `more` are signs that want a backslash.
std::string quoted(const std::string& text, const std::string& more = "") {
    std::string result = "'";
    for (const char c : text) {
        if (more.find(c) != more.npos) result += '\\';
        if (c == '\'') {
            result += "'\\''";
        } else {
            result += c;
        }
    }
    return result + '\'';
}

std::string identifier(const CommandNode& command) { return '_' + command.name('_'); }

}  // namespace

std::string bash_completion(const CommandNode& root) {
    // `command` becomes the longest command that the line names. A word behind an option
    // may be its value, which names no command.
    std::string commands, values, words;
    for_each_command(root, [&](const CommandNode& command) {
        for (const CommandNode& child : command.commands) {
            commands += (commands.empty() ? "" : "|") + quoted(child.name());
        }
        for (const OptionNode& option : command.options) {
            if (option.value.empty()) continue;
            values += "        " +
                      joined(option.names, "|",
                             [&](const std::string& name) {
                                 return quoted(command.name() + ' ' + name);
                             }) +
                      ") " +
                      (option.is_file()
                           ? "_lemara_files"
                           : "_lemara_words " + quoted(joined(option.choices, " "))) +
                      "; return ;;\n";
        }
        std::string shown = joined(command_names(command), " ");
        words += "        " + quoted(command.name()) +
                 ") options=" + quoted(joined(option_names(command), " ")) +
                 " words=" + quoted(shown) + (takes_files(command) ? " files=yes" : "") +
                 " ;;\n";
    });
    const std::string name = root.path.back();
    return "# bash completion for " + name + ". Made by \"" + name +
           " help --completion bash\".\n"
           "_lemara_words() { mapfile -t COMPREPLY < <(compgen -W \"$1\" -- \"$cur\"); "
           "}\n"
           "_lemara_files() {\n"
           "    compopt -o filenames 2>/dev/null\n"
           "    mapfile -t COMPREPLY < <(compgen -f -- \"$cur\")\n"
           "}\n"
           "_" +
           name +
           "() {\n"
           "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}\n"
           "    local command=" +
           name +
           " options= words= files= i\n"
           "    COMPREPLY=()\n"
           "    # bash takes --option=value for three words\n"
           "    if [[ $cur == = ]]; then\n"
           "        cur=\n"
           "    elif [[ $prev == = ]] && ((COMP_CWORD > 1)); then\n"
           "        prev=${COMP_WORDS[COMP_CWORD-2]}\n"
           "    fi\n"
           "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
           "        case \"$command ${COMP_WORDS[i]}\" in\n"
           "            " +
           commands +
           ") command+=\" ${COMP_WORDS[i]}\" ;;\n"
           "        esac\n"
           "    done\n"
           "    case \"$command $prev\" in\n" +
           values +
           "    esac\n"
           "    case \"$command\" in\n" +
           words +
           "    esac\n"
           "    if [[ $cur == -* ]]; then\n"
           "        _lemara_words \"$options\"\n"
           "    elif [[ -n $words ]]; then\n"
           "        _lemara_words \"$words\"\n"
           "    elif [[ -n $files ]]; then\n"
           "        _lemara_files\n"
           "    fi\n"
           "}\n"
           "complete -F _" +
           name + ' ' + name + '\n';
}

namespace {

/// What zsh is to offer for a value. With nothing at all it would offer no options either
/// where a value may stand.
std::string zsh_action(const OptionNode& option) {
    if (!option.choices.empty()) return '(' + joined(option.choices, " ") + ')';
    return option.is_file() ? "_files" : "()";
}

std::string zsh_option(const OptionNode& option) {
    std::string about = '[' + in_short(option.about) + ']';
    if (!option.value.empty()) about += ':' + option.value + ':' + zsh_action(option);
    const std::string text = quoted(about);
    if (option.names.size() == 1) return quoted(option.names[0]) + text;
    return "'(" + joined(option.names, " ") + ")'{" + joined(option.names, ",") + '}' +
           text;
}

std::string zsh_function(const CommandNode& command) {
    std::string body = identifier(command) + "() {\n";
    const auto option_lines = [&] {
        return joined(command.options, "", [](const OptionNode& option) {
            return " \\\n    " + zsh_option(option);
        });
    };
    if (command.commands.empty()) {
        body += "  _arguments -s -S" + option_lines();
        std::size_t place = 0;
        for (const OptionNode& argument : command.arguments) {
            const std::string place_of =
                argument.repeated ? "*" : std::to_string(++place);
            body += " \\\n    " + quoted(place_of + ':' + argument.names[0] + ':' +
                                         zsh_action(argument));
        }
        return body + "\n}\n\n";
    }
    body +=
        "  local curcontext=$curcontext state line\n  typeset -A opt_args\n"
        "  _arguments -C" +
        option_lines() +
        " \\\n    '1: :->command' \\\n    '*:: :->rest'\n"
        "  case $state in\n    command)\n      local -a commands=(\n";
    for (const CommandNode& child : command.commands) {
        body += "        " + quoted(child.path.back() + ':' + child.about) + '\n';
    }
    body +=
        "      )\n      _describe -t commands command commands\n      ;;\n    rest)\n"
        "      case $line[1] in\n";
    for (const CommandNode& child : command.commands) {
        body += "        " + child.path.back() + ") " + identifier(child) + " ;;\n";
    }
    return body + "      esac\n      ;;\n  esac\n}\n\n";
}

}  // namespace

std::string zsh_completion(const CommandNode& root) {
    const std::string name = root.path.back();
    std::string text =
        "#compdef " + name + "\n# Made by \"" + name + " help --completion zsh\".\n\n";
    for_each_command(root,
                     [&](const CommandNode& command) { text += zsh_function(command); });
    return text + identifier(root) + " \"$@\"\n";
}

std::string fish_completion(const CommandNode& root) {
    const std::string name = root.path.back();
    std::string commands;
    for_each_command(root, [&](const CommandNode& command) {
        for (const CommandNode& child : command.commands)
            commands += ' ' + quoted(child.name());
    });
    std::string text = "# Made by \"" + name +
                       " help --completion fish\".\n"
                       "# True on a line that names that command, and none below it.\n"
                       "function __lemara_at\n"
                       "    set -l commands" +
                       commands +
                       "\n"
                       "    set -l command " +
                       name +
                       "\n"
                       "    for word in (commandline -opc)[2..-1]\n"
                       "        contains -- \"$command $word\" $commands\n"
                       "        and set command \"$command $word\"\n"
                       "    end\n"
                       "    test \"$command\" = \"$argv\"\n"
                       "end\n"
                       "complete -c " +
                       name + " -f\n";
    for_each_command(root, [&](const CommandNode& command) {
        const std::string condition = "__lemara_at " + command.name();
        const std::string start =
            "complete -c " + name + " -n " + quoted(condition, "\\") + ' ';
        for (const CommandNode& child : command.commands) {
            text += start + "-a " + child.path.back() + " -d " +
                    quoted(child.about, "\\") + '\n';
        }
        if (takes_files(command)) text += start + "-F\n";
        for (const OptionNode& option : command.options) {
            text += start;
            for (const std::string& option_name : option.names) {
                const bool is_long = option_name.compare(0, 2, "--") == 0;
                text += is_long ? "-l " + option_name.substr(2) + ' '
                                : "-s " + option_name.substr(1) + ' ';
            }
            if (!option.value.empty()) text += option.is_file() ? "-r -F " : "-x ";
            if (!option.choices.empty()) {
                text += "-a " + quoted(joined(option.choices, " ")) + ' ';
            }
            text += "-d " + quoted(in_short(option.about), "\\") + '\n';
        }
    });
    return text;
}

}  // namespace lemara::tools
