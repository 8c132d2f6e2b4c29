#include "tables/word_memory.h"

namespace lemara {

void WordMemory::put(std::string_view word, bool answer) {
    if (word.size() > LONGEST) return;
    const std::unique_lock<std::mutex> lock(mutex_, std::try_to_lock);
    if (!lock) return;
    std::uint32_t from = START;
    for (; word.size() > PIECE; word.remove_prefix(PIECE)) {
        from = link(from, piece_of(word.data(), PIECE), next_number_);
        if (from == NOTHING) return;
        if (from == next_number_) ++next_number_;
    }
    link(from | LAST, piece_of(word.data(), word.size()), answer ? YES : NO);
}

/// Where a piece leads to: to what it led before, else to `to` from now on; NOTHING if
/// there is no room.
std::uint32_t WordMemory::link(std::uint32_t from, const Piece& piece, std::uint32_t to) {
    if (!has_room()) return NOTHING;
    const Slots& slots = *all_slots_.back();
    const Slots::Found found = slots.find(from, piece);
    if (found.to != NOTHING || found.slot == Slots::NO_SLOT) return found.to;
    Slots::Slot& slot = slots.slots[found.slot];
    slot.a.store(piece.a, std::memory_order_relaxed);
    slot.b.store(piece.b, std::memory_order_relaxed);
    slot.c.store(piece.c, std::memory_order_relaxed);
    slot.link.store(std::uint64_t{from} << 32 | to, std::memory_order_release);
    ++used_;
    return to;
}

/// True if one more link can be kept. Changes to larger slots where that is needed; the
/// old ones stay, for those who are reading in them.
bool WordMemory::has_room() {
    const std::size_t size = all_slots_.empty() ? 0 : all_slots_.back()->mask + 1;
    if (used_ < size / 2) return true;
    if (size == MOST_SLOTS) return used_ < size / 4 * 3;
    auto larger = std::make_unique<Slots>(size == 0 ? FIRST_SLOTS : 2 * size);
    used_ = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const Slots::Slot& old = all_slots_.back()->slots[i];
        const std::uint64_t link = old.link.load(std::memory_order_relaxed);
        if (link == 0) continue;
        const Piece piece{old.a.load(std::memory_order_relaxed),
                          old.b.load(std::memory_order_relaxed),
                          old.c.load(std::memory_order_relaxed)};
        const Slots::Found found =
            larger->find(static_cast<std::uint32_t>(link >> 32), piece);
        if (found.slot == Slots::NO_SLOT) continue;  // forgotten
        Slots::Slot& slot = larger->slots[found.slot];
        slot.a.store(piece.a, std::memory_order_relaxed);
        slot.b.store(piece.b, std::memory_order_relaxed);
        slot.c.store(piece.c, std::memory_order_relaxed);
        slot.link.store(link, std::memory_order_relaxed);
        ++used_;
    }
    all_slots_.push_back(std::move(larger));
    slots_.store(all_slots_.back().get(), std::memory_order_release);
    return true;
}

}  // namespace lemara
