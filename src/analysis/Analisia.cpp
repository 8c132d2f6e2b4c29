// The notation of analysis strings, and the record that holds one taken apart.
// Tests: tests/analysis/Analisia_test.cpp.
#include "Analisia.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/CommonParts.h"
#include "analysis/RecordText.h"
#include "analysis/text_pieces.h"
#include "karaktereak.h"

using lemara::contains;
using lemara::starts_with;
using lemara::text_of;

namespace {

/// Verbal prefixes that may stand in front of a lemma, in the order in which they are
/// tested.
constexpr std::string_view PREFIXES[] = {
    "ba<AUR><MEN><BALD>",
    "ba<AUR><PRT>",
    "bait<AUR><MEN><KAUS>",
};

constexpr std::string_view BRACKET_KEYS[] = {
    "[h=", "[e=", "[p=", "[s=", "[a=", "[z=", "[c="};

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
        const std::size_t plain = std::min(text.find_first_of("<[", i), text.size());
        lemma.append(text.substr(i, plain - i));
        i = plain;
        if (i == text.size()) break;
        if (text[i] == '<') {
            if (i + 1 >= text.size() || text[i + 1] != '0') break;
            i = behind(text, '>', i);
        } else {
            i = behind(text, ']', i);
            if (i >= text.size()) break;
            // Kept on purpose: whatever tag follows a bracket group does not end the
            // lemma, and any other byte there is copied untested, a second "[" included.
            if (text[i] == '<') {
                i = behind(text, '>', i);
            } else {
                lemma += text[i++];
            }
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

/// Calls `visit` with the name of every tag, from left to right. The marker "<>" has an
/// empty name, and a "<" inside a bracket group opens a tag as well.
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

bool is_quality(std::string_view name) { return !name.empty() && name[0] == '0'; }
bool is_opinion(std::string_view name) { return !name.empty() && name[0] == '1'; }
bool is_hp_class(std::string_view name) {
    return name.size() >= 2 && name[0] == 'h' && name[1] == 'p';
}

void append_name(std::string& list, std::string_view name) {
    list += ' ';
    list += name;
}

/// Writes an ordinary name behind a plus, recased to one capital. Takes an output
/// iterator, and answers where it is then.
template <class Out>
Out write_twol(Out out, std::string_view name) {
    // Kept on purpose: all names in "h" are left out, and the empty one, where `etiketa`
    // leaves out "hp" alone. A tag <hX> is in `etiketa`, not in `twol`.
    if (name.empty() || name[0] == 'h') return out;
    *out++ = '+';
    *out++ = static_cast<char>(lemara::raised(static_cast<std::uint8_t>(name[0])));
    for (const char c : name.substr(1)) {
        *out++ = static_cast<char>(lemara::lowered(static_cast<std::uint8_t>(c)));
    }
    return out;
}

/// The tags of one kind, each behind a blank.
template <class IsKind>
std::string tags_of_kind(const char* analysis, IsKind is_kind) {
    std::string result;
    for_each_tag(text_of(analysis), [&](std::string_view name) {
        if (!is_hp_class(name) && is_kind(name)) append_name(result, name);
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

namespace {

/// Where the lemma of most texts ends: at the first tag, with nothing in front of it to
/// be passed over. Npos if the text is none of those.
std::size_t end_of_plain_lemma(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] != '<' && text[i] != '[') ++i;
    if (i == text.size()) return i;
    const bool quality = i + 1 < text.size() && text[i + 1] == '0';
    if (text[i] == '[' || quality) return std::string_view::npos;
    const std::string_view front = text.substr(0, i);
    return front == "ba" || front == "bait" ? std::string_view::npos : i;
}

/// Room for two texts that are no longer than a third. On the stack, if that one is
/// short.
class TwoTexts {
public:
    explicit TwoTexts(std::size_t size) {
        if (size <= sizeof first_small_) return;
        large_.resize(2 * size);
        first = large_.data();
        second = first + size;
    }
    TwoTexts(const TwoTexts&) = delete;
    TwoTexts& operator=(const TwoTexts&) = delete;

    char* first = first_small_;
    char* second = second_small_;

private:
    char first_small_[256], second_small_[256];
    std::vector<char> large_;
};

}  // namespace

template <class Text, class Name>
Analisia::Analisia(const lemara::CommonParts& parts, Text&& analisia_, Name&& hiztegia_,
                   std::string_view forma_)
    : analisia(std::forward<Text>(analisia_)),
      lema(parts.lemma()),
      etiketa(parts.tags()),
      twol(parts.twol()),
      hiztegia(std::forward<Name>(hiztegia_)),
      forma(forma_) {
    if (!parts.found()) take_apart();
}

Analisia::Analisia(std::string analisia_, std::string hiztegia_)
    : Analisia(lemara::CommonParts(analisia_), std::move(analisia_), std::move(hiztegia_),
               {}) {}

Analisia::Analisia(const lemara::RecordText& text)
    : Analisia(lemara::CommonParts(text.analisia), text.analisia, text.hiztegia,
               text.forma) {}

/// The general road.
void Analisia::take_apart() {
    const std::string_view text = lemara::up_to_nul(analisia);
    const std::size_t plain = end_of_plain_lemma(text);
    bool groups = false;
    if (plain != std::string_view::npos) {
        lema.assign(text.substr(0, plain));
        groups = read_tags(text.substr(plain));
    } else {
        lema = read_lemma(text);
        read_tags(text.substr(std::min(text.find('<'), text.size())));
        groups = contains(text, "[");
    }
    // A plus marks a boundary inside a word. A lemma that is just "+" is that sign, and a
    // web address keeps its own.
    if (lema.size() >= 2 && contains(lema, "+") && !contains(etiketa, "WEB")) {
        lema.erase(std::remove(lema.begin(), lema.end(), '+'), lema.end());
    }
    if (!groups) return;
    sai = read_group(text, "[s=");
    hobe = read_group(text, "[h=");
    erabili = read_group(text, "[e=");
}

/// The four lists of tags in one pass; what each takes is told at its extractor, which is
/// its twin. The text begins with a tag, or is empty. True if it holds a "[".
bool Analisia::read_tags(std::string_view text) {
    const TwoTexts lists(text.size());
    char* tag_end = lists.first;
    char* twol_end = lists.second;
    bool groups = false;
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t begin = ++i;  // behind the "<"
        for (; i < text.size() && text[i] != '>'; ++i) groups = groups || text[i] == '[';
        const std::string_view name = text.substr(begin, i - begin);
        if (is_quality(name)) {
            append_name(tasuna, name);
        } else if (is_opinion(name)) {
            append_name(iritzia, name);
        } else if (!is_hp_class(name)) {
            *tag_end++ = ' ';
            for (const char c : name) *tag_end++ = c;
            twol_end = write_twol(twol_end, name);
        }
        for (; i < text.size() && text[i] != '<'; ++i) groups = groups || text[i] == '[';
    }
    etiketa.assign(lists.first, tag_end);
    twol.assign(lists.second, twol_end);
    return groups;
}

std::string Analisia::ateraEtiketa(const char* text) const {
    return tags_of_kind(text, [](std::string_view name) {
        return !is_quality(name) && !is_opinion(name);
    });
}

std::string Analisia::ateraTWOL(const char* text) const {
    std::string result;
    for_each_tag(text_of(text), [&](std::string_view name) {
        if (!is_quality(name) && !is_opinion(name))
            write_twol(std::back_inserter(result), name);
    });
    return result;
}

std::string Analisia::ateraTasuna(const char* text) const {
    return tags_of_kind(text, is_quality);
}

std::string Analisia::ateraIritzia(const char* text) const {
    return tags_of_kind(text, is_opinion);
}

bool Analisia::CompareLemaLuzera(const Analisia& a, const Analisia& b) {
    return a.lema.size() < b.lema.size();
}

bool CompareLemaAlfabetikoa(const Analisia& a, const Analisia& b) {
    return a.lema < b.lema;
}
