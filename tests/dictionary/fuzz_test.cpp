// Any bytes as a dictionary file, any words as entries: nothing crashes, and what is read is
// what a plain reader makes of it.
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "../tables/random_bytes.h"
#include "HiztegiPertsonala.h"
#include "dictionary_text.h"
#include "hits.h"
#include "support.h"

namespace {

using lemara::test::expect_hits;
using lemara::test::Hits;
using lemara::test::RandomBytes;
using lemara::test::read_file;
using lemara::test::records_of;
using lemara::test::stems_of;
using lemara::test::TempDir;
using lemara::test::write_anew;
using Strings = std::vector<std::string>;

constexpr unsigned FIRST_SEED = 900;
constexpr unsigned INPUTS = 10000;

const std::string ALPHABET = std::string("ab \t\t\n|<>/AR\r") + '\0';
const Strings WORDS = {"etxe", "neska",  "hartu", "txakur", "Ana", "Getz", "a", "z",
                       "",     "tu",     "a b",   "\361a",  "//",  " ",    "S", "joan"};
const Strings TAGS = {"<ARR>", "<IZO>", "<ADI>", "<PIB>", "<LIB>", "<IZB>",
                      "<ARR",  "<X>",   "<>",    "<ARR>\r"};
const Strings BAD_TAGS = {"", "ARR>", ">", " <ARR>"};
const Strings FIELDS = {"", "", "hobe", "HP", "a\tb", "|", "\r"};

std::string lines(RandomBytes& random) {
    std::string text;
    for (unsigned n = random.below(8); n > 0; --n) {
        if (random.once_in(8)) {
            text += random.once_in(2) ? "// iruzkina\n" : "\n";
            continue;
        }
        text += random.any_of(WORDS) + (random.once_in(5) ? '|' : '\t');
        text += random.any_of(random.once_in(25) ? BAD_TAGS : TAGS);
        for (unsigned field = random.below(4); field > 0; --field) {
            text += '\t' + random.any_of(FIELDS);
        }
        if (n > 1 || !random.once_in(3)) text += '\n';
    }
    return text;
}

std::string input(RandomBytes& random) {
    const unsigned kind = random.below(10);
    if (kind == 0) return random.raw(200);
    if (kind < 3) return random.from(ALPHABET, 120);
    return kind < 7 ? lines(random) : random.mutated(lines(random), ALPHABET);
}

/// A dictionary file in so many words.
struct PlainFile {
    Strings records;  // "lema kategoria hobe/erabili"
    std::size_t shortest = 10000;
    long most_words = 0;
    bool error = false;

    explicit PlainFile(const std::string& text) {
        for (std::size_t at = 0; at < text.size() && !error;) {
            const std::size_t end = std::min(text.find('\n', at), text.size());
            line(text.substr(at, end - at));
            at = end + 1;
        }
    }

private:
    Strings known_;

    static std::string cut(std::string& rest, const char* separators) {
        const std::size_t end = rest.find_first_of(separators);
        const std::string field = rest.substr(0, end);
        rest = end == std::string::npos ? "" : rest.substr(end + 1);
        return field;
    }

    void line(std::string rest) {
        if (rest.size() < 2 || rest.compare(0, 2, "//") == 0) return;
        const std::string word = cut(rest, "\t|");
        const std::string tag = cut(rest, "\t");
        const std::string better = cut(rest, "\t");
        const std::string use = cut(rest, "\t");
        if (tag.empty() || tag[0] != '<') {
            error = true;
            return;
        }
        if (tag.back() != '>' || word.size() < 2) return;
        shortest = std::min(shortest, word.size());
        long words = 1;
        for (const char c : word) words += c == ' ';
        most_words = std::max(most_words, words);
        for (const std::string& known : known_) {
            if (known == word + '\t' + tag) return;
        }
        known_.push_back(word + '\t' + tag);
        records.push_back(word + ' ' + tag + ' ' + better + '/' + use);
    }
};

}  // namespace

TEST(DictionaryFuzz, AnyBytesMakeADictionary) {
    const TempDir folder;
    const auto network =
        lemara::test::network_from("hp", "0\t<hp1>\t1\n0\t<hp4>\t1\n0\t<hp24>\t1\n"
                                         "1\ta\t2\nfinal: 1\nfinal: 2\n");
    Hits hits;
    for (unsigned seed = FIRST_SEED; seed < FIRST_SEED + INPUTS; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomBytes random(seed);
        const std::string text = input(random);
        const PlainFile expected(text);
        HiztegiPertsonala dictionary;
        dictionary.fitxategia = write_anew(folder, "hp.txt", text);
        bool error = false;
        try {
            dictionary.kargatu_fitxategia();
        } catch (const std::out_of_range&) {
            error = true;
        }
        ASSERT_EQ(error, expected.error);
        ASSERT_EQ(records_of(dictionary), expected.records);
        ASSERT_EQ(dictionary.gutxieneko_luzera, static_cast<int>(expected.shortest));
        ASSERT_EQ(dictionary.gehienezko_hitzak, expected.most_words);
        if (error) ++hits["an error"];
        if (expected.records.size() > 1) ++hits["several records"];

        for (int i = 0; i < 3; ++i) {
            const std::string word =
                random.once_in(2) ? random.any_of(WORDS) + "a" : random.raw(6);
            if (!dictionary.analizatu(word, network.get()).empty()) ++hits["a word found"];
        }
    }
    expect_hits(hits, {"an error", "several records", "a word found"}, 100);
}

TEST(DictionaryFuzz, AnyEntriesComeAndGo) {
    const TempDir folder;
    Hits hits;
    for (unsigned seed = FIRST_SEED; seed < FIRST_SEED + INPUTS; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomBytes random(seed);
        HiztegiPertsonala dictionary;
        dictionary.fitxategia = folder.path("hp" + std::to_string(seed));
        Strings known;  // word and tag of the records, in order
        for (unsigned n = random.below(12); n > 0; --n) {
            const std::string word = random.once_in(6) ? random.raw(4) : random.any_of(WORDS);
            const std::string tag = random.any_of(TAGS);
            const bool in_file = random.once_in(6);
            std::string entry = word;
            entry += ' ' + tag + " /";
            if (random.once_in(3)) {
                dictionary.kendu_sarrera(in_file, word, tag);
                Strings rest;
                for (const std::string& other : known) {
                    if (other != entry) rest.push_back(other);
                }
                if (rest.size() < known.size()) ++hits["a word removed"];
                known = rest;
                if (in_file) {
                    std::string text;
                    for (const HPsarrera* r : dictionary.sarrerak) {
                        text += '\n' + r->lema + '\t' + r->kategoria + "\t\t\tHP";
                    }
                    ASSERT_EQ(read_file(dictionary.fitxategia), text + '\n');
                }
                continue;
            }
            const bool sibilant = word.size() == 1 && tag == "<LIB>" &&
                                  std::string("sxzSXZ").find(word[0]) != std::string::npos;
            bool known_before = false;
            for (const std::string& other : known) known_before |= other == entry;
            bool error = false;
            try {
                dictionary.gehitu_sarrera(in_file, word, tag, "", "", "");
            } catch (const std::out_of_range&) {
                error = true;
            }
            ASSERT_EQ(error, sibilant && !known_before);
            if (error) ++hits["an error"];
            if (known_before) ++hits["a repeat"];
            if (!known_before) known.push_back(entry);
        }
        ASSERT_EQ(records_of(dictionary), known);
        for (const auto& [key, stem] : dictionary.erroak) {
            ASSERT_EQ(key, tolowercase(stem->erroa));
            ASSERT_FALSE(stem->paradigma.empty());
        }
    }
    expect_hits(hits, {"a word removed", "an error", "a repeat"});
}
