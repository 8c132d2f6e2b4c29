#pragma once

#include <string>
#include <string_view>

class Taula;

/// \file
/// Compiled tables: a table as a binary image that is mapped into memory and searched in
/// place.
///
/// Taula::kargatu recognises an image by its first bytes, whatever the file is called. A
/// table loaded from one answers like the text that it was compiled from; its `egoerak`
/// stays empty until an operation changes the graph, which is then unfolded from the
/// image. A damaged image leaves the table as it is, in silence: a caller that wants to
/// know asks compiled_table_defect first. A file that is cut short while it is mapped
/// kills the process when the missing part is touched, so replace such files by renaming.
///
/// The format is our own: docs/table-format.md tells it.

namespace lemara {

/// The image of a table, to be written to a file as it is. Arcs that lead nowhere are
/// left out. Cost: linear in the records.
[[gnu::visibility("default")]] std::string compile_table(const Taula& table);

/// The image of a table's text: that of a table loaded from a file that holds it. Builds
/// no graph. Cost: linear in the text.
[[gnu::visibility("default")]] std::string compile_table_text(std::string_view text);

/// Loads the file of `table` as Taula::kargatu does, but makes no graph of a text either:
/// `egoerak` stays empty until an operation changes the graph. All answers are the same.
/// Never ends the process: false if the file can't be opened, or brings no state.
[[gnu::visibility("default")]] bool load_for_searches(Taula& table);

/// What is wrong with an image, in words; empty if nothing is. Reads every byte once.
[[gnu::visibility("default")]] std::string compiled_table_defect(std::string_view image);

/// True if a file that begins with `bytes` means to be a compiled table. 8 bytes tell.
[[gnu::visibility("default")]] bool is_compiled_table(std::string_view bytes);

/// The same image with the byte order of the other kind of machine. Machines read both;
/// their own is the one that they map.
[[gnu::visibility("default")]] std::string with_other_byte_order(std::string image);

}  // namespace lemara
