// The little of JSON that is written here. Tests: tests/tools/check_formats_test.cpp.
#pragma once

#include <string>
#include <string_view>

namespace lemara::tools {

/// A JSON string with its quotes. What is not UTF-8 becomes U+FFFD.
std::string json_string(std::string_view text);

}  // namespace lemara::tools
