#ifndef _GNU_SOURCE
#define _GNU_SOURCE  // memfd_create
#endif
#include "output.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

#include "failure.h"
#include "files.h"

namespace lemara::tools {

namespace {

constexpr std::size_t WRITE_AT_ONCE = 65536;  // bytes of results that are kept back

std::string tool_name = "lemara";

[[noreturn]] void fail(const char* what) {
    throw Failure(std::string(what) + ": " + std::strerror(errno));
}

}  // namespace

Results::Results() : descriptor_(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3)) {
    if (descriptor_ < 0) fail("cannot write standard output");
}

Results::~Results() { ::close(descriptor_); }

void Results::write(std::string_view text) {
    waiting_ += text;
    if (waiting_.size() >= WRITE_AT_ONCE) flush();
}

void Results::flush() {
    const std::string text = std::move(waiting_);
    waiting_.clear();
    if (!write_all(descriptor_, text)) fail("cannot write standard output");
}

EngineOutput::EngineOutput() : buffer_(::memfd_create("lemara", MFD_CLOEXEC)) {
    std::cout.flush();
    std::fflush(stdout);
    if (buffer_ < 0 || ::dup2(buffer_, STDOUT_FILENO) < 0) fail("cannot make a buffer");
}

// Standard output stays the buffer: what the engine writes when it goes must not show.
EngineOutput::~EngineOutput() { ::close(buffer_); }

std::string EngineOutput::take() {
    std::cout.flush();
    std::fflush(stdout);
    const off_t size = ::lseek(buffer_, 0, SEEK_CUR);
    if (size < 0 || !std::cout.good() || std::ferror(stdout) != 0)
        fail("cannot use a buffer");
    std::string text(static_cast<std::size_t>(size), '\0');
    std::size_t got = 0;
    while (got < text.size()) {
        const ssize_t more = ::pread(buffer_, text.data() + got, text.size() - got,
                                     static_cast<off_t>(got));
        if (more < 0 && errno == EINTR) continue;
        if (more <= 0) fail("cannot use a buffer");
        got += static_cast<std::size_t>(more);
    }
    if (::ftruncate(buffer_, 0) != 0 || ::lseek(buffer_, 0, SEEK_SET) != 0) {
        fail("cannot use a buffer");
    }
    return text;
}

void set_tool_name(std::string name) { tool_name = std::move(name); }

void message(const std::string& text) {
    const std::string line = tool_name + ": " + text + '\n';
    if (!write_all(STDERR_FILENO, line)) return;  // nobody is left to be told
}

}  // namespace lemara::tools
