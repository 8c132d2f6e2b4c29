#include "command_tree.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

namespace lemara::tools {

namespace {

std::vector<std::string> choices_of(const CLI::Option& option) {
    // CLI11 gives validators to those alone who may change them.
    auto& own = const_cast<CLI::Option&>(option);
    std::vector<std::string> choices;
    for (int i = 0;; ++i) {
        std::string name;
        try {
            name = own.get_validator(i)->get_name();
        } catch (const CLI::OptionNotFound&) {
            return choices;
        }
        if (name.empty() || name.front() != '{') continue;
        std::istringstream list(name.substr(1, name.size() - 2));
        for (std::string choice; std::getline(list, choice, ',');)
            choices.push_back(choice);
    }
}

OptionNode node_of(const CLI::Option& option) {
    OptionNode node;
    if (option.get_positional()) {
        node.names.push_back(option.get_name(true));
        node.value = node.names[0];
    } else {
        for (const std::string& name : option.get_snames())
            node.names.push_back('-' + name);
        for (const std::string& name : option.get_lnames())
            node.names.push_back("--" + name);
        if (option.get_expected_max() > 0) node.value = option.get_type_name();
    }
    node.about = option.get_description();
    node.choices = choices_of(option);
    node.required = option.get_required();
    node.repeated = option.get_expected_max() > 1;
    return node;
}

CommandNode node_of(const CLI::App& app, std::vector<std::string> path) {
    CommandNode node;
    path.push_back(app.get_name());
    node.path = path;
    node.about = app.get_description();
    node.footer = app.get_footer();
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_group().empty()) continue;  // hidden
        (option->get_positional() ? node.arguments : node.options)
            .push_back(node_of(*option));
    }
    for (const CLI::App* command : app.get_subcommands(nullptr)) {
        if (!command->get_group().empty())
            node.commands.push_back(node_of(*command, path));
    }
    return node;
}

}  // namespace

std::string CommandNode::name(char between) const {
    std::string result;
    for (const std::string& part : path) {
        if (!result.empty()) result += between;
        result += part;
    }
    return result;
}

CommandNode tree_of(const CLI::App& app) { return node_of(app, {}); }

std::string in_short(const std::string& about) {
    const std::size_t end =
        std::min({about.find(" ("), about.find(';'), about.find(": ")});
    return about.substr(0, end);
}

}  // namespace lemara::tools
