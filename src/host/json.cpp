// Tests: tests/host/json_test.cpp.
#include "lemara/json.h"

#include <algorithm>
#include <cstdio>

#include "lemara/utf8.h"

namespace lemara {

namespace {

void append_pair(std::string& json, const char* name, std::size_t begin,
                 std::size_t end) {
    json += std::string(",\"") + name + "\":[" + std::to_string(begin) + ',' +
            std::to_string(end) + ']';
}

void append_span(std::string& json, const Span& span) {
    json += ",\"line\":" + std::to_string(span.line) +
            ",\"column\":" + std::to_string(span.column) +
            ",\"columnUtf16\":" + std::to_string(span.column_utf16);
    append_pair(json, "bytes", span.begin.byte, span.end.byte);
    append_pair(json, "codePoints", span.begin.code_point, span.end.code_point);
    append_pair(json, "utf16", span.begin.utf16, span.end.utf16);
}

void append_text(std::string& json, const char* name, const std::string& value) {
    json += std::string(",\"") + name + "\":" + json_string(value);
}

const char* truth(bool value) { return value ? "true" : "false"; }

/// Blank-separated names as a list.
std::string list_of(std::string_view names) {
    std::string json = "[";
    while (!names.empty()) {
        const std::string_view name = names.substr(0, names.find(' '));
        names.remove_prefix(std::min(name.size() + 1, names.size()));
        if (name.empty()) continue;
        if (json.size() > 1) json += ',';
        json += json_string(name);
    }
    return json + ']';
}

void append_reading(std::string& json, const Reading& reading) {
    json +=
        "{\"lemma\":" + json_string(reading.lemma) + ",\"tags\":" + list_of(reading.tags);
    append_text(json, "network", reading.network);
    append_text(json, "analysis", reading.raw);
    if (!reading.better.empty()) append_text(json, "better", reading.better);
    if (!reading.instead.empty()) append_text(json, "instead", reading.instead);
    if (!reading.source.empty()) append_text(json, "source", reading.source);
    json += '}';
}

}  // namespace

std::string json_string(std::string_view text) {
    std::string json = "\"";
    for (std::size_t at = 0; at < text.size();) {
        const host::Character c = host::character_at(text, at);
        at += c.length;
        switch (c.code) {
            case '"':
                json += "\\\"";
                break;
            case '\\':
                json += "\\\\";
                break;
            case '\n':
                json += "\\n";
                break;
            case '\r':
                json += "\\r";
                break;
            case '\t':
                json += "\\t";
                break;
            default: {
                // Line separators end a line in some languages that JSON is pasted into.
                if (c.code >= 0x20 && c.code != 0x7F && c.code != 0x2028 &&
                    c.code != 0x2029) {
                    host::append_utf8(json, c.code);
                    break;
                }
                char escape[8];
                std::snprintf(escape, sizeof escape, "\\u%04X",
                              static_cast<unsigned>(c.code));
                json += escape;
            }
        }
    }
    return json + '"';
}

std::string to_json(const Finding& finding) {
    std::string json = std::string("{\"kind\":\"") + name_of(finding.kind) + '"';
    append_text(json, "token", finding.token);
    append_span(json, finding.span);
    json += ",\"forms\":[";
    for (std::size_t i = 0; i < finding.forms.size(); ++i) {
        if (i > 0) json += ',';
        json += json_string(finding.forms[i]);
    }
    return json + "],\"complete\":" + truth(finding.complete) + '}';
}

std::string to_json(const Token& token) {
    std::string json = "{\"text\":" + json_string(token.text);
    append_span(json, token.span);
    json += ",\"paragraph\":" + std::to_string(token.paragraph) +
            ",\"sentence\":" + std::to_string(token.sentence) +
            ",\"known\":" + truth(token.known) + ",\"foreign\":" + truth(token.foreign) +
            ",\"blankFollows\":" + truth(token.blank_follows) + ",\"readings\":[";
    for (std::size_t i = 0; i < token.readings.size(); ++i) {
        if (i > 0) json += ',';
        append_reading(json, token.readings[i]);
    }
    return json + "]}";
}

}  // namespace lemara
