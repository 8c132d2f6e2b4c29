#include "compiled.h"

#include <gtest/gtest.h>

#include <string>

#include "lemara/compiled_table.h"

namespace {

using namespace lemara::tools;

struct Case {
    std::string label, text;
};

// In the order of the states, so that the text comes back byte for byte.
const Case CASES[] = {
    {"a word", "0\ta\t1\nfinal: 1\n"},
    {"a final record in front of the arcs of its state",
     "0\ta\t1\nfinal: 1\n1\t<IZE>:<>\t2\nfinal: 2\n"},
    {"a final record behind them", "0\ta\t1\n1\tb\t2\nfinal: 1\nfinal: 2\n"},
    {"an empty upper side", "0\t:a\t1\nfinal: 1\n"},
    {"both sides empty", "0\t:<>\t1\nfinal: 1\n"},
    {"colons", "0\t:\t1\n0\t::\t1\n0\ta:b:c\t1\nfinal: 1\n"},
    {"the marker", "0\t<>:a\t1\n0\t<>:<>\t1\nfinal: 1\n"},
    {"Latin-1 and several bytes", "0\t\361abar:\361\t1\nfinal: 1\n"},
    {"a cycle", "0\ta\t0\n0\tb\t1\nfinal: 1\n"},
};

}  // namespace

TEST(Compiled, TextComesBackAsItWas) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        const std::string image = lemara::compile_table_text(c.text);
        EXPECT_EQ(lemara::compiled_table_defect(image), "");
        EXPECT_EQ(text_from_compiled(image), c.text);
        EXPECT_EQ(text_from_compiled(lemara::with_other_byte_order(image)), c.text);
    }
}

TEST(Compiled, EveryFlippedByteIsSeen) {
    const std::string image = lemara::compile_table_text(CASES[1].text);
    for (std::size_t i = 0; i < image.size(); ++i) {
        std::string damaged = image;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
        EXPECT_NE(lemara::compiled_table_defect(damaged), "") << "byte " << i;
    }
}
