#include "host/addresses.h"

#include <algorithm>
#include <iterator>

#include "host/characters.h"
#include "lemara/utf8.h"

namespace lemara::host {

namespace {

constexpr std::size_t LONGEST_SCHEME = 24;  // bytes
constexpr std::size_t LONGEST_NAME =
    320;  // bytes of a mail address, host name or file name

// Endings of host names that are taken for one without "www." or a scheme. None of them
// is a word that could stand behind a dot with its blank forgotten.
constexpr std::string_view DOMAINS[] = {"cat", "com",  "edu", "es",  "eu",  "eus",
                                        "fr",  "info", "io",  "net", "org", "uk"};

constexpr std::string_view FILE_ENDINGS[] = {
    "c",    "cfg", "cpp",  "css", "csv",  "doc", "docx", "epub", "exe", "gif",  "gz",
    "h",    "htm", "html", "ini", "iso",  "jar", "jpeg", "jpg",  "js",  "json", "log",
    "md",   "mp3", "mp4",  "odp", "ods",  "odt", "ogg",  "pdf",  "php", "png",  "ppt",
    "pptx", "py",  "rar",  "rtf", "sare", "sh",  "svg",  "tar",  "tex", "tmp",  "txt",
    "wav",  "xls", "xlsx", "xml", "yaml", "yml", "zip"};

bool is_ascii_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool is_ascii_alnum(char c) { return is_ascii_letter(c) || (c >= '0' && c <= '9'); }

char small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

bool begins_with(std::string_view text, std::string_view start) {
    if (text.size() < start.size()) return false;
    return std::equal(start.begin(), start.end(), text.begin(),
                      [](char a, char b) { return a == small(b); });
}

template <std::size_t N>
bool is_listed(const std::string_view (&list)[N], std::string_view word) {
    return std::any_of(std::begin(list), std::end(list), [&](std::string_view entry) {
        return entry.size() == word.size() && begins_with(word, entry);
    });
}

/// Bytes at the start of `text` that satisfy `fits`, at most `most`.
template <class Fits>
std::size_t run_of(std::string_view text, std::size_t most, Fits fits) {
    std::size_t n = 0;
    while (n < text.size() && n < most && fits(text[n])) ++n;
    return n;
}

/// Signs that end a sentence or a bracket rather than an address.
bool is_closing(char32_t c) {
    constexpr std::u32string_view CLOSING = U".,;:!?'\"*_\u2019\u2026\u00bb\u201d)]}";
    return CLOSING.find(c) != CLOSING.npos;
}

bool ends_address(const Character& c) {
    constexpr std::u32string_view ENDS = U"<>\"|`\u00ab\u00bb\u201c\u201d\u201e";
    if (ENDS.find(c.code) != ENDS.npos) return true;
    const Role role = folding_of(c.code).role;
    return role == Role::blank || role == Role::line_end;
}

/// Bytes up to a blank or a sign that no address holds, without the closing signs at its
/// end. A closing bracket stays if its opening one is inside.
std::size_t address_run(std::string_view text) {
    std::size_t end = 0, at = 0;
    int open = 0;
    while (at < text.size()) {
        const Character c = character_at(text, at);
        if (ends_address(c)) break;
        at += c.length;
        if (c.code == '(') ++open;
        const bool pair = c.code == ')' && open-- > 0;
        if (pair || !is_closing(c.code)) end = at;
    }
    return end;
}

std::size_t web_address(std::string_view text) {
    if (begins_with(text, "www.") && text.size() > 4 && is_ascii_alnum(text[4])) {
        return address_run(text);
    }
    if (!is_ascii_letter(text[0])) return 0;
    const std::size_t scheme = run_of(text, LONGEST_SCHEME, [](char c) {
        return is_ascii_alnum(c) || c == '+' || c == '-' || c == '.';
    });
    const std::string_view rest = text.substr(scheme);
    if (begins_with(rest, "://") && rest.size() > 3) {
        const std::size_t end = address_run(text);
        return end > scheme + 3 ? end : 0;
    }
    if (begins_with(text, "mailto:") || begins_with(text, "data:image/")) {
        return address_run(text);
    }
    return 0;
}

/// "@handle", "#hashtag".
std::size_t tag(std::string_view text) {
    if ((text[0] != '@' && text[0] != '#') || text.size() < 2) return 0;
    std::size_t at = 1, end = 0;
    while (at < text.size()) {
        const Character c = character_at(text, at);
        const Role role = folding_of(c.code).role;
        const bool part =
            role == Role::word || role == Role::foreign || role == Role::accent;
        if (!part && c.code != '_' && c.code != '-' && c.code != '.') break;
        at += c.length;
        if (part) end = at;
    }
    return end;
}

/// "/a/b", "~/a", "./a", "../a", "C:\a".
std::size_t path(std::string_view text) {
    if (text.size() > 3 && is_ascii_letter(text[0]) && text[1] == ':' &&
        text[2] == '\\') {
        return address_run(text);
    }
    if (begins_with(text, "~/") || begins_with(text, "./") || begins_with(text, "../")) {
        return address_run(text);
    }
    if (text[0] != '/') return 0;
    const std::size_t name = run_of(text.substr(1), LONGEST_NAME, [](char c) {
        return is_ascii_alnum(c) || c == '.' || c == '_' || c == '-' || (c & 0x80) != 0;
    });
    const std::string_view rest = text.substr(1 + name);
    return name > 0 && begins_with(rest, "/") ? address_run(text) : 0;
}

/// The last dot-separated part of a name, up to its first "-", which begins a case
/// ending.
std::string_view ending_of(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || !is_ascii_alnum(name[dot - 1]))
        return "";
    const std::string_view last = name.substr(dot + 1);
    return last.substr(0, last.find('-'));
}

/// "izena@adibidea.eus", "adibidea.eus/orria", "karpeta/fitxategia.txt".
std::size_t name(std::string_view text) {
    if (!is_ascii_alnum(text[0])) return 0;
    const std::size_t length = run_of(text, LONGEST_NAME, [](char c) {
        return is_ascii_alnum(c) || c == '.' || c == '_' || c == '-' || c == '+' ||
               c == '%';
    });
    std::string_view found = text.substr(0, length);
    const std::string_view rest = text.substr(length);
    if (rest.size() > 1 && rest[0] == '@' && is_ascii_alnum(rest[1])) {
        const std::size_t host = run_of(rest.substr(1), LONGEST_NAME, [](char c) {
            return is_ascii_alnum(c) || c == '.' || c == '-';
        });
        const std::size_t dot = rest.substr(1, host).find('.');
        if (dot != std::string_view::npos && dot + 1 < host) {
            return std::max(address_run(text), length + 1);
        }
    }
    if (rest.size() > 1 && rest[0] == '/') {
        if (is_listed(DOMAINS, ending_of(found))) return address_run(text);
        const std::size_t all = run_of(text, LONGEST_NAME, [](char c) {
            return is_ascii_alnum(c) || c == '.' || c == '_' || c == '-' || c == '/';
        });
        found = text.substr(0, all);
    }
    while (!found.empty() && found.back() == '.') found.remove_suffix(1);
    const std::string_view ending = ending_of(found);
    if (!is_listed(DOMAINS, ending) && !is_listed(FILE_ENDINGS, ending)) return 0;
    // A letter of more than ASCII goes on from here: a word, not a name.
    const std::string_view behind = text.substr(found.size());
    return !behind.empty() && (behind[0] & 0x80) != 0 &&
                   folding_of(character_at(behind, 0).code).role == Role::word
               ? 0
               : found.size();
}

}  // namespace

std::size_t address_at(std::string_view text, std::size_t at) {
    text.remove_prefix(at);
    if (text.empty()) return 0;
    for (const auto kind : {web_address, tag, path, name}) {
        if (const std::size_t length = kind(text)) return length;
    }
    return 0;
}

bool may_precede_address(char32_t character) {
    constexpr std::u32string_view INSIDE = U"@._%+-/\\#~&=?:'\u2019";
    if (INSIDE.find(character) != INSIDE.npos) return false;
    const Role role = folding_of(character).role;
    return role != Role::word && role != Role::foreign && role != Role::accent;
}

}  // namespace lemara::host
