// Whole files in and out, with messages that name the file.
// Tests: tests/tools/files_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/files.h"

namespace lemara::tools {

using host::write_all;

/// The name of a file in messages: "standard input" for "-".
std::string shown_file(const std::string& path);

constexpr std::size_t LARGEST_FILE = std::size_t{1}
                                     << 31;  // bytes; line numbers stay within 32 bits

/// The bytes of a file; of standard input for "-".
/// Errors: Failure "PATH: cannot open: REASON", "PATH: is a directory", "PATH: cannot
/// read: REASON", and "PATH: too large" for more than `most` bytes.
std::string read_file(const std::string& path, std::size_t most = LARGEST_FILE);

/// For files that are read more than once.
/// Errors: Failure "PATH: is a directory", "PATH: not a regular file", "PATH: cannot
/// open: ...".
void require_regular(const std::string& path);

/// The first bytes of a file, `most` or less. Errors: as read_file.
std::string read_start(const std::string& path, std::size_t most);

/// The lines of a file or of standard input ("-"), as they come.
class LineReader {
public:
    /// Errors: as read_file.
    explicit LineReader(const std::string& path);

    /// The next line without its line end ("\n" or "\r\n"); false at the end of the file.
    /// Errors: Failure "PATH: cannot read: REASON".
    bool next(std::string& line);

    /// "PATH:LINE", for messages on the line that came last.
    std::string place() const;

    /// How much of the file has been given out, in bytes, line ends included.
    std::uint64_t bytes_read() const { return behind_ + used_; }

private:
    std::string path_;
    host::Descriptor file_;
    std::string buffer_;
    std::size_t used_ = 0;  // bytes of the buffer that have been given out
    std::size_t number_ = 0;
    std::uint64_t behind_ = 0;  // bytes that stood in front of the buffer

    bool fill();
};

/// Writes a file whole or not at all: a new file takes the place of an old one when it is
/// complete, with the mode of the old one. What isn't a regular file (a device, a pipe)
/// is written as it is. A link keeps its target. Errors: Failure "PATH: cannot write:
/// REASON".
void write_file(const std::string& path, std::string_view bytes);

}  // namespace lemara::tools
