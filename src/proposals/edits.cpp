// The tables of known misspellings. Tests: tests/proposals/.
#include "proposals/edits.h"

#include <array>

namespace lemara {

// A small letter and its capital.
const Rewrite REPLACEMAI[] = {
    {"a", "A"}, {"b", "B"}, {"c", "C"},       {"d", "D"}, {"e", "E"}, {"f", "F"},
    {"g", "G"}, {"h", "H"}, {"i", "I"},       {"j", "J"}, {"k", "K"}, {"l", "L"},
    {"m", "M"}, {"n", "N"}, {"\361", "\321"}, {"o", "O"}, {"p", "P"}, {"q", "Q"},
    {"r", "R"}, {"s", "S"}, {"t", "T"},       {"u", "U"}, {"v", "V"}, {"w", "W"},
    {"x", "X"}, {"y", "Y"}, {"z", "Z"},
};

// Letters to insert, then the same letters to delete. The order of the rows is the order
// of the candidates at one position. "c", "h", "q", "v", "w", "y" and n-tilde are left
// out: an "h" too many or too few is in REPLACE.
const Rewrite REPLACE2[] = {
    {"", "a"}, {"", "b"}, {"", "d"}, {"", "e"}, {"", "f"}, {"", "g"}, {"", "i"},
    {"", "j"}, {"", "k"}, {"", "l"}, {"", "m"}, {"", "n"}, {"", "o"}, {"", "p"},
    {"", "r"}, {"", "s"}, {"", "t"}, {"", "u"}, {"", "x"}, {"", "z"}, {"a", ""},
    {"b", ""}, {"d", ""}, {"e", ""}, {"f", ""}, {"g", ""}, {"i", ""}, {"j", ""},
    {"k", ""}, {"l", ""}, {"m", ""}, {"n", ""}, {"o", ""}, {"p", ""}, {"r", ""},
    {"s", ""}, {"t", ""}, {"u", ""}, {"x", ""}, {"z", ""},
};

// The order of the rows is the order of the candidates at one position.
const Rewrite REPLACE[] = {
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

namespace {

/// For each byte the rows of REPLACE whose key begins with it, and those with an empty
/// key, in the order of the table.
std::array<std::vector<const Rewrite*>, 256> rows_by_byte() {
    std::array<std::vector<const Rewrite*>, 256> rows;
    for (const Rewrite& row : REPLACE) {
        for (std::size_t byte = 0; byte < rows.size(); ++byte) {
            if (row.key.empty() || static_cast<unsigned char>(row.key[0]) == byte) {
                rows[byte].push_back(&row);
            }
        }
    }
    return rows;
}

}  // namespace

const std::vector<const Rewrite*>& rows_of_replace(char first) {
    static const std::array<std::vector<const Rewrite*>, 256> rows = rows_by_byte();
    return rows[static_cast<unsigned char>(first)];
}

std::string applied(const std::string& word, const Edit& edit) {
    std::string result;
    result.reserve(word.size() - edit.removed + edit.inserted.size());
    result.append(word, 0, edit.at);
    result.append(edit.inserted);
    result.append(word, edit.at + edit.removed, std::string::npos);
    return result;
}

}  // namespace lemara
