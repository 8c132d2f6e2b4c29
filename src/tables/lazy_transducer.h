// The lower side of a table, made deterministic as words ask for it.
//
// A node stands for all the paths that have read the same bytes: where each has arrived,
// in the order in which the walk takes them, and what the filters need to know of its
// upper text. That is little: does it begin with a capital, does it hold the tag of a
// name. Paths of which they need more (symbols and acronyms, postpositions, several
// words, bracket groups, "MAT") are odd. A step from a node to the next by a byte keeps
// for each path behind it which one in front it came from, and the upper text that was
// written on the way. So the node in which a word ends says yes or no at once, and the
// way back from there spells the analyses, in their order.
//
// What nobody asked for costs nothing: a step is made when it's asked for again. Until
// then, and for all that would pass a bound, the walk is asked. What a word was spelt to
// is kept as well, for some thousands of words. Reading takes no lock.
//
// Method: determinisation of a transducer by ordered subsets with the way back kept (as
// in M. Mohri, "Finite-State Transducers in Language and Speech Processing", 1997), on
// demand. Twin: the walk. Tests: tests/tables/lazy_transducer_test.cpp.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "analysis/tag_scan.h"
#include "tables/known_texts.h"
#include "tables/lasting_runs.h"
#include "tables/packed.h"

namespace lemara {

enum class Answer {
    no,
    yes,
    ask_the_texts,  // only the analyses tell
    ask_the_walk,   // there is no node for the word
};

class LazyTransducer {
public:
    /// The number of a node, and above it how words end there and which bytes can follow.
    using Node = std::int32_t;

    static constexpr Node DEAD = 1;       // no word goes on from here
    static constexpr Node TOO_MANY = -1;  // a bound was reached

    /// Longer words have their analyses from the walk.
    static constexpr std::size_t LONGEST_SPELT = 128;

    /// `table` must outlive the transducer.
    explicit LazyTransducer(const PackedView& table);
    ~LazyTransducer();

    /// The node in which every word begins.
    Node start() {
        const Node known = start_.load(std::memory_order_acquire);
        return known != 0 ? known : make_start();
    }

    /// The node behind `byte`, lowered already. Makes it if there is none yet.
    Node next(Node node, std::uint8_t byte) {
        const char c = static_cast<char>(byte);
        return follow(node, {&c, 1});
    }

    /// The node behind a text, lowered already, or DEAD as soon as it is known.
    Node follow(Node node, std::string_view text) {
        if (text.empty() || node <= DEAD) return node;  // a dead form has no slots at all
        const Slots& slots = *slots_.load(std::memory_order_acquire);
        for (const char c : text) {
            if (node <= DEAD) return node;
            const auto byte = static_cast<std::uint8_t>(c);
            if ((node & follow_bit_[byte]) == 0) return DEAD;
            const Node known = slots.find(key_of(node, byte)).next;
            node = (known & NUMBER) != 0 ? known : make_next(node, byte);
        }
        return node;
    }

    /// The answer for a word that ends in `node`. `small`: it was typed with "a" to "z"
    /// in front.
    static Answer answer(Node node, bool small) {
        if (node == TOO_MANY) return Answer::ask_the_walk;
        if ((node & ENDS_CLEAN) != 0 || (!small && (node & ENDS_AS_NAME) != 0)) {
            return Answer::yes;
        }
        return (node & ENDS_ODD) != 0 ? Answer::ask_the_texts : Answer::no;
    }

    /// Answers true if an analysis that the filters keep makes the word one. Refers to a
    /// function that lives longer: a std::function would cost more than most words need.
    class Counts {
    public:
        template <class Function>
        Counts(const Function& function)
            : function_(&function), call_([](const void* f, std::string_view analysis) {
                  return (*static_cast<const Function*>(f))(analysis);
              }) {}
        bool operator()(std::string_view analysis) const {
            return call_(function_, analysis);
        }

    private:
        const void* function_;
        bool (*call_)(const void*, std::string_view);
    };

    /// The same for a whole word as typed, in which no NUL is. Makes nothing: an answer
    /// is remembered, and to search for it costs no more than the steps that other words
    /// might use. `counts` is asked of analyses of which a node doesn't know enough.
    Answer answer(std::string_view word, const Counts& counts) {
        Stop stop{start(), 0};
        // Who asks for yes or no alone makes no steps, and none need be looked for.
        Node last = TOO_MANY;
        if (has_steps_.load(std::memory_order_relaxed) || word.empty() ||
            stop.node <= DEAD) {
            last = read(stop, word, Asked::NEVER, nullptr);
        }
        return last < 0 && stop.node > DEAD ? finish(stop, word, counts)
                                            : answer(last, begins_small(word));
    }

    /// What is known of a word before its first analysis is visited.
    struct Spelt {
        std::size_t reach = 0;  // bytes of the word that some path reads, or more
        std::size_t most = 0;   // it has no more analyses than that
    };

    /// Calls `visit` with each analysis of a word as typed that the filters keep, in
    /// order, until it answers false. The text of a call is gone after it. False if the
    /// walk is to be asked; then nothing was visited. `word` holds no NUL, and one stands
    /// behind it.
    template <class Visit>
    bool spell(std::string_view word, Spelt& spelt, Visit visit) {
        if (const KnownWords::List* known = known_words_.find(word)) {
            spelt.reach = known->about.reach;
            spelt.most = known->count();
            known->for_each(visit);
            return true;
        }
        return spell_anew(word, spelt, visit);
    }

    /// The same for a word that is not remembered. Remembers it.
    template <class Visit>
    bool spell_anew(std::string_view word, Spelt& spelt, Visit visit) {
        if (word.size() > LONGEST_SPELT) return false;
        const Piece* ways[LONGEST_SPELT];
        Stop stop{start(), 0};
        const Node last = read(stop, word, Asked::TWICE, ways);
        if (last < 0) return false;
        spelt.reach = stop.at;
        KnownWords::Notes notes = known_words_.notes_for(word);
        if ((last & ENDS) == 0) {
            remember(word, last, stop.at, notes);
            return true;
        }
        const bool small = begins_small(word);
        const NodeParts& parts = parts_of(last);
        spelt.most = parts.end_count;
        char text[LONGEST_TEXT];
        char* const end = text + LONGEST_TEXT - 1;
        *end = '\0';
        for (std::uint32_t i = 0; i < parts.end_count; ++i) {
            const Piece& piece = parts.ends[i];
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
            if (notes.taken()) notes.add(analysis);
            if (!visit(analysis)) return true;
        }
        remember(word, last, stop.at, notes);
        return true;
    }

    /// How many bytes of `text` any path reads, if it's known that none reads all. `word`
    /// begins it, and was spelt before.
    std::optional<std::size_t> known_reach(std::string_view word, std::string_view text) {
        const KnownWords::List* known = known_words_.find(word);
        if (known == nullptr) return std::nullopt;
        const Spelling& spelt = known->about;
        if (spelt.last <= DEAD) return spelt.reach;
        Stop stop{spelt.last, word.size()};
        if (read(stop, text, Asked::OFTEN, nullptr) != DEAD) return std::nullopt;
        return stop.at;
    }

    // What a path knows of its upper text.
    static constexpr std::uint8_t NOTHING_WRITTEN = 1;
    static constexpr std::uint8_t CAPITAL = 2;  // begins with "A" to "Z"
    static constexpr std::uint8_t NAME = 4;     // holds "<PIB>", "<LIB>" or "<IZB>"
    static constexpr std::uint8_t ODD = 8;      // only the whole text tells

private:
    // How words end in a node, above its number.
    static constexpr Node ENDS_CLEAN = 1 << 18;  // a word, however it is typed
    static constexpr Node ENDS_AS_NAME =
        1 << 19;  // a word, unless it begins in small letters
    static constexpr Node ENDS_ODD = 1 << 20;  // perhaps a word
    static constexpr Node ENDS = ENDS_CLEAN | ENDS_AS_NAME | ENDS_ODD;
    static constexpr Node NUMBER = ENDS_CLEAN - 1;

    // Above that a bit for each class of bytes that a step from the node may read. The
    // commonest have a class of their own, so hardly a step in vain looks further than
    // here.
    static constexpr int FOLLOWS_AT = 21;
    static constexpr int FOLLOW_CLASSES = 10;

    static constexpr Node UNKNOWN = 0;  // not made yet

    static constexpr int ASKED_BITS = 14;
    static constexpr std::uint8_t ASKED_MARK =
        0xFC;  // bits of the hash; below, how often

    static constexpr std::size_t FIRST_SLOTS = std::size_t{1} << 10;
    static constexpr std::size_t MOST_SLOTS = std::size_t{1} << 20;
    static constexpr Node MOST_NODES = ENDS_CLEAN;
    static constexpr std::size_t NODES_OF_CHUNK = 1 << 10;
    static constexpr std::size_t PIECES_OF_CHUNK = 1 << 12;
    static constexpr std::size_t BYTES_OF_CHUNK = 1 << 14;
    static constexpr std::size_t MOST_CHUNKS = 1 << 8;  // of pieces: a million
    static constexpr std::size_t MOST_PATHS = 1 << 10;  // of one node
    static constexpr std::size_t PLACES_OF_CHUNK = 1 << 12;
    static constexpr std::size_t MOST_PLACE_CHUNKS = 1 << 9;  // two million places
    static constexpr std::size_t LONGEST_PIECE = 128;
    static constexpr std::size_t MOST_WORDS = 1 << 14;  // slots: half a MiB
    static constexpr std::size_t SHORT = 32;  // bytes that are copied in a few moves
    static constexpr std::size_t LONGEST_TEXT =
        LONGEST_PIECE * (LONGEST_SPELT + 1) + SHORT + 1;

    /// Upper text that a path writes, and the path that it goes on from. Most texts are a
    /// letter or some tags, and stand in the piece itself: at its end, so that the whole
    /// piece can be copied in front of what is there. SHORT bytes in front of the end of
    /// another text may be read.
    struct alignas(16) Piece {
        static constexpr std::size_t OWN = 12;

        std::uint16_t from;
        std::uint8_t path;  // of an end: what the whole path knows
        std::uint8_t size;
        char text[OWN];  // the last `size` bytes; of a longer text its end, as a pointer

        Piece() = default;
        Piece(const char* end, std::size_t size_, std::size_t from_, std::uint8_t path_)
            : from(static_cast<std::uint16_t>(from_)),
              path(path_),
              size(static_cast<std::uint8_t>(size_)),
              text() {
            if (size <= OWN) {
                std::memcpy(text + OWN - size, end - size, size);
            } else {
                std::memcpy(text, &end, sizeof end);
            }
        }
    };
    static_assert(sizeof(Piece) == 16 && LONGEST_PIECE <= 255, "it is copied as a whole");

    static char* write_before(char* at, const Piece& piece) {
        if (piece.size <= Piece::OWN) {
            std::memcpy(at - sizeof piece, &piece, sizeof piece);
            return at - piece.size;
        }
        const char* end = nullptr;
        std::memcpy(&end, piece.text, sizeof end);
        if (piece.size <= SHORT) {
            std::memcpy(at - SHORT, end - SHORT, SHORT);  // of fixed size: a few moves
        } else {
            std::memcpy(at - piece.size, end - piece.size, piece.size);
        }
        return at - piece.size;
    }

    /// What spelling a word gave beside its analyses.
    struct Spelling {
        Node last;
        std::uint16_t reach;
    };
    using KnownWords = KnownTexts<Spelling>;

    void remember(std::string_view word, Node last, std::size_t reach,
                  const KnownWords::Notes& notes) {
        // Several words seldom come again.
        if (!notes.taken() || word.find(' ') != std::string_view::npos) return;
        known_words_.keep(word, {last, static_cast<std::uint16_t>(reach)}, notes);
    }

    /// A place that a path has arrived at, and what is known of the path.
    using Place = std::uint64_t;

    /// The paths of a node: where they are, and those that may end there.
    struct NodeParts {
        const Piece* ends;
        const Place* places;
        std::uint32_t end_count, place_count;
    };

    /// A step to another node.
    struct Step {
        Node next;
        const Piece* ways;  // back, for each path behind it
    };

    /// Where steps are found: open addressing by node and byte. A slot's key and next
    /// node are one number, written last; only its owner, who holds the mutex, writes.
    struct Slots {
        explicit Slots(std::size_t size);

        struct alignas(16) Slot {
            std::atomic<std::uint64_t> head;
            std::atomic<const Piece*> ways;  // back from the paths behind the step
        };
        struct Found {
            Node next;
            std::size_t slot;
        };
        Found find(std::uint32_t key) const {
            for (std::size_t slot = key * 0x9E3779B97F4A7C15u >> shift;;
                 slot = (slot + 1) & mask) {
                const std::uint64_t held =
                    slots[slot].head.load(std::memory_order_acquire);
                if (held >> 32 == key)
                    return {static_cast<Node>(static_cast<std::uint32_t>(held)), slot};
                if (held == 0) return {UNKNOWN, slot};
            }
        }

        std::size_t mask;
        int shift;
        std::unique_ptr<Slot[]> slots;
    };

    static bool begins_small(std::string_view word) {
        return !word.empty() && word[0] >= 'a' && word[0] <= 'z';
    }

    static std::uint32_t key_of(Node node, std::uint8_t byte) {
        return static_cast<std::uint32_t>(node & NUMBER) << 8 | byte;
    }

    const NodeParts& parts_of(Node node) const {
        const auto number = static_cast<std::size_t>(node & NUMBER);
        return parts_[number / NODES_OF_CHUNK][number % NODES_OF_CHUNK];
    }

    Step step(const Slots& slots, Node node, std::uint8_t byte) const {
        if ((node & follow_bit_[byte]) == 0) return {DEAD, nullptr};
        const Slots::Found found = slots.find(key_of(node, byte));
        return {found.next, slots.slots[found.slot].ways.load(std::memory_order_relaxed)};
    }

    /// How far a text was read: the last node that is not DEAD, and the bytes up to it.
    struct Stop {
        Node node;
        std::size_t at;
    };

    /// How often a step must be asked for until it is made. Who spells asks for the same
    /// words again; the others share steps with other words alone.
    enum class Asked { NEVER = 0, TWICE = 2, OFTEN = 4 };

    /// The node that a text leads to from `stop` on; TOO_MANY if a step is not made yet,
    /// or not at all. `ways`, if not null, takes the way back of each step.
    Node read(Stop& stop, std::string_view text, Asked asked, const Piece** ways);

    class Builder;
    class Finisher;

    Node make_start();
    Node make_next(Node node, std::uint8_t byte);
    Answer finish(const Stop& stop, std::string_view word, const Counts& counts);
    bool is_asked_enough(Node node, std::uint8_t byte, Asked asked);
    Step ask_again(Node node, std::uint8_t byte, Asked asked, bool& insist);
    Step build(Node node, std::uint8_t byte);
    Node node_of(const Builder& built);
    void widen_nodes();
    void set(Node node, std::uint8_t byte, Step step);
    bool has_room();
    void grow(std::size_t size);
    const char* end_of(std::string_view first, std::string_view second);
    void prepare();

    const PackedView& table_;
    std::atomic<Node> start_{UNKNOWN};
    std::atomic<const Slots*> slots_{nullptr};
    std::atomic<bool> has_steps_{false};  // any was made
    std::uint16_t typed_bit_[256] = {};   // the mask bit of a byte as typed
    Node follow_bit_[256] = {};           // of bytes that the table reads at all
    // By node, in chunks; never grows.
    std::vector<std::unique_ptr<NodeParts[]>> parts_;
    // Steps that were asked for in vain, by hash: some bits of the hash, and how often.
    std::unique_ptr<std::atomic<std::uint8_t>[]> asked_;
    KnownWords known_words_{MOST_WORDS};

    std::mutex mutex_;  // guards all below
    std::vector<std::unique_ptr<Slots>>
        all_slots_;  // the last is in use; readers may be in others
    std::size_t slots_used_ = 0;
    std::vector<std::uint8_t> label_traits_;
    Node node_count_ = DEAD + 1;
    std::vector<Node> nodes_;  // by a hash of their places, open addressing
    LastingRuns<Place, PLACES_OF_CHUNK, MOST_PLACE_CHUNKS> kept_places_;
    LastingRuns<Piece, PIECES_OF_CHUNK, MOST_CHUNKS> kept_pieces_;
    LastingRuns<char, BYTES_OF_CHUNK, MOST_CHUNKS> kept_texts_;  // that are no symbol
    std::unique_ptr<Builder> step_, ends_of_step_;
};

}  // namespace lemara
