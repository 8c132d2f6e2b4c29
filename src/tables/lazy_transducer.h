// The lower side of a table, made deterministic as words ask for it.
//
// A node stands for all the paths that have read the same bytes: where each has arrived, in the
// order in which the walk takes them, and what the filters need to know of its upper text.
// That is little: does it begin with a capital, does it hold the tag of a name. Paths of which
// they need more (symbols and acronyms, postpositions, several words, bracket groups, "MAT") are
// odd. A step from a node to the next by a byte keeps for each path behind it which one in front
// it came from, and the upper text that was written on the way. So the node in which a word ends
// says yes or no at once, and the way back from there spells the analyses, in their order.
//
// What nobody asked for costs nothing: a step is made when it's asked for a second time. Until
// then, and for all that would pass a bound, the walk is asked. Reading takes no lock.
//
// Method: determinisation of a transducer by ordered subsets with the way back kept (as in M.
// Mohri, "Finite-State Transducers in Language and Speech Processing", 1997), on demand.
// Twin: the walk. Tests: tests/tables/lazy_transducer_test.cpp.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "analysis/tag_scan.h"
#include "karaktereak.h"
#include "tables/packed.h"

namespace lemara {

enum class Answer { no, yes, ask_the_walk };

class LazyTransducer {
public:
    /// The number of a node, and above it how words end there.
    using Node = std::int32_t;

    static constexpr Node DEAD = 1;       // no word goes on from here
    static constexpr Node TOO_MANY = -1;  // a bound was reached

    /// Longer words have their analyses from the walk.
    static constexpr std::size_t LONGEST_SPELT = 128;

    /// `table` must outlive the transducer.
    explicit LazyTransducer(const PackedView& table);

    /// The node in which every word begins.
    Node start() {
        const Node known = start_.load(std::memory_order_acquire);
        return known != 0 ? known : make_start();
    }

    /// The node behind `byte`, lowered already. Makes it if there is none yet.
    Node next(Node node, std::uint8_t byte) {
        if (node <= DEAD) return node;
        const Slots& slots = *slots_.load(std::memory_order_acquire);
        const Node known = slots.find(key_of(node, byte)).next;
        return (known & NUMBER) != 0 ? known : make_next(node, byte);
    }

    /// The answer for a word that ends in `node`. `small`: it was typed with "a" to "z" in
    /// front.
    static Answer answer(Node node, bool small) {
        if (node == TOO_MANY) return Answer::ask_the_walk;
        if ((node & ENDS_CLEAN) != 0 || (!small && (node & ENDS_AS_NAME) != 0)) {
            return Answer::yes;
        }
        return (node & ENDS_ODD) != 0 ? Answer::ask_the_walk : Answer::no;
    }

    /// The same for a whole word as typed. Makes what is asked for again.
    Answer answer(std::string_view word) {
        const Node node = read(word, nullptr, nullptr);
        return answer(node, !word.empty() && orbi_islower(word[0]));
    }

    /// Calls `visit` with each analysis of a word as typed that the filters keep, in order,
    /// until it answers false. The text of a call is gone after it. `reach` becomes the
    /// number of bytes behind which no path goes on, or more. False if the walk is to be
    /// asked; then nothing was visited. `word` holds no NUL, and one stands behind it.
    template <class Visit>
    bool spell(std::string_view word, std::size_t& reach, Visit visit) {
        if (word.size() > LONGEST_SPELT) return false;
        const Piece* ways[LONGEST_SPELT];
        const Node last = read(word, ways, &reach);
        if (last < 0) return false;
        if ((last & ENDS) == 0) return true;
        const bool small = !word.empty() && orbi_islower(word[0]);
        const Ends& ends = ends_of(last);
        char text[LONGEST_TEXT];
        char* const end = text + LONGEST_TEXT - 1;
        *end = '\0';
        for (std::uint32_t i = 0; i < ends.count; ++i) {
            const Piece& piece = ends.pieces[i];
            // A capitalised entry is no analysis of a word in small letters.
            if (small && (piece.path & CAPITAL) != 0) continue;
            char* begin = write_before(end, piece);
            std::size_t path = piece.from;
            for (std::size_t at = word.size(); at-- > 0;) {
                const Piece& step = ways[at][path];
                begin = write_before(begin, step);
                path = step.from;
            }
            const std::string_view analysis(begin, static_cast<std::size_t>(end - begin));
            const bool clean = (piece.path & (CAPITAL | NAME | ODD)) == 0;
            if (!clean && !is_kept_by_filters(word, analysis)) continue;
            if (!visit(analysis)) break;
        }
        return true;
    }

    // What a path knows of its upper text.
    static constexpr std::uint8_t NOTHING_WRITTEN = 1;
    static constexpr std::uint8_t CAPITAL = 2;  // begins with "A" to "Z"
    static constexpr std::uint8_t NAME = 4;     // holds "<PIB>", "<LIB>" or "<IZB>"
    static constexpr std::uint8_t ODD = 8;      // only the whole text tells

private:
    // How words end in a node, above its number.
    static constexpr Node ENDS_CLEAN = 1 << 24;    // a word, however it is typed
    static constexpr Node ENDS_AS_NAME = 1 << 25;  // a word, unless it begins in small letters
    static constexpr Node ENDS_ODD = 1 << 26;      // perhaps a word
    static constexpr Node ENDS = ENDS_CLEAN | ENDS_AS_NAME | ENDS_ODD;
    static constexpr Node NUMBER = ENDS_CLEAN - 1;

    // Not asked for yet, and asked for once.
    static constexpr Node UNKNOWN = 0;
    static constexpr Node ASKED = ENDS_CLEAN;  // of node 0, which is none

    static constexpr std::size_t FIRST_SLOTS = std::size_t{1} << 12;
    static constexpr std::size_t MOST_SLOTS = std::size_t{1} << 20;
    static constexpr Node MOST_NODES = 1 << 18;
    static constexpr std::size_t NODES_OF_CHUNK = 1 << 10;
    static constexpr std::size_t PIECES_OF_CHUNK = 1 << 12;
    static constexpr std::size_t MOST_CHUNKS = 1 << 8;  // of pieces: a million
    static constexpr std::size_t MOST_PATHS = 1 << 10;  // of one node
    static constexpr std::size_t MOST_PLACES = 1 << 21;  // of all nodes
    static constexpr std::size_t LONGEST_PIECE = 128;
    static constexpr std::size_t SHORT = 16;  // bytes that are copied in one move
    static constexpr std::size_t LONGEST_TEXT =
        LONGEST_PIECE * (LONGEST_SPELT + 1) + SHORT + 1;

    /// Upper text that a path writes, and the path that it goes on from. SHORT bytes in front
    /// of its end may be read.
    struct Piece {
        const char* end;
        std::uint16_t size;
        std::uint16_t from;
        std::uint8_t path;  // of an end: what the whole path knows
    };

    static char* write_before(char* at, const Piece& piece) {
        if (piece.size <= SHORT) {
            std::memcpy(at - SHORT, piece.end - SHORT, SHORT);  // of fixed size: two moves
        } else {
            std::memcpy(at - piece.size, piece.end - piece.size, piece.size);
        }
        return at - piece.size;
    }

    /// The paths that may end in a node.
    struct Ends {
        const Piece* pieces;
        std::uint32_t count;
    };

    /// Where steps are found: open addressing by node and byte. A slot's key and next node are
    /// one number, written last; only its owner, who holds the mutex, writes.
    struct Slots {
        explicit Slots(std::size_t size);

        struct Found {
            Node next;
            std::size_t slot;
        };
        Found find(std::uint32_t key) const {
            for (std::size_t slot = key * 0x9E3779B97F4A7C15u >> shift;; slot = (slot + 1) & mask) {
                const std::uint64_t held = heads[slot].load(std::memory_order_acquire);
                if (held >> 32 == key) return {static_cast<Node>(static_cast<std::uint32_t>(held)), slot};
                if (held == 0) return {UNKNOWN, slot};
            }
        }

        std::size_t mask;
        int shift;
        std::unique_ptr<std::atomic<std::uint64_t>[]> heads;
        std::unique_ptr<std::atomic<const Piece*>[]> ways;  // back from the paths behind a step
    };

    static std::uint32_t key_of(Node node, std::uint8_t byte) {
        return static_cast<std::uint32_t>(node & NUMBER) << 8 | byte;
    }

    const Ends& ends_of(Node node) const {
        const auto number = static_cast<std::size_t>(node & NUMBER);
        return ends_[number / NODES_OF_CHUNK][number % NODES_OF_CHUNK];
    }

    /// The node behind a word, TOO_MANY if the walk is to be asked. `ways`, if not null, takes
    /// the way back of each step.
    Node read(std::string_view word, const Piece** ways, std::size_t* reach);

    /// A place that a path has arrived at, and what is known of the path.
    using Place = std::uint64_t;

    class Builder;

    Node make_start();
    Node make_next(Node node, std::uint8_t byte);
    Node ask_again(Node node, std::uint8_t byte, bool& insist);
    Node build(Node node, std::uint8_t byte);
    Node node_of(const Builder& built);
    void widen_nodes();
    void set(std::uint32_t key, Node next, const Piece* ways);
    bool has_room();
    void grow(std::size_t size);
    const Piece* keep(const std::vector<Piece>& pieces);
    const char* end_of(std::string_view text);
    void prepare();

    const PackedView& table_;
    std::atomic<Node> start_{UNKNOWN};
    std::atomic<const Slots*> slots_{nullptr};
    std::vector<std::unique_ptr<Ends[]>> ends_;  // by node, in chunks; never grows

    std::mutex mutex_;  // guards all below
    std::vector<std::unique_ptr<Slots>> all_slots_;  // the last is in use; readers may be in others
    std::size_t slots_used_ = 0;
    std::vector<std::uint8_t> label_traits_;
    bool reads_[256] = {};                   // bytes that the table reads at all
    std::vector<Place> places_;              // of all nodes, one after the other
    std::vector<std::size_t> places_begin_;  // by node
    std::vector<Node> nodes_;                // by a hash of their places, open addressing
    std::vector<std::unique_ptr<Piece[]>> piece_chunks_;
    std::size_t pieces_left_ = 0;            // in the last chunk
    std::unordered_set<std::string> texts_;  // of pieces that are no symbol of the table
};

}  // namespace lemara
