// A verdict for each token. Tests: tests/output/zuzenlex_test.cpp.
#include <iostream>
#include <ostream>
#include <string>

#include "analysis/text_pieces.h"
#include "output/write.h"

namespace {

/// Adds the forms of one recommendation that the verdict doesn't show yet.
void add_forms(std::string& verdict, const Tokena& token, const Analisia& analysis,
               const std::string& lemmas, const std::string& element,
               const Sarea* network) {
    if (network == nullptr) return;
    std::size_t m = 0;
    for (const Analisia& form : network->ordeztuForma(lemmas, analysis)) {
        // Kept on purpose: the network shown is that of the token's analysis with the
        // number of the form, not of the analysis that recommends it.
        const std::string name =
            m < token.analisiak.size() ? token.analisiak[m].hiztegia : std::string();
        ++m;
        const std::string text = "\n<prop>\n<" + element + ">" + form.forma + "</" +
                                 element + "><hizt>" + name + "</hizt></prop>";
        if (!lemara::contains(verdict, text)) verdict += text;
    }
}

std::string verdict_of(const Tokena& token, const Sarea* network) {
    std::string verdict;
    for (const Analisia& analysis : token.analisiak) {
        // Kept on purpose: an unknown word wipes the better forms found before it.
        if (analysis.etiketa == " EZZG") {
            verdict = "<prop k=\"ezz\"/>";
        } else if (analysis.etiketa == " EZZG_HAUL") {
            verdict = "<prop k=\"ezz\" h=\"bai\"/>";
        } else if (!analysis.hobe.empty()) {
            add_forms(verdict, token, analysis, analysis.hobe, "hobe", network);
        } else if (!analysis.erabili.empty()) {
            add_forms(verdict, token, analysis, analysis.erabili, "erabili", network);
        }
    }
    return verdict.empty() ? "<prop k=\"ok\"/>" : verdict;
}

}  // namespace

void lemara::write_zuzenlex(std::ostream& out, const Paragrafoa& paragraph,
                            const Sarea* network) {
    if (network != nullptr && network->taula == nullptr) network = nullptr;
    out << "<p>" << std::endl;
    int sentence_number = 0;
    for (const Esaldia& sentence : paragraph.esaldiak) {
        out << "<es ezk=\"" << ++sentence_number << "\" pzk=\"" << paragraph.zenbakia
            << "\">" << std::endl;
        int number = 0;
        for (const Tokena& token : sentence.tokenak) {
            // Kept on purpose: no quote closes the token's number, and none the spacing.
            out << "<tok h=\"" << ++number << " z=\"" << (token.hutsunea ? "32" : "0")
                << "><frm>" << token.testua << "</frm>" << verdict_of(token, network)
                << std::endl
                << "</tok>" << std::endl;
        }
        out << "</es>" << std::endl;
    }
    out << "</p>" << std::endl;
}

void Paragrafoa::print_Zuzenlex(const Sarea* sarea) const {
    lemara::write_zuzenlex(std::cout, *this, sarea);
}
