#include "ispell.h"

#include <algorithm>
#include <map>

#include "output.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

constexpr std::size_t MOST_PROPOSALS = 10;

/// The items of a list of proposals: one with the separator inside can't be told.
std::vector<std::string> items_of(const Finding& finding) {
    std::vector<std::string> items;
    for (const std::string& form : finding.forms) {
        if (form.find(", ") == form.npos) items.push_back(form);
    }
    return items;
}

/// A NUL and each byte that is no UTF-8 separate words and count as one character,
/// whatever they would be with their neighbours.
void make_blank_what_separates(std::string& text) {
    for (std::size_t at = 0; at < text.size();) {
        const host::Character c = character_at(text, at);
        if (!c.valid || c.code == 0) text.replace(at, c.length, c.length, ' ');
        at += c.length;
    }
}

std::string line_of(const Finding& finding, std::size_t skipped) {
    const std::string place = std::to_string(finding.span.begin.code_point + skipped);
    const std::vector<std::string> items = items_of(finding);
    if (items.empty()) return "# " + finding.token + ' ' + place + '\n';
    std::string list;
    for (const std::string& item : items) list += (list.empty() ? " " : ", ") + item;
    return "& " + finding.token + ' ' + std::to_string(items.size()) + ' ' + place + ':' +
           list + '\n';
}

}  // namespace

std::string ispell_banner() {
    // The words "but really" and a known name would make Emacs ask what only that one
    // answers.
    return std::string("@(#) International Ispell Version 3.2.06 (Lemara ") + version() +
           ")\n";
}

bool is_checked_word(const Token& token) {
    if (token.foreign) return false;
    return std::any_of(token.text.begin(), token.text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        const unsigned char lower = byte | 0x20;
        return byte >= 0xC3 || (lower >= 'a' && lower <= 'z');
    });
}

std::string lowered_word(std::string_view word) {
    std::string result;
    while (!word.empty()) {
        const host::Character character = character_at(word, 0);
        const char32_t c = character.code;
        const bool capital =
            (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
        if (capital) {
            append_utf8(result, c + 0x20);
        } else {
            result += word.substr(0, character.length);  // as it is, valid or not
        }
        word.remove_prefix(character.length);
    }
    return result;
}

void IspellConversation::add(const std::string& word) {
    if (word.empty()) return;
    const auto problem = checker_.add_word({word, "", "", ""});
    if (!problem) return;
    message(problem->text());
    accepted_.insert(word);
}

std::string IspellConversation::answer_extension(std::string_view command) const {
    if (command == "l") return "eu\n";
    if (command == "wc") return "'-\n";
    return "";  // notes and settings of other checkers
}

std::string IspellConversation::answer(std::string_view line) {
    const std::string rest(line.substr(std::min<std::size_t>(1, line.size())));
    switch (line.empty() ? '\0' : line.front()) {
        case '*':
            add(rest);
            return "";
        case '&':
            add(lowered_word(rest));
            return "";
        case '@':
            if (!rest.empty()) accepted_.insert(rest);
            return "";
        case '!':
            terse_ = true;
            return "";
        case '%':
            terse_ = verbose_ = false;
            return "";
        case '`':
            verbose_ = true;
            return "";
        case '#':  // words are saved when they are added
        case '+':
        case '-':
        case '~':
            return "";
        case '^':
            return check(rest, 1);
        default:
            if (line.substr(0, 2) == "$$") return answer_extension(line.substr(2));
            return check(std::string(line), 0);
    }
}

std::string IspellConversation::check(std::string text, std::size_t skipped) {
    make_blank_what_separates(text);
    CheckOptions options;
    options.most_forms = MOST_PROPOSALS;
    options.accepted = &accepted_;
    std::map<std::size_t, Finding> findings;
    for (Finding& finding : checker_.check(text, options)) {
        findings.emplace(finding.span.begin.byte, std::move(finding));
    }
    std::string answer;
    checker_.analyze(text, Paragraphs::lines, [&](const Token& token) {
        const auto found = findings.find(token.span.begin.byte);
        if (found != findings.end()) {
            answer += line_of(found->second, skipped);
        } else if (is_checked_word(token) && !terse_) {
            answer += verbose_ ? "* " + token.text + '\n' : "*\n";
        }
        return true;
    });
    return answer + '\n';
}

}  // namespace lemara::tools
