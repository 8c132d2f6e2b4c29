// Loading a table from its text, in a file or in memory.
//
// Arcs name states by number, so a first pass counts the states and a second one fills
// them. The two forms of the text differ at their line ends and in what they do with a
// broken line; both differences are kept. Tests: tests/tables/Taula_load_test.cpp.
#include <sys/types.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "Taula.h"
#include "analysis/messages.h"
#include "analysis/text_pieces.h"
#include "tables/forms.h"
#include "tables/image.h"
#include "tables/inside.h"
#include "tables/load.h"
#include "tables/token_walk.h"

using lemara::starts_with;

namespace {

constexpr int END_OF_WORD = -1;  // target of the pseudo-arc that a final record makes

// Bytes that one read of a pass takes at most; a longer line is read as several.
constexpr std::size_t COUNT_READ = 997;
constexpr std::size_t LOAD_READ = 9997;

constexpr std::size_t SHORTEST_RECORD = 5;  // bytes of "0\ta\t1"

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Reads up to `most` bytes or through a line feed. False at the end of the file.
bool read_line(std::FILE* file, std::size_t most, std::string& line) {
    line.clear();
    int c = EOF;
    while (line.size() < most && (c = std::getc(file)) != EOF) {
        line += static_cast<char>(c);
        if (c == '\n') break;
    }
    return !line.empty();
}

/// The number at the start of `text`, as atol reads it: blanks, a sign, digits; 0 for
/// anything else. A number beyond an int counts as the largest or smallest one.
int number_at(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r')))
        ++i;
    const bool negative = i < text.size() && text[i] == '-';
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    long value = 0;
    for (; i < text.size() && lemara::is_digit(text[i]); ++i) {
        value = std::min(value * 10 + (text[i] - '0'), 1L + INT_MAX);
    }
    return static_cast<int>(negative ? -value : std::min<long>(value, INT_MAX));
}

std::string_view from(std::string_view text, std::size_t index) {
    return index < text.size() ? text.substr(index) : std::string_view();
}

/// True for a final record; `state` is then its state.
bool read_final(std::string_view line, int& state) {
    if (starts_with(line, "final: ")) {
        state = number_at(from(line, 7));
        return true;
    }
    if (starts_with(line, "final")) {
        state = number_at(from(line, 6));
        return true;
    }
    return false;
}

/// The counting pass: the number on the last counted line, plus one.
class StateCounter {
public:
    void read(std::string_view line) {
        int state = 0;
        if (read_final(line, state)) {
            last_ = state;
        } else if (!line.empty() && lemara::is_digit(line[0])) {
            last_ = number_at(line);
        }
    }

    // Kept on purpose: not the highest number but the last one. The last record of a
    // table names its highest state.
    int count() const { return last_ == INT_MAX ? INT_MAX : last_ + 1; }

private:
    int last_ = 0;
};

/// Splits a symbol field at its first ":".
void split_symbols(std::string_view field, std::string& upper, std::string& lower) {
    const std::size_t colon = field.find(':');
    if (colon == std::string_view::npos || field.size() < 2) {
        upper = lower = field;
        return;
    }
    // Kept on purpose: "<>" is epsilon on the lower side alone. On the upper side the two
    // characters stay, and analyses show them.
    upper = field.substr(0, colon);
    lower = field.substr(colon + 1);
    if (lower == "<>") lower.clear();
}

struct Record {
    int source = 0;
    bool final = false;
    int target = END_OF_WORD;
    std::string upper, lower;
    bool whole = true;  ///< false for an arc record with fewer than two TABs
};

Record read_record(std::string_view line) {
    Record record;
    if (read_final(line, record.source)) {
        record.final = true;
        return record;
    }
    const std::size_t first = line.find('\t');
    const std::size_t second =
        first == std::string_view::npos ? first : line.find('\t', first + 1);
    record.whole = second != std::string_view::npos;
    record.source = number_at(line.substr(0, first));
    record.target = 0;
    if (first != std::string_view::npos) {
        split_symbols(line.substr(first + 1, second - first - 1), record.upper,
                      record.lower);
    }
    if (record.whole) record.target = number_at(line.substr(second + 1));
    return record;
}

void add_record(Taula& table, const Record& record) {
    if (record.source < 0 ||
        static_cast<std::size_t>(record.source) >= table.egoerak.size()) {
        return;
    }
    // Kept on purpose: every record writes the state's `final`, so an arc behind a final
    // record leaves it false. The pseudo-arc alone lets a word end.
    Egoera* state = table.egoerak[static_cast<std::size_t>(record.source)];
    if (state == nullptr) return;
    state->final = record.final;
    state->zubiak.push_back(new Zubia(record.target, record.upper, record.lower));
}

/// Ends a load: the searches are to see what it brought.
void finish(const Taula& table) {
    lemara::note_graph_change();
    lemara::packed_form(table);
}

/// Appends `count` empty states; fewer if a text of that length can't mean so many.
void add_states(Taula& table, long count, std::size_t bytes) {
    const long most = std::max(lemara::TRUSTED_STATES,
                               static_cast<long>(std::min<std::size_t>(bytes, INT_MAX)));
    const long made = std::min(count, most);
    for (long i = 0; i < made; ++i) table.egoerak.push_back(new Egoera());
}

std::size_t size_of(std::FILE* file) {
    if (std::fseek(file, 0, SEEK_END) != 0) return 0;
    const long size = std::ftell(file);
    std::rewind(file);
    return size > 0 ? static_cast<std::size_t>(size) : 0;
}

std::string read_all(std::FILE* file) {
    std::string bytes;
    char block[65536];
    std::size_t n = 0;
    while ((n = std::fread(block, 1, sizeof block, file)) > 0) bytes.append(block, n);
    return bytes;
}

/// A byte stream that both directions of the cipher share.
std::string with_key_stream(const std::string& text) {
    std::string result = text;
    unsigned int key = 0x5A2E8u;
    for (char& c : result) {
        key = key * 1664525u + 1013904223u;
        c = static_cast<char>(static_cast<unsigned char>(c) ^ (key >> 24));
    }
    return result;
}

}  // namespace

std::string crypt_encode(const std::string& text) { return with_key_stream(text); }

std::string crypt_decode(const std::string& text) { return with_key_stream(text); }

/// Loads the file if it is a compiled table; false if it is something else. A damaged
/// image brings nothing.
bool Taula::load_image() {
    bool compiled = false;
    auto image = lemara::Image::open(fitxategia, compiled);
    if (image == nullptr) return compiled;
    if (lemara::packed_form(*this).state_count == 0) {
        formak->use(std::move(image));
        return true;
    }
    // Behind what is there already: states at the end, arcs to the states of their
    // number.
    Taula loaded;
    loaded.formak->use(std::move(image));
    loaded.unfold();
    unfold();
    const std::size_t count = loaded.egoerak.size();
    for (std::size_t i = 0; i < count; ++i) egoerak.push_back(new Egoera());
    for (std::size_t i = 0; i < count; ++i) {
        if (egoerak[i] == nullptr) continue;
        auto& arcs = loaded.egoerak[i]->zubiak;
        if (!arcs.empty()) egoerak[i]->final = loaded.egoerak[i]->final;
        egoerak[i]->zubiak.insert(egoerak[i]->zubiak.end(), arcs.begin(), arcs.end());
        arcs.clear();
    }
    finish(*this);
    return true;
}

void Taula::kargatu() {
    if (load_image()) return;
    if (lemara::contains(fitxategia, "SARE8")) {
        kargatu_enkriptatua();
    } else {
        kargatu_taula();
    }
}

bool lemara::load_table(Taula& table) {
    if (TableInside::load_image(table)) return packed_form(table).state_count > 0;
    if (!contains(table.fitxategia, "SARE8")) return TableInside::load_text_file(table);
    table.kargatu_enkriptatua();
    return !table.egoerak.empty();
}

void Taula::kargatu_enkriptatua() {
    const File file(std::fopen(fitxategia.c_str(), "rb"));
    if (!file) return;
    const std::string text = crypt_decode(read_all(file.get()));
    kargatu_taula(text.c_str(), kontataulaSARE8(text.c_str()));
}

void Taula::kargatu_taula() {
    if (load_text_file()) return;
    lemara::messages() << fitxategia << " ez da existitzen.\n" << std::flush;
    std::exit(0);
}

/// False, with a message, if the file can't be opened.
bool Taula::load_text_file() {
    const int count = kontataulaSFST(fitxategia.c_str());
    const File file(std::fopen(fitxategia.c_str(), "r"));
    if (!file) return false;
    unfold();
    add_states(*this, count, size_of(file.get()));
    std::string line;
    while (read_line(file.get(), LOAD_READ, line)) {
        std::string_view text = lemara::up_to_nul(line);
        if (!text.empty() && text.back() == '\n') text.remove_suffix(1);
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        if (text.size() >= SHORTEST_RECORD) add_record(*this, read_record(text));
    }
    finish(*this);
    return true;
}

void Taula::kargatu_taula(const char* testua, long kopurua) {
    std::string_view rest = lemara::text_of(testua);
    if (kopurua > 0) {
        egoerak.reserve(egoerak.size() + static_cast<std::size_t>(
                                             std::min(kopurua, lemara::TRUSTED_STATES)));
    }
    unfold();
    add_states(*this, kopurua, rest.size());
    // Kept on purpose: what stands behind the last line feed is dropped, and an arc
    // record with a TAB missing ends the load. The file form does neither.
    for (std::size_t end = rest.find('\n'); end != std::string_view::npos;
         end = rest.find('\n')) {
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end + 1);
        if (line.size() < SHORTEST_RECORD) continue;
        const Record record = read_record(line);
        if (!record.whole) break;
        add_record(*this, record);
    }
    finish(*this);
}

int Taula::kontataulaSFST(const char* path) const {
    const File file(path == nullptr ? nullptr : std::fopen(path, "r"));
    if (!file) {
        lemara::messages() << '[' << (path == nullptr ? "" : path)
                           << " ]  kontatzeko taula ezin da ireki!" << std::flush;
        return -1;
    }
    StateCounter counter;
    std::string line;
    while (read_line(file.get(), COUNT_READ, line)) counter.read(lemara::up_to_nul(line));
    return counter.count();
}

int Taula::kontataulaSARE8(const char* testua) const {
    std::string_view rest = lemara::text_of(testua);
    StateCounter counter;
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        counter.read(rest.substr(0, end));
        if (end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
    return counter.count();
}
