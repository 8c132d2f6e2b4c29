#include "Tokena.h"

#include "support.h"

TEST(Tokena, StartsEmptyWithEveryFieldSet) {
    const Tokena token;
    EXPECT_EQ(token.testua, "");
    EXPECT_FALSE(token.hutsunea);
    EXPECT_EQ(token.maiuskula, 0);
    EXPECT_TRUE(token.analisiak.empty());
}

TEST(Tokena, StoresTextAndBlankButNotTheNumber) {
    struct Case {
        std::string label, text;
        bool blank;
        int number;
    };
    const Case cases[] = {
        {"a word with a blank", "etxe", true, 0},
        {"kept: the number is accepted and ignored", "Etxe", false, 1},
        {"kept: any number", "ETXE", true, 2},
        {"Latin-1", "\361abar", false, -7},
        {"no text", "", false, 9},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const Tokena token(c.text, c.blank, c.number);
        EXPECT_EQ(token.testua, c.text);
        EXPECT_EQ(token.hutsunea, c.blank);
        EXPECT_EQ(token.maiuskula, 0);
        EXPECT_TRUE(token.analisiak.empty());
    }
}

TEST(Tokena, IsCopiedFieldByField) {
    Tokena token("Etxea", true, 0);
    token.maiuskula = 1;
    token.analisiak.emplace_back("etxe<IZE>", "eumorfo");
    const Tokena copy = token;
    token.testua = "x";
    token.analisiak.clear();
    EXPECT_EQ(copy.testua, "Etxea");
    EXPECT_TRUE(copy.hutsunea);
    EXPECT_EQ(copy.maiuskula, 1);
    ASSERT_EQ(copy.analisiak.size(), 1u);
    EXPECT_EQ(copy.analisiak[0].lema, "etxe");
}
