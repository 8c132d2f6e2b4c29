#include "fix_dialogue.h"

#include <unistd.h>

#include "check_formats.h"
#include "ispell.h"
#include "terminal.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

constexpr const char* HELP =
    "  NUMBER  take that form          r  type another one\n"
    "  a  leave the word as it is      A  leave it wherever it stands, until the end\n"
    "  d  add it to the personal dictionary\n"
    "  s  leave the rest of this file as it is\n"
    "  q  write what is done, and stop\n"
    "  x  stop, and leave this file as it was\n";

void show(const std::string& text) { write_all(STDERR_FILENO, text); }

std::string trimmed(const std::string& line) {
    const std::size_t first = line.find_first_not_of(" \t");
    if (first == line.npos) return "";
    return line.substr(first, line.find_last_not_of(" \t") - first + 1);
}

/// The number of one of `count` forms that a line names; 0 for anything else.
std::size_t number_in(const std::string& line, std::size_t count) {
    if (line.empty() || line.size() > 3) return 0;
    if (line.find_first_not_of("0123456789") != line.npos) return 0;
    const std::size_t number = std::stoul(line);
    return number <= count ? number : 0;
}

}  // namespace

FixDialogue::FixDialogue(Checker& checker)
    : checker_(checker), coloured_(has_terminal_colours()) {}

bool FixDialogue::is_settled(const Finding& finding) const {
    if (accepted_.count(finding.token) > 0 ||
        accepted_.count(lowered_word(finding.token)) > 0) {
        return true;
    }
    return added_ && checker_.valid(finding.token);
}

bool FixDialogue::read(const std::string& prompt, std::string& line) {
    show(prompt);
    if (!lines_.next(line)) {
        show("\n");
        return false;
    }
    line = trimmed(line);
    return true;
}

/// Asks for a text; false if there is none.
bool FixDialogue::type_replacement(std::string& text) {
    if (!read("replacement (empty: none): ", text) || text.empty()) return false;
    if (find_invalid_utf8(text) != text.npos) {
        show("that is no UTF-8\n");
        return false;
    }
    if (checker_.valid(text)) return true;
    std::string sure;
    return read('"' + printable(text) + "\" has findings, too; take it? (y/n): ", sure) &&
           sure == "y";
}

/// True if the token is known then.
bool FixDialogue::add_to_dictionary(const std::string& token) {
    std::string word;
    if (!read("its base form [" + printable(token) + "]: ", word)) return false;
    if (word.empty()) word = token;
    if (const auto problem = checker_.add_word({word, "", "", ""})) {
        show(problem->text() + '\n');
        return false;
    }
    added_ = true;
    if (checker_.valid(token)) return true;
    show("added, but \"" + printable(token) + "\" is none of its forms\n");
    return false;
}

Answer FixDialogue::ask(const std::string& file, const Finding& finding,
                        std::string_view text) {
    std::string question =
        '\n' + with_its_line(file, finding, before_on_line(text, finding.span.begin.byte),
                             after_on_line(text, finding.span.end.byte),
                             width_of_terminal(STDERR_FILENO) - SIDE_MARGINS, coloured_);
    for (std::size_t i = 0; i < finding.forms.size(); ++i) {
        question += "  " + std::to_string(i + 1) + "  " + finding.forms[i] + '\n';
    }
    show(question);
    const std::string prompt = std::string(finding.forms.empty() ? "" : "number, ") +
                               "r, a, A, d, s, q, x or ?: ";
    for (std::string line; read(prompt, line);) {
        if (const std::size_t number = number_in(line, finding.forms.size())) {
            return {Decision::REPLACE, finding.forms[number - 1]};
        }
        std::string typed;
        if (line == "r" && type_replacement(typed)) return {Decision::REPLACE, typed};
        if (line == "a") return {Decision::ACCEPT, ""};
        if (line == "A") {
            accepted_.insert(finding.token);
            return {Decision::ACCEPT, ""};
        }
        if (line == "d" && add_to_dictionary(finding.token))
            return {Decision::ACCEPT, ""};
        if (line == "s") return {Decision::NEXT_FILE, ""};
        if (line == "q") return {Decision::STOP, ""};
        if (line == "x") return {Decision::ABANDON, ""};
        if (line != "r" && line != "d" && !line.empty()) show(HELP);
    }
    return {Decision::STOP, ""};  // the end of the input
}

}  // namespace lemara::tools
