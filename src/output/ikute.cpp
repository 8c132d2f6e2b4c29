// The problem words of a text. Tests: tests/output/ikute_test.cpp.
#include <iostream>
#include <ostream>
#include <string>
#include <string_view>

#include "output/write.h"

namespace {

constexpr std::string_view TOKEN_OPENING = "\">\n\t\t<frm>";

std::string line(const char* element, const std::string& value) {
    return std::string("\t\t\t<") + element + ">" + value + "</" + element + ">\n";
}

/// The block of one analysis. `recommended` is the element of its recommendation, or
/// empty.
std::string analysis_block(const Analisia& analysis, std::size_t id,
                           const std::string& kind, const std::string& recommendation) {
    std::string block = "\t\t<an id=\"" + std::to_string(id) + "\">\n";
    block += line("lem", analysis.lema) + line("lbl", analysis.twol) +
             line("hizt", analysis.hiztegia) + line("prop", kind);
    if (!analysis.sai.empty()) block += line("sai", analysis.sai);
    return block + recommendation + "\t\t</an>\n";
}

/// The analyses of a token; `flagged` tells whether it is a problem word.
std::string token_block(const Tokena& token, bool& flagged) {
    std::string block;
    std::size_t id = 0;
    for (const Analisia& analysis : token.analisiak) {
        ++id;
        if (analysis.etiketa == " EZZG" || analysis.etiketa == " EZZG_HAUL") {
            flagged = true;
        } else if (!analysis.hobe.empty()) {
            flagged = true;
            block += analysis_block(analysis, id, "h.", line("hobe", analysis.hobe));
        } else if (!analysis.erabili.empty()) {
            flagged = true;
            block +=
                analysis_block(analysis, id, "e.", line("erabili", analysis.erabili));
        } else {
            block += analysis_block(analysis, id, "f.e.", "");
        }
    }
    return block;
}

std::string sentence_block(const Esaldia& sentence) {
    std::string text;
    std::size_t number = 0;
    for (const Tokena& token : sentence.tokenak) {
        ++number;
        bool flagged = false;
        const std::string block = token_block(token, flagged);
        if (!flagged) continue;
        // Kept on purpose: the text is replaced, so the last problem word alone is seen,
        // and the token's number shows only in how many bytes the literal loses in front.
        text = "\t<tok hid=\"";
        if (number <= TOKEN_OPENING.size()) text += TOKEN_OPENING.substr(number);
        text += token.testua + "</frm>\n" + block + "\t</tok>";
    }
    return text;
}

}  // namespace

void lemara::write_ikute(std::ostream& out, const Paragrafoa& paragraph) {
    int sentence_number = 0;
    for (const Esaldia& sentence : paragraph.esaldiak) {
        ++sentence_number;
        const std::string text = sentence_block(sentence);
        if (text.empty()) continue;
        out << "<es eid=\"" << sentence_number << "\" pid=\"" << paragraph.zenbakia
            << "\" >" << std::endl
            << text << std::endl
            << "</es>" << std::endl;
    }
}

void Paragrafoa::print_Ikute() const { lemara::write_ikute(std::cout, *this); }
