// Adding, removing and loading words gives what scans of the containers give, also where a
// host puts its own hand to the containers in between.
#include "HiztegiPertsonala.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

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

    /// The root of a key; the end if there is none.
    auto some_root(std::size_t number) {
        auto root = roots.begin();
        std::advance(root, roots.empty() ? 0 : number % roots.size());
        return root;
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

/// What a host may do to the containers, and nobody tells the dictionary.
void change_by_hand(HiztegiPertsonala& dictionary, PlainDictionary& plain, std::mt19937& random,
                    lemara::test::Hits& hits) {
    const std::size_t at = random() % plain.records.size();
    HPsarrera*& record = dictionary.sarrerak[at];
    const auto root = plain.some_root(random());
    switch (random() % 5) {
        case 0:
            delete dictionary.sarrerak.back();
            dictionary.sarrerak.pop_back();
            plain.records.pop_back();
            ++hits["a record taken by hand"];
            break;
        case 1:
            record->lema = plain.records[at].first = "ka";
            ++hits["a word changed by hand"];
            break;
        case 2:
            delete record;
            record = new HPsarrera("ar", "<ARR>", "", "", "", "HP", "");
            plain.records[at] = {"ar", "<ARR>"};
            ++hits["a record put in the place of another"];
            break;
        case 3:
            if (root == plain.roots.end()) break;
            dictionary.erroak[root->first]->lema = root->second.first = "ka";
            ++hits["a paradigm entry changed by hand"];
            break;
        default:
            if (root == plain.roots.end() || plain.roots.count("zz") > 0) break;
            dictionary.erroak["zz"] = dictionary.erroak[root->first];
            dictionary.erroak.erase(root->first);
            plain.roots["zz"] = root->second;
            plain.roots.erase(root);
            ++hits["a paradigm entry under another key"];
    }
}

}  // namespace

TEST(DictionaryChanges, AgreeWithScans) {
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
                change_by_hand(dictionary, plain, random, hits);
            }
            ASSERT_EQ(texts_of(dictionary), texts_of(plain))
                << "seed " << seed << ", step " << step;
        }
    }
    lemara::test::expect_hits(hits,
                              {"a word that is there", "a new word", "nothing to remove",
                               "a word removed", "a record taken by hand",
                               "a word changed by hand", "a record put in the place of another",
                               "a paradigm entry changed by hand",
                               "a paradigm entry under another key"},
                              100);
}

TEST(DictionaryChanges, ALoadAddsLineByLine) {
    const Strings tags = {"<ARR>", "<IZO>", "<ADI>", "<PIB>", "<ZER>"};
    const TempDir folder;
    std::size_t repeats = 0;
    for (unsigned seed = 1; seed <= 100; ++seed) {
        std::mt19937 random(seed);
        HiztegiPertsonala loaded, added;
        std::string text;
        for (int step = 0; step < 60; ++step) {
            std::string word;
            for (std::size_t n = 2 + random() % 2; n > 0; --n) word += "akrtzAK"[random() % 7];
            const std::string& tag = tags[random() % tags.size()];
            const std::size_t before = added.sarrerak.size();
            added.gehitu_sarrera(false, word, tag, "", "", "");
            if (added.sarrerak.size() == before) ++repeats;
            // Some are there before the file is loaded, and one of those is no record.
            if (step < 10) {
                loaded.gehitu_sarrera(false, word, tag, "", "", "");
            } else {
                text += word + '\t' + tag + '\n';
            }
        }
        loaded.sarrerak.insert(loaded.sarrerak.begin(), nullptr);
        loaded.fitxategia = folder.write("hp.txt", text);
        loaded.kargatu_fitxategia();
        loaded.sarrerak.erase(loaded.sarrerak.begin());
        ASSERT_EQ(texts_of(loaded), texts_of(added)) << "seed " << seed;
    }
    EXPECT_GT(repeats, 100u);
}

TEST(DictionaryChanges, NullEntriesArePassedOver) {
    HiztegiPertsonala dictionary;
    dictionary.gehitu_sarrera(false, "ur", "<ARR>", "", "", "");
    dictionary.sarrerak.push_back(nullptr);
    // As many as before: nothing but a look tells.
    delete dictionary.erroak.at("urr");
    dictionary.erroak.at("urr") = nullptr;
    dictionary.gehitu_sarrera(false, "ur", "<ARR>", "", "", "");
    EXPECT_EQ(dictionary.sarrerak.size(), 2u);
    dictionary.kendu_sarrera(false, "ur", "<ARR>");
    EXPECT_EQ(dictionary.sarrerak, std::vector<HPsarrera*>{nullptr});
    EXPECT_EQ(dictionary.erroak.size(), 1u);
}

TEST(DictionaryChanges, AHundredThousandEntriesLoad) {
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
    for (int i = 0; i < 100; ++i) {
        const HPsarrera record = *dictionary.sarrerak.back();
        dictionary.kendu_sarrera(false, record.lema, record.kategoria);
    }
    EXPECT_EQ(dictionary.sarrerak.size(), all - 100);
    EXPECT_EQ(dictionary.erroak.size(), all - 100);
}
