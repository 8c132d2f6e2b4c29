// Tables in files and in text: those of tests/data, and any table told for comparison, one string
// a state.
#pragma once

#include <string>
#include <vector>

#include "Taula.h"

namespace lemara::test {

/// Path of a file in tests/data.
inline std::string data_file(const std::string& name) {
    return std::string(LEMARA_TEST_SOURCES) + "/data/" + name;
}

/// tests/data/ka.sare: double brackets end a word
/// (0)--k-->(1)--a-->(2)--<IZE>:<>-->((3))
constexpr char KA[] = "0\tk\t1\n1\ta\t2\n2\t<IZE>:<>\t3\nfinal: 3\n";

/// "k/k>1" for an arc that reads and writes k and leads to state 1, "#" for the end of a
/// word; in the order of the state, with a blank between. "! " in front if `final` is set.
inline std::string describe(const Egoera* state) {
    if (state == nullptr) return "null";
    std::string text = state->final ? "!" : "";
    for (const Zubia* arc : state->zubiak) {
        if (!text.empty()) text += ' ';
        if (arc == nullptr) {
            text += "null";
        } else if (arc->hurrengo_egoera < 0 && arc->goiko_ikurra.empty() &&
                   arc->beheko_ikurra.empty()) {
            text += '#';
        } else {
            text += arc->goiko_ikurra + '/' + arc->beheko_ikurra + '>' +
                    std::to_string(arc->hurrengo_egoera);
        }
    }
    return text;
}

inline std::vector<std::string> describe(const Taula& table) {
    std::vector<std::string> states;
    for (const Egoera* state : table.egoerak) states.push_back(describe(state));
    return states;
}

}  // namespace lemara::test
