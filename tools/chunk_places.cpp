#include "chunk_places.h"

#include "text_encoding.h"

namespace lemara::tools {

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

}  // namespace

ChunkText::ChunkText(Chunk from, Encoding file_encoding)
    : chunk(std::move(from)), encoding(file_encoding) {
    const bool latin1 = encoding == Encoding::LATIN_1;
    if (latin1) chunk.text = utf8_from_latin1(chunk.text);
    invalid_at = find_invalid_utf8(chunk.text);
    extent = extent_of(chunk.text);
    if (latin1) extent.bytes = extent.code_points;
}

void ChunkText::with_spans(
    const std::function<void(std::string_view, const std::function<void(Span&)>&)>& read)
    const {
    const bool no_mark = !chunk.first && chunk.text.compare(0, BYTE_ORDER_MARK.size(),
                                                            BYTE_ORDER_MARK) == 0;
    const std::string with_line_end = no_mark ? '\n' + chunk.text : "";
    read(no_mark ? with_line_end : chunk.text, [&](Span& span) {
        for (Place* place : {&span.begin, &span.end}) {
            place->byte -= no_mark;
            place->code_point -= no_mark;
            place->utf16 -= no_mark;
            if (encoding == Encoding::LATIN_1) place->byte = place->code_point;
        }
        span.line -= no_mark;
    });
}

void ChunkPlaces::enter(const ChunkText& text) {
    if (!text.chunk.first) return;
    base_ = TextExtent();
    told_ = false;
}

void ChunkPlaces::leave(const ChunkText& text) {
    base_.bytes += text.extent.bytes;
    base_.code_points += text.extent.code_points;
    base_.utf16 += text.extent.utf16;
    base_.line_ends += text.extent.line_ends;
}

void ChunkPlaces::shift(Span& span) const {
    for (Place* place : {&span.begin, &span.end}) {
        place->byte += base_.bytes;
        place->code_point += base_.code_points;
        place->utf16 += base_.utf16;
    }
    span.line += base_.line_ends;
}

std::string ChunkPlaces::complaint(const ChunkText& text, const std::string& file) {
    if (text.invalid_at == std::string::npos) return "";
    any_invalid_ = true;
    if (told_) return "";
    told_ = true;
    const std::string_view before =
        std::string_view(text.chunk.text).substr(0, text.invalid_at);
    const std::size_t line_start = before.find_last_of("\r\n") + 1;  // npos + 1 is 0
    return file + ':' + std::to_string(line(extent_of(before).line_ends)) +
           ": not UTF-8 at byte " + std::to_string(before.size() - line_start + 1) +
           "; what is no UTF-8 is passed over (--encoding latin-1?)";
}

}  // namespace lemara::tools
