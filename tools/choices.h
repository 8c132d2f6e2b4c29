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
    std::string list;
    for (const auto& entry : names) list += (list.empty() ? "" : ",") + entry.first;
    CLI::CheckedTransformer choice(names, CLI::ignore_case);
    choice.description("").name('{' + list + '}');
    return choice;
}

}  // namespace lemara::tools
