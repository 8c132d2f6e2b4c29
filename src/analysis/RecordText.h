// What the library itself makes a record of, without strings that are there for a moment.
#pragma once

#include <string>
#include <string_view>

namespace lemara {

struct RecordText {
    std::string_view analisia;
    const std::string& hiztegia;
    std::string_view forma = {};
};

}  // namespace lemara
