#include <atomic>

#include "host_world.h"

namespace lemara::test {
namespace {

using Words = std::vector<std::string>;

struct Case {
    std::string label, text;
    std::vector<std::string> findings;  // "kind token: forms"
};

std::vector<std::string> told(const std::vector<Finding>& findings) {
    std::vector<std::string> lines;
    for (const Finding& finding : findings) {
        std::string line = std::string(name_of(finding.kind)) + ' ' + finding.token + ':';
        for (const std::string& form : finding.forms) line += ' ' + form;
        lines.push_back(line);
    }
    return lines;
}

const Case CASES[] = {
    {"all is well", "Etxea eta gizon, Bilbo.", {}},
    {"an unknown word", "bozo da", {"unknown bozo: pozo"}},
    {"its case is kept", "Bozo BOZO", {"unknown Bozo: Pozo", "unknown BOZO: POZO"}},
    {"a name in small letters", "bilbo", {"unknown bilbo: Bilbo BILBO"}},
    {"no proposal", "xqzx", {"unknown xqzx:"}},
    {"a better form", "mai da", {"better-form mai: mahai"}},
    {"with its capital", "Mai", {"better-form Mai: Mahai"}},
    {"a form to use instead", "txar", {"use-instead txar: lagun"}},
    {"the start of a unit", "ahal da", {"unit-start ahal: ahal izan"}},
    {"the unit itself", "ahal izan", {}},
    {"a unit over a line end",
     "ahal\nizan",
     {"unit-start ahal: ahal izan", "unknown izan:"}},
    {"typographic quotes and dashes",
     "\u201cetxe\u201d \u2013 \u2018gizon\u2019\u2026",
     {}},
    {"a word in pieces of letters",
     "etxe\u0301 etx\u00ade",
     {"unknown etxe\u0301: etxe"}},
    {"the sign that the engine mutters at", "etxe ] bozo [", {"unknown bozo: pozo"}},
    {"digits with letters", "123 12bozo", {"unknown 12bozo:"}},
};

}  // namespace

TEST(CheckerCheck, TellsWhatIsWrong) {
    HostWorld world;
    const auto checker = world.open();
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(told(checker->check(c.text)), c.findings);
    }
}

TEST(CheckerCheck, ReadsLinesAsParagraphsOrNot) {
    HostWorld world;
    const auto checker = world.open();
    CheckOptions options;
    options.most_forms = 0;
    const struct {
        std::string label;
        Paragraphs paragraphs;
        std::string text;
        std::size_t findings;
    } rows[] = {
        {"lines", Paragraphs::lines, "ahal\nizan", 2},
        {"blank lines, one paragraph", Paragraphs::blank, "ahal\nizan", 0},
        {"blank lines, CR LF", Paragraphs::blank, "ahal\r\nizan", 0},
        {"blank lines, two paragraphs", Paragraphs::blank, "ahal\n\nizan", 2},
        {"a line of blanks is one", Paragraphs::blank, "ahal\r\n \t\r\nizan", 2},
        {"the whole", Paragraphs::whole, "ahal\n\nizan", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        options.paragraphs = row.paragraphs;
        EXPECT_EQ(checker->check(row.text, options).size(), row.findings);
    }
}

TEST(CheckerCheck, EveryFormIsAcceptedOnceAndCounted) {
    HostWorld world;
    const auto checker = world.open();
    for (const std::string word :
         {"bozo", "etxxe", "GIZOM", "Mai", "txar", "bilbo", "ahal"}) {
        SCOPED_TRACE(word);
        const auto findings = checker->check(word);
        ASSERT_EQ(findings.size(), 1u);
        std::set<std::string> seen;
        for (const std::string& form : findings[0].forms) {
            EXPECT_TRUE(checker->valid(form)) << form;
            EXPECT_TRUE(seen.insert(form).second) << form;
        }
        CheckOptions one;
        one.most_forms = 1;
        EXPECT_LE(checker->check(word, one).at(0).forms.size(), 1u);
    }
}

TEST(CheckerCheck, StopsProposingWhenTimeIsUp) {
    // Two hundred long words, each with thousands of candidates, and time for hardly any.
    HostWorld world;
    const auto checker = world.open();
    const std::string word(99, 'z');
    CheckOptions options;
    options.time_per_word = std::chrono::milliseconds(1);
    std::string text;
    for (int i = 0; i < 200; ++i) {
        text += word.substr(0, 60) + static_cast<char>('a' + i % 26) +
                static_cast<char>('a' + i / 26) + word.substr(0, 30) + ' ';
    }
    options.time_in_all = std::chrono::milliseconds(5);
    const auto start = std::chrono::steady_clock::now();
    const auto findings = checker->check(text, options);
    const auto took = std::chrono::steady_clock::now() - start;
    ASSERT_EQ(findings.size(), 200u);
    EXPECT_FALSE(findings.back().complete);
    EXPECT_LT(took, std::chrono::seconds(5));
}

TEST(CheckerCheck, ReportsForeignWordsOnRequest) {
    HostWorld world;
    const auto checker = world.open();
    CheckOptions options;
    options.report_foreign = true;
    EXPECT_EQ(
        told(checker->check("\u041c\u0438\u0440-en etxe bozo www.a.eus \u65e5", options)),
        (Words{"foreign \u041c\u0438\u0440-en:", "unknown bozo: pozo",
               "foreign \u65e5:"}));
}

TEST(CheckerCheck, TakesAcceptedWords) {
    HostWorld world;
    const auto checker = world.open();
    const std::set<std::string> accepted = {"bozo", "\u00f1o\u00f1o"};
    CheckOptions options;
    options.accepted = &accepted;
    EXPECT_EQ(checker->check("bozo Bozo n\u0303on\u0303o", options).size(), 0u);
    EXPECT_EQ(checker->check("bozo bozok", options).size(), 1u);
}

TEST(CheckerCheck, EndsWhenToldTo) {
    HostWorld world;
    const auto checker = world.open();
    int calls = 0;
    checker->check("bozo bozo bozo", {}, [&](const Finding&) { return ++calls < 2; });
    EXPECT_EQ(calls, 2);
}

TEST(CheckerCheck, AnalysesEveryToken) {
    HostWorld world;
    const auto checker = world.open();
    const auto tokens = checker->analyze("N\u0303abar  bozo. Ahal izan www.a.eus\nMai");
    ASSERT_EQ(tokens.size(), 6u);
    EXPECT_EQ(tokens[0].text, "N\u0303abar");
    EXPECT_EQ(tokens[0].folded, "\u00d1abar");
    EXPECT_TRUE(tokens[0].known);
    EXPECT_TRUE(tokens[0].blank_follows);
    ASSERT_EQ(tokens[0].readings.size(), 1u);
    EXPECT_EQ(tokens[0].readings[0].lemma, "\u00f1abar");
    EXPECT_EQ(tokens[0].readings[0].tags, "IZE");
    EXPECT_EQ(tokens[0].readings[0].network, "eumorfo");
    EXPECT_EQ(tokens[1].text, "bozo");
    EXPECT_FALSE(tokens[1].known);
    EXPECT_EQ(tokens[2].text, ".");
    EXPECT_EQ(tokens[3].folded, "Ahal izan");
    EXPECT_EQ(tokens[3].sentence, 1u);
    EXPECT_TRUE(tokens[4].foreign);
    EXPECT_EQ(tokens[4].text, "www.a.eus");
    EXPECT_EQ(tokens[5].paragraph, 1u);
    EXPECT_EQ(tokens[5].sentence, 2u);
    EXPECT_EQ(tokens[5].readings.at(0).better, "mahai");
}

TEST(CheckerCheck, AnswersAboutWords) {
    HostWorld world;
    const auto checker = world.open();
    EXPECT_TRUE(checker->valid("etxe-gizon"));
    EXPECT_FALSE(checker->valid("etxe-gizno"));
    EXPECT_TRUE(checker->valid(""));
    EXPECT_EQ(checker->suggest("bozo"), (Words{"pozo"}));
    EXPECT_EQ(checker->suggest("etxe-gizno"), (Words{"etxe-gizon"}));
    EXPECT_EQ(checker->suggest("gizno-gizno"), (Words{"gizon-gizon"}));
    EXPECT_EQ(checker->suggest("gizno", 0), Words{});
    EXPECT_EQ(checker->suggest("etxea"), (Words{"Etxea", "ETXEA"}));  // known
    EXPECT_EQ(checker->suggest("www.a.eus"), Words{});
    EXPECT_EQ(checker->lemmas("Bilbo"), (Words{"Bilbo"}));
    EXPECT_EQ(checker->lemmas("\u041c\u0438\u0440"), Words{});
    EXPECT_EQ(checker->generate("etxe", "IZE").at(0).form, "etxe");
    EXPECT_EQ(checker->generate("\u041c\u0438\u0440", "ARR").size(), 0u);
}

TEST(CheckerCheck, RendersInTheEnginesOwnMarkups) {
    HostWorld world;
    const auto checker = world.open();
    EXPECT_NE(
        checker->render("N\u0303abar", Format::multext, false).find("\u00d1abar\tBOS\t"),
        std::string::npos);
    EXPECT_NE(checker->render("bozo", Format::check, true).find("<sugg>pozo</sugg>"),
              std::string::npos);
    EXPECT_NE(checker->render("etxe", Format::cg3, false).find("<\"etxe\">"),
              std::string::npos);
    EXPECT_NE(checker->render("bozo", Format::ikute, false).find("<frm>"),
              std::string::npos);
    EXPECT_NE(checker->render("mai", Format::zuzenlex, false).find("<hobe>mahai</hobe>"),
              std::string::npos);
    EXPECT_NE(checker->render("mai", Format::zuzenlex, false).find("pzk=\"1\""),
              std::string::npos);
    EXPECT_NE(checker->render("mai", Format::zuzenlex, false, 7).find("pzk=\"7\""),
              std::string::npos);
    EXPECT_NE(checker->render("mai", Format::check, false, 7).find("pzk=\"0\""),
              std::string::npos);
}

TEST(CheckerCheck, ALongLineTakesNoMoreMemoryThanAShortOne) {
    HostWorld world;
    const auto checker = world.open();
    std::string text;
    while (text.size() < (2u << 20)) text += "etxe bozo gizon, ";
    std::size_t count = 0;
    CheckOptions options;
    options.most_forms = 2;
    checker->check(text, options, [&](const Finding& finding) {
        count += finding.token == "bozo" && finding.forms == Words{"pozo"};
        return true;
    });
    EXPECT_EQ(count, text.size() / 17);
}

TEST(CheckerThreads, OneCheckerServesManyWhileWordsComeAndGo) {
    HostWorld world;
    const auto checker = world.open();
    std::atomic<bool> done{false};
    std::atomic<int> wrong{0};
    in_threads(5, [&](unsigned number) {
        if (number > 0) {
            while (!done) {
                const auto findings = checker->check("etxe bozo zapaburu gizno");
                if (findings.size() < 2 || findings.size() > 3) ++wrong;
                checker->words();
            }
            return;
        }
        for (int i = 0; i < 20; ++i) {
            EXPECT_EQ(checker->add_word({"zapaburu", "", "", ""}), std::nullopt);
            EXPECT_TRUE(checker->valid("zapaburuk"));
            EXPECT_EQ(checker->remove_word("zapaburu"), std::nullopt);
            EXPECT_FALSE(checker->valid("zapaburuk"));
        }
        done = true;
    });
    EXPECT_EQ(wrong, 0);
}

}  // namespace lemara::test
