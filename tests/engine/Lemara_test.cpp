// The engine as a host creates and destroys it: the configuration file, the keys of the
// networks, the messages, and an engine that has nothing.
#include "Lemara.h"

#include <sys/stat.h>

#include "small_engine.h"

namespace {

using lemara::test::hp_table;
using lemara::test::paths;
using lemara::test::stdout_of;
using lemara::test::TempDir;
using lemara::test::word_path;

const char* const TABLE = "0\tk\t1\n1\ta\t2\n2\t<IZE>:<>\t3\nfinal: 3\n";

/// Keys of an engine's networks, each behind a blank.
std::string keys_of(const Lemara& engine) {
    std::string keys;
    for (const auto& [key, network] : engine.sareak) keys += ' ' + key;
    return keys;
}

/// Loads a configuration into an engine that is made for it; its messages go to
/// `printed`.
std::unique_ptr<Lemara> load(const std::string& path, std::string* printed = nullptr) {
    std::unique_ptr<Lemara> engine;
    const std::string text = stdout_of([&] { engine = std::make_unique<Lemara>(path); });
    if (printed != nullptr) *printed = text;
    return engine;
}

void destroy(std::unique_ptr<Lemara>& engine) {
    stdout_of([&] { engine.reset(); });
}

}  // namespace

TEST(Lemara, ReadsTheConfigurationLineByLine) {
    const TempDir folder;
    const std::string ab = folder.write("ab.tab", TABLE);
    const std::string cd = folder.write("cd.sare", TABLE);
    const std::string missing = folder.path("missing.sare");
    struct Case {
        std::string label, text, keys, printed;
    };
    const Case cases[] = {
        {"an empty file", "", "", ""},
        {"comments and empty lines alone", "// a\n\n//" + ab + "\n\r\n \n\t\n", "", ""},
        {"one path", ab + "\n", " ab", "\n"},
        {"the last line needs no line feed", ab + "\n" + cd, " ab cd", "\n\n"},
        {"keys come in order, whatever the order of the lines", cd + "\n" + ab + "\n",
         " ab cd", "\n\n"},
        {"an indented path is a comment", " " + ab + "\n\t" + ab + "\n", "", ""},
        {"a path behind a carriage return is a comment", "\r" + ab + "\n", "", ""},
        {"there is no comment behind a path", ab + " // ab\n", "",
         "Ezin da ireki '" + ab + " // ab'\n"},
        {"a final carriage return goes", ab + "\r\n" + cd + "\r", " ab cd", "\n\n"},
        {"only one of two goes", ab + "\r\r\n", "", "Ezin da ireki '" + ab + "\r'\n"},
        {"a final blank stays", ab + " \n", "", "Ezin da ireki '" + ab + " '\n"},
        {"a file that does not exist", missing + "\n" + ab + "\n", " ab",
         "Ezin da ireki '" + missing + "'\n\n"},
        {"messages on files come before the line feeds of networks",
         ab + "\n" + missing + "\n", " ab", "Ezin da ireki '" + missing + "'\n\n"},
        {"the same file twice is one network, loaded twice", ab + "\n" + ab + "\n", " ab",
         "\n\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const std::string path = folder.write("sareak.cfg", c.text);
        std::string printed;
        std::unique_ptr<Lemara> engine = load(path, &printed);
        EXPECT_EQ(keys_of(*engine), c.keys);
        EXPECT_EQ(printed, c.printed);
        EXPECT_EQ(engine->konfigurazioa, path);
        EXPECT_EQ(engine->hiztegiFitxategia, "");
        EXPECT_NE(engine->hiztegiPertsonala, nullptr);
        for (const auto& [key, network] : engine->sareak) {
            EXPECT_EQ(network->izena, key);
            EXPECT_EQ(network->taula->hiztegia, key);
            EXPECT_EQ(network->taula->analizatuTokena("ka").size(), 1u);
        }
        destroy(engine);
    }
}

TEST(Lemara, LoadsAtMostTenNetworks) {
    const TempDir folder;
    std::vector<std::string> files;
    for (char c = 'a'; c <= 'l'; ++c)
        files.push_back(folder.write(std::string("n") + c + ".sare", TABLE));
    const std::string limit = "kargatu_sareak: Taula kopuru handiegia: 10 da topea!\n";
    const std::string ten_feeds(10, '\n');
    const std::string missing = folder.path("missing.sare");
    const auto lines = [&](std::size_t first, std::size_t count) {
        std::string text;
        for (std::size_t i = first; i < first + count; ++i) text += files[i] + "\n";
        return text;
    };
    struct Case {
        std::string label, text, printed;
    };
    const std::string no = "Ezin da ireki '" + missing + "'\n";
    const Case cases[] = {
        {"ten lines", lines(0, 10), ten_feeds},
        {"twelve lines: the limit is told once", lines(0, 12), limit + ten_feeds},
        {"eleven lines", lines(0, 11), limit + ten_feeds},
        {"twelve lines of which two are missing",
         lines(0, 4) + missing + "\n" + lines(4, 3) + missing + "\n" + lines(7, 3),
         no + no + ten_feeds},
        {"an eleventh line that names a missing file stops the reading too",
         lines(0, 10) + missing + "\n" + missing + "\n", limit + ten_feeds},
        {"comments behind the tenth do not", lines(0, 10) + "// x\n\n \n\t\n\r\n",
         ten_feeds},
        {"missing files before the tenth do not count", missing + "\n" + lines(0, 10),
         no + ten_feeds},
        {"missing files behind the eleventh are not looked at",
         lines(0, 11) + missing + "\n", limit + ten_feeds},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        std::string printed;
        std::unique_ptr<Lemara> engine =
            load(folder.write("sareak.cfg", c.text), &printed);
        EXPECT_EQ(keys_of(*engine), " na nb nc nd ne nf ng nh ni nj");
        EXPECT_EQ(printed, c.printed);
        destroy(engine);
    }
}

TEST(Lemara, NamesNetworksAfterTheirFiles) {
    const TempDir folder;
    ASSERT_EQ(mkdir(folder.path("dir.x").c_str(), 0700), 0);
    struct Case {
        std::string label, file, key;
        int level;
    };
    const Case cases[] = {
        {"up to the dot", "eumorfo.sare", "eumorfo", 5},
        {"up to the first dot; a dot in a folder plays no part",
         "dir.x/eumorfo.beta.sare", "eumorfo", 5},
        {"a name with no dot", "eumorfo", "eumorfo", 5},
        {"two bytes are enough", "ab.tab", "ab", 5},
        {"a final PG goes", "eumorfoPG.sare", "eumorfo", 5},
        {"only once", "abPGPG.sare", "abPG", 5},
        {"only in capitals", "abpg.sare", "abpg", 5},
        {"only at the end", "PGab.sare", "PGab", 5},
        {"kept: PG alone leaves the empty key", "PG.sare", "", 5},
        {"one byte may be left", "aPG.sare", "a", 5},
        {"numbers see runs of seven", "zenbakiak.sare", "zenbakiak", 7},
        {"zenbak anywhere in the key", "nirezenbak.sare", "nirezenbak", 7},
        {"zenbak behind the dot does not count", "ab.zenbak", "ab", 5},
        {"a backslash is no separator", "dir.x/a\\b.sare", "a\\b", 5},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const std::string file = folder.write(c.file, TABLE);
        std::unique_ptr<Lemara> engine = load(folder.write("sareak.cfg", file + "\n"));
        ASSERT_EQ(engine->sareak.size(), 1u);
        const auto& [key, network] = *engine->sareak.begin();
        EXPECT_EQ(key, c.key);
        EXPECT_EQ(network->izena, c.key);
        EXPECT_EQ(network->fitxategia, file);
        EXPECT_EQ(network->maila, c.level);
        EXPECT_EQ(network->taula->fitxategia, file);
        destroy(engine);
    }
}

TEST(Lemara, RefusesAKeyOfFewerThanTwoBytes) {
    const TempDir folder;
    const std::string good = folder.write("ab.tab", TABLE);
    struct Case {
        std::string label, file;
    };
    const Case cases[] = {
        {"one byte", "a.tab"},
        {"one byte and no dot", "a"},
        {"nothing in front of the dot", ".tab"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        const std::string bad = folder.write(c.file, TABLE);
        const std::string path =
            folder.write("sareak.cfg", good + "\n" + bad + "\n" + good + "\n");
        testing::internal::CaptureStdout();
        try {
            const Lemara engine(path);
            ADD_FAILURE() << "no exception from the constructor";
        } catch (const std::out_of_range& error) {
            EXPECT_STREQ(error.what(), "basic_string::substr");
        }
        try {
            const Lemara engine(path, folder.path("no dictionary"));
            ADD_FAILURE() << "no exception from the other constructor";
        } catch (const std::out_of_range& error) {
            EXPECT_STREQ(error.what(), "basic_string::substr");
        }
        auto engine = std::make_unique<Lemara>();
        engine->konfigurazioa = path;
        EXPECT_THROW(engine->kargatu_sareak(), std::out_of_range);
        EXPECT_EQ(keys_of(*engine), " ab") << "the networks before it stay";
        engine.reset();
        testing::internal::GetCapturedStdout();
    }
}

TEST(Lemara, ALaterNetworkReplacesAnEarlierOneOfItsKey) {
    const TempDir folder;
    const std::string first = folder.write("ab.tab", paths({word_path("bat", {"<A>"})}));
    const std::string second =
        folder.write("abPG.tab", paths({word_path("bat", {"<B>"})}));
    std::string printed;
    std::unique_ptr<Lemara> engine =
        load(folder.write("sareak.cfg", first + "\n" + second + "\n"), &printed);
    EXPECT_EQ(printed, "\n\n");
    EXPECT_EQ(keys_of(*engine), " ab");
    EXPECT_EQ(engine->sareak.at("ab")->fitxategia, second);
    ASSERT_EQ(engine->analizatuTokena("bat").size(), 1u);
    EXPECT_EQ(engine->analizatuTokena("bat")[0].analisia, "bat<B>");

    // Loading again reads the same file again and overwrites what has the same key.
    EXPECT_EQ(stdout_of([&] { engine->kargatu_sareak(); }), "\n\n");
    EXPECT_EQ(keys_of(*engine), " ab");
    EXPECT_EQ(engine->analizatuTokena("bat").size(), 1u);
    // It adds and does not empty.
    const std::string third = folder.write("cd.tab", TABLE);
    folder.write("sareak.cfg", third + "\n");
    stdout_of([&] { engine->kargatu_sareak(); });
    EXPECT_EQ(keys_of(*engine), " ab cd");
    destroy(engine);
}

TEST(Lemara, PassesOverAConfigurationThatCannotBeOpened) {
    const TempDir folder;
    std::string printed = "?";
    std::unique_ptr<Lemara> engine = load(folder.path("none.cfg"), &printed);
    EXPECT_EQ(printed, "");
    EXPECT_TRUE(engine->sareak.empty());
    EXPECT_EQ(engine->konfigurazioa, folder.path("none.cfg"));
    ASSERT_NE(engine->hiztegiPertsonala, nullptr);
    EXPECT_TRUE(engine->hiztegiPertsonala->erroak.empty());
    destroy(engine);
}

TEST(Lemara, ReadsTheDictionaryAfterTheNetworks) {
    const TempDir folder;
    const std::string table = folder.write("ab.tab", TABLE);
    const std::string configuration = folder.write("sareak.cfg", table + "\n");
    const std::string words = folder.write("hp.txt", "zubi\t<ARR>\t\t\tHP\n");
    std::unique_ptr<Lemara> engine;
    const std::string printed =
        stdout_of([&] { engine = std::make_unique<Lemara>(configuration, words); });
    EXPECT_EQ(printed, "\n");
    EXPECT_EQ(engine->konfigurazioa, configuration);
    EXPECT_EQ(engine->hiztegiFitxategia, words);
    EXPECT_EQ(engine->hiztegiPertsonala->fitxategia, words);
    EXPECT_EQ(engine->hiztegiPertsonala->erroak.count("zubi"), 1u);
    destroy(engine);

    engine.reset();
    const std::string missing = folder.path("none.txt");
    stdout_of([&] { engine = std::make_unique<Lemara>(configuration, missing); });
    EXPECT_EQ(engine->hiztegiPertsonala->gutxieneko_luzera, 10000);
    EXPECT_EQ(keys_of(*engine), " ab");
    destroy(engine);

    // The error of a bad line passes; the networks were loaded by then.
    const std::string bad = folder.write("bad.txt", "zubi\n");
    testing::internal::CaptureStdout();
    try {
        const Lemara broken(configuration, bad);
        ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "basic_string::substr");
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout().substr(0, 1), "\n");
}

TEST(Lemara, DestructorTellsThatItEmptiesTheTables) {
    EXPECT_EQ(stdout_of([] { const Lemara engine; }), "Taulak husten...\n");
    const TempDir folder;
    const std::string table = folder.write("ab.tab", TABLE);
    std::unique_ptr<Lemara> engine = load(folder.write("sareak.cfg", table + "\n"));
    engine->sareak["null"] = nullptr;
    EXPECT_EQ(stdout_of([&] { engine.reset(); }), "Taulak husten...\n");
}

TEST(Lemara, ForwardsATableOfTheCaller) {
    const TempDir folder;
    Lemara engine;
    Taula table;
    table.fitxategia = folder.write("ab.tab", TABLE);
    EXPECT_EQ(stdout_of([&] { engine.kargatu_taula(&table); }), "");
    EXPECT_EQ(table.analizatuTokena("ka").size(), 1u);
    EXPECT_TRUE(engine.sareak.empty());
    engine.kargatu_taula(&table);
    EXPECT_EQ(table.analizatuTokena("ka").size(), 16u)
        << "each of its four arcs is there twice";
    engine.kargatu_taula(nullptr);
}

namespace {

/// Every read operation of an engine that knows nothing.
void expect_nothing_known(const Lemara& engine) {
    EXPECT_EQ(engine.getParagrafoaZuzenlex("etxe! da", true), "<p>\n</p>\n");
    EXPECT_EQ(engine.getParagrafoaZuzenlex("", false), "<p>\n</p>\n");
    const Paragrafoa paragraph = engine.analizatu_paragrafoa(5, "etxe");
    EXPECT_EQ(paragraph.zenbakia, 1);
    EXPECT_EQ(paragraph.testua, "etxe");
    EXPECT_TRUE(paragraph.esaldiak.empty());
    EXPECT_TRUE(engine.analizatuTokena("etxe").empty());
    EXPECT_TRUE(engine.analizatuTokena("etxe", "eumorfo").empty());
    EXPECT_TRUE(engine.analizatuTokena("etxe", "none").empty());
    for (const bool deep : {false, true}) {
        EXPECT_FALSE(engine.isValid("etxe", deep));
        EXPECT_FALSE(engine.isValid("", deep));
        EXPECT_FALSE(engine.isValid("etxe bat", deep));
        EXPECT_FALSE(engine.isValid("-", deep));
    }
    EXPECT_TRUE(engine.bilatuHasiera("etxe", false).empty());
    EXPECT_TRUE(engine.bilatuHasiera("etxe", true).empty());
    EXPECT_TRUE(engine.sortuFormak("etxe", "<ARR>").empty());
    EXPECT_TRUE(engine.sortuFormak("etxe", "").empty());
    EXPECT_TRUE(engine.lortu_ezzg_proposamenak("etxe").empty());
    EXPECT_TRUE(engine.lortu_ezzg_proposamenak("%etxe").empty());
    EXPECT_TRUE(engine.lortu_ezzg_proposamenak("").empty());
    EXPECT_EQ(engine.sortu_forma_ezezaguna("etxe", " IZE ARR"), "etxe");
    EXPECT_TRUE(engine.sareak.empty()) << "asking for a network inserts nothing";
}

}  // namespace

TEST(Lemara, AnEngineWithNothingAnswersNothing) {
    stdout_of([] {
        const Lemara engine;
        EXPECT_EQ(engine.konfigurazioa, "");
        EXPECT_EQ(engine.hiztegiFitxategia, "");
        EXPECT_EQ(engine.hiztegiPertsonala, nullptr);
        expect_nothing_known(engine);
        const TempDir folder;
        const Lemara without_tables(folder.path("none.cfg"));
        expect_nothing_known(without_tables);
        const std::string words = folder.write("hp.txt", "zubi\t<ARR>\t\t\tHP\n");
        const Lemara words_alone(folder.path("none.cfg"), words);
        EXPECT_FALSE(words_alone.isValid("zubi", false))
            << "a dictionary needs the network hp";
        expect_nothing_known(words_alone);
    });
}

TEST(Lemara, AnUnknownKeyInsertsNothing) {
    lemara::test::World world;
    world.table("eumorfo.sare", TABLE).build();
    EXPECT_TRUE(world.engine->analizatuTokena("ka", "eumorf").empty());
    EXPECT_TRUE(world.engine->analizatuTokena("ka", "hp").empty());
    EXPECT_TRUE(world.engine->analizatuTokena("ka", "").empty());
    EXPECT_EQ(world.engine->analizatuTokena("ka", "eumorfo").size(), 1u);
    EXPECT_FALSE(world.engine->isValid("kb", true));
    EXPECT_TRUE(world.engine->sortuFormak("kb", "<ARR>").empty()) << "no network hp";
    EXPECT_EQ(world.engine->sortu_forma_ezezaguna("kb", " IZE ARR"), "kb");
    EXPECT_EQ(keys_of(*world.engine), " eumorfo");
}

TEST(Lemara, TellsWhetherAFileExists) {
    const TempDir folder;
    EXPECT_TRUE(file_exists(folder.write("x", "")));
    EXPECT_TRUE(file_exists(folder.path(""))) << "a folder exists too";
    EXPECT_FALSE(file_exists(folder.path("none")));
    EXPECT_FALSE(file_exists(""));
}
