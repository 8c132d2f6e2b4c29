#include "json.h"

#include <cstdio>

#include "text_encoding.h"

namespace lemara::tools {

namespace {

void append_escaped(std::string& result, char c) {
    if (c == '"' || c == '\\') {
        result += '\\';
        result += c;
    } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
        result += escape;
    } else {
        result += c;
    }
}

}  // namespace

std::string json_string(std::string_view text) {
    std::string result = "\"";
    while (!text.empty()) {
        const std::size_t invalid = find_invalid_utf8(text);
        const std::size_t end = invalid == text.npos ? text.size() : invalid;
        for (const char c : text.substr(0, end)) append_escaped(result, c);
        text.remove_prefix(end);
        if (text.empty()) break;
        result += "\xEF\xBF\xBD";
        text.remove_prefix(character_at(text, 0).length);
    }
    return result + '"';
}

}  // namespace lemara::tools
