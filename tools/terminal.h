// What is known of the terminal.
#pragma once

#include <cstddef>

namespace lemara::tools {

/// Columns of the terminal behind a descriptor; 80 if nobody tells.
std::size_t width_of_terminal(int descriptor);

/// False if NO_COLOR is set or the terminal has no colours.
bool has_terminal_colours();

}  // namespace lemara::tools
