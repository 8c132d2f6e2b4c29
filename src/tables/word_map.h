// What is known of words that were asked about before: a number for each.
//
// A text asks for the same words again and again. A word of up to 24 bytes is found by
// one look at its bytes, all of which are compared, so what is found is never that of
// another word. Reading takes no lock. The map is bounded and only grows; what finds no
// room is found out anew each time. Tests: tests/tables/word_map_test.cpp.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "tables/turn.h"
#include "tables/word_bytes.h"

namespace lemara {

class WordMap {
public:
    static constexpr std::size_t LONGEST = 24;  // bytes of a word
    static constexpr std::uint64_t NOTHING = 0;

    /// A map of at most `most_slots` slots of 32 bytes, a power of two. Three quarters of
    /// them are used.
    explicit WordMap(std::size_t most_slots) : most_slots_(most_slots) {}

    /// A word as it is kept: its bytes, with NULs behind them. For who finds nothing and
    /// puts something, once is enough.
    class Word {
    public:
        explicit Word(std::string_view word) : fits_(word.size() <= LONGEST) {
            // No byte behind the word is touched: its last bytes are read up to its end,
            // and moved to their place.
            const char* at = word.data();
            const std::size_t size = word.size();
            if (!fits_) return;
            if (size <= 8) {
                a_ = up_to_eight_at(at, size);
                return;
            }
            a_ = eight_at(at);
            if (size <= 16) {
                b_ = eight_at(at + size - 8) >> 8 * (16 - size);
            } else {
                b_ = eight_at(at + 8);
                c_ = eight_at(at + size - 8) >> 8 * (24 - size);
            }
        }

    private:
        friend class WordMap;
        Word(std::uint64_t a, std::uint64_t b, std::uint64_t c)
            : fits_(true), a_(a), b_(b), c_(c) {}

        std::uint64_t hash() const {
            const std::uint64_t sum = a_ * 0x9E3779B97F4A7C15u +
                                      b_ * 0xC2B2AE3D27D4EB4Fu + c_ * 0x165667B19E3779F9u;
            return sum ^ sum >> 32 ^ sum >> 47;
        }

        bool fits_;
        std::uint64_t a_ = 0, b_ = 0, c_ = 0;
    };

    /// What was put for the word, or NOTHING. NULs at the end of a word don't count; for
    /// a table it ends there.
    std::uint64_t find(const Word& word) const {
        const Slots* slots = slots_.load(std::memory_order_acquire);
        if (slots == nullptr || !word.fits_) return NOTHING;
        return slots->find(word).value;
    }
    std::uint64_t find(std::string_view word) const { return find(Word(word)); }

    /// Keeps `value`, which is not NOTHING, unless there is something for the word
    /// already, no room, or another thread at it. True if it was kept.
    bool put(const Word& word, std::uint64_t value);
    bool put(std::string_view word, std::uint64_t value) {
        return put(Word(word), value);
    }

    /// False once the map is full.
    bool has_room() const { return !full_.load(std::memory_order_relaxed); }

private:
    static constexpr std::size_t FIRST_SLOTS = std::size_t{1} << 8;
    static constexpr std::size_t LONGEST_PROBE = 64;

    /// Open addressing. The value is written last; only who has the turn writes, and
    /// never where something stands.
    struct Slots {
        explicit Slots(std::size_t size) : mask(size - 1), slots(new Slot[size]()) {}

        struct alignas(32) Slot {
            std::atomic<std::uint64_t> a, b, c;
            std::atomic<std::uint64_t> value;
        };
        static constexpr std::size_t NO_SLOT = static_cast<std::size_t>(-1);
        struct Found {
            std::uint64_t value;
            std::size_t slot;  // where it is or would be; NO_SLOT: nowhere near
        };

        Found find(const Word& word) const {
            std::size_t slot = word.hash() & mask;
            for (std::size_t i = 0; i < LONGEST_PROBE; ++i, slot = (slot + 1) & mask) {
                const Slot& at = slots[slot];
                const std::uint64_t value = at.value.load(std::memory_order_acquire);
                if (value == NOTHING) return {NOTHING, slot};
                if (at.a.load(std::memory_order_relaxed) == word.a_ &&
                    at.b.load(std::memory_order_relaxed) == word.b_ &&
                    at.c.load(std::memory_order_relaxed) == word.c_) {
                    return {value, slot};
                }
            }
            return {NOTHING, NO_SLOT};
        }
        bool put(const Word& word, std::uint64_t value) const;

        std::size_t mask;
        std::unique_ptr<Slot[]> slots;
    };

    void widen();

    const std::size_t most_slots_;
    std::atomic<const Slots*> slots_{nullptr};
    std::atomic<bool> full_{false};

    std::atomic_flag busy_ = ATOMIC_FLAG_INIT;  // guards all below
    // The last is in use; readers may be in others.
    std::vector<std::unique_ptr<Slots>> all_slots_;
    std::size_t used_ = 0;
};

}  // namespace lemara
