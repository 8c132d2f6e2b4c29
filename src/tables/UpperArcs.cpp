#include "tables/UpperArcs.h"

#include <utility>

namespace lemara {

std::size_t UpperArcs::size() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return entries_.size();
}

/// Makes the entry of a state and a byte, if no other thread has.
void UpperArcs::keep(StateRef ref, const PackedState& state, std::uint8_t byte) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (entries_.size() >= MOST_ENTRIES || arcs_ >= MOST_ARCS) {
        has_room_.store(false, std::memory_order_relaxed);
        return;
    }
    if (slots_.load(std::memory_order_relaxed) == nullptr) {
        owned_slots_ = std::make_unique<Slots>();
        slots_.store(owned_slots_.get(), std::memory_order_release);
    }
    if (kept(ref, byte) != nullptr) return;
    auto entry = std::make_unique<Entry>();
    entry->state = ref;
    entry->byte = byte;
    for (std::uint32_t i = 0; i < state.count; ++i) {
        const PackedLabel& label = table_.labels[table_.label_of(state.arcs[i])];
        if (label.written_size != 0 && label.written_first != byte) continue;
        entry->arcs.push_back(state.arcs[i]);
    }
    arcs_ += entry->arcs.size();
    std::size_t at = slot_of(ref, byte);
    while ((*owned_slots_)[at].load(std::memory_order_relaxed) != nullptr) {
        at = (at + 1) % SLOTS;
    }
    entries_.push_back(std::move(entry));
    (*owned_slots_)[at].store(entries_.back().get(), std::memory_order_release);
}

}  // namespace lemara
