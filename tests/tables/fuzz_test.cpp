// Any bytes as a table, in a file and in memory, and as a configuration: nothing crashes,
// hangs or reads beyond a buffer, and what is loaded is what a plain reader makes of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "Taula.h"
#include "lemara/compiled_table.h"
#include "plain_search.h"
#include "random_bytes.h"
#include "support.h"
#include "table_text.h"

namespace {

using lemara::test::describe;
using lemara::test::expect_hits;
using lemara::test::Hits;
using lemara::test::PlainAnalysis;
using lemara::test::PlainGeneration;
using lemara::test::RandomBytes;
using lemara::test::stdout_of;
using lemara::test::TempDir;
using lemara::test::write_anew;
using Strings = std::vector<std::string>;

constexpr unsigned FIRST_SEED = 500;
constexpr unsigned INPUTS = 10000;
constexpr std::size_t COUNTED_BYTES = 997;  // that the counting pass reads of a line at once
constexpr std::size_t LOADED_BYTES = 9997;  // that the loader does

const std::string ALPHABET = std::string("0123 9\t\t\n\n\r:<>final-a") + '\0';
const Strings NUMBERS = {"0", "1", "2",  "3",          "4",           "-1",  "-2000000000",
                         "5", "00", "+1", "2000000000", "99999999999", "65536", " 1", "x", ""};
const Strings SYMBOLS = {"a",     "b:<>",  ":",     "::",   "a:",  ":a", "<>:<>",
                         "<IZE>:<>", "<0X>:a", "<>:b", "A:a", "ab",  "",  "[h=a]:<>",
                         "<1X>:<>", "<PSP>:<>", "<ELI_IZE>:a", "[h=", "<IZ:<>", "\361"};
const Strings FINALS = {"final: ", "final\t", "final", "final:", "fina", "final:  "};

/// Some records that are nearly a table.
std::string records(RandomBytes& random) {
    std::string text;
    for (unsigned n = random.below(9); n > 0; --n) {
        const bool tame = !random.once_in(12);
        const auto number = [&] {
            return tame ? std::to_string(random.below(4)) : random.any_of(NUMBERS);
        };
        if (random.once_in(4)) {
            text += random.any_of(FINALS) + number();
        } else {
            text += number() + '\t' + random.any_of(SYMBOLS) + '\t' + number();
        }
        text += random.once_in(8) ? "\r\n" : "\n";
    }
    return text;
}

/// Few states, all arcs without a lower symbol: circles wherever one looks.
std::string circles(RandomBytes& random) {
    const unsigned states = 1 + random.below(4);
    std::string text;
    for (unsigned n = 2 + random.below(8); n > 0; --n) {
        text += std::to_string(random.below(states)) + '\t' +
                (random.once_in(3) ? "" : "<X>") + ":<>\t" +
                std::to_string(random.below(states)) + '\n';
    }
    return text + "0\ta\t0\nfinal: " + std::to_string(states - 1) + '\n';
}

/// Lines around the lengths at which the two passes cut them.
std::string long_lines(RandomBytes& random) {
    const std::size_t length =
        (random.once_in(2) ? COUNTED_BYTES : LOADED_BYTES) - 2 + random.below(5);
    std::string line = "0\ta";
    if (random.once_in(4)) line = "final: 1";
    while (line.size() < length - 3) line += "7:\t a2"[random.below(random.once_in(9) ? 6 : 1)];
    line += "\t01";
    line.resize(length, '3');
    return records(random) + line + (random.once_in(3) ? "" : "\n") + records(random);
}

std::string input(RandomBytes& random) {
    const unsigned kind = random.below(20);
    if (kind == 0) return long_lines(random);
    if (kind < 4) return random.raw(200);
    if (kind < 8) return random.from(ALPHABET, 200);
    if (kind < 11) return circles(random);
    const std::string text = records(random);
    return kind < 15 ? text : random.mutated(text, ALPHABET);
}

/// Reads the text form in so many words. Nothing if a number is beyond an int, or a carriage
/// return stands before a NUL: what they count as is left open.
class PlainReader {
public:
    static std::optional<Strings> file(const std::string& bytes) {
        PlainReader reader;
        reader.open_ = bytes.find(std::string("\r\0", 2)) != std::string::npos;
        reader.count(lines(bytes, COUNTED_BYTES), bytes.size());
        for (std::string line : lines(bytes, LOADED_BYTES)) {
            if (!line.empty() && line.back() == '\n') line.pop_back();
            if (!line.empty() && line.back() == '\r') line.pop_back();
            if (line.size() >= 5) reader.record(line);
        }
        return reader.result();
    }

    static std::optional<Strings> memory(const std::string& bytes) {
        PlainReader reader;
        const std::string text = bytes.substr(0, bytes.find('\0'));
        reader.count(lines(text, text.size() + 1), text.size());
        for (std::string line : lines(text, text.size() + 1)) {
            if (line.back() != '\n') break;  // a last line with no line feed
            line.pop_back();
            if (line.size() < 5) continue;
            const bool final = line.compare(0, 5, "final") == 0;
            const std::size_t tab = line.find('\t');
            if (!final && (tab == std::string::npos ||
                           line.find('\t', tab + 1) == std::string::npos)) {
                break;
            }
            reader.record(line);
        }
        return reader.result();
    }

private:
    /// Cut behind each line feed and after `most` bytes; each ends at a NUL.
    static Strings lines(const std::string& bytes, std::size_t most) {
        Strings result;
        for (std::size_t at = 0; at < bytes.size();) {
            std::size_t end = bytes.find('\n', at);
            end = end == std::string::npos ? bytes.size() : end + 1;
            end = std::min(end, at + most);
            const std::string line = bytes.substr(at, end - at);
            result.push_back(line.substr(0, line.find('\0')));
            at = end;
        }
        return result;
    }

    long number(const std::string& line, std::size_t at) {
        if (at >= line.size()) return 0;
        const long value = std::strtol(line.c_str() + at, nullptr, 10);
        if (value <= 2147483646L && value >= -2147483646L) return value;
        open_ = true;
        return 0;
    }

    void count(const Strings& all, std::size_t bytes) {
        long last = 0;
        for (const std::string& line : all) {
            if (line.compare(0, 7, "final: ") == 0) {
                last = number(line, 7);
            } else if (line.compare(0, 5, "final") == 0) {
                last = number(line, 6);
            } else if (!line.empty() && line[0] >= '0' && line[0] <= '9') {
                last = number(line, 0);
            }
        }
        const long most = std::max(lemara::TRUSTED_STATES, static_cast<long>(bytes));
        const long states = std::min(last + 1, most);
        for (long s = 0; s < states; ++s) table_.addEgoera(new Egoera);
    }

    void record(const std::string& line) {
        if (line.compare(0, 5, "final") == 0) {
            const long state = number(line, line.compare(0, 7, "final: ") == 0 ? 7 : 6);
            add(state, true, new Zubia(-1, "", ""));
            return;
        }
        // Source, symbols, and all that stands behind the second TAB.
        Strings fields(3);
        std::size_t field = 0;
        for (const char c : line) {
            if (c == '\t' && field < 2) {
                ++field;
            } else {
                fields[field] += c;
            }
        }
        std::string upper = fields[1];
        std::string lower = fields[1];
        const std::size_t colon = fields[1].find(':');
        if (colon != std::string::npos && fields[1].size() > 1) {
            upper = fields[1].substr(0, colon);
            lower = fields[1].substr(colon + 1);
            if (lower == "<>") lower = "";
        }
        const long source = number(fields[0], 0);
        const long target = number(fields[2], 0);
        add(source, false, new Zubia(static_cast<int>(target), upper, lower));
    }

    void add(long state, bool final, Zubia* arc) {
        if (open_ || state < 0 || state >= static_cast<long>(table_.egoerak.size())) {
            delete arc;
            return;
        }
        table_.addZubiaTaulan(static_cast<int>(state), final, arc);
    }

    std::optional<Strings> result() const {
        if (open_) return std::nullopt;
        return describe(table_);
    }

    Taula table_;
    bool open_ = false;
};

Strings records_of(const std::vector<Analisia>& found) {
    Strings texts;
    for (const Analisia& a : found) {
        texts.push_back(a.analisia + '|' + a.forma + '|' + std::to_string(a.maiuskula));
    }
    return texts;
}

/// Searches the table, against the twins where they are not too slow.
void search(const Taula& table, RandomBytes& random, Hits& hits) {
    std::string token = random.from("abA1 \361", 5);
    if (random.once_in(4)) token = random.raw(5);
    PlainAnalysis walk(table, token, hits);
    const Strings analyses = records_of(walk.run());
    const Strings found = records_of(table.analizatuTokena(token));
    if (!walk.gave_up()) {
        ++hits["analyses compared"];
        if (!analyses.empty()) ++hits["analyses found"];
        ASSERT_EQ(found, analyses) << "token " << token;
    }
    const std::string target = random.from("ab<IX>", 3);
    const bool stop = random.once_in(2);
    PlainGeneration generation(table, target, "", stop, hits);
    const Strings forms = records_of(generation.run());
    const Strings generated = records_of(table.sortuFormak(target, "", stop, false));
    if (!generation.gave_up()) {
        ++hits["generations compared"];
        if (!forms.empty()) ++hits["forms found"];
        ASSERT_EQ(generated, forms) << "target " << target;
    }
}

/// A drawing without its empty end, to compare tables of many states quickly.
Strings head(const Strings& states) {
    std::size_t used = states.size();
    while (used > 0 && states[used - 1].empty()) --used;
    Strings result(states.begin(), states.begin() + static_cast<std::ptrdiff_t>(used));
    result.push_back(std::to_string(states.size()) + " states");
    return result;
}

}  // namespace

TEST(TableFuzz, AnyBytesMakeATable) {
    const TempDir folder;
    Hits hits;
    for (unsigned seed = FIRST_SEED; seed < FIRST_SEED + INPUTS; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomBytes random(seed);
        const std::string bytes = input(random);

        const Taula from_file(write_anew(folder, "t.sare", bytes));
        const std::optional<Strings> file = PlainReader::file(bytes);
        if (file) {
            ++hits["files compared"];
            ASSERT_EQ(head(describe(from_file)), head(*file));
        }
        ASSERT_NO_FATAL_FAILURE(search(from_file, random, hits));
        ASSERT_EQ(lemara::compile_table_text(bytes), lemara::compile_table(from_file))
            << "the records and the graph are packed to the same";

        Taula from_memory;
        lemara::test::load_text(from_memory, bytes);
        const std::optional<Strings> memory = PlainReader::memory(bytes);
        if (memory) {
            ++hits["memory compared"];
            ASSERT_EQ(head(describe(from_memory)), head(*memory));
        }
        if (seed % 2 == 0) {
            ASSERT_NO_FATAL_FAILURE(search(from_memory, random, hits));
        }
        if (seed % 20 == 0) {
            const Taula secret(write_anew(folder, "SARE8", crypt_encode(bytes)));
            ASSERT_EQ(head(describe(secret)), head(describe(from_memory)));
        }
    }
    expect_hits(hits,
                {"files compared", "memory compared", "analyses compared", "generations compared"},
                INPUTS / 2);
    EXPECT_GT(hits["analyses found"], 100);
    EXPECT_GT(hits["forms found"], 100);
    EXPECT_GT(hits["a cycle in the analysis"], 100);
    EXPECT_GT(hits["a cycle in the generation"], 100);
}

TEST(TableFuzz, PathsWithoutNumberEnd) {
    // 60 states, each with two arcs of no lower symbol to the next: 2^60 paths, no end.
    Taula table;
    for (int s = 0; s <= 60; ++s) table.addEgoera(new Egoera);
    for (int s = 0; s < 60; ++s) {
        table.addZubiaTaulan(s, false, new Zubia(s + 1, "<A>", ""));
        table.addZubiaTaulan(s, false, new Zubia(s + 1, "<B>", ""));
    }
    EXPECT_TRUE(table.analizatuTokena("a").empty());
    EXPECT_TRUE(table.sortuFormak("", "", false, false).empty());
}

TEST(TableFuzz, ResultsWithoutNumberEnd) {
    // 2^12 paths, each with a result of 200,000 bytes: more than one search may do.
    constexpr int LAYERS = 12;
    const std::string tail(200000, 'x');
    Taula table;
    for (int s = 0; s <= LAYERS; ++s) table.addEgoera(new Egoera);
    for (int s = 0; s < LAYERS; ++s) {
        table.addZubiaTaulan(s, false, new Zubia(s + 1, "a", ""));
        table.addZubiaTaulan(s, false, new Zubia(s + 1, "b", ""));
    }
    table.addZubiaTaulan(LAYERS, false, new Zubia(-1, tail, ""));
    const auto most = static_cast<std::size_t>(lemara::SEARCH_BUDGET) / tail.size();
    for (const bool generation : {false, true}) {
        const std::vector<Analisia> found = generation
                                                ? table.sortuFormak("", "", false, false)
                                                : table.analizatuTokena("");
        ASSERT_FALSE(found.empty());
        EXPECT_LE(found.size(), most) << "the budget bounds the work";
        EXPECT_GT(found.size(), most / 2) << "and is spent on results";
        EXPECT_EQ(found[0].analisia, std::string(LAYERS, 'a') + tail);
        EXPECT_EQ(found[1].analisia, std::string(LAYERS - 1, 'a') + 'b' + tail);
    }
}

namespace {

/// What a configuration gives, in so many words.
struct PlainConfiguration {
    std::string output;
    std::set<std::string> keys;
    bool short_key = false;

    explicit PlainConfiguration(const std::string& text) {
        Strings accepted;
        for (std::size_t at = 0; at < text.size();) {
            std::size_t end = std::min(text.find('\n', at), text.size());
            std::string line = text.substr(at, end - at);
            at = end + 1;
            if (line.empty() || line.compare(0, 2, "//") == 0 || line[0] == ' ' ||
                line[0] == '\t' || line[0] == '\r') {
                continue;
            }
            if (accepted.size() == 10) {
                output += "kargatu_sareak: Taula kopuru handiegia: 10 da topea!\n";
                break;
            }
            if (line.back() == '\r') line.pop_back();
            if (!file_exists(line)) {
                output += "Ezin da ireki '" + line + "'\n";
                continue;
            }
            accepted.push_back(line);
        }
        for (const std::string& path : accepted) {
            const std::size_t slash = path.rfind('/');
            const std::string base = slash == std::string::npos ? path : path.substr(slash + 1);
            std::string key = base.substr(0, base.find('.'));
            if (key.size() < 2) {
                short_key = true;
                return;
            }
            if (key.substr(key.size() - 2) == "PG") key.resize(key.size() - 2);
            keys.insert(key);
            output += '\n';
        }
    }
};

}  // namespace

TEST(ConfigurationFuzz, AnyBytesMakeAnEngine) {
    const TempDir folder;
    Strings lines = {"", "//", "// x", " x", "\tx", "\r", "/", ".", "ez dago", folder.path("ez")};
    for (const char* name : {"eumorfo.sare", "hp.sare", "abPG.tab", "ab.tab", "PG.tab",
                             "zenbakiak.x.y", "lab.SARE8", "cd", "ef.", "gh.tab", "ij.tab",
                             "kl.tab", "mn.tab"}) {
        lines.push_back(folder.write(name, "0\ta\t0\nfinal: 0\n"));
    }
    lines.push_back(folder.write("a.tab", "final: 0\n"));
    lines.push_back(folder.write("zaborra.sare", std::string("\0\377\t\n9\t:", 8)));

    Hits hits;
    for (unsigned seed = FIRST_SEED; seed < FIRST_SEED + INPUTS; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomBytes random(seed);
        std::string text;
        for (unsigned n = random.below(16); n > 0; --n) {
            std::string line = lines[random.below(static_cast<unsigned>(lines.size()))];
            if (line == folder.path("a.tab") && !random.once_in(3)) continue;
            if (random.once_in(16)) line = random.mutated(line, "/. \r\tP");
            if (random.once_in(40)) line = random.raw(30);
            text += line + (random.once_in(6) ? "\r\n" : "\n");
        }
        if (random.once_in(4) && !text.empty()) text.pop_back();
        std::replace(text.begin(), text.end(), '\0', '0');  // a path can't hold a NUL

        const PlainConfiguration expected(text);
        const std::string path = write_anew(folder, "sareak.cfg", text);
        std::set<std::string> keys;
        bool short_key = false;
        const std::string output = stdout_of([&] {
            Lemara engine;
            engine.konfigurazioa = path;
            try {
                engine.kargatu_sareak();
            } catch (const std::out_of_range& error) {
                short_key =
                    std::string(error.what()).find("basic_string::substr") != std::string::npos;
            }
            for (const auto& [key, network] : engine.sareak) keys.insert(key);
            if (seed % 10 > 0) return;  // what questions build takes longer than loading
            engine.isValid("a", true);
            engine.isValid("a b", false);
        });
        ASSERT_EQ(output, expected.output + "Taulak husten...\n");
        ASSERT_EQ(keys, expected.keys);
        ASSERT_EQ(short_key, expected.short_key);
        if (short_key) ++hits["a short key"];
        if (keys.size() > 1) ++hits["several networks"];
        if (output.find("topea") != std::string::npos) ++hits["too many networks"];
        if (output.find("Ezin da") != std::string::npos) ++hits["a missing file"];
        if (!keys.empty() && keys.begin()->empty()) ++hits["the empty key"];
    }
    expect_hits(hits, {"a short key", "several networks", "too many networks", "a missing file",
                       "the empty key"});
}
