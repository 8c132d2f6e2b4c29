// Paradigms written by hand against the built tables: each form has the analysis of its
// row, and the analysis of a noun, an adjective or a name gives the form back.
#include <algorithm>
#include <string>

#include "language.h"

namespace {

using namespace lemara::test;

/// The files of this folder whose name begins so, sorted. Throws if there is none.
std::vector<std::filesystem::path> files_with(const std::string& start) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(LANGUAGE_DATA)) {
        const std::string name = entry.path().filename().string();
        if (name.compare(0, start.size(), start) == 0 &&
            entry.path().extension() == ".tsv") {
            paths.push_back(entry.path());
        }
    }
    if (paths.empty()) throw std::runtime_error("no files " + start + "*.tsv");
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// The network that the rows of a file are about.
std::string network_of(const std::filesystem::path& path) {
    return path.stem() == "numbers" ? "zenbakiak" : "eumorfo";
}

/// Reports a form that lacks its analysis; for the analysis "-" one that is right.
void expect_analysis(const Row& row, const std::string& network, const std::string& form,
                     const std::string& analysis) {
    const std::vector<Analisia> records = basque().analizatuTokena(form, network);
    if (analysis == "-") {
        for (const Analisia& record : records) {
            EXPECT_FALSE(record.hobe.empty() && record.erabili.empty())
                << row.place << ": " << utf8(form)
                << " is known: " << utf8(record.analisia);
        }
        return;
    }
    const std::vector<std::string> found = analyses_of(records);
    EXPECT_NE(std::find(found.begin(), found.end(), analysis), found.end())
        << row.place << ": " << utf8(form) << " has no " << utf8(analysis)
        << "; found: " << joined(found);
}

void expect_analyses(const std::string& start) {
    std::size_t count = 0;
    for (const std::filesystem::path& path : files_with(start)) {
        for (const Row& row : rows_of(path, 2)) {
            expect_analysis(row, network_of(path), row.cells[0], row.cells[1]);
            ++count;
        }
    }
    std::cout << start << ": " << count << " rows\n";
}

}  // namespace

TEST(Declension, EachFormIsAnalysed) {
    for (const std::filesystem::path& path : files_with("declension_")) {
        for (const Row& row : rows_of(path, 3)) {
            expect_analysis(row, "eumorfo", row.cells[0], row.cells[1] + row.cells[2]);
        }
    }
}

TEST(Declension, LemmaAndTagsGiveTheForm) {
    std::size_t count = 0;
    for (const std::filesystem::path& path : files_with("declension_")) {
        for (const Row& row : rows_of(path, 3)) {
            const std::string analysis = row.cells[1] + row.cells[2];
            std::vector<std::string> forms;
            for (const Analisia& record :
                 main_table().sortuFormak(row.cells[1], row.cells[2], false, false)) {
                if (record.analisia == analysis) forms.push_back(record.forma);
            }
            EXPECT_NE(std::find(forms.begin(), forms.end(), row.cells[0]), forms.end())
                << row.place << ": " << utf8(analysis) << " gives " << joined(forms)
                << ", not " << utf8(row.cells[0]);
            ++count;
        }
    }
    std::cout << "declension_*.tsv: " << count << " rows\n";
}

TEST(Analyses, NominalClasses) { expect_analyses("classes"); }
TEST(Analyses, FiniteVerbs) { expect_analyses("finite_"); }
TEST(Analyses, NonFiniteVerbs) { expect_analyses("verbs_"); }
TEST(Analyses, Pronouns) { expect_analyses("pronouns"); }
TEST(Analyses, Numerals) { expect_analyses("numerals"); }
TEST(Analyses, Numbers) { expect_analyses("numbers"); }
TEST(Analyses, NamesAndQuotes) { expect_analyses("names"); }
