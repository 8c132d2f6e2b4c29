#include "terminal.h"

#include <sys/ioctl.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace lemara::tools {

std::size_t width_of_terminal(int descriptor) {
    constexpr std::size_t USUAL = 80, NARROWEST = 20;
    winsize size{};
    const bool known = ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return std::max<std::size_t>(known ? size.ws_col : USUAL, NARROWEST);
}

bool has_terminal_colours() {
    const char* no_colour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return (no_colour == nullptr || *no_colour == '\0') &&
           (terminal == nullptr || std::string_view(terminal) != "dumb");
}

}  // namespace lemara::tools
