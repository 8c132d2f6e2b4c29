// What is generated is analysed back, and what is analysed is generated again, over a
// sample of the built lexicon and over the words of the data files.
#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>

#include "language.h"

namespace {

using namespace lemara::test;

constexpr unsigned SEED = 20261121;

// Sizes of the samples; a class with fewer lemmas gives all of them.
constexpr std::size_t LEMMAS_PER_CLASS = 60;
constexpr std::size_t ELIDED_PER_CLASS = 20;

/// The beginnings of analyses, lemma and first tag, that the main network has, sorted by
/// that tag. First names in front of a particle are left out: all names of the lexicon
/// follow them.
std::map<std::string, std::set<std::string>> lemmas_by_class() {
    std::map<std::string, std::set<std::string>> lemmas;
    for (const Analisia& entry : all_entries()) {
        if (entry.etiketa != " IZENLOT") lemmas[entry.etiketa].insert(entry.analisia);
    }
    return lemmas;
}

/// `count` of the texts, or all of them, the same at every run.
std::vector<std::string> sample(const std::set<std::string>& texts, std::size_t count,
                                std::mt19937& random) {
    std::vector<std::string> list(texts.begin(), texts.end());
    // The standard shuffle is not the same everywhere; this one is.
    for (std::size_t i = 0; i < std::min(count, list.size()); ++i) {
        std::swap(list[i], list[i + random() % (list.size() - i)]);
    }
    list.resize(std::min(count, list.size()));
    return list;
}

/// Forms about which the lookup is silent by its own rules: a deviant one whose better
/// form is what the token begins with, and those of its list of false multiword lemmas
/// ("eta bi").
bool is_silenced(const Analisia& form) {
    for (const std::string& better : {form.hobe, form.erabili}) {
        if (!better.empty() && form.forma.compare(0, better.size(), better) == 0)
            return true;
    }
    return !kenduHAULtxarrak(form.analisia.c_str(), form.forma.c_str());
}

/// A sign or acronym is read as it is written alone, and the generation gives it back no
/// capital outside ASCII: FP\326 (an O with two dots), and the sign of multiplication,
/// whose small letter is that of division.
bool loses_a_capital(const Analisia& form) {
    const bool as_written = form.etiketa.find(" SIG") != std::string::npos ||
                            form.etiketa.find(" SNB") != std::string::npos;
    return as_written && std::any_of(form.lema.begin(), form.lema.end(), [](char c) {
               const auto byte = static_cast<unsigned char>(c);
               return byte >= 128 && orbi_tolower(byte) != byte;
           });
}

/// What the generation leaves out, whatever its target.
bool is_never_generated(const std::string& analysis) {
    for (const std::string text : {"ba<AUR>", "<ADL>", "<Rare>"}) {
        if (analysis.find(text) != std::string::npos) return true;
    }
    return false;
}

/// Reports a reading of `word` that does not give the word, in small letters, as one of
/// its forms. Returns false for a reading that is never generated.
bool expect_generated(const Analisia& reading, const std::string& word) {
    if (is_never_generated(reading.analisia)) return false;
    const std::vector<std::string> forms =
        forms_of(main_table().sortuFormak(reading.analisia, "", false, false));
    const std::string wanted = tolowercase(word);
    EXPECT_TRUE(
        std::any_of(forms.begin(), forms.end(),
                    [&](const std::string& form) { return tolowercase(form) == wanted; }))
        << utf8(reading.analisia) << " gives " << joined(forms) << ", not " << utf8(word);
    return true;
}

bool has_reading(const std::vector<Analisia>& readings, const Analisia& wanted) {
    return std::any_of(readings.begin(), readings.end(), [&](const Analisia& reading) {
        return reading.lema == wanted.lema && reading.etiketa == wanted.etiketa;
    });
}

}  // namespace

TEST(RoundTrip, GeneratedFormsAreAnalysedBack) {
    std::mt19937 random(SEED);
    std::size_t lemmas = 0, forms = 0, silenced = 0;
    for (const auto& [tag, beginnings] : lemmas_by_class()) {
        for (const std::string& beginning :
             sample(beginnings, LEMMAS_PER_CLASS, random)) {
            ++lemmas;
            for (const Analisia& form :
                 main_table().sortuFormak(beginning, "", false, false)) {
                if (is_silenced(form) || loses_a_capital(form)) {
                    ++silenced;
                    continue;
                }
                ++forms;
                EXPECT_TRUE(has_reading(main_table().analizatuTokena(form.forma), form))
                    << utf8(form.forma) << " is not read as " << utf8(form.analisia)
                    << " (seed " << SEED << ')';
            }
        }
    }
    std::cout << lemmas << " lemmas, " << forms
              << " forms; left out as silenced: " << silenced << '\n';
    EXPECT_GT(lemmas, 800u);
    EXPECT_GT(forms, 50000u);
}

TEST(RoundTrip, WordsOfTheDataAreGeneratedFromTheirAnalyses) {
    std::set<std::string> words;
    for (const std::string file : {"right.txt", "vocabulary.txt"}) {
        for (const Row& row : rows_of(LANGUAGE_DATA / file, 1)) {
            for (const Verdict& verdict : check(basque(), row.cells[0], false)) {
                words.insert(verdict.text);
            }
        }
    }
    for (const std::string file : {"classes", "pronouns", "numerals", "verbs_nonfinite",
                                   "finite_synthetic", "finite_suffixes"}) {
        for (const Row& row : rows_of(LANGUAGE_DATA / (file + ".tsv"), 2)) {
            words.insert(row.cells[0]);
        }
    }
    std::size_t readings = 0;
    for (const std::string& word : words) {
        for (const Analisia& reading : basque().analizatuTokena(word, "eumorfo")) {
            readings += expect_generated(reading, word);
        }
    }
    std::cout << words.size() << " words, " << readings << " readings\n";
    EXPECT_GT(readings, 5000u);
}

// Genitives and local genitives go on as nouns of their own: etxearenak, etxekoari. The
// generation is silent about them unless its target is one, and then it ends with the
// last tag.
TEST(RoundTrip, ElidedNounsAreGeneratedFromTheirAnalyses) {
    std::mt19937 random(SEED);
    std::size_t readings = 0;
    for (const auto& [tag, beginnings] : lemmas_by_class()) {
        for (const std::string& beginning :
             sample(beginnings, ELIDED_PER_CLASS, random)) {
            for (const Analisia& form :
                 main_table().sortuFormak(beginning, "", false, false)) {
                const bool genitive = form.etiketa.find(" GEN") != std::string::npos ||
                                      form.etiketa.find(" GEL") != std::string::npos;
                if (!genitive || form.hobe + form.erabili != "") continue;
                for (const std::string ending : {"ak", "ari", "arekin", "etan"}) {
                    const std::string word = form.forma + ending;
                    for (const Analisia& reading : main_table().analizatuTokena(word)) {
                        readings += expect_generated(reading, word);
                    }
                }
            }
        }
    }
    std::cout << readings << " readings\n";
    EXPECT_GT(readings, 10000u);
}
