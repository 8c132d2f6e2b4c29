// Adding and removing words by the index gives what scans of the containers gave; also where
// a host puts its own hand to the containers.
#include "dictionary/DictionaryIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "HiztegiPertsonala.h"
#include "hits.h"
#include "support.h"

namespace {

using Strings = std::vector<std::string>;
using lemara::test::TempDir;

/// What a dictionary holds, without its paradigms: those come from a dictionary with one word.
struct PlainDictionary {
    std::vector<std::pair<std::string, std::string>> records;
    std::map<std::string, std::pair<std::string, std::string>> roots;  // key: lemma and tags

    void add(const std::string& word, const std::string& tag) {
        for (const auto& record : records) {
            if (record.first == word && record.second == tag) return;
        }
        records.emplace_back(word, tag);
        HiztegiPertsonala alone;
        alone.gehitu_sarrera(false, word, tag, "", "", "");
        // One word has all its keys: none is taken.
        for (const auto& [key, entry] : alone.erroak) {
            roots.emplace(key, std::make_pair(entry->lema, entry->kategoria));
        }
    }

    void remove(const std::string& word, const std::string& tag) {
        records.erase(std::remove(records.begin(), records.end(), std::make_pair(word, tag)),
                      records.end());
        for (auto root = roots.begin(); root != roots.end();) {
            const bool gone = root->second.first == word &&
                              root->second.second.find(tag) != std::string::npos;
            root = gone ? roots.erase(root) : std::next(root);
        }
    }
};

Strings texts_of(const PlainDictionary& plain) {
    Strings texts;
    for (const auto& [word, tag] : plain.records) texts.push_back(word + ' ' + tag);
    for (const auto& [key, entry] : plain.roots) {
        texts.push_back(key + ": " + entry.first + ' ' + entry.second);
    }
    return texts;
}

Strings texts_of(const HiztegiPertsonala& dictionary) {
    Strings texts;
    for (const HPsarrera* record : dictionary.sarrerak) {
        texts.push_back(record->lema + ' ' + record->kategoria);
    }
    for (const auto& [key, entry] : dictionary.erroak) {
        texts.push_back(key + ": " + entry->lema + ' ' + entry->kategoria);
    }
    return texts;
}

}  // namespace

TEST(DictionaryIndex, AgreesWithScansOnRandomChanges) {
    const Strings tags = {"<ARR>", "<IZO>", "<ADI>", "<PIB>", "<LIB>", "<IZB>", "<ZER>", "<A"};
    lemara::test::Hits hits;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::mt19937 random(seed);
        HiztegiPertsonala dictionary;
        PlainDictionary plain;
        for (int step = 0; step < 60; ++step) {
            std::string word;
            for (std::size_t n = 2 + random() % 2; n > 0; --n) word += "akrtzAK"[random() % 7];
            const std::string& tag = tags[random() % tags.size()];
            const auto kind = random() % 10;
            const std::size_t before = dictionary.sarrerak.size();
            if (kind < 6) {
                dictionary.gehitu_sarrera(false, word, tag, "", "", "");
                plain.add(word, tag);
                ++hits[dictionary.sarrerak.size() == before ? "a word that is there"
                                                            : "a new word"];
            } else if (kind < 9) {
                if (random() % 2 == 0 && !plain.records.empty()) {
                    std::tie(word, std::ignore) = plain.records[random() % plain.records.size()];
                }
                dictionary.kendu_sarrera(false, word, tag);
                plain.remove(word, tag);
                ++hits[dictionary.sarrerak.size() == before ? "nothing to remove"
                                                            : "a word removed"];
            } else if (!dictionary.sarrerak.empty()) {
                // A host takes the last record out by hand.
                delete dictionary.sarrerak.back();
                dictionary.sarrerak.pop_back();
                plain.records.pop_back();
                ++hits["a record taken by hand"];
            }
            ASSERT_EQ(texts_of(dictionary), texts_of(plain))
                << "seed " << seed << ", step " << step;
        }
    }
    lemara::test::expect_hits(hits,
                              {"a word that is there", "a new word", "nothing to remove",
                               "a word removed", "a record taken by hand"},
                              100);
}

TEST(DictionaryIndex, AHundredThousandEntriesLoadAndLeave) {
    // A scan for each line would take minutes here, and the test's time limit is its judge.
    const TempDir folder;
    constexpr int ENTRIES = 100000;
    std::string text;
    for (int i = 0; i < ENTRIES; ++i) {
        std::string word = "h";
        for (int n = i; n > 0; n /= 20) word += static_cast<char>('a' + n % 20);
        text += word + "o\t<ARR>\n";
    }
    HiztegiPertsonala dictionary(folder.write("hp.txt", text));
    const std::size_t all = dictionary.sarrerak.size();
    EXPECT_EQ(all, static_cast<std::size_t>(ENTRIES));
    EXPECT_EQ(dictionary.erroak.size(), all);
    dictionary.kargatu_fitxategia();
    EXPECT_EQ(dictionary.sarrerak.size(), all) << "a second load adds nothing";
    for (int i = 0; i < 2000; ++i) {
        const HPsarrera record = *dictionary.sarrerak.back();
        dictionary.kendu_sarrera(false, record.lema, record.kategoria);
    }
    EXPECT_EQ(dictionary.sarrerak.size(), all - 2000);
    EXPECT_EQ(dictionary.erroak.size(), all - 2000);
}
