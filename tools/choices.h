// Options that take one of several names.
#pragma once

#include <CLI/CLI.hpp>
#include <map>
#include <string>

namespace lemara::tools {

/// For an option's `transform`: takes one of the names, in any case. Its own name is
/// "{a,b}", which is where command_tree finds the names again; help texts tell them in
/// words.
template <class T>
CLI::Validator one_of(const std::map<std::string, T>& names) {
    std::string list, told;
    for (const auto& entry : names) {
        list += (list.empty() ? "" : ",") + entry.first;
        told += (told.empty() ? "" : ", ") + entry.first;
    }
    const auto choose = [names, told](std::string& value) -> std::string {
        const auto found = names.find(CLI::detail::to_lower(value));
        if (found == names.end()) return value + " is none of " + told;
        value = std::to_string(
            static_cast<int>(found->second));  // as the parser reads an enum
        return "";
    };
    CLI::Validator choice(choose, "");
    choice.name('{' + list + '}');
    return choice;
}

}  // namespace lemara::tools
