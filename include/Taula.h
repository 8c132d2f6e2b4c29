#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Analisia.h"
#include "Egoera.h"

namespace lemara {

struct ArcsByState;
class TableForms;
struct TableInside;

/// Bytes of a token that the analysis walk reads.
constexpr std::size_t WALK_LIMIT = 999;

/// Bytes of a lemma and its tags that form generation takes as its target.
constexpr std::size_t TARGET_LIMIT = 1000;

/// States that a table may claim without having a byte of text for each. A table that
/// claims more than this and more than it has bytes is damaged, and gets no more than the
/// larger of the two.
constexpr long TRUSTED_STATES = 65536;

/// Work that one search may do: taking an arc costs 1 (in a generation a unit more for
/// every 64 bytes of the upper text so far), a look back for a cycle 1 for each state
/// passed, a result 64, its length in bytes, and in an analysis its number of arcs. A
/// search that has spent it returns what it has found. Only tables with paths beyond
/// number come near it.
constexpr std::int64_t SEARCH_BUDGET = std::int64_t{1} << 26;

/// Bytes of upper or lower text that one path of a search may gather; a longer path is
/// given up. No path of a real table comes near it.
constexpr std::size_t PATH_LIMIT = std::size_t{1} << 20;

}  // namespace lemara

/// Kept for hosts that link to it; nothing reads or writes it.
[[gnu::visibility("default")]] extern long file_length;

/// The enciphered form of a table's text, for files whose name holds "SARE8". It hides a
/// table from a casual look and protects nothing: the key is in this library. Any bytes
/// round-trip; the length does not change. Source: our own, each byte is XORed with the
/// high byte of a 32-bit linear congruential sequence (1664525, 1013904223) with a fixed
/// start.
[[gnu::visibility("default")]] std::string crypt_encode(const std::string& text);

/// The text that crypt_encode enciphered.
[[gnu::visibility("default")]] std::string crypt_decode(const std::string& text);

/// A finite-state transducer: a vector of states, each with its arcs.
///
/// State 0 is the start of every search. Arcs keep their order in the table file and are
/// tried in that order, so the file decides the order of all results.
///
/// Text and symbols are 8-bit Latin-1; lengths are in bytes. Loading fills the table;
/// after that any number of threads may search it at once.
///
/// Searches run on a packed form of the graph, which is made when a table is loaded. It
/// is made anew by the first search behind an operation that changes the graph:
/// kargatu..., addZubiaTaulan, addEgoera, deleteEgoerak, Egoera::addZubia,
/// Egoera::deleteZubiak. A host that writes into the fields of states and arcs itself
/// does so before the first search, or calls one of these afterwards.
///
/// No table can harm a search, whatever its bytes. An arc whose target does not exist, a
/// null state and a null arc are dead ends. A search does not go on from a state again on
/// one path without having made progress in between (in the token, or in the target of a
/// generation; behind the end of the target there is no more progress), so cycles of
/// empty symbols come to an end; and lemara::SEARCH_BUDGET bounds its work.
///
/// The text form of a table has one record a line: "SOURCE\tSYMBOLS\tTARGET" for an arc,
/// or "final: STATE" (also "final" and any one character, then the number) for a state in
/// which a word may end. SYMBOLS is "upper:lower", or one text for both sides; a lower
/// side of "<>" is empty. The last record names the highest state.
class [[gnu::visibility("default")]] Taula {
public:
    std::string fitxategia;        ///< path of the table file; empty if there is none
    std::vector<Egoera*> egoerak;  ///< owned, with their arcs; the index is the number
    std::string hiztegia;          ///< name of the network; copied into every Analisia

    Taula();

    /// Stores the path and loads at once, as kargatu does.
    explicit Taula(std::string fitxategia);

    /// Stores the path and makes `kopurua` null slots in `egoerak`; loads nothing.
    Taula(std::string fitxategia, int kopurua);

    Taula(const Taula&) = delete;  // two tables would own the same states
    Taula& operator=(const Taula&) = delete;
    virtual ~Taula();

    /// Loads the file `fitxategia`, behind what the table already holds: a second call
    /// appends new empty states and adds every arc to the old ones once more. A path that
    /// contains "SARE8" is loaded by kargatu_enkriptatua, any other by kargatu_taula; but
    /// a file that begins as a compiled table is one (see lemara/compiled_table.h).
    void kargatu();

    /// Loads the enciphered file `fitxategia`. A file that can't be opened leaves the
    /// table as it is, in silence.
    void kargatu_enkriptatua();

    /// Loads the text file `fitxategia`.
    ///
    /// Errors: a file that can't be opened ends the process with status 0, after two
    /// messages on standard output ("[...]  kontatzeko taula ezin da ireki!" and "... ez
    /// da existitzen."); a caller that wants to go on asks file_exists first. Malformed
    /// lines are not reported: a number or field that is missing counts as 0 or empty,
    /// lines of fewer than 5 bytes and records of states that don't exist are passed
    /// over, and a NUL ends the text of its line.
    void kargatu_taula();

    /// Makes `kopurua` states and loads the NUL-terminated text `testua`. Unlike the file
    /// form, a last line with no line feed is dropped, a "\r" stays in its line, and an
    /// arc record with fewer than two TABs ends the load.
    void kargatu_taula(const char* testua, long kopurua);

    /// How many states the table file needs: the number on its last counted line plus
    /// one. 1 for a file with no such line; -1, with a message on standard output, for a
    /// file that can't be opened.
    int kontataulaSFST(const char* fitxategia) const;

    /// The same for a table's text in memory, without a message.
    int kontataulaSARE8(const char* testua) const;

    /// Sets `final` of a state and appends an arc to it; takes the arc over. A state that
    /// doesn't exist is left alone and the arc is freed.
    void addZubiaTaulan(int egoera, bool final, Zubia* zubia);

    /// Appends a state and takes it over.
    void addEgoera(Egoera * egoera);

    /// Deletes every state with its arcs. The vector keeps its size; its slots become
    /// null.
    void deleteEgoerak();

    /// Writes one state, or the whole table, to standard output, for people. A state that
    /// doesn't exist writes nothing.
    void printEgoera(int egoera) const;
    void printTaula() const;  ///< the whole table; see printEgoera

    /// The analyses of `tokena`, in the order in which the walk finds them; empty if no
    /// path accepts it. Equal analyses are not removed.
    ///
    /// The walk reads the first 999 bytes, lowered, and stops at a NUL. The case class of
    /// each record, and the test against its `hobe` and `erabili`, see the whole token as
    /// it was typed: a deviant form whose better form is what the user wrote is no
    /// analysis.
    ///
    /// Errors: none. Cost: grows with the arcs that match.
    std::vector<Analisia> analizatuTokena(std::string tokena) const;

    /// The step behind analizatuTokena: appends to `emaitzak` the analysis strings, owned
    /// by the caller, of all paths from `egoera` that read `hondarra` (lowered text),
    /// each behind the text of `irteera`. `tokena` is the token as typed. The texts are
    /// read and left as they are.
    std::vector<std::string*>& birbilaTokena(
        const char* tokena, std::vector<std::string*>& emaitzak, int egoera,
        const char* hondarra, char* irteera) const;

    /// The forms whose analysis begins with `lema` followed by `etiketak`, in the order
    /// of the search: `forma` holds the form, `analisia` the upper side without quality
    /// tags, opinion tags and the marker "<>".
    ///
    /// A complete path that is shorter than the target, but agrees with it, is a result
    /// too. With `etiketanGelditu` each path is cut at its first tag. Elided nouns
    /// ("<ELI_IZE"), compound postpositions ("<PSP"), "ba<AUR>", auxiliaries ("<ADL>")
    /// and rare analyses
    /// ("<Rare>") are left out, the first two unless the target holds them.
    /// `ordezkatzeko` changes nothing. The target is cut to 1,000 bytes.
    std::vector<Analisia> sortuFormak(std::string lema, std::string etiketak,
                                      bool etiketanGelditu, bool ordezkatzeko) const;

    /// The step behind sortuFormak: appends to `emaitzak` the records of all paths from
    /// `egoera` on, behind the upper text `goikoa` and the lower text `behekoa`. The
    /// texts are as they were afterwards, but for capitals that records carried into
    /// `behekoa`.
    std::vector<Analisia>& birsortuFormak(
        const char* helburua, std::vector<Analisia>& emaitzak, int egoera, char* goikoa,
        char* behekoa, bool etiketanGelditu, bool ordezkatzeko) const;

private:
    friend struct lemara::TableInside;

    std::unique_ptr<lemara::TableForms> formak;  // what searches run on

    void unfold();
    bool load_image();
    bool load_for_searches();
    bool load_text_file(bool with_graph);
    void load_enciphered_file(bool with_graph);
    void load_memory(std::string_view text, long count, bool with_graph);
    void take(lemara::ArcsByState && arcs, bool with_graph);
};
