// Whole files in and out. Tests: tests/host/Checker_words_test.cpp,
// tests/host/dictionary_kill_test.cpp.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "lemara/checker.h"

namespace lemara::host {

/// A file descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    int number() const { return number_; }
    int release() {
        const int number = number_;
        number_ = -1;
        return number;
    }

private:
    int number_;
};

/// Reads a regular file of at most `most` bytes. A file that doesn't exist is a problem
/// too, unless `missing` is there to tell.
std::optional<Problem> read_file(const std::string& path, std::size_t most,
                                 std::string& bytes, bool* missing = nullptr);

/// The first `most` bytes of a regular file, or fewer.
std::optional<Problem> read_start(const std::string& path, std::size_t most,
                                  std::string& bytes);

/// The file that a path means when all links are followed, also one that doesn't exist
/// yet.
std::string target_of(const std::string& path);

/// Makes the folder of a file, with those above it, for the user alone.
std::optional<Problem> make_folder_of(const std::string& path);

/// The lock that stands for a file: one holder in all processes and threads. It is a file
/// of its own beside it, as the file itself is replaced by every write.
class FileLock {
public:
    explicit FileLock(const std::string& target);
    const std::optional<Problem>& problem() const { return problem_; }

private:
    Descriptor file_;
    std::optional<Problem> problem_;
};

/// Writes a file whole or not at all, whenever the process is killed: a new file takes
/// the place of the old one when its bytes are on the disk, with the mode of the old one.
/// The caller holds the lock of `target`, which is no link.
std::optional<Problem> replace_file(const std::string& target, std::string_view bytes);

}  // namespace lemara::host
