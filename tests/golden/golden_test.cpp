// Whole paragraphs, from text to each of the formats, byte for byte. The texts are
// <format>/<name>.in, what must come out is <format>/<name>.out; a changed .out is a
// changed behaviour.
//
// The tables in tables/ have a path of its own for each form, letters and then tags:
//   eumorfo:   etxe (etxe; etxeak as <ABS> and as <ERG>), lagun (lagun, lagunak), kaixo,
//              zer moduz, gaizki, Bilbo (bilbon), izan (da), dr., n-tilde abar, pozo, . ,
//              ! ? amigoak: amigo[h=lagun]   txarto: txarto[e=gaizki]
//   zenbakiak: hogeita bi
//   hp:        (0)--<hp1>-->( )--<ABS><MG>:0-->((1))   (0)--<hp1>-->(
//   )--<ABS><NUMP>:ak-->((2)) hiztegia.txt: zubi, and mai with the better form mahai;
//   both <ARR>
#include "golden_texts.h"

#ifndef LEMARA_TEST_SOURCES
#error "LEMARA_TEST_SOURCES names the folder of the tests"
#endif

namespace {

using namespace lemara::test;

const std::filesystem::path GOLDEN =
    std::filesystem::path(LEMARA_TEST_SOURCES) / "golden";

}  // namespace

TEST(Golden, ParagraphsComeOutByteForByte) {
    const TempDir folder;
    std::string configuration;
    for (const std::string file : {"eumorfo.sare", "hp.sare", "zenbakiak.sare"}) {
        const std::string path = (GOLDEN / "tables" / file).string();
        ASSERT_TRUE(std::filesystem::is_regular_file(path)) << path;
        configuration += path + "\n";
    }
    const std::string words = (GOLDEN / "tables" / "hiztegia.txt").string();
    ASSERT_TRUE(std::filesystem::is_regular_file(words)) << words;
    const std::string path = folder.write("sareak.cfg", configuration);
    std::unique_ptr<Lemara> engine;
    stdout_of([&] { engine = std::make_unique<Lemara>(path, words); });
    ASSERT_EQ(engine->sareak.size(), 3u);

    const std::vector<std::string> expected = {"empty", "greeting", "mixed", "readings"};
    for (const std::string& format : GOLDEN_FORMATS) {
        ASSERT_EQ(texts_in(GOLDEN / format), expected) << format;
        for (const std::string& name : expected) {
            SCOPED_TRACE(format + "/" + name);
            const std::filesystem::path out = GOLDEN / format / (name + ".out");
            ASSERT_TRUE(std::filesystem::is_regular_file(out)) << out;
            const std::string text =
                read_file((GOLDEN / format / (name + ".in")).string());
            EXPECT_EQ(rendered(*engine, format, text), read_file(out.string()));
        }
    }
}
