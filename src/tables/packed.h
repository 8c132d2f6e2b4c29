// The packed form of a table: what searches run on.
//
// States and arcs stand in contiguous arrays, the arcs of a state in file order. Every distinct
// pair of symbols is a label, stored once. A byte for each arc, the first of its lower symbol
// (0: empty), finds the arcs that can match the next byte of a token, 16 at a look; and a mask
// for each state tells which bytes can follow behind its empty arcs, so that hardly any arc is
// taken in vain.
//
// The arrays lie in one block, in the layout of a compiled table's file (see image.h), whether
// they were packed in memory or mapped. Arcs that lead nowhere (to a state that doesn't exist)
// are left out; nothing else differs from the graph.
//
// Tests: tests/tables/packed_test.cpp, against the walk over the graph.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

class Egoera;

namespace lemara {

/// Where the symbols of a label stand in the pool.
struct PackedLabel {
    static constexpr std::uint8_t HAS_OPEN = 1;  // the upper symbol holds a "<"

    std::uint32_t upper_at, upper_size;
    std::uint32_t lower_at, lower_size;
    std::uint32_t written_size;  // of the upper symbol in a generation: 0 if it is left out
    std::uint8_t written_first;  // its first byte there; 0 if nothing is written
    std::uint8_t flags;
    std::uint16_t unused;        // 0

    /// Fills in all but the places from the symbols themselves.
    void describe(std::string_view upper, std::string_view lower);
};

/// What is known of a table as a whole.
constexpr std::uint32_t EMPTY_CYCLES = 1;  // arcs with an empty lower symbol form a cycle
constexpr std::uint32_t ANY_CYCLES = 2;    // arcs of any kind form a cycle

/// Read-only view of a packed table. The block that it looks at belongs to somebody else.
struct PackedView {
    static constexpr int CLASS_OF_END = 31;  // mask bit of the end of the token

    std::uint32_t state_count = 0;
    std::uint32_t arc_count = 0;
    std::uint32_t label_count = 0;
    std::uint32_t pool_size = 0;
    bool wide_labels = false;                       // labels of 4 bytes, not 2
    std::uint32_t cycles = 0;                       // EMPTY_CYCLES, ANY_CYCLES
    const std::uint8_t* byte_class = nullptr;       // [256]: mask bit of a byte, 0 to 30
    const std::uint32_t* state_begin = nullptr;     // [state_count + 1]: first arc
    const std::uint32_t* state_mask = nullptr;      // [state_count]: what can follow
    const std::int32_t* arc_target = nullptr;       // [arc_count]; negative: end of a word
    const void* arc_label = nullptr;                // [arc_count]
    const std::uint8_t* arc_first = nullptr;        // [arc_count + ARC_PADDING]
    const PackedLabel* labels = nullptr;            // [label_count]
    const char* pool = nullptr;                     // [pool_size]

    /// Bytes behind the last arc's that a look may touch.
    static constexpr std::size_t ARC_PADDING = 64;

    std::uint32_t label_of(std::uint32_t arc) const {
        return wide_labels ? static_cast<const std::uint32_t*>(arc_label)[arc]
                           : static_cast<const std::uint16_t*>(arc_label)[arc];
    }
    std::string_view upper(std::uint32_t label) const {
        return {pool + labels[label].upper_at, labels[label].upper_size};
    }
    std::string_view lower(std::uint32_t label) const {
        return {pool + labels[label].lower_at, labels[label].lower_size};
    }
    bool can_follow(std::int32_t state, std::uint32_t class_bit) const {
        return (state_mask[state] & class_bit) != 0;
    }
    std::uint32_t bit_of(std::uint8_t byte) const { return std::uint32_t{1} << byte_class[byte]; }
    static constexpr std::uint32_t END_BIT = std::uint32_t{1} << CLASS_OF_END;
};

/// The arcs among `count` (at most 64) from `first` on whose byte is `byte` or 0, as bits.
inline std::uint64_t matching_arcs(const std::uint8_t* first, std::uint32_t count,
                                   std::uint8_t byte) {
    std::uint64_t bits = 0;
#ifdef __SSE2__
    const __m128i wanted = _mm_set1_epi8(static_cast<char>(byte));
    const __m128i none = _mm_setzero_si128();
    for (std::uint32_t i = 0; i < count; i += 16) {
        const __m128i look =
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(first + i));
        const __m128i hit =
            _mm_or_si128(_mm_cmpeq_epi8(look, wanted), _mm_cmpeq_epi8(look, none));
        bits |= static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(hit))) << i;
    }
#else
    for (std::uint32_t i = 0; i < count; ++i) {
        const bool hit = first[i] == byte || first[i] == 0;
        bits |= static_cast<std::uint64_t>(hit) << i;
    }
#endif
    return count >= 64 ? bits : bits & ((std::uint64_t{1} << count) - 1);
}

/// A table packed from its graph, or an image that somebody checked. Owns its block.
class PackedTable {
public:
    /// Packs the states of a graph; null states, null arcs and dangling targets are passed
    /// over. Cost: linear in the records.
    explicit PackedTable(const std::vector<Egoera*>& states);

    const PackedView& view() const { return view_; }

    /// The block, in the layout of image.h, header included but not filled in.
    const std::vector<std::uint64_t>& block() const { return block_; }
    std::size_t block_bytes() const { return bytes_; }

private:
    std::vector<std::uint64_t> block_;
    std::size_t bytes_ = 0;
    PackedView view_;
};

/// Sizes of the arrays, and where they stand in a block.
struct PackedLayout {
    std::uint32_t state_count = 0, arc_count = 0, label_count = 0, pool_size = 0;
    bool wide_labels = false;
    std::uint32_t cycles = 0;

    static constexpr std::size_t HEADER_BYTES = 64;
    static constexpr std::size_t CLASSES_AT = HEADER_BYTES;  // 256 bytes

    std::uint64_t begin_at() const { return CLASSES_AT + 256; }
    std::uint64_t mask_at() const { return begin_at() + 4 * (std::uint64_t{state_count} + 1); }
    std::uint64_t target_at() const { return mask_at() + 4 * std::uint64_t{state_count}; }
    std::uint64_t labels_at() const { return target_at() + 4 * std::uint64_t{arc_count}; }
    std::uint64_t arc_label_at() const {
        return labels_at() + sizeof(PackedLabel) * std::uint64_t{label_count};
    }
    std::uint64_t first_at() const {
        return arc_label_at() + (wide_labels ? 4 : 2) * std::uint64_t{arc_count};
    }
    std::uint64_t pool_at() const {
        return first_at() + arc_count + PackedView::ARC_PADDING;
    }
    std::uint64_t total() const { return pool_at() + pool_size; }

    /// The view of a block of this layout.
    PackedView view(const char* block) const;
};

}  // namespace lemara
