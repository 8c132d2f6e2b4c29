#include "text_chunks.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "files.h"
#include "host/files.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

constexpr std::size_t LOOK_FOR_NUL = 8192;  // bytes at the start of a file

}  // namespace

/// A file that is being read.
class ChunkReader::Source {
public:
    Source(const std::string& path, bool any_bytes)
        : read_before_(any_bytes),
          file_(path == "-" ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3)
                            : ::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        struct stat status {};
        if (file_.number() < 0 || ::fstat(file_.number(), &status) != 0) {
            trouble_ = std::string("cannot open: ") + std::strerror(errno);
        } else if (S_ISDIR(status.st_mode)) {
            trouble_ = "is a directory";
        }
        regular_ = S_ISREG(status.st_mode);
    }

    bool regular() const { return regular_; }
    const std::string& trouble() const { return trouble_; }

    /// Appends up to `most` bytes; false at the end and for trouble. A NUL in what comes
    /// first is trouble: then nothing is appended.
    bool read(std::string& bytes, std::size_t most) {
        if (!append(bytes, most)) return false;
        if (read_before_) return true;
        read_before_ = true;
        const std::size_t nul = bytes.find('\0');
        if (nul >= LOOK_FOR_NUL) return true;
        trouble_ = "not a text: a NUL byte at byte " + std::to_string(nul + 1);
        bytes.clear();
        return false;
    }

private:
    bool read_before_;  // or whatever stands at the start is right
    host::Descriptor file_;
    bool regular_ = false;
    std::string trouble_;

    bool append(std::string& bytes, std::size_t most) {
        if (!trouble_.empty()) return false;
        const std::size_t before = bytes.size();
        bytes.resize(before + most);
        ssize_t got = -1;
        do {
            got = ::read(file_.number(), bytes.data() + before, most);
        } while (got < 0 && errno == EINTR);
        if (got < 0) trouble_ = std::string("cannot read: ") + std::strerror(errno);
        bytes.resize(before + static_cast<std::size_t>(got > 0 ? got : 0));
        return got > 0;
    }
};

TextExtent extent_of(std::string_view text) {
    TextExtent extent;
    extent.bytes = text.size();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool within = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        extent.line_ends += text[i] == '\n' || (text[i] == '\r' && !within);
    }
    while (!text.empty()) {
        const std::size_t valid = std::min(find_invalid_utf8(text), text.size());
        for (const char c : text.substr(0, valid)) {
            const auto byte = static_cast<unsigned char>(c);
            extent.code_points += (byte & 0xC0) != 0x80;
            extent.utf16 += ((byte & 0xC0) != 0x80) + (byte >= 0xF0);
        }
        text.remove_prefix(valid);
        if (text.empty()) break;
        extent.code_points += 1;
        extent.utf16 += 1;
        text.remove_prefix(character_at(text, 0).length);
    }
    return extent;
}

ChunkReader::ChunkReader(std::vector<std::string> files, Ends ends, std::size_t size)
    : files_(std::move(files)), ends_(ends), size_(size) {
    if (files_.empty()) files_.push_back("-");
}

ChunkReader::~ChunkReader() = default;

/// Where the last paragraph that is there in full ends; 0 if none does.
std::size_t ChunkReader::cut() {
    for (std::size_t end = waiting_.size(); end > searched_; --end) {
        if (waiting_[end - 1] != '\n') continue;
        const std::string_view before(waiting_.data(), end - 1);
        const std::size_t text = before.find_last_not_of('\r');
        const bool at_empty_line = text != before.npos && before[text] == '\n';
        if (ends_ == Ends::BLANK_LINES && !at_empty_line) continue;
        searched_ = 0;
        return end;
    }
    searched_ = waiting_.size();
    return 0;
}

/// Reads until a paragraph is there in full, or the file is done; true if there is more.
bool ChunkReader::fill(Chunk& chunk) {
    while (source_->read(waiting_, size_)) {
        if (source_->regular() && waiting_.size() < size_) continue;
        const std::size_t end = cut();
        if (end == 0) continue;
        chunk.text.assign(waiting_, 0, end);
        waiting_.erase(0, end);
        return true;
    }
    chunk.text = std::move(waiting_);
    return false;
}

bool ChunkReader::next(Chunk& chunk) {
    if (file_ == files_.size()) return false;
    if (source_ == nullptr)
        source_ = std::make_unique<Source>(files_[file_], ends_ == Ends::LINES_OF_BYTES);
    chunk = Chunk();
    chunk.file = file_;
    chunk.first = first_;
    first_ = false;
    if (fill(chunk)) return true;
    chunk.last = true;
    if (!source_->trouble().empty()) {
        chunk.trouble = shown_file(files_[file_]) + ": " + source_->trouble();
    }
    source_.reset();
    waiting_.clear();
    searched_ = 0;
    first_ = true;
    ++file_;
    return true;
}

}  // namespace lemara::tools
