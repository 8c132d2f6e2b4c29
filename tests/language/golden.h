// Whole paragraphs over the built tables, in each of the formats: golden/NAME.in is a
// text of one paragraph, golden/NAME.FORMAT.out what must come out. All files are UTF-8.
#pragma once

#include <string>
#include <vector>

#include "language.h"

namespace lemara::test {

inline const std::filesystem::path GOLDEN = LANGUAGE_DATA / "golden";

// agurrak: greetings; galderak: questions; zenbakiak: numbers and dates; akatsak:
// mistakes of all kinds; perpausak: subordinate clauses; laburdurak: abbreviations,
// acronyms, names and multiword units.
inline const std::vector<std::string> GOLDEN_NAMES = {
    "agurrak", "akatsak", "galderak", "laburdurak", "perpausak", "zenbakiak"};
inline const std::vector<std::string> GOLDEN_FORMATS = {"multext", "cg3", "zuzenlex",
                                                        "ikute", "check"};

inline std::filesystem::path golden_file(const std::string& name,
                                         const std::string& format) {
    return GOLDEN / (name + '.' + format + ".out");
}

/// The paragraph `name` as the library writes it today, in UTF-8.
inline std::string golden_text(const std::string& name, const std::string& format) {
    std::string text = latin1(text_of_file(GOLDEN / (name + ".in")));
    if (!text.empty() && text.back() == '\n') text.pop_back();
    if (format == "check") {
        return host::utf8_from_latin1(basque().getParagrafoaZuzenlex(text, true));
    }
    const Paragrafoa paragraph = basque().analizatu_paragrafoa(1, text);
    if (format == "cg3") {
        return host::utf8_from_latin1(paragraph.get_CG3(true, false, false));
    }
    return host::utf8_from_latin1(stdout_of([&] {
        if (format == "multext") paragraph.print_Multext(true, false, false);
        if (format == "zuzenlex") paragraph.print_Zuzenlex(basque().sareak.at("eumorfo"));
        if (format == "ikute") paragraph.print_Ikute();
    }));
}

}  // namespace lemara::test
