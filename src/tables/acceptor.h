// Yes or no for a word, without its analyses.
//
// The lower side of a table, made deterministic as words ask for it. A node stands for all the
// places of the table in which the bytes read so far may have arrived, each with what the
// filters need to know of the upper text on the way there. What they need is little: does it
// begin with a capital, does it hold the tag of a name. Paths of which they need more (symbols
// and acronyms, postpositions, several words, bracket groups, "MAT") are odd, and a word that
// only odd paths accept is sent to the walk.
//
// The nodes are bounded in number; a word that would need one too many is sent to the walk too.
// Reading takes no lock. Twin: the walk. Tests: tests/tables/acceptor_test.cpp.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tables/packed.h"

namespace lemara {

enum class Answer { no, yes, ask_the_walk };

class Acceptor {
public:
    using Node = std::int32_t;

    static constexpr Node DEAD = 1;       // no word goes on from here
    static constexpr Node TOO_MANY = -1;  // the bound was reached

    /// `table` must outlive the acceptor.
    explicit Acceptor(const PackedView& table);
    ~Acceptor();

    /// The node in which every word begins.
    Node start();

    /// The node behind `byte`, lowered already.
    Node next(Node node, std::uint8_t byte) {
        if (node <= DEAD) return node;
        const std::uint64_t key = key_of(node, byte);
        for (std::size_t slot = slot_of(key);; slot = (slot + 1) & (SLOTS - 1)) {
            const std::uint64_t held = slots_[slot].load(std::memory_order_acquire);
            if (held >> 32 == key) return static_cast<Node>(static_cast<std::uint32_t>(held));
            if (held == 0) return find_next(node, byte);
        }
    }

    /// The answer for a word that ends in `node`. `small`: it was typed with "a" to "z" in
    /// front.
    Answer answer(Node node, bool small) const {
        if (node == DEAD) return Answer::no;
        if (node == TOO_MANY) return Answer::ask_the_walk;
        const std::uint8_t ends = ends_[node];
        if ((ends & ENDS_CLEAN) != 0 || (!small && (ends & ENDS_AS_NAME) != 0)) {
            return Answer::yes;
        }
        return (ends & ENDS_ODD) != 0 ? Answer::ask_the_walk : Answer::no;
    }

private:
    // What a word may be that ends in a node.
    static constexpr std::uint8_t ENDS_CLEAN = 1;    // a word, however it is typed
    static constexpr std::uint8_t ENDS_AS_NAME = 2;  // a word, unless it begins in small letters
    static constexpr std::uint8_t ENDS_ODD = 4;      // perhaps a word

    // Steps are kept in a table of slots, open to lock-free reading: node and byte in the high
    // half of a slot, the next node in the low one. A slot is written once.
    static constexpr std::size_t SLOTS = std::size_t{1} << 20;
    static constexpr std::size_t MOST_STEPS = SLOTS / 4 * 3;
    static constexpr Node MOST_NODES = 1 << 18;

    /// A place in the table, and what is known of the path to it.
    using Place = std::uint64_t;

    class Builder;

    static std::uint64_t key_of(Node node, std::uint8_t byte) {
        return static_cast<std::uint64_t>(node) << 8 | byte;
    }
    static std::size_t slot_of(std::uint64_t key) {
        return static_cast<std::size_t>(key * 0x9E3779B97F4A7C15u >> 44);
    }

    Node find_next(Node node, std::uint8_t byte);
    Node node_of(const std::vector<Place>& places, std::uint8_t ends);
    bool prepare();

    const PackedView& table_;
    // Zeroed memory, of which only what is used is touched.
    std::atomic<std::uint64_t>* slots_ = nullptr;
    std::uint8_t* ends_ = nullptr;  // by node; written before the node is known
    std::atomic<Node> start_{0};

    std::mutex mutex_;  // guards all below
    std::vector<std::uint8_t> label_traits_;
    std::vector<Place> places_;               // of all nodes, one after the other
    std::vector<std::size_t> places_begin_;   // by node
    std::unordered_multimap<std::uint64_t, Node> nodes_;  // by a hash of places and ends
    std::size_t steps_ = 0;
    bool reads_[256] = {};  // bytes that the table reads at all
};

}  // namespace lemara
