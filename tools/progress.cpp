#include "progress.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "files.h"

namespace lemara::tools {

namespace {

constexpr auto BEFORE_THE_FIRST = std::chrono::milliseconds(500);
constexpr auto BETWEEN = std::chrono::milliseconds(100);
constexpr std::size_t BAR = 30;  // characters

std::uint64_t size_of_all(const std::vector<std::string>& files) {
    std::uint64_t total = 0;
    for (const std::string& file : files) {
        struct stat status {};
        const bool known = file == "-" ? ::fstat(STDIN_FILENO, &status) == 0
                                       : ::stat(file.c_str(), &status) == 0;
        if (!known || !S_ISREG(status.st_mode)) return 0;
        total += static_cast<std::uint64_t>(status.st_size);
    }
    return total;
}

void draw(const std::string& text) { write_all(STDERR_FILENO, "\r\033[K" + text); }

}  // namespace

Progress::Progress(const std::vector<std::string>& files)
    : shown_(::isatty(STDERR_FILENO) == 1),
      next_(std::chrono::steady_clock::now() + BEFORE_THE_FIRST) {
    if (shown_)
        total_ = size_of_all(files.empty() ? std::vector<std::string>{"-"} : files);
}

Progress::~Progress() { wipe(); }

void Progress::wipe() {
    if (drawn_) draw("");
    drawn_ = false;
}

void Progress::reached(std::uint64_t bytes) {
    if (!shown_) return;
    const auto now = std::chrono::steady_clock::now();
    if (now < next_) return;
    next_ = now + BETWEEN;
    char text[80];
    if (total_ == 0) {
        std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(bytes) / 1e6);
        draw(text);
    } else {
        const std::uint64_t done = std::min(bytes, total_);
        const std::size_t filled = static_cast<std::size_t>(done * BAR / total_);
        std::snprintf(text, sizeof text, "] %3d %%",
                      static_cast<int>(done * 100 / total_));
        draw('[' + std::string(filled, '#') + std::string(BAR - filled, ' ') + text);
    }
    drawn_ = true;
}

}  // namespace lemara::tools
