// Whole files in and out. The command uses these, too, so they are visible in the shared
// library, but they are no part of its interface. Tests:
// tests/host/Checker_words_test.cpp, tests/host/dictionary_kill_test.cpp,
// tests/tools/files_test.cpp.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "lemara/checker.h"

namespace lemara::host {

/// A file descriptor that closes itself.
class [[gnu::visibility("default")]] Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor && other) noexcept : number_(other.release()) {}
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

/// Writes all bytes to a descriptor; false, with errno, if that fails.
[[gnu::visibility("default")]] bool write_all(int descriptor, std::string_view bytes);

/// Tells one state of a file from another.
struct FileStamp {
    unsigned long long device = 0, inode = 0, size = 0, seconds = 0, nanoseconds = 0;

    /// Of the file that a path means; all zero if there is none.
    [[gnu::visibility("default")]] static FileStamp of(const std::string& path);
    /// Of an open file.
    [[gnu::visibility("default")]] static FileStamp of(int descriptor);

    bool operator==(const FileStamp& other) const {
        return device == other.device && inode == other.inode && size == other.size &&
               seconds == other.seconds && nanoseconds == other.nanoseconds;
    }
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
[[gnu::visibility("default")]] std::string target_of(const std::string& path);

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

/// The same for a file without a lock: of two writers the later one wins, whole. What is
/// new has the mode of any new file. Nothing is written if the file is no longer in the
/// state `seen`.
[[gnu::visibility("default")]] std::optional<Problem> replace_unlocked(
    const std::string& target, std::string_view bytes, const FileStamp* seen = nullptr);

}  // namespace lemara::host
