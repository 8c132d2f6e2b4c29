// Whatever bytes the files have, opening a checker comes to an end with a checker or a
// reason, and a word that is added to a dictionary is found in it.
#include <random>

#include "../tables/random_bytes.h"
#include "host_world.h"
#include "lemara/compiled_table.h"

namespace lemara::test {
namespace {

/// Some bytes of `bytes` changed, taken out or put in twice.
std::string damaged(std::string bytes, std::mt19937& random) {
    const std::size_t changes = 1 + random() % 6;
    for (std::size_t i = 0; i < changes && !bytes.empty(); ++i) {
        const std::size_t at = random() % bytes.size();
        const std::size_t length = random() % 8;
        switch (random() % 4) {
            case 0:
                bytes[at] = static_cast<char>(random());
                break;
            case 1:
                bytes.erase(at, length);
                break;
            case 2:
                bytes.insert(at, bytes.substr(random() % bytes.size(), length));
                break;
            default:
                bytes.resize(at);
                break;
        }
    }
    return bytes;
}

std::string image_of_lexicon() {
    Taula table;
    load_text(table, small_lexicon().text());
    return compile_table(table);
}

}  // namespace

TEST(FilesFuzz, OpeningEndsWithACheckerOrAReason) {
    HostWorld world;
    const std::string texts[] = {small_lexicon().text(), hp_table(),
                                 image_of_lexicon(),
                                 "eumorfo.sare\nhp.sare\n// comment\n",
                                 "// "
                                 "mine\nzapaburu\t<ARR>\t\t\tHP\nMikel\t<PIB>\n\361o\t<"
                                 "LIB>\tx\ty\tz\nkaixo|<ARR>\n"};
    constexpr std::size_t LEXICON = 0, IMAGE = 2;  // two forms of one table
    const std::string names[] = {"eumorfo.sare", "hp.sare", "eumorfo.sare", "sareak.cfg",
                                 "h.txt"};
    world.settings.dictionary = world.folder.path("h.txt");
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        if (i != IMAGE) world.folder.write(names[i], texts[i]);
    }
    std::size_t damaged_before = LEXICON;
    std::size_t opened_count = 0, refused = 0;
    for (unsigned seed = 0; seed < 10000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const std::size_t victim = seed % std::size(texts);
        write_anew(world.folder, names[damaged_before], texts[damaged_before]);
        write_anew(world.folder, names[victim], damaged(texts[victim], random));
        damaged_before = victim == IMAGE ? LEXICON : victim;
        Checker::Opened opened;
        ASSERT_EQ(stdout_of([&] { opened = Checker::open(world.settings); }), "");
        if (!opened.checker) {
            ++refused;
            ASSERT_FALSE(opened.problems.empty());
            ASSERT_FALSE(opened.problems[0].reason.empty());
            continue;
        }
        ++opened_count;
        CheckOptions options;
        options.most_forms = seed % 10 == victim ? 8 : 0;  // proposals take their time
        opened.checker->check("etxe bozo mai Mikelek zapaburu ahal \u00f1o", options);
        opened.checker->generate("etxe", "IZE");
        // A word is written through to the disk, which takes longer than all the rest.
        if (names[victim] != "h.txt" || random() % 4 > 0) continue;
        const std::string before = read_file(world.settings.dictionary);
        if (opened.checker->add_word({"kaixoagur", "", "", ""})) {
            ASSERT_EQ(read_file(world.settings.dictionary), before);
        } else {
            ASSERT_TRUE(opened.checker->valid("kaixoagur"));
        }
    }
    EXPECT_GT(opened_count, 1000u);
    EXPECT_GT(refused, 1000u);
}

}  // namespace lemara::test
