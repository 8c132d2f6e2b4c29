#include "corrections.h"

#include <algorithm>

namespace lemara::tools {

namespace {

constexpr std::string_view BLANKS = " \t\r\n";

std::size_t count_line_feeds(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

/// Lines with a mark in front of each; `count` gets their number.
std::string marked(char mark, std::string_view text, std::size_t& count) {
    std::string result;
    count = 0;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        result += mark;
        result += text.substr(0, end);
        result += end == text.npos ? "\n\\ No newline at end of file\n" : "\n";
        text.remove_prefix(end == text.npos ? text.size() : end + 1);
        ++count;
    }
    return result;
}

/// "12", or with another number of lines than one "12,3".
std::string range(std::size_t line, std::size_t count) {
    if (count == 1) return std::to_string(line);
    return std::to_string(count == 0 ? line - 1 : line) + ',' + std::to_string(count);
}

/// The white space of a text, run by run.
std::vector<std::string_view> blanks_of(std::string_view text) {
    std::vector<std::string_view> runs;
    for (std::size_t at = text.find_first_of(BLANKS); at != text.npos;) {
        const std::size_t end = std::min(text.find_first_not_of(BLANKS, at), text.size());
        runs.push_back(text.substr(at, end - at));
        at = text.find_first_of(BLANKS, end);
    }
    return runs;
}

}  // namespace

std::string corrected(std::string_view bytes,
                      const std::vector<Correction>& corrections) {
    std::string result;
    std::size_t done = 0;
    for (const Correction& correction : corrections) {
        result += bytes.substr(done, correction.begin - done);
        result += correction.text;
        done = correction.end;
    }
    result += bytes.substr(done);
    return result;
}

std::string diff_of(const std::string& file, std::string_view bytes,
                    const std::vector<Correction>& corrections) {
    if (corrections.empty()) return "";
    std::string result = "--- " + file + "\n+++ " + file + '\n';
    std::size_t old_line = 1, new_line = 1, counted = 0;  // of byte `counted`
    for (auto it = corrections.begin(); it != corrections.end();) {
        const std::size_t start =
            bytes.substr(0, it->begin).rfind('\n') + 1;  // npos + 1 is 0
        std::size_t end = start;
        std::vector<Correction> here;  // all that touch the lines from `start` to `end`
        while (it != corrections.end() && (here.empty() || it->begin < end)) {
            here.push_back({it->begin - start, it->end - start, it->text});
            end = std::min(bytes.find('\n', it->end), bytes.size() - 1) + 1;
            ++it;
        }
        const std::size_t between =
            count_line_feeds(bytes.substr(counted, start - counted));
        old_line += between;
        new_line += between;
        const std::string_view before = bytes.substr(start, end - start);
        std::size_t old_count = 0, new_count = 0;
        const std::string minus = marked('-', before, old_count);
        const std::string plus = marked('+', corrected(before, here), new_count);
        result += "@@ -" + range(old_line, old_count) + " +" +
                  range(new_line, new_count) + " @@\n" + minus + plus;
        old_line += old_count;
        new_line += new_count;
        counted = end;
    }
    return result;
}

std::string over_the_same_lines(std::string_view token, const std::string& form) {
    if (token.find_first_of("\r\n") == token.npos) return form;
    const auto wanted = blanks_of(token), there = blanks_of(form);
    if (wanted.size() != there.size()) return "";
    std::vector<Correction> corrections;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto at = static_cast<std::size_t>(there[i].data() - form.data());
        corrections.push_back({at, at + there[i].size(), std::string(wanted[i])});
    }
    return corrected(form, corrections);
}

}  // namespace lemara::tools
