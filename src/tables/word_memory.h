// Remembers of which words a table said yes, and of which no.
//
// A text asks for the same words again and again. A word is taken in pieces of 24 bytes,
// as typed; for most there is one. A slot holds a piece, what stood in front of it, and
// behind it the answer or a number for the words that go on. Reading takes no lock and
// compares all bytes, so an answer is never that of another word.
//
// What is remembered is bounded; beyond that the answer is found anew each time. Tests:
// tests/tables/word_memory_test.cpp.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "tables/word_bytes.h"

namespace lemara {

class WordMemory {
public:
    /// Longer words are not remembered.
    static constexpr std::size_t LONGEST = 96;

    /// The answer that was put for the word, if there is one. NULs at the end of a word
    /// don't count; for a table it ends there.
    std::optional<bool> find(std::string_view word) const {
        const Slots* slots = slots_.load(std::memory_order_acquire);
        if (slots == nullptr || word.size() > LONGEST) return std::nullopt;
        std::uint32_t from = START;
        for (; word.size() > PIECE; word.remove_prefix(PIECE)) {
            from = slots->find(from, piece_of(word.data(), PIECE)).to;
            if (from == NOTHING) return std::nullopt;
        }
        const std::uint32_t to =
            slots->find(from | LAST, piece_of(word.data(), word.size())).to;
        if (to == NOTHING) return std::nullopt;
        return to == YES;
    }

    /// Remembers an answer, unless there is no room or another thread is at it.
    void put(std::string_view word, bool answer);

private:
    static constexpr std::size_t PIECE = 24;

    // What a piece leads to: an answer, or the number of what goes on. In front of a
    // piece such a number stands, with LAST if the word ends with the piece.
    static constexpr std::uint32_t NOTHING = 0, NO = 1, YES = 2, START = 3;
    static constexpr std::uint32_t LAST = std::uint32_t{1} << 31;

    static constexpr std::size_t FIRST_SLOTS = std::size_t{1} << 8;
    static constexpr std::size_t MOST_SLOTS = std::size_t{1} << 19;  // 16 MiB
    static constexpr std::size_t LONGEST_PROBE = 64;

    /// Up to 24 bytes, with NULs behind them.
    struct Piece {
        std::uint64_t a, b, c;
    };

    static Piece piece_of(const char* at, std::size_t size);

    /// Open addressing. Both ends of a link are one number, written last; only who holds
    /// the mutex writes, and never where something stands.
    struct Slots {
        explicit Slots(std::size_t size) : mask(size - 1), slots(new Slot[size]()) {}

        struct alignas(32) Slot {
            std::atomic<std::uint64_t> a, b, c;
            std::atomic<std::uint64_t> link;  // from, above to
        };
        struct Found {
            std::uint32_t to;
            std::size_t slot;  // where the link is or would be; NO_SLOT: nowhere near
        };
        static constexpr std::size_t NO_SLOT = static_cast<std::size_t>(-1);

        Found find(std::uint32_t from, const Piece& piece) const {
            std::size_t slot = hash_of(from, piece) & mask;
            for (std::size_t i = 0; i < LONGEST_PROBE; ++i, slot = (slot + 1) & mask) {
                const Slot& at = slots[slot];
                const std::uint64_t link = at.link.load(std::memory_order_acquire);
                if (link == 0) return {NOTHING, slot};
                if (link >> 32 == from &&
                    at.a.load(std::memory_order_relaxed) == piece.a &&
                    at.b.load(std::memory_order_relaxed) == piece.b &&
                    at.c.load(std::memory_order_relaxed) == piece.c) {
                    return {static_cast<std::uint32_t>(link), slot};
                }
            }
            return {NOTHING, NO_SLOT};
        }

        static std::uint64_t hash_of(std::uint32_t from, const Piece& piece) {
            const std::uint64_t sum = (piece.a ^ from) * 0x9E3779B97F4A7C15u +
                                      piece.b * 0xC2B2AE3D27D4EB4Fu +
                                      piece.c * 0x165667B19E3779F9u;
            return sum ^ sum >> 32 ^ sum >> 47;
        }

        std::size_t mask;
        std::unique_ptr<Slot[]> slots;
    };

    bool has_room();
    std::uint32_t link(std::uint32_t from, const Piece& piece, std::uint32_t to);

    std::atomic<const Slots*> slots_{nullptr};

    std::mutex mutex_;  // guards all below
    // The last is in use; readers may be in others.
    std::vector<std::unique_ptr<Slots>> all_slots_;
    std::size_t used_ = 0;
    std::uint32_t next_number_ = START + 1;
};

// No byte behind the piece is touched: the last bytes are read up to its end, and moved
// to their place.
inline WordMemory::Piece WordMemory::piece_of(const char* at, std::size_t size) {
    if (size > 16) {
        return {eight_at(at), eight_at(at + 8),
                eight_at(at + size - 8) >> 8 * (24 - size)};
    }
    if (size > 8) return {eight_at(at), eight_at(at + size - 8) >> 8 * (16 - size), 0};
    return {up_to_eight_at(at, size), 0, 0};
}

}  // namespace lemara
