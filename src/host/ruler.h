// Places in a text: bytes to code points, UTF-16 units, lines and columns, in one pass.
// Tests: tests/host/positions_test.cpp.
#pragma once

#include <cstddef>
#include <string_view>

#include "host/piece.h"
#include "lemara/checker.h"

namespace lemara::host {

class Ruler {
public:
    explicit Ruler(std::string_view text) : text_(text) {}

    /// The span of some bytes, which begin and end between characters. Calls come in the
    /// order of `bytes.begin`.
    Span measure(Bytes bytes);

private:
    void advance(Place& place, std::size_t byte, bool count_lines);

    std::string_view text_;
    Place here_;
    std::size_t line_ = 1;
    Place line_start_;
};

}  // namespace lemara::host
