// The bytes of a word as numbers, the first byte lowest.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace lemara {

inline std::uint64_t eight_at(const char* at) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    bytes = __builtin_bswap64(bytes);
#endif
    return bytes;
}

inline std::uint64_t four_at(const char* at) {
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    bytes = __builtin_bswap32(bytes);
#endif
    return bytes;
}

/// At most eight bytes. None behind them is touched: the last four are read up to their
/// end, and moved to their place.
inline std::uint64_t up_to_eight_at(const char* at, std::size_t size) {
    if (size >= 8) return eight_at(at);
    if (size >= 4) return four_at(at) | four_at(at + size - 4) << 8 * (size - 4);
    std::uint64_t bytes = 0;
    for (std::size_t i = size; i-- > 0;)
        bytes = bytes << 8 | static_cast<std::uint8_t>(at[i]);
    return bytes;
}

}  // namespace lemara
