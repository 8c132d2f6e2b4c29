// What stands in a text and is no word: web and mail addresses, paths and file names,
// handles and hashtags. Tests: tests/host/addresses_test.cpp.
#pragma once

#include <cstddef>
#include <string_view>

namespace lemara::host {

/// Bytes of the address that begins at byte `at` of a UTF-8 text; 0 if none does. The
/// caller asks at places where a word may begin. What follows an address without a blank
/// belongs to it
/// ("www.adibidea.eus-en"), closing signs at its end do not.
///
/// Cost: a few hundred bytes of look-ahead, and the length of the address.
std::size_t address_at(std::string_view text, std::size_t at);

/// True if an address may begin behind this character: it is none that stands inside one.
bool may_precede_address(char32_t character);

}  // namespace lemara::host
