// Stem and verbal noun of a verb, from the end of its participle. The first rule that
// fits decides; there is no lexicon behind it. Tests: tests/dictionary/verbs_test.cpp.
#include <string>
#include <string_view>

#include "HiztegiPertsonala.h"
#include "karaktereak.h"

namespace {

struct VerbRule {
    std::string_view ending;
    std::size_t shortest;  ///< bytes of the shortest participle that the rule is tried on
    std::size_t stem_cut;
    std::string_view stem_end;
    std::size_t noun_cut;
    std::string_view noun_end;
};

// The order of the rows decides: "ztu" and "stu" stand before "tu", "tzi" and "tsi"
// before "zi" and "si", "rri" before "ri".
constexpr VerbRule RULES[] = {
    {"ztu", 3, 3, "tz", 2, "te"},  {"stu", 3, 3, "ts", 2, "te"},
    {"tzi", 3, 3, "tz", 3, "zte"}, {"tsi", 3, 3, "ts", 3, "ste"},
    {"tsi", 3, 3, "tx", 3, "xte"},  // Kept on purpose: never reached, behind its own
                                    // ending.
    {"n", 2, 0, "", 1, "te"},       // Kept on purpose: not tried on a word of one byte.
    {"zi", 2, 0, "", 1, "te"},     {"si", 2, 0, "", 1, "te"},
    {"rri", 3, 2, "", 2, "tze"},   {"ni", 2, 1, "", 1, "tze"},
    {"li", 2, 1, "", 1, "tze"},    {"ri", 2, 1, "", 1, "tze"},
    {"tu", 2, 2, "", 2, "tze"},    {"ldu", 3, 2, "", 2, "tze"},
    {"ndu", 3, 2, "", 2, "tze"},   {"", 0, 0, "", 0, "tze"},  // any word
};

/// The ending is sought in small letters; what is kept of the word keeps its capitals.
const VerbRule& rule_for(const std::string& participle) {
    const std::string lowered = tolowercase(participle);
    for (const VerbRule& rule : RULES) {
        const std::size_t n = rule.ending.size();
        if (lowered.size() < rule.shortest || lowered.size() < n) continue;
        if (lowered.compare(lowered.size() - n, n, rule.ending) == 0) return rule;
    }
    return RULES[std::size(RULES) - 1];
}

std::string reshaped(const std::string& word, std::size_t cut, std::string_view end) {
    return word.substr(0, word.size() - cut).append(end);
}

}  // namespace

std::string HiztegiPertsonala::lortuAdoin(const std::string& aditza) const {
    const VerbRule& rule = rule_for(aditza);
    return reshaped(aditza, rule.stem_cut, rule.stem_end);
}

std::string HiztegiPertsonala::lortuAditzizen(const std::string& aditza) const {
    const VerbRule& rule = rule_for(aditza);
    return reshaped(aditza, rule.noun_cut, rule.noun_end);
}
