// The packed form of a table: what searches run on.
//
// A state is a block of bytes: how many arcs it has, then a byte for each arc, the first
// of its lower symbol (0: empty), then the arcs themselves, in file order. So a search
// that enters a state touches one place in memory. The bytes in front find the arcs that
// can match the next byte of a token, 16 at a look; and a mask in each arc tells which
// bytes can follow behind it, over empty arcs too, so that hardly any arc is taken in
// vain. An arc holds the place of its target's block. Every distinct pair of symbols is a
// label, stored once.
//
// All of it lies in one block, in the layout of a compiled table's file (see image.h),
// whether it was packed in memory or mapped. Arcs that lead nowhere (to a state that
// doesn't exist) are left out; nothing else differs from the graph.
//
// Tests: tests/tables/packed_test.cpp, against the walk over the graph.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

class Egoera;

namespace lemara {

struct ArcsByState;

/// Where the symbols of a label stand in the pool.
struct PackedLabel {
    // What a generation asks of an upper symbol.
    static constexpr std::uint8_t HAS_OPEN = 1;  // it holds a "<"
    static constexpr std::uint8_t SHUTS = 2;     // a tag that may shut a path out
    static constexpr std::uint8_t LOOSE =
        4;  // part of a tag, whose rest another may hold

    std::uint32_t upper_at, upper_size;
    std::uint32_t lower_at, lower_size;
    std::uint32_t
        written_size;  // of the upper symbol in a generation: 0 if it is left out
    std::uint8_t written_first;  // its first byte there; 0 if nothing is written
    std::uint8_t flags;
    std::uint16_t unused;  // 0

    /// True if a look at one byte doesn't tell whether an arc of this label matches. A
    /// NUL is such a byte: it stands for no symbol at all there.
    bool is_long(std::uint8_t first) const {
        return lower_size > 1 || (lower_size == 1 && first == 0);
    }

    /// Fills in all but the places from the symbols themselves.
    void describe(std::string_view upper, std::string_view lower);
};

/// Where a state stands: its block's distance from the first one, in units of 4 bytes.
using StateRef = std::int32_t;

/// An arc. If there are more labels than fit here, they are in a table of their own.
struct PackedArc {
    static constexpr std::uint16_t LONG =
        1 << 15;  // in `label`: the lower symbol is no single
                  // byte, nor empty; its label tells what it is

    StateRef target;        // negative: end of a word
    std::uint16_t label;    // number, and LONG
    std::uint16_t follows;  // mask of what can follow; classes of bytes, and the end

    bool is_long() const { return (label & LONG) != 0; }
};

/// A state, taken out of its block.
struct PackedState {
    std::uint32_t count;
    const std::uint8_t* first;  // a byte for each arc
    const PackedArc* arcs;
};

/// What is known of a table as a whole.
constexpr std::uint32_t EMPTY_CYCLES = 1;  // arcs with an empty lower symbol form a cycle
constexpr std::uint32_t ANY_CYCLES = 2;    // arcs of any kind form a cycle

/// Read-only view of a packed table. The block that it looks at belongs to somebody else.
///
/// An image is not looked through before it is searched, so nothing is taken for granted
/// of its arcs: whatever place and label an arc names, `state` and `label_of` lead to
/// memory of the block.
struct PackedView {
    static constexpr int CLASS_OF_END = 15;  // mask bit of the end of the token
    static constexpr std::uint16_t END_BIT = std::uint16_t{1} << CLASS_OF_END;

    std::uint32_t state_count = 0;
    std::uint32_t arc_count = 0;
    std::uint32_t label_count = 0;  // a power of two; those behind the last one are empty
    std::uint32_t label_mask = 0;   // one less
    std::uint32_t pool_size = 0;
    std::uint32_t states_size = 0;               // of all blocks, in units of 4 bytes
    std::uint32_t cycles = 0;                    // EMPTY_CYCLES, ANY_CYCLES
    const std::uint8_t* byte_class = nullptr;    // [256]: mask bit of a byte, 0 to 14
    const std::uint8_t* states = nullptr;        // the blocks, state 0 in front
    const std::uint32_t* wide_labels = nullptr;  // one for each place of 8 bytes, or null
    const PackedLabel* labels = nullptr;         // [label_count]
    const char* pool = nullptr;                  // [pool_size]

    /// Bytes behind an array that a look or a copy may touch.
    static constexpr std::size_t PADDING = 64;

    /// A count of this in a block's first byte means that the count stands in the next
    /// word.
    static constexpr std::uint8_t MANY_ARCS = 255;

    /// Bytes that may be read behind the states: as far as a block reaches whose first
    /// byte is the last that can be one.
    static constexpr std::size_t BEHIND_STATES = 2304;

    /// The state at a place; one without arcs if no block can stand there.
    PackedState state(StateRef ref) const {
        if (static_cast<std::uint32_t>(ref) >= states_size) return nowhere();
        const std::uint8_t* block = states + 4 * static_cast<std::size_t>(ref);
        const std::uint32_t count = *block;
        if (count == MANY_ARCS) return large_state(ref);
        const std::size_t head = (count + 4) & ~std::size_t{3};
        return {count, block + 1, reinterpret_cast<const PackedArc*>(block + head)};
    }

    /// The place behind a state's block.
    StateRef behind(StateRef ref) const {
        const PackedState here = state(ref);
        const auto* end = reinterpret_cast<const std::uint8_t*>(here.arcs + here.count);
        return static_cast<StateRef>((end - states) / 4);
    }

    /// The place of the state of that number; -1 if there is none. Cost: linear in it.
    StateRef find(std::int32_t number) const {
        if (number < 0 || static_cast<std::uint32_t>(number) >= state_count) return -1;
        StateRef ref = 0;
        while (number-- > 0) ref = behind(ref);
        return ref;
    }

    /// The label of an arc, whatever number it holds.
    std::uint32_t label_of(const PackedArc& arc) const {
        if (wide_labels == nullptr) return arc.label & label_mask;
        return wide_label_of(arc) & label_mask;
    }

    /// The number itself.
    std::uint32_t written_label_of(const PackedArc& arc) const {
        if (wide_labels == nullptr) return arc.label & (PackedArc::LONG - 1);
        return wide_label_of(arc);
    }
    std::string_view upper(std::uint32_t label) const {
        return {pool + labels[label].upper_at, labels[label].upper_size};
    }
    std::string_view lower(std::uint32_t label) const {
        return {pool + labels[label].lower_at, labels[label].lower_size};
    }
    std::uint16_t bit_of(std::uint8_t byte) const {
        return static_cast<std::uint16_t>(1u << byte_class[byte]);
    }

private:
    PackedState nowhere() const {
        return {0, states, reinterpret_cast<const PackedArc*>(states)};
    }

    std::uint32_t wide_label_of(const PackedArc& arc) const {
        const auto place = reinterpret_cast<const std::uint8_t*>(&arc) - states;
        return wide_labels[place / 8];
    }

    /// One of MANY_ARCS or more; its block must lie among the others.
    PackedState large_state(StateRef ref) const {
        const std::uint8_t* block = states + 4 * static_cast<std::size_t>(ref);
        std::uint32_t count = 0;
        std::memcpy(&count, block + 4, sizeof count);
        const std::uint64_t head = 8 + ((count + std::uint64_t{3}) & ~std::uint64_t{3});
        const std::uint64_t size = head + sizeof(PackedArc) * std::uint64_t{count};
        if (size / 4 > states_size - static_cast<std::uint32_t>(ref)) return nowhere();
        return {count, block + 8, reinterpret_cast<const PackedArc*>(block + head)};
    }
};

static_assert(PackedView::BEHIND_STATES >=
                  PackedView::MANY_ARCS * (1 + sizeof(PackedArc)) + 1,
              "a block that begins among the states ends in the memory behind them");

/// Arcs that one look takes in.
constexpr std::uint32_t LOOK = 16;

/// The arcs among the first `count` of LOOK from `first` on whose byte is `byte` or 0, as
/// bits. There are LOOK bytes to be read, whatever they are.
inline std::uint32_t matching_of_look(const std::uint8_t* first, std::uint32_t count,
                                      std::uint8_t byte) {
    std::uint32_t bits = 0;
#ifdef __SSE2__
    const __m128i look = _mm_loadu_si128(reinterpret_cast<const __m128i*>(first));
    const __m128i hit =
        _mm_or_si128(_mm_cmpeq_epi8(look, _mm_set1_epi8(static_cast<char>(byte))),
                     _mm_cmpeq_epi8(look, _mm_setzero_si128()));
    bits = static_cast<std::uint32_t>(_mm_movemask_epi8(hit));
#else
    for (std::uint32_t i = 0; i < LOOK; ++i) {
        const bool hit = first[i] == byte || first[i] == 0;
        bits |= static_cast<std::uint32_t>(hit) << i;
    }
#endif
    return bits & ((1u << std::min(count, LOOK)) - 1);
}

/// The same for as many as there are, at most 64.
inline std::uint64_t matching_arcs(const std::uint8_t* first, std::uint32_t count,
                                   std::uint8_t byte) {
    std::uint64_t bits = 0;
    for (std::uint32_t i = 0; i < count; i += LOOK) {
        bits |= std::uint64_t{matching_of_look(first + i, count - i, byte)} << i;
    }
    return bits;
}

/// A table packed from its graph, or an image that somebody checked. Owns its block.
class PackedTable {
public:
    /// Packs the states of a graph; null states, null arcs and dangling targets are
    /// passed over. Cost: linear in the records.
    explicit PackedTable(const std::vector<Egoera*>& states);

    /// The same for the records of a text: what its graph would be packed to.
    explicit PackedTable(ArcsByState&& arcs);

    const PackedView& view() const { return view_; }

    /// The block, in the layout of image.h, header included but not filled in.
    const std::vector<std::uint64_t>& block() const { return block_; }
    std::size_t block_bytes() const { return bytes_; }

private:
    template <class Packer>
    void take(const Packer& packer);

    std::vector<std::uint64_t> block_;
    std::size_t bytes_ = 0;
    PackedView view_;
};

/// True if a graph is what `view`, a packed table, stands for. Cost: linear in the arcs,
/// which are compared one by one: what was changed, and to what, nothing else tells.
bool is_packed_from(const PackedView& view, const std::vector<Egoera*>& states);

/// Sizes of the arrays, and where they stand in a block.
struct PackedLayout {
    std::uint32_t state_count = 0, arc_count = 0, label_count = 0, pool_size = 0;
    std::uint32_t states_size = 0;
    bool wide_labels = false;
    std::uint32_t cycles = 0;

    static constexpr std::size_t HEADER_BYTES = 64;
    static constexpr std::size_t CLASSES_AT = HEADER_BYTES;  // 256 bytes
    static constexpr std::size_t STATES_AT = CLASSES_AT + 256;

    std::uint64_t labels_at() const {
        return STATES_AT + 4 * std::uint64_t{states_size} + PackedView::BEHIND_STATES;
    }
    std::uint64_t wide_labels_at() const {
        return labels_at() + sizeof(PackedLabel) * std::uint64_t{label_count};
    }
    std::uint64_t wide_label_count() const {
        if (!wide_labels) return 0;
        return (4 * std::uint64_t{states_size} + PackedView::BEHIND_STATES) / 8 + 1;
    }
    std::uint64_t pool_at() const { return wide_labels_at() + 4 * wide_label_count(); }
    std::uint64_t total() const { return pool_at() + pool_size + PackedView::PADDING; }

    /// The view of a block of this layout.
    PackedView view(const char* block) const;
};

}  // namespace lemara
