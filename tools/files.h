// Whole files in and out, with messages that name the file.
// Tests: tests/tools/files_test.cpp.
#pragma once

#include <string>
#include <string_view>

namespace lemara::tools {

/// The name of a file in messages: "standard input" for "-".
std::string shown_file(const std::string& path);

/// The bytes of a file; of standard input for "-".
/// Errors: Failure "PATH: cannot open: REASON", "PATH: is a directory", "PATH: cannot read:
/// REASON".
std::string read_file(const std::string& path);

/// Fails as read_file does, without reading: for files that the library will open.
void require_readable(const std::string& path);

/// Writes a file whole or not at all: a new file takes the place of an old one when it is
/// complete, with the mode of the old one. What isn't a regular file (a device, a pipe) is
/// written as it is. A link keeps its target.
/// Errors: Failure "PATH: cannot write: REASON".
void write_file(const std::string& path, std::string_view bytes);

/// Writes all bytes to a descriptor; false, with errno, if that fails.
bool write_all(int descriptor, std::string_view bytes);

}  // namespace lemara::tools
