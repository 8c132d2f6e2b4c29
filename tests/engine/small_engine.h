// Small lexicons and engines over them, for tests that need a whole engine.
#pragma once

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support.h"

namespace lemara::test {

/// One path of a table: `upper` and `lower` side by side letter by letter, what is longer
/// against nothing, and then the `tags`, which read nothing.
inline std::vector<std::string> entry_path(const std::string& upper,
                                           const std::string& lower,
                                           const std::vector<std::string>& tags) {
    std::vector<std::string> fields;
    const std::size_t length = std::max(upper.size(), lower.size());
    for (std::size_t i = 0; i < length; ++i) {
        const std::string above = i < upper.size() ? upper.substr(i, 1) : "";
        const std::string below = i < lower.size() ? lower.substr(i, 1) : "";
        if (above == below) {
            fields.push_back(above);
        } else {
            fields.push_back(above + ':' + (below.empty() ? "<>" : below));
        }
    }
    for (const std::string& tag : tags) fields.push_back(tag + ":<>");
    return fields;
}

/// A lexicon as a list of entries; text() is its table, a path for each entry in that
/// order.
class Lexicon {
public:
    /// A word that reads as it is written: "etxe", {"<IZE>"}.
    Lexicon& word(const std::string& letters, const std::vector<std::string>& tags) {
        return form(letters, tolowercase(letters), tags);
    }
    /// A lemma and one of its forms; `surface` is in small letters.
    Lexicon& form(const std::string& lemma, const std::string& surface,
                  const std::vector<std::string>& tags) {
        paths_.push_back(entry_path(lemma, surface, tags));
        return *this;
    }
    /// A path symbol by symbol.
    Lexicon& path(std::vector<std::string> fields) {
        paths_.push_back(std::move(fields));
        return *this;
    }
    /// Many words with one tag.
    Lexicon& words(const std::vector<std::string>& list, const std::string& tag) {
        for (const std::string& letters : list) word(letters, {tag});
        return *this;
    }
    std::string text() const { return paths(paths_); }

private:
    std::vector<std::vector<std::string>> paths_;
};

/// Endings for the classes of common nouns in a vowel and in a consonant, of persons and
/// of participles: (0)--<hp1>-->( )--<ABS><MG>:0-->((1))   and  -ak <ABS><NUMP>, -ra
/// <ALA>
inline std::string hp_table() {
    return paths({
        {"<hp1>", "<ABS>:<>", "<MG>:<>"},
        {"<hp1>", "<ABS>:a", "<NUMP>:k"},
        {"<hp1>", "<ALA>:r", ":a"},
        {"<hp4>", "<ABS>:<>", "<MG>:<>"},
        {"<hp4>", "<ABS>:a", "<NUMP>:k"},
        {"<hp8>", "<ABS>:<>"},
        {"<hp8>", "<ERG>:k"},
        {"<hp12>", "<ABS>:<>"},
        {"<hp16>", "<ABS>:<>"},
        {"<hp20>", "<ABS>:a"},
        {"<hp21>", "<ADOI>:<>"},
        {"<hp24>", "<ADOIN>:<>"},
    });
}

/// An engine over tables that are written to files first, built as a host builds it. Its
/// messages while loading are in `messages`.
class World {
public:
    World& table(const std::string& file, const std::string& text) {
        configuration_ << folder_.write(file, text) << '\n';
        return *this;
    }
    World& dictionary(const std::string& text) {
        dictionary_ = folder_.write("hiztegia.txt", text);
        return *this;
    }
    World& build() {
        const std::string path = folder_.write("sareak.cfg", configuration_.str());
        messages = stdout_of([&] {
            if (dictionary_.empty()) {
                engine = std::make_unique<Lemara>(path);
            } else {
                engine = std::make_unique<Lemara>(path, dictionary_);
            }
        });
        return *this;
    }
    World() = default;
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    std::unique_ptr<Lemara> engine;
    std::string messages;

private:
    TempDir folder_;
    std::ostringstream configuration_;
    std::string dictionary_;
};

/// A line of a dictionary file.
inline std::string dictionary_line(const std::string& word, const std::string& tag,
                                   const std::string& better = "",
                                   const std::string& instead = "") {
    return word + '\t' + tag + '\t' + better + '\t' + instead + "\tHP\n";
}

}  // namespace lemara::test
