// The command line as data: what manual pages and completions are made of, so that they
// tell what --help tells.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace lemara::tools {

struct OptionNode {
    std::vector<std::string>
        names;          ///< "-h", "--help"; of an argument its one name, "FILE"
    std::string value;  ///< "FILE"; empty for a flag
    std::string about;
    std::vector<std::string> choices;  ///< what the value may be, if only that
    bool required = false, repeated = false;

    /// True if a value is the name of a file.
    bool is_file() const { return value == "FILE" || value == "IN" || value == "OUT"; }
};

struct CommandNode {
    std::vector<std::string> path;  ///< "lemara", "table", "check"
    std::string about;
    std::string footer;  ///< what --help tells behind the options
    std::vector<OptionNode> options, arguments;
    std::vector<CommandNode> commands;

    std::string name(char between = ' ') const;  ///< "lemara table check"
};

/// Everything that --help shows, of all commands.
CommandNode tree_of(const CLI::App& app);

/// The beginning of a description, as far as a menu needs it: without a remark in
/// brackets and what stands behind a semicolon or colon.
std::string in_short(const std::string& about);

}  // namespace lemara::tools
