// Which of the tags that filters ask for an analysis string holds, in one pass.
#pragma once

#include <cstring>
#include <string_view>

#include "analysis/text_pieces.h"

namespace lemara {

struct TagScan {
    bool person_or_place = false;  ///< "<PIB>" or "<LIB>"
    bool other_name = false;       ///< "<IZB>"
    bool symbol = false;           ///< "<SNB>" or "<SIG>"
    bool postposition = false;     ///< "<PSP>"

    explicit TagScan(std::string_view analysis) {
        std::size_t open = analysis.find('<');
        while (open != std::string_view::npos) {
            const std::string_view tag = analysis.substr(open, 5);
            if (tag == "<PIB>" || tag == "<LIB>") person_or_place = true;
            if (tag == "<IZB>") other_name = true;
            if (tag == "<SNB>" || tag == "<SIG>") symbol = true;
            if (tag == "<PSP>") postposition = true;
            open = analysis.find('<', open + 1);
        }
    }
};

/// The two filters of the walk together: egiaztatuIzenBereziakEtaSinboloak and
/// kenduHAULtxarrak. Neither text holds a NUL; `analysis` ends with one.
bool is_kept_by_filters(std::string_view token, std::string_view analysis);

}  // namespace lemara
