#pragma once

#include <string>
#include <string_view>

#include "lemara/checker.h"

/// \file
/// Findings and tokens as JSON, each an object in one line: what all tools print and
/// send.

namespace lemara {

/// A JSON string with its quotes. What is no UTF-8 becomes U+FFFD.
[[gnu::visibility("default")]] std::string json_string(std::string_view text);

/// {"kind":"unknown","token":"gizno","line":1,"column":6,"columnUtf16":6,"bytes":[5,10],
///  "codePoints":[5,10],"utf16":[5,10],"forms":["gizon"],"complete":true}
///
/// Positions are counted from the start of the text, from 0; line and columns from 1.
[[gnu::visibility("default")]] std::string to_json(const Finding& finding);

/// {"text":"etxeak","line":1,"column":1,"columnUtf16":1,"bytes":[0,6],"codePoints":[0,6],
///  "utf16":[0,6],"paragraph":0,"sentence":0,"known":true,"foreign":false,"blankFollows":false,
///  "readings":[{"lemma":"etxe","tags":["IZE"],"network":"eumorfo",
///   "analysis":"etxe<IZE>"}]}
///
/// A reading has "better", "instead" and "source" too if it recommends something.
[[gnu::visibility("default")]] std::string to_json(const Token& token);

}  // namespace lemara
