#include "text_chunks.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "files.h"

namespace {

using namespace lemara::tools;

class TextFile {
public:
    explicit TextFile(const std::string& text) {
        const int file = ::mkstemp(path_.data());
        EXPECT_TRUE(write_all(file, text));
        ::close(file);
    }
    ~TextFile() { ::unlink(path_.c_str()); }

    const std::string& path() const { return path_; }

private:
    std::string path_ = "/tmp/lemara-chunks-XXXXXX";
};

std::vector<std::string> chunks_of(const std::string& text, bool blank, std::size_t size) {
    const TextFile file(text);
    const auto ends = blank ? ChunkReader::Ends::BLANK_LINES : ChunkReader::Ends::LINES;
    ChunkReader reader({file.path()}, ends, size);
    std::vector<std::string> texts;
    for (Chunk chunk; reader.next(chunk);) {
        EXPECT_EQ(chunk.first, texts.empty());
        EXPECT_EQ(chunk.trouble, "");
        texts.push_back(chunk.text);
        if (chunk.last) break;
    }
    return texts;
}

struct Case {
    std::string label, text;
    bool blank;
    std::vector<std::string> chunks;  // of 4 bytes, if they can be cut there
};

const Case CASES[] = {
    {"nothing is one chunk", "", false, {""}},
    {"a short text", "ab", false, {"ab"}},
    {"cut behind a line feed", "a\nbcde\nf", false, {"a\n", "bcde\n", "f"}},
    {"a long line stays in one", "abcdefghijkl\nm", false, {"abcdefghijkl\n", "m"}},
    {"a blank line", "a\n\nb\nc\n\nd", true, {"a\n\n", "b\nc\n\n", "d"}},
    {"a blank line of Windows", "a\r\n\r\nb\r\nc", true, {"a\r\n\r\n", "b\r\nc"}},
    {"no blank line", "a\nb\nc\nd\n", true, {"a\nb\nc\nd\n"}},
};

struct ExtentCase {
    std::string label, text;
    std::size_t code_points, utf16, line_ends;
};

const ExtentCase EXTENTS[] = {
    {"nothing", "", 0, 0, 0},
    {"one, two, three and four bytes", "a\303\261\342\202\254\360\235\222\263", 4, 5, 0},
    {"line ends", "\n\r\r\n\n", 5, 5, 4},
    {"a byte that begins nothing", "a\377b", 3, 3, 0},
    {"a character cut short is one", "\342\202", 1, 1, 0},
    {"overlong: two", "\340\200", 2, 2, 0},
    {"a surrogate: three", "\355\240\200", 3, 3, 0},
    {"behind the last character: four", "\364\220\200\200", 4, 4, 0},
};

}  // namespace

TEST(TextChunks, AreCutBetweenParagraphs) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(chunks_of(c.text, c.blank, 4), c.chunks);
    }
}

TEST(TextChunks, MakeTheFile) {
    std::string text;
    unsigned seed = 1;
    for (int i = 0; i < 20000; ++i) {
        seed = seed * 1664525u + 1013904223u;
        text += "ab \n\r"[(seed >> 24) % 5];
    }
    for (const bool blank : {false, true}) {
        std::string whole;
        for (const std::string& chunk : chunks_of(text, blank, 64)) whole += chunk;
        EXPECT_EQ(whole, text);
    }
}

TEST(TextChunks, GoOnBehindAFileThatCantBeRead) {
    const TextFile good("a\n"), binary(std::string("ab\0c\n", 5));
    ChunkReader reader({"/no/such/file", binary.path(), good.path()},
                       ChunkReader::Ends::LINES);
    std::vector<std::string> told;
    for (Chunk chunk; reader.next(chunk);) told.push_back(chunk.trouble + '|' + chunk.text);
    EXPECT_EQ(told, (std::vector<std::string>{
                        "/no/such/file: cannot open: No such file or directory|",
                        binary.path() + ": not a text: a NUL byte at byte 3|", "|a\n"}));
}

TEST(TextChunks, ExtentsCountAsTheCheckerDoes) {
    for (const ExtentCase& c : EXTENTS) {
        SCOPED_TRACE(c.label);
        const TextExtent extent = extent_of(c.text);
        EXPECT_EQ(extent.bytes, c.text.size());
        EXPECT_EQ(extent.code_points, c.code_points);
        EXPECT_EQ(extent.utf16, c.utf16);
        EXPECT_EQ(extent.line_ends, c.line_ends);
    }
}
