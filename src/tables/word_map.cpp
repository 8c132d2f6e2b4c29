#include "tables/word_map.h"

#include <algorithm>
#include <utility>

namespace lemara {

/// False if there is something already, or no slot near.
bool WordMap::Slots::put(const Word& word, std::uint64_t value) const {
    const Found found = find(word);
    if (found.value != NOTHING || found.slot == NO_SLOT) return false;
    Slot& slot = slots[found.slot];
    slot.a.store(word.a_, std::memory_order_relaxed);
    slot.b.store(word.b_, std::memory_order_relaxed);
    slot.c.store(word.c_, std::memory_order_relaxed);
    slot.value.store(value, std::memory_order_release);
    return true;
}

bool WordMap::put(const Word& word, std::uint64_t value) {
    if (!word.fits_ || !has_room()) return false;
    const Turn turn(busy_);
    if (!turn) return false;
    const std::size_t size = all_slots_.empty() ? 0 : all_slots_.back()->mask + 1;
    if (size == most_slots_) {
        if (used_ >= size / 4 * 3) {
            full_.store(true, std::memory_order_relaxed);
            return false;
        }
    } else if (used_ >= size / 2) {
        widen();
    }
    if (!all_slots_.back()->put(word, value)) return false;
    ++used_;
    return true;
}

/// Changes to larger slots. The old ones stay, for those who are reading in them.
void WordMap::widen() {
    const std::size_t size = all_slots_.empty() ? 0 : all_slots_.back()->mask + 1;
    // Fourfold, so that little is moved twice.
    auto larger = std::make_unique<Slots>(size == 0 ? std::min(FIRST_SLOTS, most_slots_)
                                                    : std::min(4 * size, most_slots_));
    used_ = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const Slots::Slot& old = all_slots_.back()->slots[i];
        const std::uint64_t value = old.value.load(std::memory_order_relaxed);
        const Word word{old.a.load(std::memory_order_relaxed),
                        old.b.load(std::memory_order_relaxed),
                        old.c.load(std::memory_order_relaxed)};
        // One that finds no slot near is forgotten.
        if (value != NOTHING && larger->put(word, value)) ++used_;
    }
    all_slots_.push_back(std::move(larger));
    slots_.store(all_slots_.back().get(), std::memory_order_release);
}

}  // namespace lemara
