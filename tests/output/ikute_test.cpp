#include "Paragrafoa.h"
#include "example.h"

namespace {

using namespace lemara::test;

/// An analysis block with its kind and the lines behind it.
std::string block(int id, const std::string& lemma, const std::string& tags,
                  const std::string& network, const std::string& kind,
                  const std::string& rest = "") {
    return "\t\t<an id=\"" + std::to_string(id) + "\">\n\t\t\t<lem>" + lemma +
           "</lem>\n\t\t\t<lbl>" + tags + "</lbl>\n\t\t\t<hizt>" + network +
           "</hizt>\n\t\t\t<prop>" + kind + "</prop>\n" + rest + "\t\t</an>\n";
}

/// A sentence that shows one token; `gap` is what is left between "hid=\"" and the text.
std::string shown(int sentence_number, const std::string& gap, const std::string& text,
                  const std::string& blocks) {
    return "<es eid=\"" + std::to_string(sentence_number) +
           "\" pid=\"7\" >\n\t<tok hid=\"" + gap + text + "</frm>\n" + blocks +
           "\t</tok>\n</es>\n";
}

const std::string FIRST = "\">\n\t\t<frm>";  // less one byte for each place of the token

std::string printed(const Paragrafoa& p) {
    return stdout_of([&] { p.print_Ikute(); });
}

}  // namespace

TEST(Ikute, PrintsOneProblemWord) {
    struct Case {
        std::string label;
        std::vector<Analisia> analyses;
        bool flagged;
        std::string blocks;
    };
    const Case cases[] = {
        {"no analyses leave no trace", {}, false, ""},
        {"a correct word", {analysis("etxe<IZE>")}, false, ""},
        {"a correct word with a source", {analysis("etxe<IZE>[s=a]")}, false, ""},
        {"a rare word is correct", {analysis("etxe<IZE><Rare>")}, false, ""},
        {"an unknown word has no block", {analysis("x<EZZG>")}, true, ""},
        {"the start of an entry looks the same", {analysis("x<EZZG_HAUL>")}, true, ""},
        {"the mark among other tags is no mark", {analysis("x<IZE><EZZG>")}, false, ""},
        {"a better form",
         {analysis("lagun<IZE>[h=kide]")},
         true,
         block(1, "lagun", "+Ize", "eumorfo", "h.", "\t\t\t<hobe>kide</hobe>\n")},
        {"a form to use instead",
         {analysis("lagun<IZE>[e=kide]")},
         true,
         block(1, "lagun", "+Ize", "eumorfo", "e.", "\t\t\t<erabili>kide</erabili>\n")},
        {"of both the better form alone",
         {analysis("lagun<IZE>[e=kide][h=adiskide]")},
         true,
         block(1, "lagun", "+Ize", "eumorfo", "h.", "\t\t\t<hobe>adiskide</hobe>\n")},
        {"a source stands in front",
         {analysis("lagun<IZE>[h=kide][s=a]")},
         true,
         block(1, "lagun", "+Ize", "eumorfo", "h.",
               "\t\t\t<sai>a</sai>\n\t\t\t<hobe>kide</hobe>\n")},
        {"ordinary analyses of a flagged word are shown",
         {analysis("a<A>", 0, "x"), analysis("lagun<IZE>[h=kide]"),
          analysis("b<B><Rare>[s=c]", 0, "y")},
         true,
         block(1, "a", "+A", "x", "f.e.") +
             block(2, "lagun", "+Ize", "eumorfo", "h.", "\t\t\t<hobe>kide</hobe>\n") +
             block(3, "b", "+B+Rare", "y", "f.e.", "\t\t\t<sai>c</sai>\n")},
        {"kept: an unknown analysis takes a number and writes nothing",
         {analysis("x<EZZG>"), analysis("a<A>"), analysis("x<EZZG_HAUL>"),
          analysis("b<B>")},
         true,
         block(2, "a", "+A", "eumorfo", "f.e.") + block(4, "b", "+B", "eumorfo", "f.e.")},
        {"nothing is escaped",
         {analysis("a&b<A>[h=<c>]<D>", 0, "<")},
         true,
         block(1, "a&b", "+A+C+D", "<", "h.", "\t\t\t<hobe><c></hobe>\n")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(printed(one_token(token("hitza", false, c.analyses))),
                  c.flagged ? shown(1, FIRST.substr(1), "hitza", c.blocks) : "");
    }
}

TEST(Ikute, CutsItsMarkByThePlaceOfTheToken) {
    struct Case {
        std::string label, gap;
    };
    const Case cases[] = {
        {"first", ">\n\t\t<frm>"},
        {"kept: second", "\n\t\t<frm>"},
        {"kept: third", "\t\t<frm>"},
        {"kept: fourth", "\t<frm>"},
        {"kept: fifth", "<frm>"},
        {"kept: sixth", "frm>"},
        {"kept: seventh", "rm>"},
        {"kept: eighth", "m>"},
        {"kept: ninth", ">"},
        {"kept: tenth", ""},
        {"past the tenth nothing is left", ""},
        {"nor at the twelfth", ""},
    };
    std::vector<Tokena> tokens;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        std::vector<Tokena> list = tokens;
        list.push_back(token("x", false, {analysis("x<EZZG>")}));
        EXPECT_EQ(printed(paragraph({sentence(list)})), shown(1, c.gap, "x", ""));
        list.push_back(token("y", false, {analysis("y<IZE>")}));
        EXPECT_EQ(printed(paragraph({sentence(list)})), shown(1, c.gap, "x", ""))
            << "correct tokens behind it wipe nothing";
        tokens.push_back(token("a", true, {analysis("a<A>")}));
    }
    // Far beyond the mark's ten bytes.
    for (int i = 0; i < 500; ++i) tokens.push_back(token("a", true));
    tokens.push_back(token("x", false, {analysis("x<EZZG>")}));
    EXPECT_EQ(printed(paragraph({sentence(tokens)})), shown(1, "", "x", ""));
}

TEST(Ikute, PrintsParagraphs) {
    const Tokena bad = token("bad", true, {analysis("bad<EZZG>")});
    const Tokena worse = token("worse", true, {analysis("worse<IZE>[h=b]")});
    const Tokena good = token("good", true, {analysis("good<IZE>")});
    const std::string worse_block =
        block(1, "worse", "+Ize", "eumorfo", "h.", "\t\t\t<hobe>b</hobe>\n");
    struct Case {
        std::string label;
        Paragrafoa paragraph;
        std::string printed;
    };
    const Case cases[] = {
        {"no sentence", paragraph({}), ""},
        {"a sentence with no token", paragraph({sentence({})}), ""},
        {"correct words alone", paragraph({sentence({good, good}), sentence({good})}),
         ""},
        {"kept: of several problem words the last one is seen",
         paragraph({sentence({bad, worse, good, bad})}), shown(1, "\t<frm>", "bad", "")},
        {"kept: an earlier one is wiped with its block",
         paragraph({sentence({worse, bad})}), shown(1, "\n\t\t<frm>", "bad", "")},
        {"and the later one keeps its own", paragraph({sentence({bad, worse})}),
         shown(1, "\n\t\t<frm>", "worse", worse_block)},
        {"sentences without a problem are not written but counted",
         paragraph({sentence({good}, 5), sentence({bad}, 6), sentence({}, 7),
                    sentence({worse}, 8)}),
         shown(2, ">\n\t\t<frm>", "bad", "") +
             shown(4, ">\n\t\t<frm>", "worse", worse_block)},
        {"the second token of two",
         paragraph(
             {sentence({token("Kaixo", true, {analysis("kaixo<ITJ>")}),
                        token("lagunek", false, {analysis("lagun<IZE>[h=lagunak]")})})}),
         "<es eid=\"1\" pid=\"7\" >\n\t<tok hid=\"\n\t\t<frm>lagunek</frm>\n\t\t<an "
         "id=\"1\">\n"
         "\t\t\t<lem>lagun</lem>\n\t\t\t<lbl>+Ize</lbl>\n\t\t\t<hizt>eumorfo</hizt>\n"
         "\t\t\t<prop>h.</prop>\n\t\t\t<hobe>lagunak</hobe>\n\t\t</an>\n\t</tok>\n</"
         "es>\n"},
        {"a text is not escaped",
         paragraph({sentence({token("a<b", false, {analysis("x<EZZG>")})})}),
         shown(1, ">\n\t\t<frm>", "a<b", "")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(printed(c.paragraph), c.printed);
    }
}
