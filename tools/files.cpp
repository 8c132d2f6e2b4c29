#include "files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "failure.h"

namespace lemara::tools {

namespace {

/// A file descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    int release() {
        const int number = number_;
        number_ = -1;
        return number;
    }

private:
    int number_;
};

[[noreturn]] void fail(const std::string& path, const char* what, int error = errno) {
    throw Failure(shown_file(path) + ": " + what + ": " + std::strerror(error));
}

Descriptor open_for_reading(const std::string& path) {
    if (path == "-") return Descriptor(::dup(STDIN_FILENO));
    const int number = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (number < 0) fail(path, "cannot open");
    Descriptor file(number);
    struct stat status {};
    if (::fstat(number, &status) == 0 && S_ISDIR(status.st_mode)) {
        throw Failure(path + ": is a directory");
    }
    return Descriptor(file.release());
}

/// Writes `bytes` to a new file beside `path` and puts it in the place of `path`.
void replace_file(const std::string& path, std::string_view bytes, mode_t mode) {
    std::string name = path + ".XXXXXX";
    Descriptor file(::mkstemp(name.data()));
    if (file.number() < 0) fail(path, "cannot write");
    const bool written = write_all(file.number(), bytes) &&
                         ::fchmod(file.number(), mode) == 0 && ::fsync(file.number()) == 0 &&
                         ::close(file.release()) == 0 &&
                         ::rename(name.c_str(), path.c_str()) == 0;
    if (written) return;
    const int error = errno;
    ::unlink(name.c_str());
    fail(path, "cannot write", error);
}

mode_t mode_of_new_files() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

}  // namespace

std::string shown_file(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

std::string read_file(const std::string& path) {
    const Descriptor file = open_for_reading(path);
    std::string bytes;
    std::size_t size = 0;
    while (true) {
        if (bytes.size() - size < 65536) bytes.resize(bytes.size() * 2 + 65536);
        const ssize_t got = ::read(file.number(), bytes.data() + size, bytes.size() - size);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail(path, "cannot read");
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
    return bytes;
}

void require_readable(const std::string& path) { open_for_reading(path); }

bool write_all(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void write_file(const std::string& path, std::string_view bytes) {
    struct stat status {};
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) throw Failure(path + ": is a directory");
    if (exists && !S_ISREG(status.st_mode)) {
        const Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
        if (file.number() < 0 || !write_all(file.number(), bytes)) fail(path, "cannot write");
        return;
    }
    std::error_code no_link;
    const std::filesystem::path target = std::filesystem::canonical(path, no_link);
    replace_file(no_link ? path : target.string(), bytes,
                 exists ? status.st_mode & 07777 : mode_of_new_files());
}

}  // namespace lemara::tools
