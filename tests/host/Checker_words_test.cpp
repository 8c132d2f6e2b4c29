#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "host_world.h"

namespace lemara::test {
namespace {

struct Word {
    std::string label;
    PersonalWord word;
    std::vector<std::string> valid, unknown;
};

const Word WORDS[] = {
    {"a common noun",
     {"zapaburu", "", "", ""},
     {"zapaburu", "Zapaburuk", "ZAPABURUN"},
     {"zapabur"}},
    {"in -a",
     {"lapiko\u00f1a", "", "", ""},
     {"lapiko\u00f1a", "lapiko\u00f1ak"},
     {"lapikon"}},
    {"a name, with its capital alone",
     {"Mikel", "", "", ""},
     {"Mikel", "Mikelek", "MIKEL"},
     {"mikel", "mikelek"}},
    {"a person", {"Amaia", "PIB", "", ""}, {"Amaia", "Amaiak"}, {"amaia"}},
    {"a place in brackets and small letters",
     {"Getaria", "<lib>", "", ""},
     {"Getarian"},
     {"getaria"}},
    {"an adjective, with its degrees",
     {"gorrixka", "IZO", "", ""},
     {"gorrixkak", "gorrixkago"},
     {"gorrixkazko"}},
    {"the same in -r", {"lodixar", "IZO", "", ""}, {"lodixarrago"}, {"lodixarago"}},
    {"a common noun has none",
     {"kutxatila", "ARR", "", ""},
     {"kutxatilak"},
     {"kutxatilago"}},
    {"a verb by its class", {"klikatu", "ADI", "", ""}, {"klikatu"}, {}},
    {"a name of two words",
     {"New York", "", "", ""},
     {"New York", "New Yorken"},
     {"York"}},
    {"a name with a hyphen", {"Bidasoa-Behe", "", "", ""}, {"Bidasoa-Behe"}, {"Behe"}},
    {"a typographic apostrophe and a decomposed letter",
     {"O\u2019n\u0303o", "", "", ""},
     {"O'\u00f1o", "O\u2019n\u0303o"},
     {}},
};

const struct {
    std::string label;
    PersonalWord word;
    std::string reason;
} REFUSED[] = {
    {"nothing", {"", "", "", ""}, "no word"},
    {"blanks", {" \n", "", "", ""}, "no word"},
    {"one letter", {"a", "", "", ""}, "two letters"},
    {"another script", {"\u041c\u0438\u0440", "", "", ""}, "that the tables lack"},
    {"no UTF-8",
     {"a\xff"
      "b",
      "", "", ""},
     "that the tables lack"},
    {"a sign", {"a*b", "", "", ""}, "that the tables lack"},
    {"a bar", {"a|b", "", "", ""}, "that the tables lack"},
    {"an address", {"www.a.eus", "", "", ""}, "an address"},
    {"a number", {"123", "", "", ""}, "needs a letter"},
    {"a comment", {"//ab", "", "", ""}, "would be a comment"},
    {"no such class", {"ab", "XYZ", "", ""}, "unknown word class"},
    {"too many words", {"a b c d e f", "", "", ""}, "too many words"},
    {"advice that isn't known", {"ab", "", "bozo", ""}, "no known word"},
    {"two kinds of advice", {"ab", "", "etxe", "lagun"}, "one of them"},
    {"a tab and a line feed are blanks",
     {"a\tb\nc\td\te\tf", "", "", ""},
     "too many words"},
};

std::string mode_of(const std::string& path) {
    struct stat status {};
    stat(path.c_str(), &status);
    char text[8];
    std::snprintf(text, sizeof text, "%o", status.st_mode & 07777);
    return text;
}

}  // namespace

TEST(CheckerWords, AnAddedWordIsKnownAndInflected) {
    HostWorld world;
    const auto checker = world.open();
    for (const Word& c : WORDS) {
        SCOPED_TRACE(c.label);
        for (const std::string& word : c.valid)
            EXPECT_FALSE(checker->valid(word)) << word;
        const auto problem = checker->add_word(c.word);
        ASSERT_EQ(problem, std::nullopt) << problem->text();
        const auto again = world.open();  // from the file
        EXPECT_EQ(world.problems.size(), 0u);
        for (const Checker* judge : {checker.get(), again.get()}) {
            for (const std::string& word : c.valid)
                EXPECT_TRUE(judge->valid(word)) << word;
            for (const std::string& word : c.unknown)
                EXPECT_FALSE(judge->valid(word)) << word;
        }
        EXPECT_EQ(checker->remove_word(c.word.word), std::nullopt);
        for (const std::string& word : c.valid)
            EXPECT_FALSE(checker->valid(word)) << word;
    }
    EXPECT_EQ(read_file(world.settings.dictionary), "");
}

TEST(CheckerWords, WordsWithOneStemAreAllFound) {
    HostWorld world;
    const auto checker = world.open();
    EXPECT_EQ(checker->add_word({"Lore", "", "", ""}), std::nullopt);
    EXPECT_FALSE(checker->valid("lore"));
    EXPECT_EQ(checker->add_word({"lore", "", "", ""}), std::nullopt);
    EXPECT_TRUE(checker->valid("lorek"));
    EXPECT_EQ(checker->remove_word("lore", "ARR"), std::nullopt);
    EXPECT_TRUE(checker->valid("Lorek"));
    EXPECT_FALSE(checker->valid("lorek"));
}

TEST(CheckerWords, AWordMayHaveABetterForm) {
    HostWorld world;
    const auto checker = world.open();
    EXPECT_EQ(checker->add_word({"etxxe", "", "etxe", ""}), std::nullopt);
    const auto findings = checker->check("etxxe");
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].kind, Kind::better_form);
    EXPECT_EQ(findings[0].forms, (std::vector<std::string>{"etxe"}));
    EXPECT_EQ(checker->words().at(0).better, "etxe");
}

TEST(CheckerWords, WhatTheLoaderWouldRefuseIsNotWritten) {
    HostWorld world;
    const auto checker = world.open();
    for (const auto& c : REFUSED) {
        SCOPED_TRACE(c.label);
        const auto problem = checker->add_word(c.word);
        ASSERT_NE(problem, std::nullopt);
        EXPECT_NE(problem->reason.find(c.reason), std::string::npos) << problem->reason;
    }
    EXPECT_FALSE(std::filesystem::exists(world.settings.dictionary));
}

// The engine's own loader throws on a line that it can't read.
TEST(CheckerWords, TheEngineLoadsWhatIsWritten) {
    HostWorld world;
    const auto checker = world.open();
    for (const Word& c : WORDS) EXPECT_EQ(checker->add_word(c.word), std::nullopt);
    const HiztegiPertsonala dictionary(world.settings.dictionary);
    EXPECT_EQ(dictionary.sarrerak.size(), std::size(WORDS));
}

TEST(CheckerWords, AddingKeepsWhatElseIsInTheFile) {
    HostWorld world;
    const auto checker = world.open();
    EXPECT_EQ(checker->add_word({"zapaburu", "", "", ""}), std::nullopt);
    world.folder.write("data/lemara/hiztegia.txt", "// mine\nbad line\nagur\t<ARR>");
    EXPECT_EQ(checker->add_word({"kaixo", "", "", ""}), std::nullopt);
    EXPECT_EQ(checker->add_word({"kaixo", "", "", ""}), std::nullopt);
    EXPECT_EQ(read_file(world.settings.dictionary),
              "// mine\nbad line\nagur\t<ARR>\nkaixo\t<ARR>\t\t\tHP\n");
    EXPECT_TRUE(checker->valid("agur"));
    EXPECT_EQ(checker->remove_word("agur"), std::nullopt);
    EXPECT_NE(checker->remove_word("agur"), std::nullopt);
    EXPECT_EQ(read_file(world.settings.dictionary),
              "// mine\nbad line\nkaixo\t<ARR>\t\t\tHP\n");
}

TEST(CheckerWords, AFileInUtf8IsUnderstoodAndBecomesLatin1) {
    HostWorld world;
    world.settings.dictionary = world.folder.write("h.txt", "\u00f1o\u00f1o\t<ARR>\n");
    const auto checker = world.open();
    EXPECT_TRUE(checker->valid("\u00f1o\u00f1ok"));
    EXPECT_EQ(checker->add_word({"kaixo", "", "", ""}), std::nullopt);
    EXPECT_EQ(read_file(world.settings.dictionary),
              "\361o\361o\t<ARR>\nkaixo\t<ARR>\t\t\tHP\n");
}

TEST(CheckerWords, ModeAndLinkStay) {
    HostWorld world;
    const std::string target = world.folder.write("real.txt", "agur\t<ARR>\n");
    chmod(target.c_str(), 0640);
    const std::string link = world.folder.path("link.txt"),
                      other = world.folder.path("other.txt");
    ASSERT_EQ(symlink("real.txt", link.c_str()), 0);
    ASSERT_EQ(symlink(link.c_str(), other.c_str()), 0);
    world.settings.dictionary = other;
    EXPECT_EQ(world.open()->add_word({"kaixo", "", "", ""}), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_TRUE(std::filesystem::is_symlink(other));
    EXPECT_EQ(mode_of(target), "640");
    EXPECT_EQ(read_file(target), "agur\t<ARR>\nkaixo\t<ARR>\t\t\tHP\n");
}

TEST(CheckerWords, ANewFileIsTheUsersAlone) {
    HostWorld world;
    EXPECT_EQ(world.open()->add_word({"kaixo", "", "", ""}), std::nullopt);
    EXPECT_EQ(mode_of(world.settings.dictionary), "600");
    EXPECT_EQ(mode_of(world.folder.path("data/lemara")), "700");
}

TEST(CheckerWords, AFullDiskHarmsNothing) {
    HostWorld world;
    const auto checker = world.open();
    EXPECT_EQ(checker->add_word({"kaixo", "", "", ""}), std::nullopt);
    const std::string before = read_file(world.settings.dictionary);
    rlimit old{}, small{10, RLIM_INFINITY};
    getrlimit(RLIMIT_FSIZE, &old);
    small.rlim_max = old.rlim_max;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const auto problem = checker->add_word({"zapaburu", "", "", ""});
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);
    ASSERT_NE(problem, std::nullopt);
    EXPECT_NE(problem->reason.find("cannot write"), std::string::npos);
    EXPECT_EQ(read_file(world.settings.dictionary), before);
    EXPECT_FALSE(checker->valid("zapaburu"));
    EXPECT_EQ(checker->add_word({"zapaburu", "", "", ""}), std::nullopt);
}

TEST(CheckerWords, AnotherProcessIsNoticed) {
    HostWorld world;
    const auto one = world.open(), other = world.open();
    EXPECT_FALSE(one->refresh());
    EXPECT_EQ(other->add_word({"kaixo", "", "", ""}), std::nullopt);
    EXPECT_FALSE(one->valid("kaixo"));
    EXPECT_TRUE(one->refresh());
    EXPECT_TRUE(one->valid("kaixo"));
    EXPECT_FALSE(one->refresh());
    EXPECT_EQ(one->add_word({"agur", "", "", ""}), std::nullopt);
    EXPECT_EQ(one->words().size(), 2u);
}

TEST(CheckerWords, ListsComeInAndGoOut) {
    HostWorld world;
    const auto checker = world.open();
    const ImportReport report = checker->import_words(
        "\ufeff4\r\nkaixo/AB\r\nagur\tpo:noun\n\n# "
        "note\n*wrong\n\u041c\u0438\u0440\nkaixo\nMikel");
    EXPECT_EQ(report.problem, std::nullopt);
    EXPECT_EQ(report.added, 3u);
    EXPECT_EQ(report.there, 1u);
    ASSERT_EQ(report.refused.size(), 2u);
    EXPECT_EQ(report.refused[0].line, 6u);
    EXPECT_EQ(report.refused[1].line, 7u);
    EXPECT_EQ(checker->export_words(), "3\nMikel\nagur\nkaixo\n");
    EXPECT_TRUE(checker->valid("kaixok agur Mikelek"));
}

TEST(CheckerWords, WithoutADictionaryNothingIsAdded) {
    HostWorld world;
    world.settings.use_dictionary = false;
    EXPECT_NE(world.open()->add_word({"kaixo", "", "", ""}), std::nullopt);
}

TEST(CheckerWords, WithoutItsNetworkNothingIsAdded) {
    HostWorld world;
    world.folder.write("sareak.cfg", "eumorfo.sare\n");
    const auto problem = world.open()->add_word({"kaixo", "", "", ""});
    ASSERT_NE(problem, std::nullopt);
    EXPECT_NE(problem->reason.find("\"hp\""), std::string::npos);
}

}  // namespace lemara::test
