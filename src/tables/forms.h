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
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "tables/packed.h"

namespace lemara {

class KnownBeginnings;
class LazyTransducer;
class UpperArcs;
class WordMap;
class Image;

/// To be called behind every change of a graph.
void note_graph_change();

class TableForms {
public:
    TableForms();
    ~TableForms();

    /// The packed form of this graph. Any number of threads may ask at once; a change of
    /// the graph is for one thread alone.
    const PackedView& packed(const std::vector<Egoera*>& graph);

    /// Its lower side, made deterministic on demand.
    LazyTransducer& lazy(const std::vector<Egoera*>& graph);

    /// What was answered about words of this graph; see has_word.
    WordMap& answers(const std::vector<Egoera*>& graph);

    /// Its arcs by what they write on the upper side, as far as they were asked for.
    UpperArcs& upper(const std::vector<Egoera*>& graph);

    /// What was answered about the beginnings of its upper side.
    KnownBeginnings& beginnings(const std::vector<Egoera*>& graph);

    /// Makes a compiled table the form of a graph that has no states.
    void use(std::unique_ptr<Image> image);

    /// Makes a packed table the form of this graph: it's what the graph would be packed
    /// to, or it takes the place of one that has no states.
    void use(std::unique_ptr<PackedTable> table, const std::vector<Egoera*>& graph);

    /// The view of a table that stands for a graph without states; null if there is none,
    /// or none any more.
    const PackedView* folded_view(const std::vector<Egoera*>& graph);

private:
    struct Current;

    Current& current(const std::vector<Egoera*>& graph);
    Current& look_again(const std::vector<Egoera*>& graph);
    void use(std::unique_ptr<Current> form);

    std::atomic<Current*> current_{nullptr};
    std::atomic<std::uint64_t> seen_change_{0};
    std::mutex mutex_;
    std::unique_ptr<Current> owner_;
};

}  // namespace lemara
