// The paragraph of two tokens on which the output formats are shown, and builders for
// others.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support.h"

namespace lemara::test {

/// An analysis as a network gives it, in case class `maiuskula`.
inline Analisia analysis(const std::string& text, int maiuskula = 0,
                         const std::string& network = "eumorfo") {
    Analisia record(text, network);
    record.maiuskula = maiuskula;
    return record;
}

inline Tokena token(const std::string& text, bool blank,
                    std::vector<Analisia> analyses = {}) {
    Tokena result(text, blank, 0);
    result.analisiak = std::move(analyses);
    return result;
}

inline Esaldia sentence(const std::vector<Tokena>& tokens, int number = -1) {
    Esaldia result(number, "");
    result.tokenak = tokens;
    return result;
}

/// A paragraph with the number 7.
inline Paragrafoa paragraph(const std::vector<Esaldia>& sentences) {
    Paragrafoa result(7, "");
    result.esaldiak = sentences;
    return result;
}

/// A paragraph of one sentence of one token.
inline Paragrafoa one_token(const Tokena& only) { return paragraph({sentence({only})}); }

}  // namespace lemara::test
