// Tables between their text and their compiled form, by way of the library's own loader.
// Tests: tests/tools/compiled_test.cpp.
#pragma once

#include <string>
#include <string_view>

class Taula;

namespace lemara::tools {

/// Loads the bytes of a table file, text or compiled, as the library loads a file.
/// Errors: Failure if no file in memory can be made.
void load_table(Taula& table, const std::string& bytes);

/// The text of a compiled table without defects: compiled again, it gives the same image.
/// Errors: as load_table.
std::string text_from_compiled(const std::string& image);

}  // namespace lemara::tools
