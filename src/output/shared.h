// What the outputs share.
#pragma once

#include <string>

#include "Paragrafoa.h"

namespace lemara {

/// "{p=1 s=2 z=3,4}": paragraph, sentence, and the numbers of the tokens that no blank
/// follows; that part is absent if there are none.
std::string sentence_header(const Paragrafoa& paragraph, int sentence_number,
                            const Esaldia& sentence);

/// `open`, the `sai`, `hobe` and `erabili` of an analysis that are not empty, and ">";
/// empty if all three are.
std::string values_of(const Analisia& analysis, const std::string& open);

/// `all` for case class 2, `first` for 1, else empty.
std::string case_mark(const Analisia& analysis, const char* first, const char* all);

}  // namespace lemara
