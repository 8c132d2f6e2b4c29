// Where the library's own messages go: standard output, unless the thread is in a Quiet
// scope. Tests: tests/host/Checker_open_test.cpp.
#pragma once

#include <iosfwd>

namespace lemara {

/// The stream for messages of this thread.
std::ostream& messages();

/// While one stands, messages of the thread that made it go nowhere.
class Quiet {
public:
    Quiet();
    ~Quiet();
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

private:
    bool before_;
};

}  // namespace lemara
