// The two encodings of the tools, UTF-8 outside and Latin-1 in the engine: the library's
// own functions under their short names.
#pragma once

#include "lemara/utf8.h"

namespace lemara::tools {

using host::append_utf8;
using host::character_at;
using host::find_invalid_utf8;
using host::latin1_exactly;
using host::printable;
using host::utf8_from_latin1;

}  // namespace lemara::tools
