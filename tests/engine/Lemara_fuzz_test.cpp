// Random bytes through every road that reads text, over random lexicons and dictionaries.
// What must hold is small: nothing crashes, nothing hangs, the mark-up has its frame, two
// calls give one answer, and no text is lost on the way.
#include <random>

#include "../tables/random_bytes.h"
#include "Lemara.h"
#include "small_engine.h"

namespace {

using namespace lemara::test;

constexpr unsigned SEED = 20261121;

class Source {
public:
    explicit Source(unsigned seed) : random_(seed) {}

    std::size_t below(std::size_t limit) { return random_() % limit; }
    bool one_in(std::size_t n) { return below(n) == 0; }

    /// Few letters, so that random words meet random texts, and now and then any byte.
    std::string text(std::size_t longest) {
        static const std::string alphabet =
            "aabbeeitz  .,:-!?'\"[]<>+/%12AZX\351\321\t\n";
        std::string result;
        if (one_in(12)) result = one_in(2) ? "http" : "www.";
        for (std::size_t n = below(longest + 1); n > 0; --n) {
            result += one_in(30) ? static_cast<char>(below(256))
                                 : alphabet[below(alphabet.size())];
        }
        return result;
    }
    std::string word(std::size_t longest) {
        static const std::string letters = "abeitz";
        std::string result;
        for (std::size_t n = 1 + below(longest); n > 0; --n)
            result += letters[below(letters.size())];
        return result;
    }
    template <class T>
    const T& choice(const std::vector<T>& list) {
        return list[below(list.size())];
    }

private:
    std::mt19937 random_;
};

std::string random_lexicon(Source& source) {
    static const std::vector<std::string> tags = {"<IZE>", "<ARR>",  "<ABS>", "<Rare>",
                                                  "<MAT>", "<EZZG>", "<LIB>", "<0x>",
                                                  "<1y>",  "<>"};
    Lexicon lexicon;
    for (std::size_t n = 3 + source.below(25); n > 0; --n) {
        std::string lemma = source.word(4);
        if (source.one_in(4)) lemma += " " + source.word(3);
        if (source.one_in(5))
            lemma[0] =
                static_cast<char>(orbi_toupper(static_cast<unsigned char>(lemma[0])));
        std::vector<std::string> own = {source.choice(tags), source.choice(tags)};
        if (source.one_in(4)) own.push_back("[h=" + source.word(4) + "]");
        if (source.one_in(6))
            own.push_back("[e=" + source.word(3) + "/" + source.word(3) + "]");
        std::string surface = tolowercase(lemma);
        if (source.one_in(3)) surface += source.word(2);
        lexicon.form(lemma, surface, own);
    }
    for (const char* sign : {".", ",", "!", "a.", "b-b"}) {
        if (source.one_in(2)) lexicon.word(sign, {"<PUNT>"});
    }
    return lexicon.text();
}

std::string random_dictionary(Source& source) {
    static const std::vector<std::string> classes = {"<ARR>", "<IZO>", "<ADI>", "<PIB>",
                                                     "<LIB>", "<IZB>", "<X>"};
    std::string text = "// words\n";
    for (std::size_t n = source.below(8); n > 0; --n) {
        std::string word = source.word(4);
        if (source.one_in(4)) word += " " + source.word(3);
        text += dictionary_line(word, source.choice(classes),
                                source.one_in(3) ? source.word(4) : "",
                                source.one_in(4) ? source.word(3) : "");
    }
    return text;
}

void expect_frame(const std::string& markup) {
    ASSERT_EQ(markup.substr(0, 4), "<p>\n");
    ASSERT_GE(markup.size(), 9u);
    ASSERT_EQ(markup.substr(markup.size() - 5), "</p>\n");
}

}  // namespace

TEST(LemaraFuzz, AnyTextOverAnySmallLexicon) {
    Source source(SEED);
    std::size_t texts = 0;
    std::size_t known = 0;
    for (int world_number = 0; world_number < 25; ++world_number) {
        World world;
        world.table("eumorfo.sare", random_lexicon(source))
            .table("hp.sare", hp_table())
            .table("zenbakiak.sare", random_lexicon(source))
            .dictionary(random_dictionary(source));
        world.build();
        stdout_of([&] {
            const Lemara& engine = *world.engine;
            for (int round = 0; round < 400; ++round, ++texts) {
                const std::string text = source.text(round % 10 == 0 ? 200 : 30);
                SCOPED_TRACE("seed " + std::to_string(SEED) + ", text " +
                             std::to_string(texts));
                try {
                    const std::string markup =
                        engine.getParagrafoaZuzenlex(text, round % 12 == 0);
                    expect_frame(markup);
                    ASSERT_EQ(engine.getParagrafoaZuzenlex(text, round % 12 == 0),
                              markup);
                    if (markup.find("k=\"ok\"") != std::string::npos) ++known;
                } catch (const std::out_of_range& error) {
                    // Of the errors that may pass only these two texts are told.
                    const std::string what = error.what();
                    ASSERT_TRUE(what == "basic_string::substr" ||
                                what == "basic_string::at")
                        << what;
                }
                const Paragrafoa p = engine.analizatu_paragrafoa(round, text);
                ASSERT_GE(p.esaldiak.size(), 1u);
                ASSERT_EQ(p.esaldiak.front().zenbakia, -1);
                p.print_Multext(true, false, false);
                p.print_Zuzenlex(nullptr);
                p.print_Ikute();
                ASSERT_EQ(p.get_CG3(true, true, true), p.get_CG3(true, false, false));
                engine.isValid(text, false);
                engine.isValid(text, true);
                engine.bilatuHasiera(text, true);
                engine.analizatuTokena(text);
            }
        });
    }
    EXPECT_EQ(texts, 10000u);
    EXPECT_GT(known, 2000u) << "random texts should meet random words";
}

TEST(LemaraFuzz, AnyWordThroughProposalsAndForms) {
    Source source(SEED + 1);
    static const std::vector<std::string> tags = {"<ARR>", "<IZO>", "<ADI>", "<PIB>",
                                                  "<LIB>", "<IZB>", "",      "x"};
    for (int world_number = 0; world_number < 10; ++world_number) {
        World world;
        world.table("eumorfo.sare", random_lexicon(source))
            .table("hp.sare", hp_table())
            .dictionary(random_dictionary(source))
            .build();
        const Lemara& engine = *world.engine;
        stdout_of([&] {
            for (int round = 0; round < 1000; ++round) {
                const std::string word = round % 2 == 0 ? source.word(6) : source.text(8);
                SCOPED_TRACE("seed " + std::to_string(SEED + 1) + ", word " + word);
                const std::vector<std::string> first = engine.lortu_ezzg_proposamenak(word);
                if (round % 4 == 0) {
                    ASSERT_EQ(engine.lortu_ezzg_proposamenak(word), first);
                }
                try {
                    engine.sortuFormak(word, source.choice(tags));
                    engine.sortu_forma_ezezaguna(word,
                                                 " IZE " + source.choice(tags) + " ABS");
                } catch (const std::out_of_range& error) {
                    ASSERT_STREQ(error.what(), "basic_string::at");
                }
            }
        });
    }
}

// Sentences and tokens together lose nothing but blanks, tabs in front and number dots.
TEST(LemaraFuzz, NoTextIsLost) {
    Source source(SEED + 2);
    const auto squeeze = [](const std::string& text) {
        std::string result;
        for (const char c : text) {
            if (c != ' ' && c != '\t' && c != '.') result += c;
        }
        return result;
    };
    const auto main = network_from("eumorfo", random_lexicon(source));
    const HiztegiPertsonala none;
    stdout_of([&] {
        for (int round = 0; round < 10000; ++round) {
            std::string text = source.text(40);
            text = text.substr(0, text.find('\0'));
            // An address jumps over bytes; a text without its letters has none.
            for (char& c : text) {
                if (c == 'p' || c == 'w') c = 'b';
            }
            Paragrafoa p(1, text);
            p.analizatu({{"eumorfo", main.get()}}, none, true);
            std::string together;
            for (const Esaldia& sentence : p.esaldiak) {
                for (const Tokena& token : sentence.tokenak) together += token.testua;
            }
            ASSERT_EQ(squeeze(together), squeeze(text))
                << "seed " << SEED + 2 << ", round " << round;
        }
    });
}

TEST(LemaraFuzz, AnyConfigurationAndDictionary) {
    Source source(SEED + 3);
    const TempDir folder;
    const std::string table = folder.write("eumorfo.sare", random_lexicon(source));
    for (int round = 0; round < 10000; ++round) {
        std::string configuration = source.one_in(2) ? table + "\n" : "";
        std::string words;
        for (int line = 0; line < 6; ++line) {
            // Paths that do not exist: a stray folder name would be a table of its own.
            configuration +=
                (source.one_in(3) ? "//" : "./no-such/") + source.text(20) + "\n";
            words += source.text(10) + (source.one_in(2) ? "\t<ARR>\t" : "\t") +
                     source.text(6) + "\n";
        }
        const std::string path = write_anew(folder, "sareak.cfg", configuration);
        const std::string dictionary = write_anew(folder, "hp.txt", words);
        stdout_of([&] {
            try {
                const Lemara engine(path, dictionary);
                engine.getParagrafoaZuzenlex(source.text(40), false);
            } catch (const std::out_of_range& error) {
                const std::string what = error.what();
                EXPECT_TRUE(what == "basic_string::substr" || what == "basic_string::at")
                    << what;
            }
        });
    }
}
