// The words of the table format that writer and reader share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lemara::tools {

constexpr std::size_t LONGEST_RECORD = 997;  // bytes that the loader counts in one read
constexpr std::size_t SHORTEST_RECORD = 5;  // bytes; the loader passes over shorter lines
constexpr std::uint64_t HIGHEST_STATE = 0x7FFFFFFE;  // targets are signed 32-bit numbers

constexpr std::string_view FINAL_RECORD = "final: ";
constexpr std::string_view EPSILON = "<>";  // an empty lower symbol

/// What the walk makes of a byte of the word before it compares; a lower symbol with
/// another byte than this never matches. The sign 215 counts as a capital.
constexpr char lowered(char c) {
    const unsigned byte = static_cast<unsigned char>(c);
    const bool capital = (byte >= 'A' && byte <= 'Z') || (byte >= 192 && byte <= 221);
    return static_cast<char>(capital ? byte + 32 : byte);
}

constexpr bool is_control(char c) {
    const unsigned byte = static_cast<unsigned char>(c);
    return byte < 0x20 || (byte >= 0x7F && byte < 0xA0);
}

}  // namespace lemara::tools
