#include "corrections.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace lemara::tools;

struct Case {
    std::string label, bytes;
    std::vector<Correction> corrections;
    std::string corrected, diff;
};

const std::string HEAD = "--- a\n+++ a\n";

const Case CASES[] = {
    {"nothing to correct", "etxe\n", {}, "etxe\n", ""},
    {"one word",
     "a\nx b\nc\n",
     {{2, 3, "yy"}},
     "a\nyy b\nc\n",
     HEAD + "@@ -2 +2 @@\n-x b\n+yy b\n"},
    {"two on a line",
     "x x\n",
     {{0, 1, "y"}, {2, 3, "z"}},
     "y z\n",
     HEAD + "@@ -1 +1 @@\n-x x\n+y z\n"},
    {"two apart",
     "x\nb\nx\n",
     {{0, 1, "y"}, {4, 5, "z"}},
     "y\nb\nz\n",
     HEAD + "@@ -1 +1 @@\n-x\n+y\n@@ -3 +3 @@\n-x\n+z\n"},
    {"no line feed at the end",
     "x",
     {{0, 1, "y"}},
     "y",
     HEAD + "@@ -1 +1 @@\n-x\n\\ No newline at end of file\n+y\n"
            "\\ No newline at end of file\n"},
    {"a line is joined to the next",
     "a\nx\ny\nb\nx\n",
     {{2, 5, "z"}, {8, 9, "w"}},
     "a\nz\nb\nw\n",
     HEAD + "@@ -2,2 +2 @@\n-x\n-y\n+z\n@@ -5 +4 @@\n-x\n+w\n"},
    {"line ends and bytes that are no UTF-8 stay",
     "\377 x\r\n\0",
     {{2, 3, "y"}},
     "\377 y\r\n",
     HEAD + "@@ -1 +1 @@\n-\377 x\r\n+\377 y\r\n"},
};

TEST(Corrections, ChangeTheirPlacesAlone) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(corrected(c.bytes, c.corrections), c.corrected);
        EXPECT_EQ(diff_of("a", c.bytes, c.corrections), c.diff);
    }
}

TEST(Corrections, LeaveAllOtherBytesOfAnyText) {
    for (unsigned seed = 1; seed <= 50; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::string before, after;
        std::vector<Correction> corrections;
        for (int i = 0; i < 40; ++i) {
            std::string other(random() % 5 + 1, '\0');
            for (char& c : other) c = static_cast<char>(random() % 256);
            before += other;
            after += other;
            const std::string wrong(random() % 3 + 1, 'w'), right(random() % 3, 'r');
            corrections.push_back({before.size(), before.size() + wrong.size(), right});
            before += wrong;
            after += right;
        }
        EXPECT_EQ(corrected(before, corrections), after);
    }
}

struct LinesCase {
    std::string label, token, form, result;
};

const LinesCase LINES[] = {
    {"on one line", "kontutan hartu", "kontuan hartu", "kontuan hartu"},
    {"on two lines", "kontutan\n hartu", "kontuan hartu", "kontuan\n hartu"},
    {"line ends of Windows", "a\r\nb c", "x y z", "x\r\ny z"},
    {"another number of words", "bait\nda", "baita", ""},
};

TEST(Corrections, KeepTheLines) {
    for (const LinesCase& c : LINES) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(over_the_same_lines(c.token, c.form), c.result);
    }
}

}  // namespace
