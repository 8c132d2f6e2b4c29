// The real lexicon under test: an engine over the tables that the build has made, the
// data of this folder, and the mark-up of the paragraph check taken apart.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/tables.h"
#include "lemara/utf8.h"
#include "support.h"

#if !defined(LEMARA_TEST_TABLES) || !defined(LEMARA_LANGUAGE_DATA)
#error \
    "LEMARA_TEST_TABLES names the folder of the built tables, LEMARA_LANGUAGE_DATA this one"
#endif

namespace lemara::test {

inline const std::filesystem::path TABLES = LEMARA_TEST_TABLES;
inline const std::filesystem::path LANGUAGE_DATA = LEMARA_LANGUAGE_DATA;

/// The text of a file. Throws for one that is missing, so that no test passes without
/// data.
inline std::string text_of_file(const std::filesystem::path& path) {
    if (!std::filesystem::is_regular_file(path)) {
        throw std::runtime_error("no such file: " + path.string());
    }
    return read_file(path.string());
}

/// UTF-8 as the Latin-1 of the engine. Throws for a letter that Latin-1 lacks.
inline std::string latin1(std::string_view utf8) {
    std::string text;
    char32_t missing = 0;
    if (!host::latin1_exactly(utf8, text, missing)) {
        throw std::runtime_error("not the UTF-8 of a Latin-1 text: " + std::string(utf8));
    }
    return text;
}

/// An engine over the built tables, made as a host makes it; the configuration names them
/// with their folder, so that the working folder does not matter.
inline std::unique_ptr<Lemara> engine_over_tables(const std::string& dictionary = "") {
    const TempDir folder;
    std::string lines;
    std::vector<host::ListedTable> tables;
    if (host::read_configuration((TABLES / "sareak.cfg").string(), tables)) {
        throw std::runtime_error("no tables in " + TABLES.string());
    }
    for (const host::ListedTable& table : tables) {
        lines += table.path + '\n';
    }
    const std::string configuration = folder.write("sareak.cfg", lines);
    std::unique_ptr<Lemara> engine;
    stdout_of([&] {
        engine = dictionary.empty() ? std::make_unique<Lemara>(configuration)
                                    : std::make_unique<Lemara>(configuration, dictionary);
    });
    return engine;
}

/// One engine for all tests of a process that change nothing. It is never freed: its last
/// words would come out behind the results of the tests.
inline const Lemara& basque() {
    static const Lemara* engine = engine_over_tables().release();
    return *engine;
}

inline const Taula& main_table() { return *basque().sareak.at("eumorfo")->taula; }

/// All entries of the main network, each cut at its first tag. Asked letter by letter:
/// one search for all of them would spend its budget before it is through.
inline std::vector<Analisia> all_entries() {
    std::vector<Analisia> entries;
    for (int byte = 1; byte < 256; ++byte) {
        const std::string start(1, static_cast<char>(byte));
        for (Analisia& entry : main_table().sortuFormak(start, "", true, false)) {
            entries.push_back(std::move(entry));
        }
    }
    return entries;
}

/// A line of a data file, cut at its TABs, in Latin-1.
struct Row {
    std::string place;  ///< "pairs.tsv:17"
    std::vector<std::string> cells;
};

/// The lines of a data file that are neither empty nor begin with "# " or are "#". Throws
/// for another number of columns and for a file without rows.
inline std::vector<Row> rows_of(const std::filesystem::path& path, std::size_t columns) {
    std::vector<Row> rows;
    std::istringstream lines(text_of_file(path));
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (line.empty() || line == "#" || line.compare(0, 2, "# ") == 0) continue;
        Row row{path.filename().string() + ':' + std::to_string(number), {}};
        std::istringstream cells(latin1(line));
        for (std::string cell; std::getline(cells, cell, '\t');)
            row.cells.push_back(cell);
        if (row.cells.size() != columns) {
            throw std::runtime_error(row.place + ": not " + std::to_string(columns) +
                                     " columns");
        }
        rows.push_back(std::move(row));
    }
    if (rows.empty()) throw std::runtime_error("no rows: " + path.string());
    return rows;
}

/// What the paragraph check says of a token. Texts are Latin-1.
struct Verdict {
    std::string text;
    std::string kind;                  ///< "ok", "ezz" for an unknown one, or empty
    std::vector<std::string> better;   ///< "hobe"
    std::vector<std::string> instead;  ///< "erabili"
    std::vector<std::string> proposals;
};

/// The texts of the elements `name` in a piece of mark-up, in order.
inline std::vector<std::string> elements(const std::string& markup,
                                         const std::string& name) {
    const std::string open = '<' + name + '>', close = "</" + name + '>';
    std::vector<std::string> texts;
    for (std::size_t at = markup.find(open); at != std::string::npos;
         at = markup.find(open, at + 1)) {
        const std::size_t start = at + open.size();
        texts.push_back(markup.substr(start, markup.find(close, start) - start));
    }
    return texts;
}

/// The paragraph check of a text that holds no mark-up itself, token by token.
inline std::vector<Verdict> check(const Lemara& engine, const std::string& text,
                                  bool propose) {
    const std::string markup = engine.getParagrafoaZuzenlex(text, propose);
    std::vector<Verdict> verdicts;
    for (std::size_t at = markup.find("<tok "); at != std::string::npos;) {
        const std::size_t next = markup.find("<tok ", at + 1);
        const std::string token = markup.substr(at, next - at);
        at = next;
        Verdict verdict;
        verdict.text = elements(token, "frm").at(0);
        const std::string key = "<prop k=\"";
        const std::size_t kind = token.find(key);
        if (kind != std::string::npos) {
            const std::size_t start = kind + key.size();
            verdict.kind = token.substr(start, token.find('"', start) - start);
        }
        verdict.better = elements(token, "hobe");
        verdict.instead = elements(token, "erabili");
        verdict.proposals = elements(token, "sugg");
        verdicts.push_back(std::move(verdict));
    }
    return verdicts;
}

/// Latin-1 as a message shows it.
inline std::string utf8(const std::string& text) { return host::utf8_from_latin1(text); }

/// Tags of degrees, diminutives and augmentatives, which not every word has.
inline bool is_derived(const std::string& tags) {
    for (const std::string tag : {" GRA", " DIM", " AUG"}) {
        if (tags.find(tag) != std::string::npos) return true;
    }
    return false;
}

inline std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
    return all.empty() ? "nothing" : utf8(all);
}

}  // namespace lemara::test
