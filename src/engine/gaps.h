// Whether a word is judged as text. Tests: tests/engine/gaps_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tables/word_bytes.h"

namespace lemara {

/// True if one of eight bytes is `byte`.
constexpr bool holds(std::uint64_t bytes, char byte) {
    constexpr std::uint64_t ONES = 0x0101010101010101u;
    const std::uint64_t rest = bytes ^ (ONES * static_cast<std::uint8_t>(byte));
    return ((rest - ONES) & ~rest & ONES << 7) != 0;  // a zero among its bytes
}

/// True if a text holds a blank or a hyphen: it may be several words, and is judged as
/// they are. Asked of every word, so eight bytes at a look: how long the next word is
/// can't be foreseen, and a branch that was guessed wrong costs more than all the looks.
inline bool has_gap(std::string_view text) {
    const auto at_gap = [](std::uint64_t bytes) {
        return holds(bytes, ' ') || holds(bytes, '-');
    };
    const std::size_t size = text.size();
    if (size < 4) {
        for (const char c : text) {
            if (c == ' ' || c == '-') return true;
        }
        return false;
    }
    if (size < 8) return at_gap(up_to_eight_at(text.data(), size));
    for (std::size_t at = 0; at + 8 < size; at += 8) {
        if (at_gap(eight_at(text.data() + at))) return true;
    }
    return at_gap(eight_at(text.data() + size - 8));
}

}  // namespace lemara
