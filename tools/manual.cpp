#include "manual.h"

#include <cstdio>
#include <sstream>
#include <utility>

#include "text_encoding.h"

namespace lemara::tools {

namespace {

/// Text for roff, in ASCII, nothing in it a request. With `code` all signs stay what a
/// shell wants, hyphens among them.
std::string escaped(std::string_view text, bool code = false) {
    std::string result;
    while (!text.empty()) {
        const host::Character c = character_at(text, 0);
        char number[16];
        switch (c.code) {
            case '\\':
                result += "\\(rs";
                break;
            case '\'':
                result += "\\(aq";
                break;
            case '"':
                result += "\\(dq";
                break;
            case '`':
                result += "\\(ga";
                break;
            case '^':
                result += "\\(ha";
                break;
            case '~':
                result += "\\(ti";
                break;
            case '-':
                result += code ? "\\-" : "-";
                break;
            default:
                if (c.code < 0x80) {
                    result += static_cast<char>(c.code);
                } else {
                    std::snprintf(number, sizeof number, "\\[u%04X]",
                                  static_cast<unsigned>(c.code));
                    result += number;
                }
        }
        text.remove_prefix(c.length);
    }
    return result.empty() || result.front() != '.' ? result : "\\&" + result;
}

std::string section(const char* title) { return std::string(".SH ") + title + '\n'; }

std::string capitals(std::string text) {
    for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    return text;
}

/// A page's name in bold, and the number of the section behind it.
std::string reference(const CommandNode& command) {
    return "\\fB" + escaped(command.name('-'), true) + "\\fR(1)";
}

std::string synopsis(const CommandNode& command) {
    std::string line = "\\fB" + escaped(command.name(), true) + "\\fR";
    if (!command.options.empty()) line += " [\\fIOPTIONS\\fR]";
    if (!command.commands.empty()) line += " \\fICOMMAND\\fR";
    for (const OptionNode& argument : command.arguments) {
        std::string name = "\\fI" + escaped(argument.names[0], true) + "\\fR";
        if (argument.repeated) name += " ...";
        line += argument.required ? ' ' + name : " [" + name + ']';
    }
    return line + '\n';
}

std::string about_option(const OptionNode& option) {
    std::string names;
    for (const std::string& name : option.names) {
        names += (names.empty() ? "\\fB" : ", \\fB") + escaped(name, true) + "\\fR";
    }
    if (!option.value.empty() && option.value != option.names[0]) {
        names += " \\fI" + escaped(option.value, true) + "\\fR";
    }
    return ".TP\n" + names + (option.required ? " (required)" : "") + '\n' +
           escaped(option.about) + '\n';
}

/// What --help tells behind the options, put in order.
struct Footer {
    std::string description, status, examples;
};

bool begins(const std::string& text, std::string_view start) {
    return text.compare(0, start.size(), start) == 0;
}

/// Lines that begin with two blanks stay lines; others flow.
Footer footer_of(const CommandNode& command) {
    Footer footer;
    std::string* part = &footer.description;
    bool literal = false;
    const auto end_literal = [&] {
        if (std::exchange(literal, false)) *part += ".EE\n.RE\n";
    };
    std::istringstream lines(command.footer);
    for (std::string line; std::getline(lines, line);) {
        if (line == "Example:" || line == "Examples:") {
            end_literal();
            part = &footer.examples;
        } else if (line.empty()) {
            end_literal();
            part = &footer.description;
            if (!part->empty()) *part += ".PP\n";
        } else if (begins(line, "  ")) {
            if (!std::exchange(literal, true)) *part += ".PP\n.RS 4\n.EX\n";
            *part += escaped(line.substr(2), true) + '\n';
        } else {
            if (literal) {
                end_literal();
                *part += ".PP\n";
            }
            if (begins(line, "Exit status: ")) {
                part = &footer.status;
                line = line.substr(13);
            }
            *part += escaped(line) + '\n';
        }
    }
    end_literal();
    // A paragraph that never came.
    for (std::string* text : {&footer.description, &footer.status, &footer.examples}) {
        while (text->size() >= 4 && text->substr(text->size() - 4) == ".PP\n") {
            text->resize(text->size() - 4);
        }
        if (begins(*text, ".PP\n")) text->erase(0, 4);
    }
    return footer;
}

}  // namespace

std::string manual_page(const CommandNode& command, const CommandNode* parent,
                        const std::string& version) {
    const Footer footer = footer_of(command);
    // No date: the same sources make the same page.
    std::string page = ".TH " + capitals(command.name('-')) + " 1 \"\" \"lemara " +
                       version + "\" \"User Commands\"\n" + section("NAME") +
                       escaped(command.name('-'), true) + " \\- " +
                       escaped(command.about) + '\n' + section("SYNOPSIS") +
                       synopsis(command) + section("DESCRIPTION") +
                       (footer.description.empty() ? escaped(command.about) + ".\n"
                                                   : footer.description);
    if (!command.commands.empty()) {
        page += section("COMMANDS");
        for (const CommandNode& child : command.commands) {
            page += ".TP\n" + reference(child) + '\n' + escaped(child.about) + '\n';
        }
    }
    if (!command.arguments.empty()) {
        page += section("ARGUMENTS");
        for (const OptionNode& argument : command.arguments)
            page += about_option(argument);
    }
    page += section("OPTIONS");
    for (const OptionNode& option : command.options) page += about_option(option);
    if (!footer.status.empty()) page += section("EXIT STATUS") + footer.status;
    if (!footer.examples.empty()) page += section("EXAMPLES") + footer.examples;
    if (parent == nullptr) return page;
    page += section("SEE ALSO") + reference(*parent);
    for (const CommandNode& sibling : parent->commands) {
        if (sibling.path != command.path) page += ",\n" + reference(sibling);
    }
    return page + '\n';
}

}  // namespace lemara::tools
