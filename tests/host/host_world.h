// A checker over small tables that are written to files first.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "../engine/small_engine.h"
#include "lemara/checker.h"

namespace lemara::test {

/// Endings of all classes that a test adds words in: none, "-k", "-ek", "-n", "-en",
/// "-ra".
inline std::string personal_table() {
    std::vector<std::vector<std::string>> list;
    for (int i = 1; i <= 25; ++i) {
        const std::string name = "<hp" + std::to_string(i) + '>';
        list.push_back({name, "<ABS>:<>"});
        list.push_back({name, "<ERG>:k"});
        list.push_back({name, "<INE>:n"});
        list.push_back({name, "<ALA>:r", ":a"});
        list.push_back({name, "<ERG>:e", ":k"});
        list.push_back({name, "<GEN>:e", ":n"});
    }
    list.push_back({"<hp7>", "<KONP>:a", ":g", ":o"});
    return paths(list);
}

/// Some words, one with a better form, one to be replaced, a unit of two words, a rare
/// one.
inline Lexicon small_lexicon() {
    Lexicon lexicon;
    lexicon.words(
        {"etxe", "etxea", "gizon", "pozo", "da", "eta", "ez", "zuri", "\361abar"},
        "<IZE>");
    lexicon.word("Bilbo", {"<IZE>", "<LIB>"});
    lexicon.word("lagun", {"<IZE>"}).word("mahai", {"<IZE>"});
    lexicon.path({"m", "a", "i", "<IZE>:<>", "[h=mahai]:<>"});
    lexicon.path({"t", "x", "a", "r", "<IZE>:<>", "[e=lagun]:<>"});
    lexicon.form("ahal izan", "ahal izan", {"<ADI>"});
    lexicon.words({".", ",", "!", "?", "-", "\"", "'"}, "<PUNT>");
    return lexicon;
}

class HostWorld {
public:
    HostWorld() : HostWorld(small_lexicon().text(), personal_table()) {}
    HostWorld(const std::string& main_table, const std::string& hp) {
        folder.write("eumorfo.sare", main_table);
        folder.write("hp.sare", hp);
        settings.configuration = folder.write("sareak.cfg", "eumorfo.sare\nhp.sare\n");
        settings.dictionary = folder.path("data/lemara/hiztegia.txt");
    }

    std::unique_ptr<Checker> open() {
        Checker::Opened opened = Checker::open(settings);
        problems = opened.problems;
        EXPECT_NE(opened.checker, nullptr)
            << (problems.empty() ? "" : problems[0].text());
        return std::move(opened.checker);
    }

    TempDir folder;
    Settings settings;
    std::vector<Problem> problems;
};

}  // namespace lemara::test
