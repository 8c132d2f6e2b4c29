// Text from files, line by line or paragraph by paragraph, in the engine's encoding.
// Tests: tests/tools/command_line_test.py.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files.h"

namespace lemara::tools {

enum class Encoding { UTF_8, LATIN_1 };

/// Text of the engine's (Latin-1) as it is to be written.
std::string encoded(const std::string& latin1, Encoding encoding);

/// What is said of a stretch that the engine can't be shown: its start, whole characters.
std::string told_lost(std::string_view text);

/// A word of the command line or of a line, as the engine reads it; nothing for text that
/// is not UTF-8, and then, or if a character is lost, `complaint` tells why.
std::optional<std::string> decoded(const std::string& text, Encoding encoding,
                                   std::string& complaint);

enum class Paragraphs {
    LINES,
    BLANK
};  ///< what ends a paragraph: its line, or a blank line

/// What stands in a text: a paragraph for the engine, or a line that it can't be given.
struct Piece {
    bool usable = true;
    std::string text;  ///< Latin-1; as it stands in the file if it is not usable
};

/// The pieces of several files, one behind the other; of standard input if none is named.
/// Lines that are empty or blank are no paragraphs. The lines of a longer paragraph are
/// joined by a blank.
class TextReader {
public:
    using Complain = std::function<void(const std::string&)>;

    /// `complain` gets "PATH:LINE: REASON" for each line that is not UTF-8 or loses a
    /// character. Errors: as LineReader, while reading.
    TextReader(std::vector<std::string> files, Encoding encoding, Paragraphs paragraphs,
               Complain complain);

    /// The next piece; false at the end of the last file.
    bool next(Piece& piece);

    /// True if a line had to be given back unread.
    bool refused() const { return refused_; }

    /// How much of all files has been read.
    std::uint64_t bytes_read() const {
        return behind_ + (lines_ ? lines_->bytes_read() : 0);
    }

private:
    std::vector<std::string> files_;
    Encoding encoding_;
    Paragraphs paragraphs_;
    Complain complain_;
    std::size_t file_ = 0;
    std::unique_ptr<LineReader> lines_;
    std::optional<Piece> waiting_;  // a refused line that ended a paragraph
    bool refused_ = false;
    std::uint64_t behind_ = 0;  // bytes of the files that are done

    enum class Found { LINE, REFUSED, BLANK, FILE_END };
    Found next_line(std::string& text);
};

}  // namespace lemara::tools
