// Six ways in which a word goes wrong, each undone by a generator of its own. The tables are
// the checker's knowledge of how Basque is misspelt. Tests: tests/proposals/.
#include "proposamenak.h"

#include <string_view>
#include <utility>

#include "analysis/text_pieces.h"
#include "karaktereak.h"

namespace {

using Candidates = std::vector<std::string>;

struct Rewrite {
    std::string_view key, replacement;
};

constexpr std::size_t SHORTEST = 3;  // bytes of the shortest candidate that is kept

// A small letter and its capital.
constexpr Rewrite REPLACEMAI[] = {
    {"a", "A"}, {"b", "B"}, {"c", "C"}, {"d", "D"}, {"e", "E"}, {"f", "F"}, {"g", "G"},
    {"h", "H"}, {"i", "I"}, {"j", "J"}, {"k", "K"}, {"l", "L"}, {"m", "M"}, {"n", "N"},
    {"\361", "\321"}, {"o", "O"}, {"p", "P"}, {"q", "Q"}, {"r", "R"}, {"s", "S"},
    {"t", "T"}, {"u", "U"}, {"v", "V"}, {"w", "W"}, {"x", "X"}, {"y", "Y"}, {"z", "Z"},
};

// Letters to insert, then the same letters to delete. The order of the rows is the order of
// the candidates at one position. "c", "h", "q", "v", "w", "y" and n-tilde are left out: an
// "h" too many or too few is in REPLACE.
constexpr Rewrite REPLACE2[] = {
    {"", "a"}, {"", "b"}, {"", "d"}, {"", "e"}, {"", "f"}, {"", "g"}, {"", "i"},
    {"", "j"}, {"", "k"}, {"", "l"}, {"", "m"}, {"", "n"}, {"", "o"}, {"", "p"},
    {"", "r"}, {"", "s"}, {"", "t"}, {"", "u"}, {"", "x"}, {"", "z"},
    {"a", ""}, {"b", ""}, {"d", ""}, {"e", ""}, {"f", ""}, {"g", ""}, {"i", ""},
    {"j", ""}, {"k", ""}, {"l", ""}, {"m", ""}, {"n", ""}, {"o", ""}, {"p", ""},
    {"r", ""}, {"s", ""}, {"t", ""}, {"u", ""}, {"x", ""}, {"z", ""},
};

// The order of the rows is the order of the candidates at one position.
constexpr Rewrite REPLACE[] = {
    {"agaz", "arekin"},
    {"tako", "tzat"},
    {"arekila", "arekin"},
    {"ikan", "ik"},
    {"rantza", "rantz"},
    {"runtz", "rantz"},
    {"runtza", "rantz"},
    {"iya", "ia"},
    {"ph", "f"},
    {"mm", "nm"},
    {"aje", "ai"},
    {"ai", "aje"},
    {"ska", "xka"},
    {"mendu", "mentu"},
    {"mentu", "mendu"},
    {"dade", "tate"},
    {"tate", "dade"},
    {"\374", "u"},
    {"\341", "a"},
    {"\351", "e"},
    {"\355", "i"},
    {"\363", "o"},
    {"\372", "u"},
    {"ixe", "ia"},
    {"a", "aha"},
    {"e", "ehe"},
    {"i", "ihi"},
    {"o", "oho"},
    {"u", "uhu"},
    {"rrr", "rr"},
    {"aiten", "aten"},
    {"pen", "men"},
    {"men", "pen"},
    {"tar", "ar"},
    {"tiar", "tar"},
    {"ber", "bir"},
    {"kotz", "ko"},
    {"urgintza", "uragintza"},
    {"kalde", "alde"},
    {"eri", "ei"},
    {"elgar", "elkar"},
    {"untzi", "ontzi"},
    {"nun", "non"},
    {"sinis", "sines"},
    {"eraz", "araz"},
    {"kela", "keela"},
    {"ken", "keen"},
    {"ian", "ean"},
    {"menpe", "mende"},
    {"untz", "antz"},
    {"ixe", "ia"},  // Kept on purpose: stands twice, so its candidates come out twice.
    {"oa", "ua"},
    {"ua", "oa"},
    {"etaz", "ez"},
    {"askozaz", "askoz"},
    {"zione", "zio"},
    {"zoin", "zein"},
    {"keri", "keria"},
    {"zoin", "zein"},  // Kept on purpose: stands twice, so its candidates come out twice.
    {"ilari", "ialari"},
    {"bako", "gabeko"},
    {"gaitz", "kaitz"},
    {"kaitz", "gaitz"},
    {"ztaraz", "tzaraz"},
    {"ztezin", "zezin"},
    {"stezin", "sezin"},
    {"teen", "ten"},
    {"sterraz", "tserraz"},
    {"igintza", "iagintza"},
    {"ibi", "iba"},
    {"imi", "ima"},
    {"kera", "kara"},
    {"kera", "era"},
    {"kera", "keta"},
    {"tar", "tiar"},
    {"tiar", "tar"},  // Kept on purpose: stands twice, so its candidates come out twice.
    {"lari", "ari"},
    {"gune", "une"},
    {"tar", "ar"},  // Kept on purpose: stands twice, so its candidates come out twice.
    {"ue", "oa"},
    {"ll", "l"},
    {"tt", "t"},
    {"\361", "n"},
    {"cc", "tz"},
    {"tutata", "tuta"},
    {"rarte", "ra arte"},
    {"tz", "z"},
    {"tx", "x"},
    {"ts", "s"},
    {"mb", "nb"},
    {"mp", "np"},
    {"nm", "mm"},
    {"ll", "il"},
    {"il", "ll"},
    {"in", "\361"},
    {"\361", "in"},
    {"z", "x"},
    {"s", "z"},
    {"s", "x"},
    {"x", "s"},
    {"x", "z"},
    {"z", "tz"},
    {"x", "tx"},
    {"s", "ts"},
    {"", "h"},
    {"h", ""},
    {"u", "o"},
    {"o", "u"},
    {"b", "p"},
    {"d", "t"},
    {"g", "k"},
    {"p", "b"},
    {"t", "d"},
    {"k", "g"},
    {"x", "j"},
    {"j", "x"},
    {"j", "g"},
    {"g", "j"},
    {"v", "b"},
    {"c", "tz"},
    {"c", "z"},
};

constexpr std::string_view ALPHABET = "aeioubcdfghjklmnpqrstvwxyz";  // has no n-tilde

void add(Candidates& list, std::string candidate) {
    if (candidate.size() >= SHORTEST) list.push_back(std::move(candidate));
}

/// Appends a candidate for each row whose key stands at `p`.
template <std::size_t N>
void rewrite_at(const std::string& word, std::size_t p, const Rewrite (&table)[N],
                Candidates& list) {
    for (const Rewrite& row : table) {
        if (word.compare(p, row.key.size(), row.key) != 0) continue;
        std::string candidate = word;
        candidate.replace(p, row.key.size(), row.replacement);
        add(list, std::move(candidate));
    }
}

std::string folded(const char* word) { return tolowercase(std::string(lemara::text_of(word))); }

}  // namespace

std::vector<std::string> sortu_proposamen_hautagaiak_MAI(const char* hitza) {
    const std::string word = folded(hitza);
    Candidates list;
    for (const Rewrite& row : REPLACEMAI) {
        if (!lemara::starts_with(word, row.key)) continue;
        std::string candidate = word;
        candidate.replace(0, row.key.size(), row.replacement);
        add(list, candidate);
        // All in capitals, and of any length.
        list.push_back(touppercase(std::move(candidate)));
        break;
    }
    return list;
}

std::vector<std::string> sortu_proposamen_hautagaiak_DISLEXIA(const char* hitza) {
    const std::string word(lemara::text_of(hitza));
    Candidates list;
    // Equal neighbours are exchanged as well, and give the word itself.
    for (std::size_t i = 1; i < word.size(); ++i) {
        list.push_back(word);
        std::swap(list.back()[i - 1], list.back()[i]);
    }
    return list;
}

std::vector<std::string> sortu_proposamen_hautagaiak_REP(const char* hitza) {
    const std::string word = folded(hitza);
    Candidates list;
    // Kept on purpose: the end of the word is no position here, so no "h" is added there.
    for (std::size_t p = 0; p < word.size(); ++p) rewrite_at(word, p, REPLACE, list);
    return list;
}

std::vector<std::string> sortu_proposamen_hautagaiak_MARRA_HUTSUNE(const char* hitza) {
    const std::string word = folded(hitza);
    Candidates list;
    // Kept on purpose: words that don't begin with a percent sign are not split.
    if (word.size() < 2 || word[0] != '%') return list;
    for (std::size_t i = 1; i < word.size(); ++i) {
        add(list, word.substr(0, i) + ' ' + word.substr(i));
    }
    return list;
}

std::vector<std::string> sortu_proposamen_hautagaiak_REP2(const char* hitza) {
    const std::string word = folded(hitza);
    Candidates list;
    for (std::size_t p = 0; p <= word.size(); ++p) rewrite_at(word, p, REPLACE2, list);
    return list;
}

std::vector<std::string> sortu_proposamen_hautagaiak_TRY(const char* hitza) {
    const std::string word(lemara::text_of(hitza));
    Candidates list;
    for (std::size_t i = 0; i < word.size(); ++i) {
        for (const char letter : ALPHABET) {
            if (word[i] == letter) continue;
            std::string candidate = word;
            candidate[i] = letter;
            add(list, std::move(candidate));
        }
    }
    return list;
}

std::map<int, std::vector<std::string>> proposamen_hautagaiak_lortu(std::string hitza) {
    const char* word = hitza.c_str();
    return {
        {1, sortu_proposamen_hautagaiak_MAI(word)},
        {2, sortu_proposamen_hautagaiak_DISLEXIA(word)},
        {3, sortu_proposamen_hautagaiak_REP(word)},
        {4, sortu_proposamen_hautagaiak_MARRA_HUTSUNE(word)},
        {5, sortu_proposamen_hautagaiak_REP2(word)},
        {6, sortu_proposamen_hautagaiak_TRY(word)},
    };
}
