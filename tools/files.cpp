#include "files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "failure.h"

namespace lemara::tools {

namespace {

using host::Descriptor;

[[noreturn]] void fail(const std::string& path, const char* what, int error = errno) {
    throw Failure(shown_file(path) + ": " + what + ": " + std::strerror(error));
}

Descriptor open_for_reading(const std::string& path) {
    Descriptor file(path == "-" ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3)
                                : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.number() < 0) fail(path, "cannot open");
    struct stat status {};
    if (::fstat(file.number(), &status) == 0 && S_ISDIR(status.st_mode)) {
        throw Failure(shown_file(path) + ": is a directory");
    }
    return file;
}

std::size_t read_some(int descriptor, const std::string& path, char* bytes,
                      std::size_t most) {
    ssize_t got = -1;
    do {
        got = ::read(descriptor, bytes, most);
    } while (got < 0 && errno == EINTR);
    if (got < 0) fail(path, "cannot read");
    return static_cast<std::size_t>(got);
}

}  // namespace

std::string shown_file(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

std::string read_start(const std::string& path, std::size_t most) {
    const Descriptor file = open_for_reading(path);
    std::string bytes(most, '\0');
    bytes.resize(read_some(file.number(), path, bytes.data(), most));
    return bytes;
}

void require_regular(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) fail(path, "cannot open");
    if (S_ISDIR(status.st_mode)) throw Failure(path + ": is a directory");
    if (!S_ISREG(status.st_mode)) throw Failure(path + ": not a regular file");
}

std::string read_file(const std::string& path, std::size_t most) {
    const Descriptor file = open_for_reading(path);
    std::string bytes;
    std::size_t size = 0;
    while (true) {
        if (size > most) throw Failure(shown_file(path) + ": too large");
        if (bytes.size() - size < 65536) bytes.resize(bytes.size() * 2 + 65536);
        const std::size_t got =
            read_some(file.number(), path, bytes.data() + size, bytes.size() - size);
        if (got == 0) break;
        size += got;
    }
    bytes.resize(size);
    return bytes;
}

LineReader::LineReader(const std::string& path)
    : path_(path), file_(open_for_reading(path)) {}

std::string LineReader::place() const {
    return shown_file(path_) + ':' + std::to_string(number_);
}

bool LineReader::next(std::string& line) {
    std::size_t searched = used_;
    std::size_t end = buffer_.find('\n', searched);
    while (end == std::string::npos) {
        searched = buffer_.size() - used_;  // fill moves the rest to the front
        if (!fill()) break;
        end = buffer_.find('\n', searched);
    }
    if (end == std::string::npos && used_ == buffer_.size()) return false;
    const std::size_t behind = std::min(end, buffer_.size());
    line.assign(buffer_, used_, behind - used_);
    used_ = std::min(behind + 1, buffer_.size());
    if (!line.empty() && line.back() == '\r') line.pop_back();
    ++number_;
    return true;
}

/// Reads on behind what is left; false at the end of the file.
bool LineReader::fill() {
    buffer_.erase(0, used_);
    behind_ += used_;
    used_ = 0;
    const std::size_t rest = buffer_.size();
    buffer_.resize(std::max<std::size_t>(rest * 2, 65536));
    const std::size_t got =
        read_some(file_.number(), path_, buffer_.data() + rest, buffer_.size() - rest);
    buffer_.resize(rest + got);
    return got > 0;
}

void write_file(const std::string& path, std::string_view bytes) {
    struct stat status {};
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) throw Failure(path + ": is a directory");
    if (exists && !S_ISREG(status.st_mode)) {
        const Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
        if (file.number() < 0 || !write_all(file.number(), bytes))
            fail(path, "cannot write");
        return;
    }
    if (const auto problem = host::replace_unlocked(host::target_of(path), bytes)) {
        throw Failure(problem->text());
    }
}

}  // namespace lemara::tools
