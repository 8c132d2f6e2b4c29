#pragma once

#include <string>

/// True if something, a directory included, stands at `path`.
[[gnu::visibility("default")]] bool file_exists(const std::string& path);
