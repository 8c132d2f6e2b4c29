// Filters on analysis strings as text. Tests: tests/analysis/iragazkiak_test.cpp.
#include "iragazkiak.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "Analisia.h"
#include "analysis/tag_scan.h"
#include "analysis/text_pieces.h"
#include "karaktereak.h"

using lemara::contains;
using lemara::ends_with;
using lemara::starts_with;
using lemara::text_of;

namespace {

bool begins_small(std::string_view text) {
    return !text.empty() && orbi_islower(text[0]);
}
bool begins_capital(std::string_view text) {
    return !text.empty() && orbi_isupper(text[0]);
}

/// A lemma with a capital is not read off a token in small letters.
bool case_fits(std::string_view token, std::string_view analysis) {
    return !(begins_small(token) && begins_capital(analysis));
}

/// Ends of multiword lemmas that the tables over-generate: what stands in front of a
/// blank and behind it.
constexpr std::string_view FALSE_LEMMAS[][2] = {
    {"bidea", "ireki<"}, {"bat", "egin<"}, {"bat", "etorri<"},   {"asko", "izan<"},
    {"bat", "egon<"},    {"bat", "izan<"}, {"bat", "ere<"},      {"eta", "bi<"},
    {"eta", "beste<"},   {"eta", "gero<"}, {"lagun", "eraman<"}, {"lagun", "izan<"},
    {"nahi", "beste<"},  {"nola", "ez<"},  {"era", "batera<"},
};

/// True if an analysis holds one of them. Every analysis of several words is asked, so
/// only its blanks are looked at.
bool holds_false_lemma(std::string_view analysis) {
    std::size_t blank = analysis.find(' ');
    for (; blank != std::string_view::npos; blank = analysis.find(' ', blank + 1)) {
        const std::string_view before = analysis.substr(0, blank);
        const std::string_view behind = analysis.substr(blank + 1);
        for (const auto& [first, last] : FALSE_LEMMAS) {
            if (starts_with(behind, last) && ends_with(before, first)) return true;
        }
    }
    return false;
}

/// The same, wrong only as the noun of a compound postposition.
constexpr std::string_view FALSE_POSTPOSITIONS[] = {
    "baina<",    "bat<IZE>",  "bate<IZE>", "bata<IZE>", "gara<IZE>",
    "ondo<IZE>", "bera<ADJ>", "be<IZE>",   "zut<ADJ>",
};

bool fits_token(std::string_view token, std::string_view analysis,
                const lemara::TagScan& tags) {
    if (!case_fits(token, analysis)) return false;
    if ((tags.person_or_place || tags.other_name) && begins_small(token)) return false;
    return !tags.symbol || starts_with(token, ateraGoitik(analysis.data(), "L"));
}

bool is_false_lemma(std::string_view analysis, const lemara::TagScan& tags) {
    if (holds_false_lemma(analysis)) return true;
    if (!tags.postposition) return false;
    for (const std::string_view lemma : FALSE_POSTPOSITIONS) {
        if (contains(analysis, lemma)) return true;
    }
    return contains(analysis, "ondorengo") && contains(analysis, "<ELI_IZE>");
}

}  // namespace

bool egiaztatuIzenLehenMaiuskulak(const char* tokena, const char* analisia) {
    return case_fits(text_of(tokena), text_of(analisia));
}

bool egiaztatuIzenBereziak(const char* tokena, const char* analisia) {
    const std::string_view token = text_of(tokena), analysis = text_of(analisia);
    if (!case_fits(token, analysis)) return false;
    const bool name = contains(analysis, "<PIB>") || contains(analysis, "<LIB>");
    return !(name && begins_small(token));
}

bool egiaztatuIzenBereziakEtaSinboloak(const char* tokena, const char* analisia) {
    const std::string_view analysis = text_of(analisia);
    return fits_token(text_of(tokena), analysis, lemara::TagScan(analysis));
}

bool egiaztatuLAB(const char* tokena, const char* analisia) {
    const std::string_view token = text_of(tokena), analysis = text_of(analisia);
    const bool short_form = contains(analysis, "<SNB>") || contains(analysis, "<SIG>") ||
                            contains(analysis, "<LAB>");
    if (!short_form) return false;
    // Kept on purpose: the token is not compared with the lemma in front of the first "<"
    // but with the whole analysis, and with nothing at all if the analysis begins with a
    // tag.
    return analysis[0] == '<' || token == analysis;
}

bool kenduHAULtxarrak(const char* analisia, const char*) {
    const std::string_view analysis = text_of(analisia);
    return !is_false_lemma(analysis, lemara::TagScan(analysis));
}

bool lemara::is_kept_by_filters(std::string_view token, std::string_view analysis) {
    const TagScan tags(analysis);
    return fits_token(token, analysis, tags) && !is_false_lemma(analysis, tags);
}

bool kalkulatuMaiuskulak(const char* hitza) {
    const std::string_view word = text_of(hitza);
    const bool all_raised = std::all_of(word.begin(), word.end(), [](char c) {
        const auto byte = static_cast<std::uint8_t>(c);
        return lemara::raised(byte) == byte;
    });
    if (all_raised) return true;
    // Kept on purpose: an accented capital in front of small letters is no capital here,
    // though the test above knows accented letters.
    return orbi_isupper(word[0]);
}

void aldatuMaiuskulakLow(const char* goikoa, char* behekoa) {
    if (goikoa == nullptr || behekoa == nullptr) return;
    // Kept on purpose: the two are compared index by index. Behind a letter that the form
    // inserted or dropped, only chance carries a capital over.
    for (; *behekoa != '\0' && *goikoa != '\0' && *goikoa != '<'; ++goikoa, ++behekoa) {
        const bool capital = *goikoa >= 'A' && *goikoa <= 'Z';
        if (capital && *behekoa == *goikoa + 32) *behekoa = *goikoa;
    }
}

std::string garbitu_upp(std::string analisia) {
    const std::string_view text = lemara::up_to_nul(analisia);
    std::size_t i = text.find('<');
    if (i == std::string_view::npos) return analisia;
    std::string tail;
    while (i < text.size()) {
        const bool quality = text[i] == '<' && i + 1 < text.size() && text[i + 1] == '0';
        if (quality || text[i] == '[') {
            const std::size_t close = text.find(quality ? '>' : ']', i);
            if (close == std::string_view::npos) break;
            i = close + 1;
        } else {
            tail += text[i++];
        }
    }
    return tail;
}
