#include "configuration.h"

#include <algorithm>
#include <filesystem>

#include "failure.h"
#include "files.h"
#include "lemara/compiled_table.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

constexpr std::size_t LARGEST_CONFIGURATION = 1 << 20;  // bytes

/// Calls `visit` with each line of `text`, without its line feed, and its number.
template <class Visit>
void for_each_line(std::string_view text, Visit visit) {
    std::size_t number = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        visit(text.substr(0, end), ++number);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::string at(const std::string& path, std::size_t line) {
    return path + ':' + std::to_string(line) + ": ";
}

bool is_comment(std::string_view line) {
    return line.empty() || line.substr(0, 2) == "//" || line[0] == ' ' ||
           line[0] == '\t' || line[0] == '\r';
}

std::string key_of(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    std::string_view key = slash == path.npos ? path : path.substr(slash + 1);
    key = key.substr(0, key.find('.'));
    const bool with_mark = key.size() >= 2 && key.substr(key.size() - 2) == "PG";
    return std::string(with_mark ? key.substr(0, key.size() - 2) : key);
}

void require_no_nul(const std::string& path, std::string_view text) {
    if (text.find('\0') == text.npos) return;
    throw Failure(path + ": not a text file: it holds NUL bytes");
}

ListedTable read_entry(std::string_view line, const std::string& folder,
                       const std::string& place, std::size_t number) {
    const std::string name(line);
    const std::filesystem::path path = folder.empty()
                                           ? std::filesystem::path(name)
                                           : std::filesystem::path(folder) / name;
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        throw Failure(place + "no such table: " + printable(name) + " (looked for in " +
                      (folder.empty() ? "." : folder) + ')');
    }
    const std::size_t slash = name.rfind('/');
    const std::string base = slash == name.npos ? name : name.substr(slash + 1);
    if (std::min(base.find('.'), base.size()) < 2) {
        throw Failure(place +
                      "the name of a table needs two characters before its first dot: " +
                      printable(name));
    }
    return {key_of(name), path.string(), number};
}

/// The first bytes of a table; all of them if it is compiled.
std::string read_for_judgement(const std::string& path) {
    require_regular(path);
    std::string start = read_start(path, 64);
    return is_compiled_table(start) ? read_file(path) : start;
}

void require_table(const ListedTable& table, const std::string& place) {
    std::string start;
    try {
        start = read_for_judgement(table.path);
    } catch (const Failure& failure) {
        throw Failure(place + failure.what());
    }
    if (is_compiled_table(start)) {
        const std::string defect = compiled_table_defect(start);
        if (defect.empty()) return;
        throw Failure(place + table.path + ": unusable compiled table: " + defect);
    }
    if (table.path.find("SARE8") != table.path.npos) return;  // enciphered
    const bool digit = !start.empty() && start[0] >= '0' && start[0] <= '9';
    if (digit || start.compare(0, 5, "final") == 0) return;
    throw Failure(place + table.path + " is no table; see lemara table check");
}

/// Why the library ends the load at this line; empty if it doesn't.
std::string why_unusable(std::string_view tag) {
    if (tag.empty()) return "no class tag behind the word";
    if (tag.front() != '<')
        return "the class tag \"" + printable(utf8_from_latin1(tag)) +
               "\" doesn't begin with \"<\"";
    return "";
}

/// Why the library passes over this line; empty if it doesn't.
std::string why_passed_over(std::string_view word, std::string_view tag) {
    if (tag.back() == '\r')
        return "a carriage return behind the class tag; line passed over";
    if (tag.back() != '>')
        return "the class tag doesn't end with \">\"; line passed over";
    if (word.size() < 2) return "a word needs two letters; line passed over";
    return "";
}

}  // namespace

std::vector<ListedTable> read_configuration(const std::string& path,
                                            const std::string& folder) {
    const std::string text = read_file(path, LARGEST_CONFIGURATION);
    require_no_nul(path, text);
    std::vector<ListedTable> tables;
    for_each_line(text, [&](std::string_view line, std::size_t number) {
        if (is_comment(line)) return;
        const std::string place = at(path, number);
        if (tables.size() == MOST_TABLES) {
            throw Failure(place + "too many tables; at most " +
                          std::to_string(MOST_TABLES) + " are loaded");
        }
        if (line.back() == '\r') line.remove_suffix(1);
        tables.push_back(read_entry(line, folder, place, number));
        require_table(tables.back(), place);
    });
    const bool has_main =
        std::any_of(tables.begin(), tables.end(),
                    [](const ListedTable& t) { return t.key == "eumorfo"; });
    if (has_main) return tables;
    throw Failure("no network \"eumorfo\"; list a table with that file name in " + path);
}

std::vector<std::string> check_dictionary(const std::string& path) {
    require_regular(path);  // the library reads it again
    const std::string text = read_file(path);
    require_no_nul(path, text);
    const bool ascii = std::all_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x80;
    });
    if (!ascii && find_invalid_utf8(text) == std::string::npos) {
        throw Failure(path +
                      ": is UTF-8 and must be Latin-1; iconv -f utf-8 -t latin1 "
                      "makes it so");
    }
    std::vector<std::string> notes;
    for_each_line(text, [&](std::string_view line, std::size_t number) {
        if (line.size() < 2 || line.substr(0, 2) == "//") return;
        const std::size_t end = std::min(line.find_first_of("\t|"), line.size());
        std::string_view tag = line.substr(std::min(end + 1, line.size()));
        tag = tag.substr(0, tag.find('\t'));
        if (const std::string why = why_unusable(tag); !why.empty()) {
            throw Failure(at(path, number) + why +
                          "; a line is WORD, TAB, CLASS, as in "
                          "\"etxe\", TAB, \"<ARR>\"");
        }
        const std::string why = why_passed_over(line.substr(0, end), tag);
        if (!why.empty()) notes.push_back(at(path, number) + why);
    });
    return notes;
}

}  // namespace lemara::tools
