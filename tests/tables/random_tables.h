// Small random tables as text, with words and targets that reach into them.
//
// Symbols are chosen so that every rule of a search is met: tags that filters ask for, whole
// and split over two symbols, empty sides, several bytes, capitals, Latin-1.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "Taula.h"
#include "karaktereak.h"
#include "plain_search.h"

namespace lemara::test {

struct SymbolPair {
    std::string upper, lower;  // a lower "<>" is empty
};

inline const std::vector<SymbolPair> LETTER_SYMBOLS = {
    {"a", "a"},   {"b", "b"},   {"a", "b"},   {"A", "a"},  {"B", "b"},   {"a", "<>"},
    {"b", "<>"},  {"", "a"},    {"", "b"},    {"A", "<>"}, {"ab", "ab"}, {"aB", "ab"},
    {"Ab", "ab"}, {"ab", "<>"}, {"", "ab"},   {"ba", "b"}, {"x1", "a"},  {"+", "<>"},
    {"<>", "a"},  {"<>", "<>"}, {"\361", "\361"}, {"", "<>"}, {"aba", "aba"}, {"b ", "b "},
    {"x0", "b"},
};

inline const std::vector<SymbolPair> TAG_SYMBOLS = {
    {"<IZE>", "<>"},    {"<IZE>", "a"},  {"<ABS>", "a"},     {"<0Q>", "<>"},   {"<0Q>", "b"},
    {"<1O>", "<>"},     {"<1O>", "a"},   {"<PSP>", "<>"},    {"<PSP>", "a"},   {"<MAT>", "<>"},
    {"<ELI_IZE>", "<>"}, {"<ELI_IZE>", "b"}, {"<ADL>", "<>"}, {"<Rare>", "<>"}, {"ba<AUR>", "b"},
    {"[h=a]", "<>"},    {"[h=b]", "<>"}, {"[h=ab]", "<>"},   {"[h=Ab]", "a"},  {"[e=a]", "<>"},
    {"[e=b]", "b"},     {"[s=X]", "<>"}, {"<PIB>", "<>"},    {"<LIB>", "a"},   {"<IZB>", "<>"},
    {"<SNB>", "<>"},    {"<SIG>", "<>"}, {"bat<IZE>", "b"},  {"bat ere<", "<>"}, {"<>", "<>"},
    {"be<IZE>", "b"},   {"<hp1>", "<>"}, {"<PIB><MAT>", "b"},
};

/// Tags in two halves, each a symbol of its own.
inline const std::vector<std::pair<std::string, std::string>> SPLIT_TAGS = {
    {"<PI", "B>"},  {"<", "LIB>"},  {"<IZ", "B>"}, {"<SN", "B>"},   {"<S", "IG>"},
    {"<PS", "P>"},  {"<MA", "T>"},  {"[h", "=a]"}, {"[e=", "ab]"},  {"<ELI_", "IZE>"},
    {"ba<", "AUR>"}, {"<AD", "L>"}, {"<Ra", "re>"}, {"<0", "Q>"},
};

class RandomTables {
public:
    explicit RandomTables(unsigned seed) : engine_(seed) {}

    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    bool once_in(int n) { return below(n) == 0; }
    std::size_t up_to(std::size_t size) { return engine_() % (size + 1); }

    template <class Row>
    const Row& any_of(const std::vector<Row>& rows) {
        return rows[static_cast<std::size_t>(below(static_cast<int>(rows.size())))];
    }

    /// Few states; most arcs lead onwards, some back, some nowhere.
    std::string table() {
        const int states = 2 + below(6);
        const bool acyclic = once_in(2);
        int extra = states;  // states between the two halves of a tag
        std::string text, behind;
        for (int s = 0; s < states; ++s) {
            for (int a = 1 + below(4); a > 0; --a) {
                int target = s + 1 < states ? s + 1 + below(states - s - 1) : s;
                if (!acyclic && once_in(10)) target = below(states);
                if (s + 1 == states && acyclic) target = states + 40;
                if (once_in(60)) target = states + 40 + below(3);
                if (once_in(8)) {
                    const auto& halves = any_of(SPLIT_TAGS);
                    const std::string lower = once_in(2) ? "<>" : once_in(2) ? "a" : "b";
                    text += arc(s, {halves.first, lower}, extra);
                    behind += arc(extra++, {halves.second, "<>"}, target);
                    continue;
                }
                const bool letter = below(states) >= s;
                text += arc(s, any_of(letter ? LETTER_SYMBOLS : TAG_SYMBOLS), target);
            }
            if (s == states - 1 || once_in(4)) text += final_record(s);
        }
        // The last record names the highest state.
        return text + behind + final_record(extra == states ? states - 1 : extra - 1);
    }

    /// Lower and upper side of one random path, as a walk and a generation write them.
    SymbolPair path(const Taula& table) {
        SymbolPair texts;
        int state = 0;
        for (int length = 0; length < 10; ++length) {
            const Egoera* const here = plain_state(table, state);
            if (here == nullptr || here->zubiak.empty()) break;
            const Zubia* const taken = any_of(here->zubiak);
            if (taken == nullptr) break;
            const std::string& upper = taken->goiko_ikurra;
            const bool digit = upper.size() > 1 && (upper[1] == '0' || upper[1] == '1');
            if (upper != "<>" && (!digit || once_in(8))) texts.upper += upper;
            texts.lower += taken->beheko_ikurra;
            state = taken->hurrengo_egoera;
        }
        return texts;
    }

    std::string token(const Taula& table) {
        std::string token = path(table).lower;
        if (once_in(6)) {
            token.clear();
            for (int n = below(6); n > 0; --n) token += "abAB1\321"[below(6)];
        }
        const int mode = below(4);
        if (mode == 1) token = touppercase(token);
        if (mode == 2 && !token.empty()) token = touppercase(token.substr(0, 1)) + token.substr(1);
        if (once_in(12)) token += 'a';
        if (once_in(40)) token.insert(up_to(token.size()), 1, '\0');
        return token;
    }

    std::string target(const Taula& table) {
        std::string target = path(table).upper;
        if (once_in(3)) target.resize(up_to(target.size()));
        if (once_in(10)) target += any_of(TAG_SYMBOLS).upper;
        return target;
    }

private:
    static std::string arc(int from, const SymbolPair& symbols, int to) {
        return std::to_string(from) + '\t' + symbols.upper + ':' + symbols.lower + '\t' +
               std::to_string(to) + '\n';
    }
    static std::string final_record(int state) {
        return "final: " + std::to_string(state) + '\n';
    }

    std::mt19937 engine_;
};

}  // namespace lemara::test
