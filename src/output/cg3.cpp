// Cohorts and readings for a constraint grammar. Tests: tests/output/cg3_test.cpp.
#include <map>
#include <ostream>
#include <sstream>
#include <string>

#include "output/shared.h"
#include "output/write.h"

namespace {

constexpr char DELIMITER[] = "\"<EBUK>\"\n\t\"EBUK\" EBUK\n";
const std::string ID = "<id=";

/// The readings of a token by what is shown of them; equal ones add up their values.
std::map<std::string, std::string> readings_of(const Tokena& token, bool with_values) {
    std::map<std::string, std::string> readings;
    for (const Analisia& analysis : token.analisiak) {
        const std::string key = "\t\"" + analysis.lema + "\" " + ID + ">" +
                                analysis.etiketa +
                                lemara::case_mark(analysis, " HAS_MAI", " DEN_MAI");
        readings[key] += with_values ? lemara::values_of(analysis, " <") : "";
    }
    return readings;
}

}  // namespace

void lemara::write_cg3(std::ostream& out, const Paragrafoa& paragraph, bool with_values) {
    int sentence_number = 0;
    for (const Esaldia& sentence : paragraph.esaldiak) {
        out << sentence_header(paragraph, ++sentence_number, sentence) << '\n'
            << DELIMITER;
        for (const Tokena& token : sentence.tokenak) {
            // Kept on purpose: the quote stands inside the angle bracket.
            out << "<\"" << token.testua << "\">\n";
            int number = 0;
            for (const auto& reading : readings_of(token, with_values)) {
                // The first "<id=" takes the number, even one inside a lemma.
                const std::size_t behind_id = reading.first.find(ID) + ID.size();
                out << reading.first.substr(0, behind_id) << ++number
                    << reading.first.substr(behind_id) << reading.second << '\n';
            }
        }
        out << DELIMITER;
    }
}

std::string Paragrafoa::get_CG3(bool aldaerak, bool, bool) const {
    std::ostringstream out;
    lemara::write_cg3(out, *this, aldaerak);
    return out.str();
}
