// The notation of analysis strings, and the record that holds one taken apart.
// Tests: tests/analysis/Analisia_test.cpp.
#include "Analisia.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "analysis/text_pieces.h"
#include "karaktereak.h"

using lemara::contains;
using lemara::starts_with;
using lemara::text_of;

namespace {

/// Verbal prefixes that may stand in front of a lemma, in the order in which they are tested.
constexpr std::string_view PREFIXES[] = {
    "ba<AUR><MEN><BALD>",
    "ba<AUR><PRT>",
    "bait<AUR><MEN><KAUS>",
};

constexpr std::string_view BRACKET_KEYS[] = {"[h=", "[e=", "[p=", "[s=", "[a=", "[z=", "[c="};

/// The index behind the next `close` from `from` on, or the end of the text.
std::size_t behind(std::string_view text, char close, std::size_t from) {
    const std::size_t at = text.find(close, from);
    return at == std::string_view::npos ? text.size() : at + 1;
}

std::string read_lemma(std::string_view text) {
    std::size_t i = 0;
    for (const std::string_view prefix : PREFIXES) {
        if (!starts_with(text, prefix)) continue;
        i = prefix.size();
        break;
    }
    std::string lemma;
    while (i < text.size()) {
        if (text[i] == '<') {
            if (i + 1 >= text.size() || text[i + 1] != '0') break;
            i = behind(text, '>', i);
        } else if (text[i] == '[') {
            i = behind(text, ']', i);
            if (i >= text.size()) break;
            // Kept on purpose: whatever tag follows a bracket group does not end the lemma,
            // and any other byte there is copied untested, a second "[" included.
            if (text[i] == '<') {
                i = behind(text, '>', i);
            } else {
                lemma += text[i++];
            }
        } else {
            lemma += text[i++];
        }
    }
    return lemma;
}

std::string read_group(std::string_view text, std::string_view key) {
    const std::size_t at = text.find(key);
    if (at == std::string_view::npos) return "";
    const std::size_t start = at + key.size();
    return std::string(text.substr(start, text.find(']', start) - start));
}

/// Calls `visit` with the name of every tag, from left to right. The marker "<>" has an empty
/// name, and a "<" inside a bracket group opens a tag as well.
template <class Visit>
void for_each_tag(std::string_view text, Visit visit) {
    std::size_t open = text.find('<');
    while (open != std::string_view::npos) {
        const std::size_t close = text.find('>', open);
        visit(text.substr(open + 1, close - open - 1));  // npos: up to the end
        if (close == std::string_view::npos) return;
        open = text.find('<', close);
    }
}

bool is_quality(std::string_view name) { return starts_with(name, "0"); }
bool is_opinion(std::string_view name) { return starts_with(name, "1"); }
bool is_hp_class(std::string_view name) { return starts_with(name, "hp"); }

std::string ordinary_tags(std::string_view text) {
    std::string result;
    for_each_tag(text, [&](std::string_view name) {
        if (is_hp_class(name) || is_quality(name) || is_opinion(name)) return;
        result += ' ';
        result += name;
    });
    return result;
}

std::string tags_in_twol(std::string_view text) {
    std::string result;
    for_each_tag(text, [&](std::string_view name) {
        // Kept on purpose: all names in "h" are left out, and the empty one, where `etiketa`
        // leaves out "hp" alone. A tag <hX> is in `etiketa`, not in `twol`.
        if (name.empty() || name[0] == 'h') return;
        if (is_quality(name) || is_opinion(name)) return;
        result += '+';
        result += static_cast<char>(orbi_toupper(static_cast<unsigned char>(name[0])));
        for (const char c : name.substr(1)) {
            result += static_cast<char>(orbi_tolower(static_cast<unsigned char>(c)));
        }
    });
    return result;
}

std::string tags_of_kind(std::string_view text, bool (*is_kind)(std::string_view)) {
    std::string result;
    for_each_tag(text, [&](std::string_view name) {
        if (!is_kind(name)) return;
        result += ' ';
        result += name;
    });
    return result;
}

}  // namespace

std::string ateraGoitik(const char* analisia, const char* modua) {
    const std::string_view text = text_of(analisia);
    const std::string_view mode = text_of(modua);
    if (mode == "L") return read_lemma(text);
    for (const std::string_view key : BRACKET_KEYS) {
        if (mode == key) return read_group(text, key);
    }
    return "";
}

Analisia::Analisia(std::string analisia_, std::string hiztegia_)
    : analisia(std::move(analisia_)), hiztegia(std::move(hiztegia_)) {
    const std::string_view text = lemara::up_to_nul(analisia);
    lema = read_lemma(text);
    etiketa = ordinary_tags(text);
    twol = tags_in_twol(text);
    // A plus marks a boundary inside a word. A lemma that is just "+" is that sign, and a web
    // address keeps its own.
    if (lema.size() >= 2 && !contains(etiketa, "WEB")) {
        lema.erase(std::remove(lema.begin(), lema.end(), '+'), lema.end());
    }
    tasuna = tags_of_kind(text, is_quality);
    iritzia = tags_of_kind(text, is_opinion);
    sai = read_group(text, "[s=");
    hobe = read_group(text, "[h=");
    erabili = read_group(text, "[e=");
}

std::string Analisia::ateraEtiketa(const char* text) const {
    return ordinary_tags(text_of(text));
}

std::string Analisia::ateraTWOL(const char* text) const { return tags_in_twol(text_of(text)); }

std::string Analisia::ateraTasuna(const char* text) const {
    return tags_of_kind(text_of(text), is_quality);
}

std::string Analisia::ateraIritzia(const char* text) const {
    return tags_of_kind(text_of(text), is_opinion);
}

bool Analisia::CompareLemaLuzera(const Analisia& a, const Analisia& b) {
    return a.lema.size() < b.lema.size();
}

bool CompareLemaAlfabetikoa(const Analisia& a, const Analisia& b) { return a.lema < b.lema; }
