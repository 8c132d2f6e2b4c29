// Any number of threads may ask one engine at once. Run this under -fsanitize=thread too.
#include <atomic>

#include "Lemara.h"
#include "small_engine.h"

namespace {

using namespace lemara::test;

/// The answers of every read operation that prints nothing, as one text.
std::string ask_everything(const Lemara& engine) {
    std::ostringstream answers;
    const auto add = [&](const std::vector<Analisia>& list) {
        for (const Analisia& a : list) {
            answers << a.analisia << '|' << a.forma << '|' << a.hiztegia << '|'
                    << a.maiuskula << '\n';
        }
        answers << "--\n";
    };
    for (const std::string text :
         {"Etxea, zer moduz? Zuri bozo: zubiak. Amigoak 1998. urtean", "",
          "etxe-a zzz! Ama BOZO"}) {
        answers << engine.getParagrafoaZuzenlex(text, false);
        answers << engine.getParagrafoaZuzenlex(text, true);
        answers << engine.analizatu_paragrafoa(1, text).get_CG3(true, false, false);
    }
    for (const std::string word : {"etxe", "zer", "zubiak", "bozo", "Zer", "zzz",
                                   "etxe-a", "", "mixe", "amigoak"}) {
        answers << engine.isValid(word, false) << engine.isValid(word, true) << '\n';
        for (const std::string& text : engine.lortu_ezzg_proposamenak(word))
            answers << text << '\n';
        add(engine.analizatuTokena(word));
        add(engine.analizatuTokena(word, "eumorfo"));
        add(engine.analizatuTokena(word, "there is none"));
        add(engine.bilatuHasiera(word, false));
        add(engine.bilatuHasiera(word + " ", true));
        add(engine.sortuFormak(word, "<ARR>"));
        answers << engine.sortu_forma_ezezaguna(word, " IZE ARR ABS NUMP") << '\n';
    }
    return answers.str();
}

}  // namespace

TEST(LemaraThreads, FourThreadsGetTheAnswersOfOne) {
    World world;
    world
        .table("eumorfo.sare",
               Lexicon()
                   .word("etxe", {"<IZE>", "<ARR>"})
                   .form("etxe", "etxea", {"<IZE>", "<ARR>", "<ABS>"})
                   .word("zer moduz", {"<ADB>"})
                   .word("zuri gorri", {"<IZE>"})
                   .word("lagun", {"<IZE>", "<ARR>", "<ABS>"})
                   .form("amigo", "amigoak", {"<IZE>", "<ARR>", "<ABS>", "[h=lagun]"})
                   .words({"pozo", "mia", "."}, "<X>")
                   .text())
        .table("hp.sare", hp_table())
        .table("zenbakiak.sare", Lexicon().word("1998", {"<ZNB>"}).text())
        .dictionary(dictionary_line("zubi", "<ARR>"))
        .build();
    const Lemara& engine = *world.engine;
    const std::string alone = ask_everything(engine);
    ASSERT_NE(alone.find("<sugg>pozo</sugg>"), std::string::npos);
    ASSERT_NE(alone.find("<hobe>Lagun</hobe>"), std::string::npos);

    std::atomic<int> equal{0};
    lemara::test::in_threads(4, [&](unsigned) {
        for (int round = 0; round < 8; ++round) {
            if (ask_everything(engine) == alone) ++equal;
        }
    });
    EXPECT_EQ(equal, 32);
    EXPECT_EQ(engine.sareak.size(), 3u);
}
