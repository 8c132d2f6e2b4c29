// The file of the personal dictionary: WORD, TAB, CLASS, TAB, BETTER, TAB, INSTEAD, TAB,
// SOURCE, in Latin-1, as the engine reads it. A file that somebody has written in UTF-8
// is understood, and becomes Latin-1 with the next word. Tests:
// tests/host/Checker_words_test.cpp, tests/host/dictionary_kill_test.cpp.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/files.h"
#include "lemara/checker.h"

namespace lemara::host {

/// A line of the file, in Latin-1.
struct PersonalEntry {
    std::string word, tag, better, instead, source;  ///< the tag with its brackets
};

/// What the file holds.
struct PersonalList {
    std::vector<PersonalEntry> entries;
    std::vector<Problem> problems;  ///< lines that were passed over
};

PersonalList parse_personal(const std::string& path, const std::string& bytes);

/// True if the engine's loader takes the line that these fields make. Else `reason` tells
/// why not.
bool fits_file(const PersonalEntry& entry, std::string& reason);

class PersonalFile {
public:
    explicit PersonalFile(std::string path) : path_(std::move(path)) {}

    const std::string& path() const { return path_; }

    /// Reads the file; one that doesn't exist is empty.
    std::optional<Problem> read(PersonalList& list);

    /// Appends those of `entries` whose word and class are not there yet, in one write.
    /// `there` counts the others. `list` is what the file then holds.
    std::optional<Problem> add(const std::vector<PersonalEntry>& entries,
                               PersonalList& list, std::size_t& there);

    /// Removes the lines of a word; of any class if `tag` is empty. `removed` counts
    /// them.
    std::optional<Problem> remove(const std::string& word, const std::string& tag,
                                  PersonalList& list, std::size_t& removed);

    /// True if the file is no longer the one that was read or written last.
    bool changed() const;

private:
    std::optional<Problem> update(PersonalList& list,
                                  const std::function<bool(std::string&)>& change);

    std::string path_;
    FileStamp seen_;
};

}  // namespace lemara::host
