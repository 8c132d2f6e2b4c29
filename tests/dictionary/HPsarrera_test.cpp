#include "HPsarrera.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "support.h"

TEST(HPsarrera, HoldsSevenTexts) {
    const HPsarrera entry("l", "<K>", "e", "h", "er", "s", "<hp1>");
    EXPECT_EQ(entry.lema, "l");
    EXPECT_EQ(entry.kategoria, "<K>");
    EXPECT_EQ(entry.erroa, "e");
    EXPECT_EQ(entry.hobe, "h");
    EXPECT_EQ(entry.erabili, "er");
    EXPECT_EQ(entry.sai, "s");
    EXPECT_EQ(entry.paradigma, "<hp1>");
    EXPECT_TRUE(std::has_virtual_destructor<HPsarrera>::value);
}

TEST(HPsarrera, Prints) {
    const HPsarrera entry("l", "<K>", "e", "h", "er", "s", "<hp1>");
    EXPECT_EQ(lemara::test::stdout_of([&] { entry.print(); }),
              "l | <K> | e | h | er | s | <hp1>\n");
    const HPsarrera empty("", "", "", "", "", "", "");
    EXPECT_EQ(lemara::test::stdout_of([&] { empty.print(); }), " |  |  |  |  |  | \n");
}
