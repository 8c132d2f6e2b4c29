// What most tests need: small tables from text, files that go away, standard output as text.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Lemara.h"

namespace lemara::test {

/// Does `work(0)`, `work(1)` ... at the same time, each in a thread, and waits for all.
/// None begins before all are there.
template <class Work>
void in_threads(unsigned count, Work work) {
    std::atomic<unsigned> missing{count};
    std::vector<std::thread> threads;
    for (unsigned number = 0; number < count; ++number) {
        threads.emplace_back([&work, &missing, number] {
            --missing;
            while (missing > 0) std::this_thread::yield();
            work(number);
        });
    }
    for (std::thread& thread : threads) thread.join();
}

/// A folder of its own for one test, gone with the object.
class TempDir {
public:
    TempDir() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "lemara-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
        path_ = pattern;
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::string path(const std::string& name) const { return path_ + "/" + name; }

    /// Writes `bytes` to a file `name` in the folder and returns its path.
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream out(path(name), std::ios::binary);
        out << bytes;
        return path(name);
    }

private:
    std::string path_;
};

inline std::string read_file(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// Fills `table` from records, one a line. The first field is as in a table file.
inline void load_text(Taula& table, const std::string& text) {
    table.kargatu_taula(text.c_str(), table.kontataulaSARE8(text.c_str()));
}

inline std::unique_ptr<Taula> table_from(const std::string& text,
                                         const std::string& name = "") {
    auto table = std::make_unique<Taula>();
    table->hiztegia = name;
    load_text(*table, text);
    return table;
}

/// A network over a table given as text; it owns the table.
inline std::unique_ptr<Sarea> network_from(const std::string& key, const std::string& text) {
    return std::make_unique<Sarea>(key, key + ".sare", table_from(text).release());
}

/// Records that accept each (upper symbols, lower symbols) path of its own: a trie without
/// sharing, in the order given. Each path is a list of symbol fields: {"k", "a", "<IZE>:<>"}.
inline std::string paths(const std::vector<std::vector<std::string>>& list) {
    // State 0 starts all paths; state numbers rise, so the last record has the highest.
    std::ostringstream text;
    int next = 1;
    for (const auto& path : list) {
        int from = 0;
        for (const auto& field : path) {
            text << from << '\t' << field << '\t' << next << '\n';
            from = next++;
        }
        text << "final: " << from << '\n';
    }
    return text.str();
}

/// The symbols of a word letter by letter, then one field for each of `tags` ("<IZE>:<>").
inline std::vector<std::string> word_path(const std::string& letters,
                                          const std::vector<std::string>& tags = {}) {
    std::vector<std::string> fields;
    for (char c : letters) fields.push_back(std::string(1, c));
    for (const auto& tag : tags) fields.push_back(tag + ":<>");
    return fields;
}

/// What `action` writes to standard output.
template <class Action>
std::string stdout_of(Action&& action) {
    testing::internal::CaptureStdout();
    std::forward<Action>(action)();
    std::cout.flush();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

/// Field `analisia` of each record, or `forma`, in order.
inline std::vector<std::string> analyses_of(const std::vector<Analisia>& records) {
    std::vector<std::string> texts;
    for (const Analisia& record : records) texts.push_back(record.analisia);
    return texts;
}
inline std::vector<std::string> forms_of(const std::vector<Analisia>& records) {
    std::vector<std::string> texts;
    for (const Analisia& record : records) texts.push_back(record.forma);
    return texts;
}

}  // namespace lemara::test
