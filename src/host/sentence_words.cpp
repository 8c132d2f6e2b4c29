#include "host/sentence_words.h"

#include <algorithm>

#include "host/addresses.h"
#include "host/characters.h"
#include "lemara/utf8.h"

namespace lemara::host {

namespace {

constexpr char32_t LATIN_1_END = 0x100;

/// Joins `accent` with the letter that ends `form`, whose code is `last`; 0 if they don't
/// make one letter.
char32_t joined(std::string& form, char32_t last, char32_t accent) {
    if (last == 0 || last >= LATIN_1_END) return 0;
    const char letter = composed(static_cast<char>(last), accent);
    if (letter == 0) return 0;
    form.resize(form.size() - (last < 0x80 ? 1 : 2));
    const char32_t code = static_cast<unsigned char>(letter);
    append_utf8(form, code);
    return code;
}

}  // namespace

std::vector<Word> words_of(std::string_view text, bool join_accents) {
    std::vector<Word> words;
    bool within = false;
    char32_t last = 0;
    std::size_t number = 0;
    for (std::size_t at = 0; at < text.size(); ++number) {
        const Character c = character_at(text, at);
        at += c.length;
        const Role role = c.valid ? folding_of(c.code).role : Role::foreign;
        if (role == Role::blank || role == Role::line_end) {
            within = false;
            continue;
        }
        if (!within) words.push_back({"", number, number});
        Word& word = words.back();
        if (!within) last = 0;
        within = true;
        word.end = number + 1;
        const char32_t letter =
            join_accents && role == Role::accent ? joined(word.form, last, c.code) : 0;
        last = letter != 0 ? letter : c.code;
        if (letter == 0) append_utf8(word.form, c.code);
    }
    return words;
}

std::string form_of(std::string_view text) {
    std::string form;
    for (const Word& word : words_of(text, false))
        form += (form.empty() ? "" : " ") + word.form;
    return form;
}

std::vector<std::string_view> names_in(std::string_view names) {
    std::vector<std::string_view> list;
    while (!names.empty()) {
        const std::string_view name = names.substr(0, names.find(' '));
        names.remove_prefix(std::min(name.size() + 1, names.size()));
        if (!name.empty()) list.push_back(name);
    }
    return list;
}

Unread kind_of_unread(std::string_view text) {
    if (!text.empty() && address_at(text, 0) == text.size()) return Unread::address;
    for (std::size_t at = 0; at < text.size();) {
        const Character c = character_at(text, at);
        at += c.length;
        const Role role = c.valid ? folding_of(c.code).role : Role::sign;
        if (role == Role::word || role == Role::foreign) return Unread::word;
    }
    return Unread::sign;
}

}  // namespace lemara::host
