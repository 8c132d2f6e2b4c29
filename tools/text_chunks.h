// Text files in chunks that can be checked apart from each other: cut between paragraphs.
// Tests: tests/tools/text_chunks_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lemara::tools {

constexpr std::size_t CHUNK = std::size_t{1} << 18;  // bytes, where a cut can be had

/// A stretch of a file that begins and ends where a paragraph does.
struct Chunk {
    std::size_t file = 0;  ///< position in the list of files
    bool first = false;    ///< the first of its file
    bool last = false;     ///< the last of its file
    std::string text;      ///< as it stands in the file
    std::string trouble;   ///< why the file ends here, "PATH: REASON"; empty if it's done
};

/// How far a text goes, counted as the checker counts places.
struct TextExtent {
    std::size_t bytes = 0, code_points = 0, utf16 = 0;
    std::size_t line_ends = 0;  ///< LF, CR LF and CR
};

TextExtent extent_of(std::string_view text);

/// Calls `take` with each line without its line end (LF or CR LF). A line feed at the end
/// begins no other line.
template <class Take>
void for_each_line(std::string_view text, Take take) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == text.npos ? text.size() : end + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        take(line);
    }
}

/// The chunks of several files in their order. Each file has one chunk at least. A file
/// that can't be read, or holds a NUL near its start and so is no text, ends with a chunk
/// that tells why, and the next one follows.
///
/// What comes from a pipe or a terminal is given out as it arrives.
class ChunkReader {
public:
    /// What ends a paragraph: an empty line, each line feed, or each line feed of any
    /// bytes, where a NUL is no trouble.
    enum class Ends { BLANK_LINES, LINES, LINES_OF_BYTES };

    /// `files`: "-" is standard input, and so is an empty list.
    ChunkReader(std::vector<std::string> files, Ends ends, std::size_t size = CHUNK);
    ~ChunkReader();
    ChunkReader(const ChunkReader&) = delete;
    ChunkReader& operator=(const ChunkReader&) = delete;

    bool next(Chunk& chunk);

    const std::vector<std::string>& files() const { return files_; }

private:
    class Source;

    std::vector<std::string> files_;
    Ends ends_;
    std::size_t size_;
    std::size_t file_ = 0;
    bool first_ = true;
    std::unique_ptr<Source> source_;
    std::string waiting_;       // read and not given out
    std::size_t searched_ = 0;  // bytes of it in which no paragraph ends

    bool fill(Chunk& chunk);
    std::size_t cut();
};

}  // namespace lemara::tools
