#include "Paragrafoa.h"
#include "example.h"

namespace {

using namespace lemara::test;

/// lagun and kide have one form with <ABS>, anai has two:
/// (0)--lagun<IZE><ABS>:lagunak-->((1)) and so on, letter by letter
std::unique_ptr<Sarea> inflector() {
    const auto noun = [](const std::string& lemma, const std::string& ending,
                         const std::string& tag) {
        std::vector<std::string> path;
        for (const char c : lemma) path.emplace_back(1, c);
        path.emplace_back("<IZE>:<>");
        path.push_back(tag + ":" + ending);
        return path;
    };
    return network_from("inflector",
                        paths({noun("lagun", "ak", "<ABS>"), noun("kide", "ak", "<ABS>"),
                               noun("anai", "a", "<ABS>"), noun("anai", "ea", "<ABS>"),
                               noun("lagun", "a", "<MUG>")}));
}

std::string prop(const std::string& name, const std::string& form,
                 const std::string& network) {
    return "\n<prop>\n<" + name + ">" + form + "</" + name + "><hizt>" + network +
           "</hizt></prop>";
}

const std::string OK = "<prop k=\"ok\"/>";
const std::string UNKNOWN = "<prop k=\"ezz\"/>";
const std::string ENTRY = "<prop k=\"ezz\" h=\"bai\"/>";

}  // namespace

TEST(Zuzenlex, PrintsVerdicts) {
    const auto network = inflector();
    const auto absolutive = [](const std::string& group, int maiuskula = 0,
                               const std::string& name = "eumorfo") {
        return analysis("okerra<IZE><ABS>" + group, maiuskula, name);
    };
    struct Case {
        std::string label;
        std::vector<Analisia> analyses;
        std::string verdict;
    };
    const Case cases[] = {
        {"no analyses", {}, OK},
        {"a clean analysis", {analysis("etxe<IZE>")}, OK},
        {"a rare one is walked like any other", {analysis("etxe<IZE><Rare>")}, OK},
        {"unknown", {analysis("zzz<EZZG>")}, UNKNOWN},
        {"the start of an entry", {analysis("zzz<EZZG_HAUL>")}, ENTRY},
        {"the second of two marks stays",
         {analysis("zzz<EZZG>"), analysis("zzz<EZZG_HAUL>")},
         ENTRY},
        {"in either order", {analysis("zzz<EZZG_HAUL>"), analysis("zzz<EZZG>")}, UNKNOWN},
        {"the mark among other tags is no mark", {analysis("zzz<IZE><EZZG>")}, OK},
        {"a clean one behind it changes nothing",
         {analysis("zzz<EZZG>"), analysis("a<B>")},
         UNKNOWN},
        {"a better form", {absolutive("[h=lagun]")}, prop("hobe", "lagunak", "eumorfo")},
        {"in its case", {absolutive("[h=lagun]", 1)}, prop("hobe", "Lagunak", "eumorfo")},
        {"in all capitals",
         {absolutive("[h=lagun]", 2)},
         prop("hobe", "LAGUNAK", "eumorfo")},
        {"a form to use instead",
         {absolutive("[e=kide]")},
         prop("erabili", "kideak", "eumorfo")},
        {"of both the better form",
         {absolutive("[e=kide][h=lagun]")},
         prop("hobe", "lagunak", "eumorfo")},
        {"two analyses",
         {absolutive("[h=lagun]"), absolutive("[e=kide]")},
         prop("hobe", "lagunak", "eumorfo") + prop("erabili", "kideak", "eumorfo")},
        {"a list",
         {absolutive("[h=kide/lagun]"), analysis("x<IZE>", 0, "besteak")},
         prop("hobe", "kideak", "eumorfo") + prop("hobe", "lagunak", "besteak")},
        {"kept: a form's network is that of the analysis at its own place",
         {absolutive("[h=anai]"), analysis("x<IZE>", 0, "besteak")},
         prop("hobe", "anaia", "eumorfo") + prop("hobe", "anaiea", "besteak")},
        {"kept: also where another analysis is walked",
         {analysis("x<IZE>", 0, "besteak"), absolutive("[h=lagun]")},
         prop("hobe", "lagunak", "besteak")},
        {"past the end of the analyses there is no network",
         {absolutive("[h=anai]")},
         prop("hobe", "anaia", "eumorfo") + prop("hobe", "anaiea", "")},
        {"the same form and network once",
         {absolutive("[h=lagun]"), absolutive("[h=lagun]")},
         prop("hobe", "lagunak", "eumorfo")},
        {"the same form as another kind twice",
         {absolutive("[h=lagun]"), absolutive("[e=lagun]")},
         prop("hobe", "lagunak", "eumorfo") + prop("erabili", "lagunak", "eumorfo")},
        {"a rare one recommends like any other",
         {absolutive("<Rare>[h=lagun]"), absolutive("[h=kide]")},
         prop("hobe", "lagunak", "eumorfo") + prop("hobe", "kideak", "eumorfo")},
        {"kept: unknown wipes better forms",
         {absolutive("[h=lagun]"), analysis("zzz<EZZG>")},
         UNKNOWN},
        {"kept: better forms stand behind unknown",
         {analysis("zzz<EZZG>"), absolutive("[h=lagun]")},
         UNKNOWN + prop("hobe", "lagunak", "eumorfo")},
        {"a better form does not look at clean analyses",
         {analysis("a<B>"), absolutive("[h=lagun]"), analysis("a<C>")},
         prop("hobe", "lagunak", "eumorfo")},
        {"kept: a lemma without a form is correct", {absolutive("[h=mahai]")}, OK},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const Paragrafoa p = one_token(token("hitza", false, c.analyses));
        EXPECT_EQ(stdout_of([&] { p.print_Zuzenlex(network.get()); }),
                  "<p>\n<es ezk=\"1\" pzk=\"7\">\n<tok h=\"1 z=\"0><frm>hitza</frm>" +
                      c.verdict + "\n</tok>\n</es>\n</p>\n");
    }
}

TEST(Zuzenlex, PrintsParagraphs) {
    const auto network = inflector();
    struct Case {
        std::string label;
        Paragrafoa paragraph;
        std::string printed;
    };
    const Case cases[] = {
        {"no sentence", paragraph({}), "<p>\n</p>\n"},
        {"a sentence with no token", paragraph({sentence({})}),
         "<p>\n<es ezk=\"1\" pzk=\"7\">\n</es>\n</p>\n"},
        {"kept: the quotes of h and z are not closed",
         paragraph({sentence(
             {token("Kaixo", true, {analysis("kaixo<ITJ>")}),
              token("lagunek", false, {analysis("lagunek<IZE><ABS>[h=lagun]")})})}),
         "<p>\n<es ezk=\"1\" pzk=\"7\">\n"
         "<tok h=\"1 z=\"32><frm>Kaixo</frm><prop k=\"ok\"/>\n</tok>\n"
         "<tok h=\"2 "
         "z=\"0><frm>lagunek</frm>\n<prop>\n<hobe>lagunak</hobe><hizt>eumorfo</hizt></"
         "prop>"
         "\n</tok>\n</es>\n</p>\n"},
        {"sentences and tokens are counted from 1",
         paragraph({sentence({token("a", true)}, 12),
                    sentence({token("b", false), token("c", true)}, -1)}),
         "<p>\n<es ezk=\"1\" pzk=\"7\">\n<tok h=\"1 z=\"32><frm>a</frm><prop "
         "k=\"ok\"/>\n</tok>\n</es>\n"
         "<es ezk=\"2\" pzk=\"7\">\n<tok h=\"1 z=\"0><frm>b</frm><prop "
         "k=\"ok\"/>\n</tok>\n"
         "<tok h=\"2 z=\"32><frm>c</frm><prop k=\"ok\"/>\n</tok>\n</es>\n</p>\n"},
        {"nothing is escaped", one_token(token("<a>&\"", false)),
         "<p>\n<es ezk=\"1\" pzk=\"7\">\n<tok h=\"1 z=\"0><frm><a>&\"</frm><prop "
         "k=\"ok\"/>\n</tok>\n"
         "</es>\n</p>\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(stdout_of([&] { c.paragraph.print_Zuzenlex(network.get()); }),
                  c.printed);
    }
}

TEST(Zuzenlex, ANullNetworkHasNoBetterForms) {
    const Paragrafoa p = one_token(token("x", false, {analysis("x<IZE><ABS>[h=lagun]")}));
    const std::string ok =
        "<p>\n<es ezk=\"1\" pzk=\"7\">\n<tok h=\"1 z=\"0><frm>x</frm><prop "
        "k=\"ok\"/>\n</tok>\n"
        "</es>\n</p>\n";
    EXPECT_EQ(stdout_of([&] { p.print_Zuzenlex(nullptr); }), ok);
    const Sarea hollow("hollow", "", nullptr);
    EXPECT_EQ(stdout_of([&] { p.print_Zuzenlex(&hollow); }), ok);
}
