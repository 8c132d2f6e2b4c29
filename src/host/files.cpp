#include "host/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace lemara::host {

namespace {

constexpr int MOST_LINKS = 40;  // a chain of more is a circle

Problem failed(const std::string& path, const char* what, int error = errno) {
    return {path, 0, std::string(what) + ": " + std::generic_category().message(error)};
}

/// Opens a regular file; what else there is may never answer.
std::optional<Problem> open_regular(const std::string& path, Descriptor& file,
                                    struct stat& status) {
    Descriptor opened(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (opened.number() < 0) return failed(path, "cannot open");
    if (::fstat(opened.number(), &status) != 0) return failed(path, "cannot open");
    if (S_ISDIR(status.st_mode)) return Problem{path, 0, "is a directory"};
    if (!S_ISREG(status.st_mode)) return Problem{path, 0, "not a regular file"};
    file = std::move(opened);
    return std::nullopt;
}

std::optional<Problem> read_up_to(const std::string& path, std::size_t most,
                                  std::string& bytes, bool& more) {
    Descriptor file;
    struct stat status {};
    if (auto problem = open_regular(path, file, status)) return problem;
    bytes.resize(std::min(most, static_cast<std::size_t>(status.st_size)) + 1);
    std::size_t size = 0;
    for (;;) {
        const ssize_t got =
            ::read(file.number(), bytes.data() + size, bytes.size() - size);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return failed(path, "cannot read");
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
        if (size < bytes.size()) continue;
        if (size > most) break;
        bytes.resize(std::min(most, size * 2) + 1);
    }
    more = size > most;
    bytes.resize(std::min(size, most));
    return std::nullopt;
}

std::string folder_of(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

mode_t mode_of_new_files() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

FileStamp stamp_of(const struct stat& status) {
    return {static_cast<unsigned long long>(status.st_dev),
            static_cast<unsigned long long>(status.st_ino),
            static_cast<unsigned long long>(status.st_size),
            static_cast<unsigned long long>(status.st_mtim.tv_sec),
            static_cast<unsigned long long>(status.st_mtim.tv_nsec)};
}

/// What is to become of a new file beside an old one.
struct Replacement {
    std::string name;    // of the new file
    std::string target;  // of the old one
    const FileStamp* seen = nullptr;
};

/// Fills the new file and puts it in the place of the old one; takes it away if that
/// fails. The owner is kept where that is allowed.
std::optional<Problem> put_in_place(Descriptor file, const Replacement& wanted,
                                    std::string_view bytes, mode_t mode) {
    struct stat old {};
    const bool exists = ::stat(wanted.target.c_str(), &old) == 0;
    const bool owned = !exists || ::fchown(file.number(), old.st_uid, old.st_gid) == 0;
    const mode_t kept = exists ? old.st_mode & (owned ? 07777 : 0777) : mode;
    std::optional<Problem> problem;
    if (!write_all(file.number(), bytes) || ::fchmod(file.number(), kept) != 0 ||
        ::fsync(file.number()) != 0 || ::close(file.release()) != 0) {
        problem = failed(wanted.target, "cannot write");
    } else if (wanted.seen != nullptr &&
               !(FileStamp::of(wanted.target) == *wanted.seen)) {
        problem = Problem{wanted.target, 0,
                          "has changed since it was read; nothing was written"};
    } else if (::rename(wanted.name.c_str(), wanted.target.c_str()) != 0) {
        problem = failed(wanted.target, "cannot write");
    }
    if (problem) {
        ::unlink(wanted.name.c_str());
        return problem;
    }
    // The new name is on the disk once its folder is; a file system that can't sync one
    // has it there anyway.
    const Descriptor folder(
        ::open(folder_of(wanted.target).c_str(), O_RDONLY | O_CLOEXEC));
    if (folder.number() >= 0) ::fsync(folder.number());
    return std::nullopt;
}

bool is_other_than_regular(const std::string& target) {
    struct stat status {};
    return ::stat(target.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

}  // namespace

bool write_all(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

FileStamp FileStamp::of(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? stamp_of(status) : FileStamp();
}

FileStamp FileStamp::of(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 ? stamp_of(status) : FileStamp();
}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

Descriptor::~Descriptor() {
    if (number_ >= 0) ::close(number_);
}

std::optional<Problem> read_file(const std::string& path, std::size_t most,
                                 std::string& bytes, bool* missing) {
    bytes.clear();
    if (missing != nullptr) *missing = false;
    bool more = false;
    errno = 0;
    auto problem = read_up_to(path, most, bytes, more);
    if (problem && missing != nullptr && errno == ENOENT) {
        *missing = true;
        return std::nullopt;
    }
    if (!problem && more) return Problem{path, 0, "too large"};
    return problem;
}

std::optional<Problem> read_start(const std::string& path, std::size_t most,
                                  std::string& bytes) {
    bool more = false;
    return read_up_to(path, most, bytes, more);
}

std::string target_of(const std::string& path) {
    std::filesystem::path target = path;
    std::error_code error;
    for (int i = 0; i < MOST_LINKS && std::filesystem::is_symlink(target, error); ++i) {
        const std::filesystem::path next = std::filesystem::read_symlink(target, error);
        if (error) break;
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    return target.string();
}

std::optional<Problem> make_folder_of(const std::string& path) {
    const std::string folder = folder_of(path);
    if (::access(folder.c_str(), F_OK) == 0) return std::nullopt;
    if (folder != "/" && folder != ".") {
        if (auto problem = make_folder_of(folder)) return problem;
    }
    if (::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) return std::nullopt;
    return failed(folder, "cannot make the folder");
}

FileLock::FileLock(const std::string& target)
    : file_(::open((target + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW,
                   0600)) {
    if (file_.number() < 0) {
        problem_ = failed(target + ".lock", "cannot open");
        return;
    }
    while (::flock(file_.number(), LOCK_EX) != 0) {
        if (errno == EINTR) continue;
        problem_ = failed(target + ".lock", "cannot lock");
        return;
    }
}

std::optional<Problem> replace_file(const std::string& target, std::string_view bytes) {
    if (is_other_than_regular(target)) return Problem{target, 0, "not a regular file"};
    // Whoever was killed while it held the lock may have left one; nobody else writes it.
    const Replacement wanted{target + ".new", target};
    ::unlink(wanted.name.c_str());
    Descriptor file(
        ::open(wanted.name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (file.number() < 0) return failed(target, "cannot write");
    return put_in_place(std::move(file), wanted, bytes, 0600);
}

std::optional<Problem> replace_unlocked(const std::string& target, std::string_view bytes,
                                        const FileStamp* seen) {
    if (is_other_than_regular(target)) return Problem{target, 0, "not a regular file"};
    Replacement wanted{target + ".XXXXXX", target, seen};
    Descriptor file(::mkostemp(wanted.name.data(), O_CLOEXEC));
    if (file.number() < 0) return failed(target, "cannot write");
    return put_in_place(std::move(file), wanted, bytes, mode_of_new_files());
}

}  // namespace lemara::host
