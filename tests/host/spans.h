// The property of positions, judged by plain means: every character of the text is listed
// with its places once, and each token and finding is held against that list.
#pragma once

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "lemara/checker.h"

namespace lemara::test {

struct PlainCharacter {
    char32_t code = 0;
    bool valid = true;
    Place place;
    std::size_t line = 1, column = 1, column_utf16 = 1;
};

/// How many bytes at the start of `bytes` (4 or fewer) are one character, or one piece
/// that begins like one: by trying all that UTF-8 can say.
inline PlainCharacter plain_character(const std::string& bytes, std::size_t& length) {
    PlainCharacter c;
    utf8proc_int32_t code = -1;
    const auto* data = reinterpret_cast<const utf8proc_uint8_t*>(bytes.data());
    const utf8proc_ssize_t got =
        utf8proc_iterate(data, static_cast<utf8proc_ssize_t>(bytes.size()), &code);
    if (got > 0) {
        length = static_cast<std::size_t>(got);
        c.code = static_cast<char32_t>(code);
        return c;
    }
    c.valid = false;
    c.code = 0xFFFD;
    // The longest beginning of it that some character has.
    length = 1;
    for (std::size_t n = 2; n <= 3 && n <= bytes.size(); ++n) {
        bool begins_one = false;
        for (int b = 0x80; b <= 0xBF && !begins_one; ++b) {
            std::string longer = bytes.substr(0, n) + static_cast<char>(b);
            if (n == 2 && static_cast<unsigned char>(bytes[0]) >= 0xF0) longer += '\200';
            const auto* start = reinterpret_cast<const utf8proc_uint8_t*>(longer.data());
            begins_one =
                utf8proc_iterate(start, static_cast<utf8proc_ssize_t>(longer.size()),
                                 &code) == static_cast<utf8proc_ssize_t>(longer.size());
        }
        if (!begins_one) break;
        length = n;
    }
    return c;
}

/// All characters of a text, and one more for its end.
inline std::vector<PlainCharacter> plain_characters(const std::string& text) {
    std::vector<PlainCharacter> list;
    Place place;
    std::size_t line = 1, column = 1, column_utf16 = 1;
    while (place.byte < text.size()) {
        std::size_t length = 0;
        PlainCharacter c = plain_character(text.substr(place.byte, 4), length);
        c.place = place;
        c.line = line;
        c.column = column;
        c.column_utf16 = column_utf16;
        const std::size_t units = c.code >= 0x10000 ? 2 : 1;
        const bool crlf = c.code == '\r' && place.byte + 1 < text.size() &&
                          text[place.byte + 1] == '\n';
        place.byte += length;
        place.code_point += 1;
        place.utf16 += units;
        column += 1;
        column_utf16 += units;
        if (c.code == '\n' || (c.code == '\r' && !crlf))
            ++line, column = column_utf16 = 1;
        if (c.code == 0xFEFF && list.empty()) column = column_utf16 = 1;
        list.push_back(c);
    }
    PlainCharacter end;
    end.place = place;
    end.line = line;
    end.column = column;
    end.column_utf16 = column_utf16;
    list.push_back(end);
    return list;
}

inline bool is_dropped(char32_t c) {
    return c == 0xAD || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF || c == 0x34F || c == 0x61C ||
           (c >= 0x180B && c <= 0x180F) || (c >= 0xFE00 && c <= 0xFE0F) ||
           (c >= 0xE0000 && c <= 0xE01EF);
}

inline bool is_plain_blank(char32_t c) {
    if (c <= ' ' || (c >= 0x7F && c <= 0xA0)) return true;
    const auto category = utf8proc_category(static_cast<utf8proc_int32_t>(c));
    return category == UTF8PROC_CATEGORY_ZS || category == UTF8PROC_CATEGORY_ZL ||
           category == UTF8PROC_CATEGORY_ZP;
}

/// A text as its token shows it: composed by utf8proc, folded, blanks and dots left out
/// (a dot behind a number is no part of a token).
inline std::string plain_fold(const std::string& text) {
    std::string visible;
    for (const PlainCharacter& c : plain_characters(text)) {
        if (c.code == 0 || is_dropped(c.code)) continue;
        utf8proc_uint8_t bytes[4];
        const auto n = utf8proc_encode_char(static_cast<utf8proc_int32_t>(c.code), bytes);
        visible.append(reinterpret_cast<char*>(bytes), static_cast<std::size_t>(n));
    }
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> composed(
        utf8proc_NFC(reinterpret_cast<const utf8proc_uint8_t*>(visible.c_str())),
        &std::free);
    if (composed == nullptr) return "not UTF-8";
    std::string folded;
    for (const PlainCharacter& c :
         plain_characters(reinterpret_cast<char*>(composed.get()))) {
        if (is_plain_blank(c.code) || c.code == '.') continue;
        const auto category = utf8proc_category(static_cast<utf8proc_int32_t>(c.code));
        const std::string typed = [&] {
            utf8proc_uint8_t bytes[4];
            const auto n =
                utf8proc_encode_char(static_cast<utf8proc_int32_t>(c.code), bytes);
            return std::string(reinterpret_cast<char*>(bytes),
                               static_cast<std::size_t>(n));
        }();
        if (c.code >= 0xFB00 && c.code <= 0xFB04) {
            constexpr const char* LIGATURES[] = {"ff", "fi", "fl", "ffi", "ffl"};
            folded += LIGATURES[c.code - 0xFB00];
        } else if (c.code == 0x2025 || c.code == 0x2026 || c.code == 0x2024) {
            continue;  // dots
        } else if (category == UTF8PROC_CATEGORY_PD || c.code == 0x2212 ||
                   c.code == 0x2043) {
            folded += '-';
        } else if (c.code == 0x201C || c.code == 0x201D || c.code == 0x201E ||
                   c.code == 0x201F || c.code == 0x2033 || c.code == 0xAB ||
                   c.code == 0xBB) {
            folded += '"';
        } else if ((c.code >= 0x2018 && c.code <= 0x201B) || c.code == 0x2032 ||
                   c.code == 0x2039 || c.code == 0x203A || c.code == '`' ||
                   c.code == 0xB4 || (c.code >= 0x2B9 && c.code <= 0x2BD) ||
                   c.code == 0xFF07) {
            folded += '\'';
        } else {
            folded += typed;
        }
    }
    return folded;
}

/// What is wrong with the spans of a text; empty if nothing is.
class SpanJudge {
public:
    explicit SpanJudge(const std::string& text)
        : text_(text), characters_(plain_characters(text)) {}

    std::string judge(const Checker& checker, const CheckOptions& options) {
        const std::vector<Token> tokens = checker.analyze(text_, options.paragraphs);
        for (const Token& token : tokens) {
            if (auto why = wrong_span(token.span, token.text); !why.empty()) return why;
            // A sign that Latin-1 lacks shows as a star.
            if (token.foreign || token.folded.find('*') != std::string::npos) continue;
            if (plain_fold(token.folded) != plain_fold(token.text)) {
                return "token \"" + token.folded + "\" is written \"" + token.text + '"';
            }
        }
        if (auto why = lost_character(tokens); !why.empty()) return why;
        std::size_t behind = 0;
        for (const Finding& finding : checker.check(text_, options)) {
            if (auto why = wrong_span(finding.span, finding.token); !why.empty())
                return why;
            if (finding.span.begin.byte < behind) return "findings overlap";
            behind = finding.span.end.byte;
            ++findings;
            if (finding.kind == Kind::foreign) continue;
            const bool is_token =
                std::any_of(tokens.begin(), tokens.end(), [&](const Token& token) {
                    return token.span.begin.byte == finding.span.begin.byte &&
                           token.span.end.byte == finding.span.end.byte;
                });
            if (tokens.size() < 2000 && !is_token)
                return "finding at no token: " + finding.token;
        }
        return "";
    }

    std::size_t findings = 0;

private:
    const PlainCharacter* at(std::size_t byte) const {
        const auto found = std::lower_bound(
            characters_.begin(), characters_.end(), byte,
            [](const PlainCharacter& c, std::size_t b) { return c.place.byte < b; });
        return found != characters_.end() && found->place.byte == byte ? &*found
                                                                       : nullptr;
    }

    std::string wrong_span(const Span& span, const std::string& written) const {
        const PlainCharacter *begin = at(span.begin.byte), *end = at(span.end.byte);
        if (begin == nullptr || end == nullptr)
            return "a span cuts a character: " + written;
        const auto same = [](const Place& a, const Place& b) {
            return a.byte == b.byte && a.code_point == b.code_point && a.utf16 == b.utf16;
        };
        if (!same(begin->place, span.begin)) return "wrong begin: " + written;
        if (!same(end->place, span.end)) return "wrong end: " + written;
        if (span.end.byte <= span.begin.byte) return "an empty span";
        if (begin->line != span.line) return "wrong line: " + written;
        if (begin->column != span.column) return "wrong column: " + written;
        if (begin->column_utf16 != span.column_utf16)
            return "wrong UTF-16 column: " + written;
        const std::string source =
            text_.substr(span.begin.byte, span.end.byte - span.begin.byte);
        return source == written ? "" : "not the text at the span: " + written;
    }

    /// Blanks, dots and what has no width may be outside of tokens, nothing else.
    std::string lost_character(const std::vector<Token>& tokens) const {
        std::size_t number = 0;
        for (const PlainCharacter& c : characters_) {
            if (c.place.byte == text_.size()) break;
            while (number < tokens.size() &&
                   tokens[number].span.end.byte <= c.place.byte) {
                ++number;
            }
            const bool inside =
                number < tokens.size() && tokens[number].span.begin.byte <= c.place.byte;
            const bool dot =
                c.code == '.' || c.code == 0x2024 || c.code == 0x2025 || c.code == 0x2026;
            if (inside || is_plain_blank(c.code) || is_dropped(c.code) || dot) continue;
            return "a character in no token, at byte " + std::to_string(c.place.byte);
        }
        return "";
    }

    const std::string& text_;
    std::vector<PlainCharacter> characters_;
};

}  // namespace lemara::test
