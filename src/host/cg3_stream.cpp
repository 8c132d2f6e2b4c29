// Sentences for vislcg3. Tests: tests/host/formats_test.cpp, and with vislcg3 itself
// tests/tools/outside_formats_test.py.
#include <algorithm>
#include <set>

#include "host/sentence_words.h"
#include "lemara/formats.h"

namespace lemara {

namespace {

constexpr char DELIMITER[] = "\"<EBUK>\"\n\t\"EBUK\" EBUK\n";

/// A base in its quotes. Nothing is escaped there, but a backslash at the end would take
/// the closing quote for escaped, so it gets another one.
std::string quoted(const std::string& base) {
    const std::size_t before = base.find_last_not_of('\\');
    const std::size_t backslashes = base.size() - (before == base.npos ? 0 : before + 1);
    return '"' + base + (backslashes % 2 == 1 ? "\\\"" : "\"");
}

/// A tag that names a value; blanks would end it.
std::string value_tag(const char* name, std::string value) {
    if (value.empty()) return "";
    std::replace(value.begin(), value.end(), ' ', '_');
    return std::string(" <") + name + '=' + value + '>';
}

const char* case_tag(const Reading& reading) {
    if (reading.case_class == 2) return " DEN_MAI";
    return reading.case_class == 1 ? " HAS_MAI" : "";
}

std::string readings_of(const Token& token, bool values) {
    std::set<std::string> seen;
    std::string lines;
    std::size_t id = 0;
    for (const Reading& reading : token.readings) {
        ++id;
        std::string tags;
        for (const std::string_view tag : host::names_in(reading.tags)) {
            tags += ' ' + std::string(tag);
        }
        tags += case_tag(reading);
        if (values) {
            tags += value_tag("s", reading.source) + value_tag("h", reading.better) +
                    value_tag("e", reading.instead);
        }
        if (!seen.insert(reading.lemma + '\t' + tags).second) continue;
        lines += '\t' + quoted(reading.lemma) + " <id=" + std::to_string(id) + '>' +
                 tags + '\n';
    }
    return lines;
}

}  // namespace

std::string to_cg3(const std::vector<Token>& sentence, std::size_t paragraph,
                   std::size_t number, bool values) {
    std::string unspaced, cohorts;
    std::size_t count = 0;
    for (const Token& token : sentence) {
        ++count;
        if (!token.blank_follows) {
            unspaced += (unspaced.empty() ? " z=" : ",") + std::to_string(count);
        }
        const std::string form = host::form_of(token.text);
        cohorts += "\"<" + form + ">\"\n";
        if (token.readings.empty()) {
            cohorts +=
                '\t' + quoted(form) + (token.foreign ? " EZZG <foreign>\n" : " EZZG\n");
        } else {
            cohorts += readings_of(token, values);
        }
    }
    return "{p=" + std::to_string(paragraph) + " s=" + std::to_string(number) + unspaced +
           "}\n" + DELIMITER + cohorts + DELIMITER;
}

}  // namespace lemara
