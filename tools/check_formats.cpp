#include "check_formats.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "lemara/json.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

struct KindWords {
    Kind kind;
    const char* title;   // of the rule
    const char* remark;  // behind the message, with forms and without
    const char* remark_without;
    const char* level;    // SARIF's
    const char* command;  // of a GitHub workflow
    const char* colour;   // of the word on a terminal
};

constexpr const char* RED = "\033[1;31m";
constexpr const char* YELLOW = "\033[1;33m";
constexpr const char* GREEN = "\033[32m";
constexpr const char* BOLD = "\033[1m";
constexpr const char* PLAIN = "\033[0m";

constexpr KindWords KIND_WORDS[] = {
    {Kind::unknown, "Unknown word", "", " (unknown)", "warning", "warning", RED},
    {Kind::better_form, "There is a better form", " (better form)",
     " (has a better form)", "warning", "warning", YELLOW},
    {Kind::use_instead, "Another word is recommended", " (use instead)",
     " (not recommended)", "note", "notice", YELLOW},
    {Kind::unit_start, "Word of a fixed expression alone", " (only with other words)",
     " (only with other words)", "warning", "warning", RED},
    {Kind::foreign, "Foreign word", " (foreign)", " (foreign)", "note", "notice", YELLOW},
};

const KindWords& words_of(Kind kind) {
    for (const KindWords& words : KIND_WORDS) {
        if (words.kind == kind) return words;
    }
    return KIND_WORDS[0];
}

/// A token on one line: line ends inside a unit of several words become blanks.
std::string on_one_line(const std::string& token) {
    std::string result;
    for (std::size_t i = 0; i < token.size(); ++i) {
        if (token[i] == '\r' && i + 1 < token.size() && token[i + 1] == '\n') continue;
        result +=
            token[i] == '\n' || token[i] == '\r' || token[i] == '\t' ? ' ' : token[i];
    }
    return printable(result);
}

std::string joined(const std::vector<std::string>& forms) {
    std::string result;
    for (const std::string& form : forms) result += (result.empty() ? "" : ", ") + form;
    return result;
}

std::string message_of(const Finding& finding, const char* word_colour,
                       const char* form_colour, const char* plain) {
    const KindWords& words = words_of(finding.kind);
    const std::string word = word_colour + on_one_line(finding.token) + plain;
    if (finding.forms.empty()) return word + words.remark_without;
    return word + " \xE2\x86\x92 " + form_colour + joined(finding.forms) + plain +
           words.remark;
}

std::string message_of(const Finding& finding) { return message_of(finding, "", "", ""); }

std::string place_of(const std::string& file, const Finding& finding) {
    return printable(file) + ':' + std::to_string(finding.span.line) + ':' +
           std::to_string(finding.span.column) + ':';
}

struct End {
    std::size_t line, column;  // the column is that behind the last character
};

std::size_t characters_in(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

/// A unit of several words may go on in the next line.
End end_of(const Finding& finding) {
    const std::string& token = finding.token;
    const Span& span = finding.span;
    End end{span.line, span.column + span.end.code_point - span.begin.code_point};
    for (std::size_t i = 0; i < token.size(); ++i) {
        const bool pair =
            token[i] == '\r' && i + 1 < token.size() && token[i + 1] == '\n';
        if (pair || (token[i] != '\n' && token[i] != '\r')) continue;
        ++end.line;
        end.column = 1 + characters_in(std::string_view(token).substr(i + 1));
    }
    return end;
}

std::string json_member(const char* name, std::size_t value) {
    return '"' + std::string(name) + "\":" + std::to_string(value);
}

std::string json_with_file(const std::string& file, const Finding& finding) {
    return "{\"file\":" + json_string(file) + ',' + to_json(finding).substr(1);
}

/// A file name as a relative or absolute URI: all but plain characters escaped.
std::string uri_of(const std::string& file) {
    constexpr std::string_view PLAIN_SIGNS = "-._~/";
    std::string uri;
    for (const char c : file) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                           (c >= '0' && c <= '9') ||
                           PLAIN_SIGNS.find(c) != std::string::npos;
        char escape[8];
        std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned char>(c));
        uri += plain ? std::string(1, c) : escape;
    }
    return uri;
}

std::string sarif_head(const std::string& version) {
    std::string rules;
    for (const KindWords& words : KIND_WORDS) {
        rules += (rules.empty() ? "" : ",") + std::string("{\"id\":") +
                 json_string(name_of(words.kind)) +
                 ",\"shortDescription\":{\"text\":" + json_string(words.title) +
                 "},\"defaultConfiguration\":{\"level\":" + json_string(words.level) +
                 "}}";
    }
    return "{\"$schema\":\"https://json.schemastore.org/sarif-2.1.0.json\","
           "\"version\":\"2.1.0\",\"runs\":[{\"tool\":{\"driver\":{\"name\":\"lemara\","
           "\"version\":" +
           json_string(version) + ",\"rules\":[" + rules +
           "]}},\"columnKind\":\"unicodeCodePoints\",\"results\":[\n";
}

std::string sarif_region(const Finding& finding) {
    const End end = end_of(finding);
    return '{' + json_member("startLine", finding.span.line) + ',' +
           json_member("startColumn", finding.span.column) + ',' +
           json_member("endLine", end.line) + ',' + json_member("endColumn", end.column) +
           '}';
}

std::string sarif_fix(const std::string& artifact, const std::string& region,
                      const std::string& form) {
    return "{\"description\":{\"text\":" + json_string(form) +
           "},\"artifactChanges\":[{\"artifactLocation\":" + artifact +
           ",\"replacements\":[{\"deletedRegion\":" + region +
           ",\"insertedContent\":{\"text\":" + json_string(form) + "}}]}]}";
}

std::string sarif_of(const std::string& file, const Finding& finding) {
    const std::string artifact = "{\"uri\":" + json_string(uri_of(file)) + '}';
    const std::string region = sarif_region(finding);
    std::string fixes;
    for (const std::string& form : finding.forms) {
        fixes += (fixes.empty() ? "" : ",") + sarif_fix(artifact, region, form);
    }
    if (!fixes.empty()) fixes = ",\"fixes\":[" + fixes + ']';
    return "{\"ruleId\":" + json_string(name_of(finding.kind)) +
           ",\"level\":" + json_string(words_of(finding.kind).level) +
           ",\"message\":{\"text\":" + json_string(message_of(finding)) +
           "},\"locations\":[{\"physicalLocation\":{\"artifactLocation\":" + artifact +
           ",\"region\":" + region + "}}]" + fixes + '}';
}

/// Text of a workflow command; in a property comma and colon are escaped as well.
std::string github_escaped(const std::string& text, bool property) {
    std::string result;
    for (const char c : text) {
        if (c == '%') {
            result += "%25";
        } else if (c == '\r') {
            result += "%0D";
        } else if (c == '\n') {
            result += "%0A";
        } else if (property && c == ':') {
            result += "%3A";
        } else if (property && c == ',') {
            result += "%2C";
        } else {
            result += c;
        }
    }
    return result;
}

std::string github_of(const std::string& file, const Finding& finding) {
    const KindWords& words = words_of(finding.kind);
    const End end = end_of(finding);
    return std::string("::") + words.command + " file=" + github_escaped(file, true) +
           ",line=" + std::to_string(finding.span.line) +
           ",col=" + std::to_string(finding.span.column) +
           ",endLine=" + std::to_string(end.line) +
           ",endColumn=" + std::to_string(end.column) +
           ",title=" + github_escaped(words.title, true) +
           "::" + github_escaped(message_of(finding), false) + '\n';
}

struct Range {
    char32_t first, last;
};

// What takes no column of a terminal, and what takes two. Marks and scripts that text in
// this language meets; a terminal's own tables are longer.
constexpr Range NO_COLUMN[] = {{0xAD, 0xAD},     {0x300, 0x36F},   {0x483, 0x489},
                               {0x591, 0x5BD},   {0x610, 0x61A},   {0x64B, 0x65F},
                               {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x2064},
                               {0x20D0, 0x20F0}, {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}};
constexpr Range TWO_COLUMNS[] = {
    {0x1100, 0x115F},   {0x2E80, 0xA4CF},  {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},
    {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},  {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F},
    {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

template <std::size_t N>
bool is_in(const Range (&ranges)[N], char32_t character) {
    return std::any_of(std::begin(ranges), std::end(ranges), [&](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

/// A character as a terminal is to show it.
struct Cell {
    std::string text;
    std::size_t columns;
};

std::vector<Cell> cells_of(std::string_view line) {
    std::vector<Cell> cells;
    while (!line.empty()) {
        const host::Character character = character_at(line, 0);
        std::string text =
            character.code == '\t' ? " " : printable(line.substr(0, character.length));
        const bool escaped = text.size() > 1 && text[0] == '\\';
        const std::size_t columns = escaped                              ? text.size()
                                    : is_in(NO_COLUMN, character.code)   ? 0
                                    : is_in(TWO_COLUMNS, character.code) ? 2
                                                                         : 1;
        cells.push_back({std::move(text), columns});
        line.remove_prefix(character.length);
    }
    return cells;
}

std::size_t columns_of(const std::vector<Cell>& cells) {
    std::size_t columns = 0;
    for (const Cell& cell : cells) columns += cell.columns;
    return columns;
}

std::string text_of(const std::vector<Cell>& cells, std::size_t from, std::size_t to) {
    std::string text;
    for (std::size_t i = from; i < to; ++i) text += cells[i].text;
    return text;
}

}  // namespace

std::string report_head(CheckFormat format, const std::string& version) {
    if (format == CheckFormat::JSON) {
        return "{\"version\":" + json_string(version) + ",\"findings\":[\n";
    }
    return format == CheckFormat::SARIF ? sarif_head(version) : "";
}

std::string report_tail(CheckFormat format) {
    if (format == CheckFormat::JSON) return "\n]}\n";
    return format == CheckFormat::SARIF ? "\n]}]}\n" : "";
}

std::string report_entry(CheckFormat format, const std::string& file,
                         const Finding& finding, bool first) {
    const std::string separator = first ? "" : ",\n";
    switch (format) {
        case CheckFormat::JSON:
            return separator + json_with_file(file, finding);
        case CheckFormat::JSONL:
            return json_with_file(file, finding) + '\n';
        case CheckFormat::SARIF:
            return separator + sarif_of(file, finding);
        case CheckFormat::GITHUB:
            return github_of(file, finding);
        default:
            return place_of(file, finding) + ' ' + message_of(finding) + '\n';
    }
}

std::string with_its_line(const std::string& file, const Finding& finding,
                          std::string_view before, std::string_view after,
                          std::size_t width, bool coloured) {
    const auto colour = [&](const char* code) { return coloured ? code : ""; };
    const char* word_colour = words_of(finding.kind).colour;
    const std::vector<Cell> left = cells_of(before), right = cells_of(after);
    const std::vector<Cell> word = cells_of(on_one_line(finding.token));
    const std::size_t word_columns = std::max<std::size_t>(columns_of(word), 1);
    const std::size_t room = width > word_columns ? width - word_columns : 0;
    std::size_t from = left.size(), to = 0, left_columns = 0, right_columns = 0;
    while (from > 0 && left_columns + left[from - 1].columns <= room / 2) {
        left_columns += left[--from].columns;
    }
    while (to < right.size() &&
           left_columns + right_columns + right[to].columns <= room) {
        right_columns += right[to++].columns;
    }
    const char* margin = from > 0 ? " \xE2\x80\xA6" : "  ";
    return colour(BOLD) + place_of(file, finding) + colour(PLAIN) + ' ' +
           message_of(finding, colour(word_colour), colour(GREEN), colour(PLAIN)) + '\n' +
           margin + text_of(left, from, left.size()) + colour(word_colour) +
           text_of(word, 0, word.size()) + colour(PLAIN) + text_of(right, 0, to) +
           (to < right.size() ? "\xE2\x80\xA6\n  " : "\n  ") +
           std::string(left_columns, ' ') + colour(word_colour) + '^' +
           std::string(word_columns - 1, '~') + colour(PLAIN) + '\n';
}

constexpr std::size_t MOST_AROUND = 600;  // bytes of a line on each side of a word

std::string_view before_on_line(std::string_view text, std::size_t at) {
    const std::size_t from = at > MOST_AROUND ? at - MOST_AROUND : 0;
    std::string_view before = text.substr(from, at - from);
    const std::size_t end = before.find_last_of("\r\n");
    if (end != before.npos) before.remove_prefix(end + 1);
    while (!before.empty() && (before.front() & 0xC0) == 0x80) before.remove_prefix(1);
    return before;
}

std::string_view after_on_line(std::string_view text, std::size_t at) {
    std::string_view after = text.substr(std::min(at, text.size()), MOST_AROUND);
    after = after.substr(0, after.find_first_of("\r\n"));
    if (after.size() < MOST_AROUND) return after;
    while (!after.empty() && (after.back() & 0xC0) == 0x80) after.remove_suffix(1);
    if (!after.empty()) after.remove_suffix(1);  // a character that may be cut
    return after;
}

}  // namespace lemara::tools
