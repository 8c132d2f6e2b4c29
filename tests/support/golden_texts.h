// What tests of whole paragraphs share: the texts of a folder, and a paragraph in each
// format.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support.h"

namespace lemara::test {

inline const std::vector<std::string> GOLDEN_FORMATS = {"multext", "cg3", "zuzenlex",
                                                        "ikute", "check"};

/// The names of the files *.in in a folder, sorted.
inline std::vector<std::string> texts_in(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".in")
            names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// A paragraph in one of the formats. All is Latin-1.
inline std::string rendered(const Lemara& engine, const std::string& format,
                            const std::string& text) {
    if (format == "check") return engine.getParagrafoaZuzenlex(text, true);
    const Paragrafoa paragraph = engine.analizatu_paragrafoa(1, text);
    if (format == "cg3") return paragraph.get_CG3(true, false, false);
    return stdout_of([&] {
        if (format == "multext") paragraph.print_Multext(true, false, false);
        if (format == "zuzenlex") paragraph.print_Zuzenlex(engine.sareak.at("eumorfo"));
        if (format == "ikute") paragraph.print_Ikute();
    });
}

}  // namespace lemara::test
