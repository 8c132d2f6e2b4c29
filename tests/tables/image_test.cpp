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
#include "tables/lazy_transducer.h"
#include "tables/packed_walk.h"
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

/// The sums in 16 lanes that docs/table-format.md tells, byte by byte.
std::uint64_t checksum_of(const std::string& image) {
    std::string bytes = image.substr(CHECKED_FROM);
    std::uint64_t hash = bytes.size();
    const auto stirred = [](std::uint64_t x) { return (x ^ x >> 31) * 1099511628211u; };
    std::uint64_t lanes[16];
    for (std::size_t lane = 0; lane < 16; ++lane) lanes[lane] = lane + 1;
    const std::size_t whole_rows = bytes.size() / 128;
    bytes.resize(128 * (whole_rows + 1), '\0');
    for (std::size_t row = 0; row <= whole_rows; ++row) {
        if (row != 0 && (row % 64 == 0 || row == whole_rows)) {
            for (std::uint64_t& lane : lanes) lane = stirred(lane);
        }
        for (std::size_t lane = 0; lane < 16; ++lane) {
            for (std::size_t b = 0; b < 8; ++b) {
                const auto byte = static_cast<unsigned char>(bytes[128 * row + 8 * lane + b]);
                lanes[lane] += std::uint64_t{byte} << 8 * b;
            }
            lanes[lane] = lanes[lane] << 29 | lanes[lane] >> 35;
        }
    }
    for (const std::uint64_t lane : lanes) hash = stirred(hash ^ lane);
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

bool concerns_the_graph_alone(const std::string& defect) {
    for (const char* known :
         {"the states do not fill their part", "an arc leads to no state",
          "an arc has no label", "an arc is misdescribed", "a symbol is misdescribed"}) {
        if (defect == known) return true;
    }
    return false;
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

// Whoever forges the checksum too gets an image refused or one that is safe to search. One
// whose states make no graph is searched too, and unfolds to nothing.
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
            EXPECT_TRUE(table.egoerak.empty());
            if (!defect.empty() && !concerns_the_graph_alone(defect)) {
                EXPECT_TRUE(answers_nothing(table)) << defect;
            }
            use(table);
            if (!defect.empty()) {
                EXPECT_EQ(table.egoerak.size(), 1u) << defect;
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

TEST(Image, SymbolsThatAreNoPowerOfTwoAreRefused) {
    const TempDir folder;
    constexpr std::size_t LABELS_AT = 40, POOL_AT = 44;  // numbers of 4 bytes
    const std::string image = small_image();
    std::uint32_t labels = 0, pool = 0;
    std::memcpy(&labels, image.data() + LABELS_AT, sizeof labels);
    std::memcpy(&pool, image.data() + POOL_AT, sizeof pool);
    ASSERT_GE(labels, 4u);
    for (const std::uint32_t less : {1u, labels}) {
        std::string forged = image;
        const std::uint32_t fewer = labels - less;
        const auto larger = static_cast<std::uint32_t>(pool + less * sizeof(lemara::PackedLabel));
        std::memcpy(forged.data() + LABELS_AT, &fewer, sizeof fewer);
        std::memcpy(forged.data() + POOL_AT, &larger, sizeof larger);
        EXPECT_EQ(compiled_table_defect(sealed(forged)), "of no power of two of symbols");
        const Taula table(write_anew(folder, "forged.sare", sealed(forged)));
        EXPECT_TRUE(answers_nothing(table));
    }
}

namespace {

/// A view of a copy that ends where the block does, so that a sanitizer sees every byte that
/// is read behind it.
struct CopiedView {
    explicit CopiedView(const lemara::PackedTable& table)
        : bytes(new char[table.block_bytes()]), view(table.view()) {
        const char* const block = reinterpret_cast<const char*>(table.block().data());
        std::memcpy(bytes.get(), block, table.block_bytes());
        const auto moved = [&](const void* place) {
            return bytes.get() + (static_cast<const char*>(place) - block);
        };
        states = reinterpret_cast<std::uint8_t*>(moved(view.states));
        view.byte_class = reinterpret_cast<std::uint8_t*>(moved(view.byte_class));
        view.states = states;
        view.labels = reinterpret_cast<lemara::PackedLabel*>(moved(view.labels));
        if (view.wide_labels != nullptr) {
            wide = reinterpret_cast<std::uint32_t*>(moved(view.wide_labels));
            view.wide_labels = wide;
        }
        view.pool = moved(view.pool);
    }

    std::unique_ptr<char[]> bytes;
    lemara::PackedView view;
    std::uint8_t* states = nullptr;
    std::uint32_t* wide = nullptr;
};

/// Walks as in a table with cycles: what denied ones cost is another test's. The lazy form
/// would leave such a table to the walk.
void search_all(const lemara::PackedView& table) {
    lemara::PackedView cyclic = table, acyclic = table;
    cyclic.cycles = lemara::EMPTY_CYCLES | lemara::ANY_CYCLES;
    acyclic.cycles = 0;
    const auto go_on = [](auto&&...) { return true; };
    for (const std::string word : {"", "u", "ura", "etxea", "aab", "abab", "yz1<IZE>"}) {
        lemara::PackedAnalysis(cyclic, word, word).run(0, go_on);
        lemara::PackedAnalysis(cyclic, word, word).run(3, go_on);
        lemara::UpperArcs upper(cyclic);
        for (int time = 0; time < 2; ++time)
            lemara::PackedGeneration(upper, word, false).run(0, go_on);
        lemara::LazyTransducer lazy(acyclic);
        for (int time = 0; time < 3; ++time) {
            lemara::LazyTransducer::Spelt spelt;
            lazy.answer(word, go_on);
            lazy.spell(word, spelt, go_on);
        }
    }
}

/// A state of 300 arcs, and perhaps more labels than an arc holds.
std::string many_arcs(bool many_labels) {
    std::string text;
    for (int arc = 0; arc < (many_labels ? 33000 : 300); ++arc) {
        text += "0\tyz" + std::to_string(many_labels ? arc : arc % 7) + ':' +
                static_cast<char>('a' + arc % 26) + "\t1\n";
    }
    return text + "final: 1\n";
}

}  // namespace

// States, arcs and labels overwritten as they come: a search stays within the block.
TEST(Image, NoStatesLeadASearchAstray) {
    for (unsigned seed = 1; seed <= 120; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTables random(seed);
        const std::string text = seed <= 2 ? many_arcs(seed == 1)
                                 : random.once_in(8) ? many_arcs(false)
                                                     : random.table();
        const auto table = table_from(text);
        const lemara::PackedTable packed(table->egoerak);
        const CopiedView copy(packed);
        const std::size_t size = 4 * std::size_t{copy.view.states_size};
        for (int round = 0; round < 10; ++round) {
            const int share = 1 + random.below(40);  // one byte in so many is overwritten
            for (std::size_t at = 0; at < size; ++at) {
                if (!random.once_in(share)) continue;
                const int kind = random.below(4);
                copy.states[at] = static_cast<std::uint8_t>(kind == 0   ? 0
                                                            : kind == 1 ? 255
                                                                        : random.below(256));
            }
            if (copy.wide != nullptr) copy.wide[random.up_to(size / 8)] = 0xFFFFFFFF;
            const lemara::PackedView& view = copy.view;
            if (round % 2 == 0) search_all(view);
            for (int place = 0; place < 20; ++place) {
                const auto ref = static_cast<lemara::StateRef>(
                    random.once_in(3) ? random.up_to(2 * std::size_t{view.states_size})
                                      : std::size_t{view.states_size} - random.up_to(3));
                const lemara::PackedState state = view.state(ref);
                for (std::uint32_t k = 0; k < state.count; ++k) {
                    ASSERT_LT(view.label_of(state.arcs[k]), view.label_count);
                }
            }
            lemara::defect_of_graph(view);
        }
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
