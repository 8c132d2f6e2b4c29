#include "Paragrafoa.h"
#include "example.h"

namespace {

using namespace lemara::test;

const std::string EBUK = "\"<EBUK>\"\n\t\"EBUK\" EBUK\n";

struct Case {
    std::string label;
    Paragrafoa paragraph;
    std::string plain, with_values;
};

/// The text of a paragraph of one token that no blank follows.
std::string cohort(const std::string& text, const std::string& readings) {
    return "{p=7 s=1 z=1}\n" + EBUK + "<\"" + text + "\">\n" + readings + EBUK;
}

}  // namespace

TEST(Cg3, WritesCohorts) {
    const Tokena kaixo = token("Kaixo", true, {analysis("kaixo<ITJ>", 1)});
    const Tokena lagun =
        token("lagun", false,
              {analysis("lagun<IZE>[h=adiskide]"), analysis("lagun<IZE>[s=a]")});
    const Case cases[] = {
        {"two tokens", paragraph({sentence({kaixo, lagun})}),
         "{p=7 s=1 z=2}\n\"<EBUK>\"\n\t\"EBUK\" EBUK\n<\"Kaixo\">\n\t\"kaixo\" <id=1> "
         "ITJ HAS_MAI\n"
         "<\"lagun\">\n\t\"lagun\" <id=1> IZE\n\"<EBUK>\"\n\t\"EBUK\" EBUK\n",
         "{p=7 s=1 z=2}\n\"<EBUK>\"\n\t\"EBUK\" EBUK\n<\"Kaixo\">\n\t\"kaixo\" <id=1> "
         "ITJ HAS_MAI\n"
         "<\"lagun\">\n\t\"lagun\" <id=1> IZE <h=adiskide> <s=a>\n\"<EBUK>\"\n\t\"EBUK\" "
         "EBUK\n"},
        {"no sentence", paragraph({}), "", ""},
        {"a sentence with no token", paragraph({sentence({})}),
         "{p=7 s=1}\n" + EBUK + EBUK, "{p=7 s=1}\n" + EBUK + EBUK},
        {"sentences are counted from 1, whatever their own number",
         paragraph({sentence({kaixo}, 9), sentence({}, -1)}),
         "{p=7 s=1}\n" + EBUK + "<\"Kaixo\">\n\t\"kaixo\" <id=1> ITJ HAS_MAI\n" + EBUK +
             "{p=7 s=2}\n" + EBUK + EBUK,
         "{p=7 s=1}\n" + EBUK + "<\"Kaixo\">\n\t\"kaixo\" <id=1> ITJ HAS_MAI\n" + EBUK +
             "{p=7 s=2}\n" + EBUK + EBUK},
        {"a token with no analyses has no reading", one_token(token("x", false)),
         cohort("x", ""), cohort("x", "")},
        {"the list of tokens without a blank",
         paragraph({sentence({token("x", false), token("y", true), token("z", false)})}),
         "{p=7 s=1 z=1,3}\n" + EBUK + "<\"x\">\n<\"y\">\n<\"z\">\n" + EBUK,
         "{p=7 s=1 z=1,3}\n" + EBUK + "<\"x\">\n<\"y\">\n<\"z\">\n" + EBUK},
        {"an unknown token", one_token(token("zzz", false, {analysis("zzz<EZZG>")})),
         cohort("zzz", "\t\"zzz\" <id=1> EZZG\n"),
         cohort("zzz", "\t\"zzz\" <id=1> EZZG\n")},
        {"all capitals", one_token(token("E", false, {analysis("etxe<IZE>", 2)})),
         cohort("E", "\t\"etxe\" <id=1> IZE DEN_MAI\n"),
         cohort("E", "\t\"etxe\" <id=1> IZE DEN_MAI\n")},
        {"the lemma is written in full where it equals the token",
         one_token(token("etxe", false, {analysis("etxe<IZE>", 3)})),
         cohort("etxe", "\t\"etxe\" <id=1> IZE\n"),
         cohort("etxe", "\t\"etxe\" <id=1> IZE\n")},
        {"readings are sorted and numbered in that order",
         one_token(token("e", false,
                         {analysis("z<A>"), analysis("\351<A>"), analysis("B<A>"),
                          analysis("a<C>"), analysis("a<B>"), analysis("a<B>", 1)})),
         cohort("e",
                "\t\"B\" <id=1> A\n\t\"a\" <id=2> B\n\t\"a\" <id=3> B HAS_MAI\n"
                "\t\"a\" <id=4> C\n\t\"z\" <id=5> A\n\t\"\351\" <id=6> A\n"),
         cohort("e",
                "\t\"B\" <id=1> A\n\t\"a\" <id=2> B\n\t\"a\" <id=3> B HAS_MAI\n"
                "\t\"a\" <id=4> C\n\t\"z\" <id=5> A\n\t\"\351\" <id=6> A\n")},
        {"numbers restart with each token",
         paragraph({sentence({token("x", true, {analysis("b<A>"), analysis("a<A>")}),
                              token("y", true, {analysis("c<A>")})})}),
         "{p=7 s=1}\n" + EBUK + "<\"x\">\n\t\"a\" <id=1> A\n\t\"b\" <id=2> A\n<\"y\">\n" +
             "\t\"c\" <id=1> A\n" + EBUK,
         "{p=7 s=1}\n" + EBUK + "<\"x\">\n\t\"a\" <id=1> A\n\t\"b\" <id=2> A\n<\"y\">\n" +
             "\t\"c\" <id=1> A\n" + EBUK},
        {"analyses that differ in network or values alone are one reading",
         one_token(token("e", false,
                         {analysis("a<A>", 0, "x"), analysis("a<A>[h=b]<C>", 0, "y"),
                          analysis("a<A>[h=d]", 0, "z"), analysis("a<A>[e=c]")})),
         cohort("e", "\t\"a\" <id=1> A\n\t\"a\" <id=2> A C\n"),
         cohort("e", "\t\"a\" <id=1> A <h=d> <e=c>\n\t\"a\" <id=2> A C <h=b>\n")},
        {"all three values, in their order",
         one_token(token("e", false, {analysis("a<A>[e=3][s=1][h=2]<X>")})),
         cohort("e", "\t\"a\" <id=1> A X\n"),
         cohort("e", "\t\"a\" <id=1> A X <s=1 h=2 e=3>\n")},
        {"a rare tag is a tag", one_token(token("e", false, {analysis("a<A><Rare>")})),
         cohort("e", "\t\"a\" <id=1> A Rare\n"), cohort("e", "\t\"a\" <id=1> A Rare\n")},
        {"nothing is escaped", one_token(token("a\"b", false, {analysis("a\"b<A>")})),
         cohort("a\"b", "\t\"a\"b\" <id=1> A\n"),
         cohort("a\"b", "\t\"a\"b\" <id=1> A\n")},
        {"an analysis with no tag", one_token(token("e", false, {analysis("a")})),
         cohort("e", "\t\"a\" <id=1>\n"), cohort("e", "\t\"a\" <id=1>\n")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        for (const bool second : {false, true}) {
            for (const bool third : {false, true}) {
                EXPECT_EQ(c.paragraph.get_CG3(false, second, third), c.plain);
                EXPECT_EQ(c.paragraph.get_CG3(true, second, third), c.with_values);
            }
        }
        EXPECT_EQ(stdout_of([&] { c.paragraph.get_CG3(true, true, true); }), "");
    }
}

TEST(Cg3, TheNumberGoesToTheFirstMarkOfTheReading) {
    // kept: a lemma that holds the mark takes the number in its place
    Analisia odd = analysis("x<A>");
    odd.lema = "a<id=b";
    EXPECT_EQ(one_token(token("e", false, {odd})).get_CG3(false, false, false),
              cohort("e", "\t\"a<id=1b\" <id=> A\n"));
}

TEST(Cg3, TheOrderOfAnalysesShowsInMergedValuesAlone) {
    const Analisia better = analysis("a<A>[h=b]");
    const Analisia source = analysis("a<A>[s=c]");
    const Analisia other = analysis("Z<A>");
    const Paragrafoa one = one_token(token("e", false, {better, source, other}));
    const Paragrafoa two = one_token(token("e", false, {other, source, better}));
    EXPECT_EQ(one.get_CG3(false, false, false), two.get_CG3(false, false, false));
    EXPECT_EQ(one.get_CG3(true, false, false),
              cohort("e", "\t\"Z\" <id=1> A\n\t\"a\" <id=2> A <h=b> <s=c>\n"));
    EXPECT_EQ(two.get_CG3(true, false, false),
              cohort("e", "\t\"Z\" <id=1> A\n\t\"a\" <id=2> A <s=c> <h=b>\n"));
}
