// Places in chunks and in the files that they are of. Tests:
// tests/tools/command_line_test.py.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "lemara/checker.h"
#include "text_chunks.h"
#include "text_reader.h"

namespace lemara::tools {

/// How a text with such paragraphs is cut; `by_line`: each line is a text of its own.
inline ChunkReader::Ends chunk_ends(Paragraphs paragraphs, bool by_line = false) {
    if (by_line) return ChunkReader::Ends::LINES_OF_BYTES;
    return paragraphs == Paragraphs::BLANK ? ChunkReader::Ends::BLANK_LINES
                                           : ChunkReader::Ends::LINES;
}

/// A chunk's text in UTF-8, and what is told of its places.
struct ChunkText {
    Chunk chunk;
    Encoding encoding = Encoding::UTF_8;
    TextExtent extent;
    std::size_t invalid_at = std::string::npos;  ///< first byte that is no UTF-8

    ChunkText() = default;
    ChunkText(Chunk from, Encoding file_encoding);

    /// Calls `read` with the text as a checker is to be given it and with a function that
    /// makes a span of that text one of the chunk, as the file counts: the checker takes
    /// a mark at the start of a text for the byte order mark of a file, which it is in
    /// the first chunk alone, and in a Latin-1 file a character is a byte.
    void with_spans(
        const std::function<void(std::string_view text,
                                 const std::function<void(Span&)>& correct)>& read) const;
};

/// Where chunks stand in their files. They come in their order.
class ChunkPlaces {
public:
    /// To be called with each chunk before what is asked about it, and behind it.
    void enter(const ChunkText& text);
    void leave(const ChunkText& text);

    /// Makes a span of the chunk one of its file.
    void shift(Span& span) const;

    /// What to tell of bytes that are no UTF-8, once for each file; else empty.
    std::string complaint(const ChunkText& text, const std::string& file);

    /// The line of the file, from 1, that is line `number`, from 0, of the chunk.
    std::size_t line(std::size_t number) const { return base_.line_ends + number + 1; }

    bool any_invalid() const { return any_invalid_; }

private:
    TextExtent base_;
    bool told_ = false, any_invalid_ = false;
};

}  // namespace lemara::tools
