#include "host/personal_file.h"

#include <algorithm>
#include <set>
#include <utility>

#include "host/files.h"
#include "lemara/utf8.h"

namespace lemara::host {

namespace {

constexpr std::size_t LARGEST_DICTIONARY = 1 << 28;  // bytes

bool is_utf8_beyond_ascii(std::string_view bytes) {
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x80;
    });
    return !ascii && find_invalid_utf8(bytes) == std::string_view::npos;
}

/// Calls `visit` with each line and its line feed, and its number.
template <class Visit>
void for_each_line(std::string_view bytes, Visit visit) {
    std::size_t number = 0;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size() - 1);
        visit(bytes.substr(0, end + 1), ++number);
        bytes.remove_prefix(end + 1);
    }
}

std::string cut(std::string_view& rest, std::string_view ends) {
    const std::size_t end = std::min(rest.find_first_of(ends), rest.size());
    std::string field(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return field;
}

/// Takes a line apart; false for comments and lines of nothing.
bool read_line(std::string_view line, PersonalEntry& entry) {
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
        line.remove_suffix(1);
    if (line.size() < 2 || line.substr(0, 2) == "//") return false;
    entry.word = cut(line, "\t|");
    entry.tag = cut(line, "\t");
    entry.better = cut(line, "\t");
    entry.instead = cut(line, "\t");
    entry.source = std::string(line);
    return true;
}

std::string line_of(const PersonalEntry& entry) {
    return entry.word + '\t' + entry.tag + '\t' + entry.better + '\t' + entry.instead +
           "\tHP\n";
}

using Key = std::pair<std::string, std::string>;

std::set<Key> keys_of(std::string_view bytes) {
    std::set<Key> keys;
    PersonalEntry entry;
    for_each_line(bytes, [&](std::string_view line, std::size_t) {
        if (read_line(line, entry)) keys.emplace(entry.word, entry.tag);
    });
    return keys;
}

}  // namespace

bool fits_file(const PersonalEntry& entry, std::string& reason) {
    const auto refuse = [&](const char* why) {
        reason = why;
        return false;
    };
    for (const std::string* field :
         {&entry.word, &entry.better, &entry.instead, &entry.tag}) {
        for (const char c : *field) {
            const auto byte = static_cast<unsigned char>(c);
            if (byte < ' ' || byte == 0x7F) return refuse("a control character");
        }
    }
    if (entry.word.size() < 2) return refuse("a word needs two letters");
    if (entry.word.find('|') != std::string::npos) return refuse("a \"|\" in the word");
    if (entry.word.compare(0, 2, "//") == 0) return refuse("it would be a comment");
    if (entry.tag.size() < 3 || entry.tag.front() != '<' || entry.tag.back() != '>') {
        return refuse("no word class");
    }
    return true;
}

PersonalList parse_personal(const std::string& path, const std::string& bytes) {
    PersonalList list;
    if (bytes.find('\0') != bytes.npos) {
        list.problems.push_back({path, 0, "not a text file: it holds NUL bytes"});
        return list;
    }
    const bool utf8 = is_utf8_beyond_ascii(bytes);
    PersonalEntry entry;
    std::string latin1, reason;
    char32_t missing = 0;
    for_each_line(bytes, [&](std::string_view line, std::size_t number) {
        if (utf8 && !latin1_exactly(line, latin1, missing)) {
            list.problems.push_back({path, number, "a letter that the tables lack"});
            return;
        }
        if (!read_line(utf8 ? std::string_view(latin1) : line, entry)) return;
        if (fits_file(entry, reason)) {
            list.entries.push_back(entry);
        } else {
            list.problems.push_back({path, number, reason + "; line passed over"});
        }
    });
    return list;
}

bool PersonalFile::changed() const { return !(FileStamp::of(path_) == seen_); }

std::optional<Problem> PersonalFile::read(PersonalList& list) {
    const FileStamp now =
        FileStamp::of(path_);  // before the bytes: a write in between is then noticed
    std::string bytes;
    bool missing = false;
    if (auto problem = read_file(path_, LARGEST_DICTIONARY, bytes, &missing))
        return problem;
    list = parse_personal(path_, bytes);
    seen_ = now;
    return std::nullopt;
}

/// Changes the file under its lock, unless `change` answers false.
std::optional<Problem> PersonalFile::update(
    PersonalList& list, const std::function<bool(std::string&)>& change) {
    const std::string target = target_of(path_);
    if (auto problem = make_folder_of(target)) return problem;
    const FileLock lock(target);
    if (lock.problem()) return lock.problem();
    std::string bytes;
    bool missing = false;
    if (auto problem = read_file(target, LARGEST_DICTIONARY, bytes, &missing))
        return problem;
    if (bytes.find('\0') != bytes.npos) {
        return Problem{path_, 0, "not a text file: it holds NUL bytes"};
    }
    if (is_utf8_beyond_ascii(bytes)) {
        std::string latin1;
        char32_t lost = 0;
        if (!latin1_exactly(bytes, latin1, lost)) {
            return Problem{
                path_, 0,
                "is UTF-8 with letters that Latin-1 lacks; take them out first"};
        }
        bytes.swap(latin1);
    }
    if (change(bytes)) {
        if (auto problem = replace_file(target, bytes)) return problem;
    }
    seen_ = FileStamp::of(path_);
    list = parse_personal(path_, bytes);
    return std::nullopt;
}

std::optional<Problem> PersonalFile::add(const std::vector<PersonalEntry>& entries,
                                         PersonalList& list, std::size_t& there) {
    there = 0;
    return update(list, [&](std::string& bytes) {
        std::set<Key> keys = keys_of(bytes);
        const std::size_t before = keys.size();
        if (!bytes.empty() && bytes.back() != '\n') bytes += '\n';
        for (const PersonalEntry& entry : entries) {
            if (keys.emplace(entry.word, entry.tag).second) {
                bytes += line_of(entry);
            } else {
                ++there;
            }
        }
        return keys.size() > before;
    });
}

std::optional<Problem> PersonalFile::remove(const std::string& word,
                                            const std::string& tag, PersonalList& list,
                                            std::size_t& removed) {
    removed = 0;
    return update(list, [&](std::string& bytes) {
        std::string kept;
        PersonalEntry entry;
        for_each_line(bytes, [&](std::string_view line, std::size_t) {
            const bool hit = read_line(line, entry) && entry.word == word &&
                             (tag.empty() || entry.tag == tag);
            if (hit) {
                ++removed;
            } else {
                kept += line;
            }
        });
        bytes.swap(kept);
        return removed > 0;
    });
}

}  // namespace lemara::host
