#pragma once

#include <stdexcept>
#include <string>

namespace lemara::tools {

constexpr int DONE = 0;      // exit status: nothing to say
constexpr int FINDINGS = 1;  // done, but there were findings or refused lines
constexpr int FAILED = 2;    // wrong usage, or a file that can't be used

/// Ends a command with status FAILED. The text is the message without the tool's name:
/// "sareak.cfg:4: no such table: zenbakiak.sare".
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace lemara::tools
