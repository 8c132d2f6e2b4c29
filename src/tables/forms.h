// The forms of a table that stand behind its graph: the packed one, which searches run
// on, and what is derived from it.
//
// A packed form is made when a table is loaded, and made anew by the first search after
// its graph has changed. Every operation that changes a graph counts up one number for
// the process; a search compares it with the number under which its table was last looked
// at, and only then, if they differ, whether its own graph is still the one that was
// packed.
//
// Tests: tests/tables/packed_test.cpp.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "tables/UpperArcs.h"
#include "tables/image.h"
#include "tables/known_beginnings.h"
#include "tables/lazy_transducer.h"
#include "tables/packed.h"
#include "tables/word_map.h"

namespace lemara {

/// How often a graph of the process was changed.
extern std::atomic<std::uint64_t> graph_changes;

/// To be called behind every change of a graph.
void note_graph_change();

/// The forms of one graph as it was at one time.
struct Forms {
    explicit Forms(const std::vector<Egoera*>& graph);
    Forms(std::unique_ptr<PackedTable> packed, const std::vector<Egoera*>& graph);
    explicit Forms(std::unique_ptr<Image> mapped);

    std::size_t state_count;
    bool folded;                         // it stands for a graph that isn't there
    std::unique_ptr<PackedTable> table;  // one of the two
    std::unique_ptr<Image> image;

    PackedView view;
    LazyTransducer lazy;  // its lower side, made deterministic on demand
    WordMap answers{std::size_t{1} << 19};  // about words, see has_word: 16 MiB
    UpperArcs upper;  // its arcs by what they write, as far as they were asked for
    KnownBeginnings beginnings;  // what was answered about beginnings of its upper side
};

class TableForms {
public:
    TableForms();
    ~TableForms();

    /// The forms of this graph. Any number of threads may ask at once; a change of the
    /// graph is for one thread alone.
    Forms& of(const std::vector<Egoera*>& graph) {
        Forms* now = current_.load(std::memory_order_acquire);
        if (now != nullptr && now->state_count == graph.size() &&
            seen_change_.load(std::memory_order_relaxed) ==
                graph_changes.load(std::memory_order_relaxed)) {
            return *now;
        }
        return look_again(graph);
    }

    /// Makes a compiled table the form of a graph that has no states.
    void use(std::unique_ptr<Image> image);

    /// Makes a packed table the form of this graph: it's what the graph would be packed
    /// to, or it takes the place of one that has no states.
    void use(std::unique_ptr<PackedTable> table, const std::vector<Egoera*>& graph);

    /// The view of a table that stands for a graph without states; null if there is none,
    /// or none any more.
    const PackedView* folded_view(const std::vector<Egoera*>& graph);

private:
    Forms& look_again(const std::vector<Egoera*>& graph);
    void use(std::unique_ptr<Forms> form);

    std::atomic<Forms*> current_{nullptr};
    std::atomic<std::uint64_t> seen_change_{0};
    std::mutex mutex_;
    std::unique_ptr<Forms> owner_;
};

}  // namespace lemara
