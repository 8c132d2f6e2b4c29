#include "Paragrafoa.h"
#include "example.h"

namespace {

using namespace lemara::test;

struct Case {
    std::string label;
    Paragrafoa paragraph;
    std::string plain, with_values;
};

std::string printed(const Paragrafoa& p, bool values, bool second = false,
                    bool third = false) {
    return stdout_of([&] { p.print_Multext(values, second, third); });
}

/// The lines of one token: header, token line with `field`, and the two empty lines.
std::string line(const std::string& text, const std::string& field) {
    return "{p=7 s=1 z=1}\tEOS\n" + text + "\tBOS\t" + field + "\n\n\n";
}

}  // namespace

TEST(Multext, PrintsParagraphs) {
    const Tokena kaixo = token("Kaixo", true, {analysis("kaixo<ITO>", 1)});
    const Tokena lagun =
        token("lagun", false,
              {analysis("lagun<IZE>[h=adiskide]"), analysis("lagun<IZE>[s=a]")});
    const Tokena bare = token("x", true);
    const Case cases[] = {
        {"two tokens", paragraph({sentence({kaixo, lagun})}),
         "{p=7 s=1 z=2}\tEOS\nKaixo\tBOS\tkaixo\\+Ito+Has_mai\nlagun\tEOS\t=\\+Ize\n\n\n",
         "{p=7 s=1 z=2}\tEOS\nKaixo\tBOS\tkaixo\\+Ito+Has_mai\n"
         "lagun\tEOS\t=\\+Ize<h=adiskide><s=a>\n\n\n"},
        {"no sentence", paragraph({}), "\n\n", "\n\n"},
        {"a sentence with no token", paragraph({sentence({})}), "{p=7 s=1}\tEOS\n\n\n",
         "{p=7 s=1}\tEOS\n\n\n"},
        {"sentences are counted from 1, whatever their own number",
         paragraph({sentence({kaixo}, 40), sentence({}, -1), sentence({lagun}, 0)}),
         "{p=7 s=1}\tEOS\nKaixo\tBOS\tkaixo\\+Ito+Has_mai\n{p=7 s=2}\tEOS\n"
         "{p=7 s=3 z=1}\tEOS\nlagun\tBOS\t=\\+Ize\n\n\n",
         "{p=7 s=1}\tEOS\nKaixo\tBOS\tkaixo\\+Ito+Has_mai\n{p=7 s=2}\tEOS\n"
         "{p=7 s=3 z=1}\tEOS\nlagun\tBOS\t=\\+Ize<h=adiskide><s=a>\n\n\n"},
        {"a token with no analyses ends its line in a tab", one_token(bare),
         "{p=7 s=1}\tEOS\nx\tBOS\t\n\n\n", "{p=7 s=1}\tEOS\nx\tBOS\t\n\n\n"},
        {"three tokens: the middle one has no mark",
         paragraph({sentence({bare, token("y", false), token("z", false)})}),
         "{p=7 s=1 z=2,3}\tEOS\nx\tBOS\t\ny\t\t\nz\tEOS\t\n\n\n",
         "{p=7 s=1 z=2,3}\tEOS\nx\tBOS\t\ny\t\t\nz\tEOS\t\n\n\n"},
        {"an unknown token", one_token(token("zzz", false, {analysis("zzz<EZZG>")})),
         line("zzz", "=\\+Ezzg"), line("zzz", "=\\+Ezzg")},
        {"the lemma is compared by bytes",
         one_token(token("Etxe", false, {analysis("etxe<IZE>", 1)})),
         line("Etxe", "etxe\\+Ize+Has_mai"), line("Etxe", "etxe\\+Ize+Has_mai")},
        {"all capitals", one_token(token("ETXE", false, {analysis("etxe<IZE>", 2)})),
         line("ETXE", "etxe\\+Ize+Den_mai"), line("ETXE", "etxe\\+Ize+Den_mai")},
        {"any other case class adds nothing",
         one_token(token("e", false, {analysis("etxe<IZE>", 3)})),
         line("e", "etxe\\+Ize"), line("e", "etxe\\+Ize")},
        {"entries are sorted by bytes",
         one_token(token("e", false,
                         {analysis("z<A>"), analysis("\351<A>"), analysis("B<A>"),
                          analysis("e<A>"), analysis("a<C>"), analysis("a<B>")})),
         line("e", "=\\+A|B\\+A|a\\+B|a\\+C|z\\+A|\351\\+A"),
         line("e", "=\\+A|B\\+A|a\\+B|a\\+C|z\\+A|\351\\+A")},
        {"equal analyses are one; case classes keep them apart",
         one_token(token("e", false,
                         {analysis("a<A>", 1), analysis("a<A>"), analysis("a<A>", 1)})),
         line("e", "a\\+A|a\\+A+Has_mai"), line("e", "a\\+A|a\\+A+Has_mai")},
        {"all three values, in their order",
         one_token(token("e", false, {analysis("a<A>[e=3][s=1][h=2]<X>")})),
         line("e", "a\\+A+X"), line("e", "a\\+A+X<s=1 h=2 e=3>")},
        {"two values", one_token(token("e", false, {analysis("a<A>[e=3][s=1]<X>")})),
         line("e", "a\\+A+X"), line("e", "a\\+A+X<s=1 e=3>")},
        {"merged analyses: one without values adds nothing",
         one_token(token("e", false,
                         {analysis("a<A>"), analysis("a<A>[h=b]"), analysis("a<A>"),
                          analysis("a<A>[e=c]")})),
         line("e", "a\\+A"), line("e", "a\\+A<h=b><e=c>")},
        {"a rare tag is a tag", one_token(token("e", false, {analysis("a<A><Rare>")})),
         line("e", "a\\+A+Rare"), line("e", "a\\+A+Rare")},
        {"nothing is escaped", one_token(token("a\t|b", false, {analysis("a|b<A>")})),
         line("a\t|b", "a|b\\+A"), line("a\t|b", "a|b\\+A")},
        {"an empty lemma is not the token",
         one_token(token("e", false, {analysis("<A>")})), line("e", "\\+A"),
         line("e", "\\+A")},
        {"an empty token with an empty lemma",
         one_token(token("", false, {analysis("<A>")})), line("", "=\\+A"),
         line("", "=\\+A")},
        {"an analysis with no tag", one_token(token("e", false, {analysis("a")})),
         line("e", "a\\"), line("e", "a\\")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(printed(c.paragraph, false), c.plain);
        EXPECT_EQ(printed(c.paragraph, true), c.with_values);
        for (const bool second : {false, true}) {
            for (const bool third : {false, true}) {
                EXPECT_EQ(printed(c.paragraph, false, second, third), c.plain);
                EXPECT_EQ(printed(c.paragraph, true, second, third), c.with_values);
            }
        }
    }
}

TEST(Multext, ShowsTheNumberOfTheParagraph) {
    for (const int number : {0, 1, -3, 2147483647}) {
        Paragrafoa p(number, "");
        p.esaldiak = {sentence({})};
        EXPECT_EQ(printed(p, false), "{p=" + std::to_string(number) + " s=1}\tEOS\n\n\n");
    }
}
