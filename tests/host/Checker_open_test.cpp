#include <sys/stat.h>

#include "host_world.h"
#include "lemara/compiled_table.h"

namespace lemara::test {
namespace {

struct Broken {
    std::string label, configuration, reason;
    std::size_t line;
};

const Broken BROKEN[] = {
    {"an empty configuration", "", "no network \"eumorfo\"", 0},
    {"comments alone", "// nothing\n \n\n", "no network \"eumorfo\"", 0},
    {"a table that isn't there", "eumorfo.sare\nnone.sare\n", "no such table: none.sare",
     2},
    {"a table that is text", "eumorfo.sare\ntext.sare\n", "is no table", 2},
    {"an empty table", "eumorfo.sare\nempty.sare\n", "is no table", 2},
    {"a folder for a table", "eumorfo.sare\nfolder.sare\n", "is a directory", 2},
    {"a pipe for a table", "eumorfo.sare\npipe.sare\n", "not a regular file", 2},
    {"a cut image", "eumorfo.sare\ncut.sare\n", "", 2},
    {"a name of one character", "eumorfo.sare\na.sare\n", "two characters", 2},
    {"NUL bytes", std::string("eumorfo.sare\n\0", 14), "NUL", 0},
    {"eleven tables",
     "eumorfo.sare\nhp.sare\nhp.sare\nhp.sare\nhp.sare\nhp.sare\nhp.sare\nhp.sare\nhp."
     "sare\n"
     "hp.sare\nhp.sare\n",
     "too many tables", 11},
};

/// A world with all that can be wrong beside what is right.
class BrokenWorld : public HostWorld {
public:
    BrokenWorld() {
        folder.write("text.sare", "hello\n");
        folder.write("empty.sare", "");
        folder.write("a.sare", small_lexicon().text());
        Taula table;
        load_text(table, small_lexicon().text());
        const std::string image = compile_table(table);
        folder.write("whole.sare", image);
        folder.write("cut.sare", image.substr(0, image.size() / 2));
        mkdir(folder.path("folder.sare").c_str(), 0700);
        mkfifo(folder.path("pipe.sare").c_str(), 0600);
    }
};

}  // namespace

TEST(CheckerOpen, ReturnsWhatIsWrongAndPrintsNothing) {
    BrokenWorld world;
    for (const Broken& c : BROKEN) {
        SCOPED_TRACE(c.label);
        const std::string path = world.folder.write("sareak.cfg", c.configuration);
        Checker::Opened opened;
        EXPECT_EQ(stdout_of([&] { opened = Checker::open(world.settings); }), "");
        EXPECT_EQ(opened.checker, nullptr);
        ASSERT_EQ(opened.problems.size(), 1u);
        EXPECT_EQ(opened.problems[0].file, path);
        EXPECT_EQ(opened.problems[0].line, c.line);
        EXPECT_NE(opened.problems[0].reason.find(c.reason), std::string::npos)
            << opened.problems[0].text();
    }
}

TEST(CheckerOpen, TellsThatTheConfigurationIsNotThere) {
    HostWorld world;
    for (const std::string& path :
         {world.folder.path("none.cfg"), world.folder.path("")}) {
        world.settings.configuration = path;
        const Checker::Opened opened = Checker::open(world.settings);
        EXPECT_EQ(opened.checker, nullptr);
        ASSERT_EQ(opened.problems.size(), 1u);
        EXPECT_EQ(opened.problems[0].file, path);
    }
}

TEST(CheckerOpen, TakesACompiledTable) {
    BrokenWorld world;
    world.folder.write("sareak.cfg", "whole.sare\neumorfo.sare\r\n");
    EXPECT_EQ(world.open()->check("etxe gizno").size(), 1u);
}

TEST(CheckerOpen, IsSilentFromBeginningToEnd) {
    HostWorld world;
    EXPECT_EQ(stdout_of([&] {
                  const auto checker = world.open();
                  checker->check("etxe ] gizno [");
                  checker->render("etxe ] gizno", Format::multext, true);
                  checker->add_word({"kaixo", "", "", ""});
              }),
              "");
}

TEST(CheckerOpen, TellsOfBadLinesAndLoadsTheRest) {
    HostWorld world;
    const std::string path = world.folder.write(
        "hiztegia.txt",
        "// mine\nkaixo\t<ARR>\t\t\tHP\nbad\nx\t<ARR>\nworse\tARR\nagur\t<ARR>\r\n");
    world.settings.dictionary = path;
    const auto checker = world.open();
    ASSERT_EQ(world.problems.size(), 3u);
    EXPECT_EQ(world.problems[0].text(), path + ":3: no word class; line passed over");
    EXPECT_EQ(world.problems[1].line, 4u);
    EXPECT_EQ(world.problems[2].line, 5u);
    EXPECT_TRUE(checker->valid("kaixok"));
    EXPECT_TRUE(checker->valid("agur"));
    EXPECT_EQ(checker->words().size(), 2u);
}

TEST(CheckerOpen, RefusesADictionaryThatIsNoFile) {
    HostWorld world;
    world.settings.dictionary = world.folder.path("");
    EXPECT_EQ(Checker::open(world.settings).checker, nullptr);
}

TEST(CheckerOpen, FindsTablesByTheEnvironment) {
    HostWorld world;
    const std::string configuration = world.settings.configuration;
    world.settings.configuration.clear();
    setenv("LEMARA_TABLES", world.folder.path("").c_str(), 1);
    EXPECT_EQ(std::filesystem::path(find_configuration()).lexically_normal().string(),
              configuration);
    EXPECT_TRUE(world.open()->valid("etxe"));
    setenv("LEMARA_TABLES", world.folder.path("nowhere").c_str(), 1);
    const Checker::Opened opened = Checker::open(world.settings);
    EXPECT_EQ(opened.checker, nullptr);
    EXPECT_NE(opened.problems.at(0).reason.find("no tables"), std::string::npos);
    unsetenv("LEMARA_TABLES");
}

TEST(CheckerOpen, KeepsThePersonalDictionaryWithTheUsersData) {
    setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_EQ(default_dictionary(), "/data/lemara/hiztegia.txt");
    setenv("XDG_DATA_HOME", "relative", 1);
    setenv("HOME", "/home/me", 1);
    EXPECT_EQ(default_dictionary(), "/home/me/.local/share/lemara/hiztegia.txt");
    unsetenv("XDG_DATA_HOME");
}

}  // namespace lemara::test
