#include "host/ruler.h"

#include "lemara/utf8.h"

namespace lemara::host {

namespace {

constexpr char32_t BYTE_ORDER_MARK = 0xFEFF;

}  // namespace

void Ruler::advance(Place& place, std::size_t byte, bool count_lines) {
    while (place.byte < byte) {
        const Character c = character_at(text_, place.byte);
        place.byte += c.length;
        place.code_point += 1;
        place.utf16 += c.code > 0xFFFF ? 2 : 1;
        if (!count_lines) continue;
        const bool within = c.code == '\r' && text_.substr(place.byte, 1) == "\n";
        const bool ends = c.code == '\n' || (c.code == '\r' && !within);
        if (ends) ++line_;
        if (ends || (c.code == BYTE_ORDER_MARK && place.byte == c.length))
            line_start_ = place;
    }
}

Span Ruler::measure(Bytes bytes) {
    advance(here_, bytes.begin, true);
    Span span;
    span.begin = span.end = here_;
    span.line = line_;
    span.column = here_.code_point - line_start_.code_point + 1;
    span.column_utf16 = here_.utf16 - line_start_.utf16 + 1;
    advance(span.end, bytes.end, false);
    return span;
}

}  // namespace lemara::host
