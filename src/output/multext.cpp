// One line a token, its analyses as lemma and tag list. Tests:
// tests/output/multext_test.cpp.
#include <iostream>
#include <map>
#include <ostream>
#include <string>

#include "output/shared.h"
#include "output/write.h"

namespace {

/// The analyses of a token by what is shown of them; equal ones add up their values.
std::map<std::string, std::string> entries_of(const Tokena& token, bool with_values) {
    std::map<std::string, std::string> entries;
    for (const Analisia& analysis : token.analisiak) {
        const std::string base = analysis.lema == token.testua ? "=" : analysis.lema;
        const std::string key = base + '\\' + analysis.twol +
                                lemara::case_mark(analysis, "+Has_mai", "+Den_mai");
        entries[key] += with_values ? lemara::values_of(analysis, "<") : "";
    }
    return entries;
}

const char* place_of(std::size_t index, std::size_t count) {
    // A token that is first and last is the first.
    if (index == 0) return "BOS";
    return index + 1 == count ? "EOS" : "";
}

}  // namespace

void lemara::write_multext(std::ostream& out, const Paragrafoa& paragraph,
                           bool with_values) {
    int sentence_number = 0;
    for (const Esaldia& sentence : paragraph.esaldiak) {
        out << sentence_header(paragraph, ++sentence_number, sentence) << "\tEOS"
            << std::endl;
        const std::size_t count = sentence.tokenak.size();
        for (std::size_t i = 0; i < count; ++i) {
            const Tokena& token = sentence.tokenak[i];
            out << token.testua << '\t' << place_of(i, count) << '\t';
            const char* separator = "";
            for (const auto& entry : entries_of(token, with_values)) {
                out << separator << entry.first << entry.second;
                separator = "|";
            }
            out << std::endl;
        }
    }
    out << std::endl << std::endl;
}

void Paragrafoa::print_Multext(bool aldaerak, bool, bool) const {
    lemara::write_multext(std::cout, *this, aldaerak);
}
