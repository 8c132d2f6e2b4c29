// Compiled tables as bytes: whatever is cut, flipped or forged is noticed or does no harm.
#include "tables/image.h"

#include <gtest/gtest.h>

#include <cstring>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "lemara/compiled_table.h"
#include "random_bytes.h"
#include "random_tables.h"
#include "support.h"
#include "table_text.h"
#include "tables/token_walk.h"

namespace {

using lemara::compiled_table_defect;
using lemara::test::RandomTables;
using lemara::test::table_from;
using lemara::test::TempDir;
using lemara::test::write_anew;

// The bytes of a header that a forger has to know.
constexpr std::size_t MAGIC_BYTES = 8, CHECKSUM_AT = 16, CHECKED_FROM = 24, FLAGS_AT = 52;

// (0)--u-->(1)--r-->((2))--<ABS>:a-->((3)), (0)--etxe-->(4)--<IZE>:<>-->((4))
const std::string SMALL =
    "0\tu\t1\n0\tetxe:etxe\t4\n1\tr\t2\n2\t<ABS>:a\t3\nfinal: 2\nfinal: 3\n4\t<IZE>:<>\t2\n";

std::string small_image() { return lemara::compile_table(*table_from(SMALL)); }

/// Four lanes of FNV-1a over little-endian words of 8 bytes, as docs/table-format.md tells.
std::uint64_t checksum_of(const std::string& image) {
    const std::string bytes = image.substr(CHECKED_FROM);
    constexpr std::uint64_t PRIME = 1099511628211u;
    std::uint64_t lanes[4] = {14695981039346656037u, 1, 2, 3};
    std::size_t i = 0;
    for (; i + 32 <= bytes.size(); i += 32) {
        for (std::size_t lane = 0; lane < 4; ++lane) {
            std::uint64_t word = 0;
            for (std::size_t b = 8; b > 0; --b) {
                word = word << 8 | static_cast<unsigned char>(bytes[i + 8 * lane + b - 1]);
            }
            lanes[lane] = (lanes[lane] ^ word) * PRIME;
        }
    }
    std::uint64_t hash = bytes.size();
    for (const std::uint64_t lane : lanes) hash = (hash ^ lane) * PRIME;
    for (; i < bytes.size(); ++i) hash = (hash ^ static_cast<unsigned char>(bytes[i])) * PRIME;
    return hash;
}

std::string sealed(std::string image) {
    const std::uint64_t checksum = checksum_of(image);
    std::memcpy(image.data() + CHECKSUM_AT, &checksum, sizeof checksum);
    return image;
}

bool answers_nothing(const Taula& table) {
    return table.analizatuTokena("ur").empty() && table.analizatuTokena("etxe").empty() &&
           table.sortuFormak("u", "", false, false).empty() && !lemara::has_word(table, "ura");
}

/// Every search and every look at the graph, for a sanitizer to watch.
void use(Taula& table) {
    for (const char* word : {"", "u", "ur", "ura", "etxe", "etxea", "ETXE", "aab", "zz"}) {
        table.analizatuTokena(word);
        lemara::has_word(table, word);
        table.sortuFormak(word, "", false, false);
        table.sortuFormak(word, "", true, false);
    }
    for (int state = -1; state < 9; ++state) {
        std::vector<std::string*> found;
        char output[] = "a";
        table.birbilaTokena("ura", found, state, "ra", output);
        for (std::string* text : found) delete text;
        std::vector<Analisia> records;
        char upper[] = "u", lower[] = "u";
        table.birsortuFormak("ura", records, state, upper, lower, false, false);
    }
    table.addEgoera(new Egoera);  // unfolds the graph
    table.analizatuTokena("ur");
}

}  // namespace

TEST(Image, TheChecksumIsTheOneThatTheFormatTells) {
    const std::string image = small_image();
    EXPECT_EQ(sealed(image), image);
    EXPECT_EQ(compiled_table_defect(image), "");
}

TEST(Image, EveryBitFlippedIsNoticed) {
    const TempDir folder;
    const std::string own = small_image();
    for (const std::string& image : {own, lemara::with_other_byte_order(own)}) {
        ASSERT_EQ(compiled_table_defect(image), "");
        for (std::size_t at = 0; at < image.size(); ++at) {
            std::string damaged = image;
            for (int bit = 0; bit < 8; ++bit) {
                damaged[at] = static_cast<char>(image[at] ^ (1 << bit));
                EXPECT_NE(compiled_table_defect(damaged), "") << "byte " << at << ", bit " << bit;
            }
            damaged[at] = static_cast<char>(image[at] ^ 0xFF);
            EXPECT_NE(compiled_table_defect(damaged), "") << "byte " << at;
            const Taula table(write_anew(folder, "damaged.sare", damaged));
            EXPECT_TRUE(answers_nothing(table)) << "byte " << at;
            // A file that no longer begins as an image is read as text.
            if (at < MAGIC_BYTES) continue;
            EXPECT_TRUE(table.egoerak.empty()) << "byte " << at;
        }
    }
}

TEST(Image, EveryPrefixAndEveryLongerFileIsNoticed) {
    const TempDir folder;
    const std::string own = small_image();
    for (const std::string& image : {own, lemara::with_other_byte_order(own)}) {
        for (std::size_t size = 0; size < image.size(); ++size) {
            const std::string cut = image.substr(0, size);
            EXPECT_NE(compiled_table_defect(cut), "") << size << " bytes";
            const Taula table(write_anew(folder, "cut.sare", cut));
            EXPECT_TRUE(answers_nothing(table)) << size << " bytes";
            if (size < MAGIC_BYTES) continue;
            EXPECT_TRUE(table.egoerak.empty()) << size << " bytes";
        }
        for (const std::size_t more : std::vector<std::size_t>{1, 7, 8, 64}) {
            EXPECT_NE(compiled_table_defect(image + std::string(more, '\0')), "") << more;
        }
    }
}

TEST(Image, ADamagedImageLeavesALoadedTableAsItIs) {
    const TempDir folder;
    std::string image = small_image();
    image.back() = static_cast<char>(image.back() ^ 1);
    const auto table = table_from("0\tz\t1\nfinal: 1\n");
    table->fitxategia = folder.write("damaged.sare", image);
    table->kargatu();
    EXPECT_EQ(table->egoerak.size(), 2u);
    EXPECT_EQ(table->analizatuTokena("z").size(), 1u);
}

TEST(Image, BytesThatAreNoImageAreNamedSo) {
    for (const std::string bytes : {"", "0\ta\t1\n", "\211LMR", "\211LMR\n\n\032\n"}) {
        EXPECT_FALSE(lemara::is_compiled_table(bytes));
        EXPECT_EQ(compiled_table_defect(bytes), "not a compiled table");
        EXPECT_EQ(lemara::with_other_byte_order(bytes), bytes);
    }
}

TEST(Image, TwiceTurnedIsAsItWas) {
    for (unsigned seed = 1; seed < 200; ++seed) {
        RandomTables random(seed);
        const std::string image = lemara::compile_table(*table_from(random.table()));
        const std::string other = lemara::with_other_byte_order(image);
        EXPECT_NE(other, image);
        EXPECT_EQ(lemara::with_other_byte_order(other), image) << "seed " << seed;
    }
}

TEST(Image, ACompiledTableUnfoldsToItsGraph) {
    const TempDir folder;
    for (unsigned seed = 1; seed < 200; ++seed) {
        RandomTables random(seed);
        const auto original = table_from(random.table());
        Taula compiled(write_anew(folder, "t.sare", lemara::compile_table(*original)));
        EXPECT_TRUE(compiled.egoerak.empty());
        // The same but for arcs that lead nowhere.
        compiled.addZubiaTaulan(-1, false, new Zubia);
        ASSERT_EQ(compiled.egoerak.size(), original->egoerak.size()) << "seed " << seed;
        for (Egoera* state : original->egoerak) {
            auto& arcs = state->zubiak;
            for (auto arc = arcs.begin(); arc != arcs.end();) {
                const bool dangling =
                    (*arc)->hurrengo_egoera >= static_cast<int>(original->egoerak.size());
                if (!dangling) {
                    ++arc;
                    continue;
                }
                delete *arc;
                arc = arcs.erase(arc);
            }
        }
        for (std::size_t i = 0; i < original->egoerak.size(); ++i) {
            original->egoerak[i]->final = compiled.egoerak[i]->final;
        }
        EXPECT_EQ(lemara::test::describe(compiled), lemara::test::describe(*original))
            << "seed " << seed;
    }
}

// Whoever forges the checksum too gets an image refused or one that is safe to search.
TEST(Image, ForgedImagesAreRefusedOrHarmless) {
    const TempDir folder;
    std::map<std::string, int> outcomes;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        RandomTables random(seed);
        std::string image =
            lemara::compile_table(*table_from(seed % 4 == 0 ? random.table() : SMALL));
        if (seed % 8 == 0) image = lemara::with_other_byte_order(image);
        const bool own_order = seed % 8 != 0;
        for (int round = 0; round < 120; ++round) {
            std::string forged = image;
            for (int changes = 1 + random.below(3); changes > 0; --changes) {
                const std::size_t at =
                    CHECKED_FROM + random.up_to(forged.size() - CHECKED_FROM - 1);
                switch (random.below(4)) {
                    case 0: forged[at] = static_cast<char>(random.below(256)); break;
                    case 1:
                        forged[at] = static_cast<char>(forged[at] + 1 - 2 * random.below(2));
                        break;
                    case 2: forged[at] = random.once_in(2) ? '\377' : '\177'; break;
                    default: {
                        const std::size_t word = at / 4 * 4;
                        if (word + 4 <= forged.size())
                            forged.replace(word, 4, forged, at / 8 * 4, 4);
                    }
                }
            }
            // A cycle that the flags deny is searched until the budget is spent: safe, but slow.
            if (own_order) forged[FLAGS_AT] = static_cast<char>(forged[FLAGS_AT] | 6);
            if (forged.size() != image.size()) continue;
            if (own_order) forged = sealed(forged);
            const std::string defect = compiled_table_defect(forged);
            ++outcomes[defect.empty() ? "taken" : defect.substr(0, 30)];
            Taula table(write_anew(folder, "forged.sare", forged));
            if (!defect.empty()) {
                EXPECT_TRUE(table.egoerak.empty());
                EXPECT_TRUE(answers_nothing(table)) << defect;
            } else {
                use(table);
            }
        }
    }
    for (const auto& [outcome, count] : outcomes)
        std::cout << "  " << outcome << ": " << count << '\n';
    EXPECT_GT(outcomes["taken"], 0);
    for (const char* defect : {"an arc leads to no state", "an arc has no label",
                               "an arc is misdescribed", "a symbol is misdescribed",
                               "a symbol lies outside the pool", "a byte class is too high",
                               "the states do not fill their part"}) {
        EXPECT_GT(outcomes[std::string(defect).substr(0, 30)], 0) << defect;
    }
}

// The path grows at no cost but the states that it passed, which are bounded too.
TEST(Image, ADeniedCycleEndsWithTheBudget) {
    const TempDir folder;
    std::string image = lemara::compile_table(*table_from("0\t:<>\t0\n0\ta\t1\nfinal: 1\n"));
    ASSERT_NE(image[FLAGS_AT], '\0');
    image[FLAGS_AT] = '\0';
    const Taula table(folder.write("denied.sare", sealed(image)));
    table.analizatuTokena("a");
}
