#include "output/shared.h"

std::string lemara::sentence_header(const Paragrafoa& paragraph, int sentence_number,
                                    const Esaldia& sentence) {
    std::string unspaced;
    std::size_t number = 0;
    for (const Tokena& token : sentence.tokenak) {
        ++number;
        if (token.hutsunea) continue;
        unspaced += (unspaced.empty() ? " z=" : ",") + std::to_string(number);
    }
    return "{p=" + std::to_string(paragraph.zenbakia) +
           " s=" + std::to_string(sentence_number) + unspaced + "}";
}

std::string lemara::values_of(const Analisia& analysis, const std::string& open) {
    std::string values;
    const auto add = [&](const char* key, const std::string& value) {
        if (value.empty()) return;
        if (!values.empty()) values += ' ';
        values += key + value;
    };
    add("s=", analysis.sai);
    add("h=", analysis.hobe);
    add("e=", analysis.erabili);
    return values.empty() ? "" : open + values + ">";
}

std::string lemara::case_mark(const Analisia& analysis, const char* first,
                              const char* all) {
    if (analysis.maiuskula == 2) return all;
    return analysis.maiuskula == 1 ? first : "";
}
