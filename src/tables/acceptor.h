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
        const std::uint8_t column = columns_[byte];
        const Node known = row(node)[column].load(std::memory_order_acquire);
        return known != 0 ? known : find_next(node, byte);
    }

    /// The answer for a word that ends in `node`. `small`: it was typed with "a" to "z" in
    /// front.
    Answer answer(Node node, bool small) {
        if (node == DEAD) return Answer::no;
        if (node == TOO_MANY) return Answer::ask_the_walk;
        const Node ends = row(node)[column_count_].load(std::memory_order_relaxed);
        if ((ends & ENDS_CLEAN) != 0 || (!small && (ends & ENDS_AS_NAME) != 0)) {
            return Answer::yes;
        }
        return (ends & ENDS_ODD) != 0 ? Answer::ask_the_walk : Answer::no;
    }

private:
    // What a word may be that ends in a node.
    static constexpr Node ENDS_CLEAN = 1;    // a word, however it is typed
    static constexpr Node ENDS_AS_NAME = 2;  // a word, unless it begins in small letters
    static constexpr Node ENDS_ODD = 4;      // perhaps a word

    /// A place in the table, and what is known of the path to it.
    using Place = std::uint64_t;

    class Builder;

    std::atomic<Node>* row(Node node) const {
        return rows_ + static_cast<std::size_t>(node) * (column_count_ + 1u);
    }
    Node find_next(Node node, std::uint8_t byte);
    Node node_of(std::vector<Place> places, Node ends);
    void prepare();

    const PackedView& table_;
    std::uint8_t columns_[256] = {};
    std::uint32_t column_count_ = 0;
    std::atomic<Node>* rows_ = nullptr;  // zeroed memory, of which only used rows are touched
    std::atomic<Node> start_{0};

    std::mutex mutex_;  // guards all below
    std::vector<std::uint8_t> label_traits_;
    std::vector<std::vector<Place>> places_;  // by node
    std::unordered_map<std::string, Node> nodes_;
};

}  // namespace lemara
