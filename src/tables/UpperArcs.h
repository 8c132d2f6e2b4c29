// The arcs of a state by what they write on the upper side.
//
// A generation follows its target: on the way, an arc of a state matters only if it
// writes the target's next byte, or nothing. The first states of a lexicon have arcs by
// the dozen, one or two of which do. Those are kept here for each state and byte that was
// asked for, copied side by side in the order of the state. States of few arcs are not
// kept; nor is a table with wide labels, which are found by the place where an arc
// stands.
//
// Any number of threads may ask at once: an entry never changes, and a lock is taken only
// to add one. What is kept is bounded; what finds no room is not kept.
//
// Tests: tests/tables/UpperArcs_test.cpp, against a look at every arc.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "tables/packed.h"

namespace lemara {

class UpperArcs {
public:
    static constexpr std::uint32_t FEW = 8;  // a state of more arcs is worth an entry
    static constexpr std::size_t MOST_ENTRIES = std::size_t{1} << 12;
    // Of all entries; the last one may go beyond by what its state has.
    static constexpr std::size_t MOST_ARCS = std::size_t{1} << 16;

    /// The first one, and the place behind the last.
    using Arcs = std::pair<const PackedArc*, const PackedArc*>;

    /// The view, and what it looks at, must outlive the object.
    explicit UpperArcs(const PackedView& table)
        : table_(table), has_room_(table.wide_labels == nullptr) {}
    UpperArcs(const UpperArcs&) = delete;
    UpperArcs& operator=(const UpperArcs&) = delete;

    /// Arcs of a state, in its order: at least those whose upper symbol begins with
    /// `byte`, or that write none. `state` is what the table has at `ref`. Good as long
    /// as the object.
    Arcs find(StateRef ref, const PackedState& state, std::uint8_t byte) {
        if (state.count > FEW) {
            if (const Entry* entry = kept(ref, byte)) {
                return {entry->arcs.data(), entry->arcs.data() + entry->arcs.size()};
            }
            if (has_room_.load(std::memory_order_relaxed)) keep(ref, state, byte);
        }
        return {state.arcs, state.arcs + state.count};
    }

    const PackedView& table() const { return table_; }

    /// How many entries there are.
    std::size_t size() const;

private:
    static constexpr std::size_t SLOTS = 2 * MOST_ENTRIES;

    struct Entry {
        StateRef state;
        std::uint8_t byte;
        std::vector<PackedArc> arcs;
    };
    using Slots = std::array<std::atomic<const Entry*>, SLOTS>;

    static std::size_t slot_of(StateRef ref, std::uint8_t byte) {
        const std::uint64_t key = static_cast<std::uint64_t>(ref) << 8 | byte;
        return static_cast<std::size_t>(key * 0x9E3779B97F4A7C15u >> 32) % SLOTS;
    }

    const Entry* kept(StateRef ref, std::uint8_t byte) const {
        const Slots* const slots = slots_.load(std::memory_order_acquire);
        if (slots == nullptr) return nullptr;
        // Less than half of the slots are taken.
        for (std::size_t at = slot_of(ref, byte);; at = (at + 1) % SLOTS) {
            const Entry* entry = (*slots)[at].load(std::memory_order_acquire);
            if (entry == nullptr || (entry->state == ref && entry->byte == byte))
                return entry;
        }
    }

    void keep(StateRef ref, const PackedState& state, std::uint8_t byte);

    const PackedView& table_;
    std::atomic<Slots*> slots_{nullptr};
    mutable std::mutex mutex_;
    std::unique_ptr<Slots> owned_slots_;  // made at the first entry
    std::vector<std::unique_ptr<const Entry>> entries_;
    std::size_t arcs_ = 0;
    std::atomic<bool> has_room_;
};

}  // namespace lemara
