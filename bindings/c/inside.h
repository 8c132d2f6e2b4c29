// What the parts of the C interface share: what the handles hold, and the ways of errors
// and structures across the border.
#pragma once

#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "lemara/checker.h"
#include "lemara/lemara.h"

struct lemara_error {
    std::string message;
};

struct lemara_strings {
    std::vector<std::string> list;
};

struct lemara_checker {
    std::unique_ptr<lemara::Checker> checker;
    std::vector<std::string> notes;
    std::string configuration, dictionary;
};

namespace lemara::c_api {

inline void tell(lemara_error** error, std::string message) {
    if (error == nullptr) return;
    *error = new (std::nothrow) lemara_error{std::move(message)};
}

/// Runs `action`, which answers a status; no exception gets out.
template <class Action>
lemara_status guarded(lemara_error** error, Action action) noexcept {
    if (error != nullptr) *error = nullptr;
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return LEMARA_NO_MEMORY;
    } catch (const std::exception& e) {
        try {
            tell(error, e.what());
        } catch (...) {
        }
        return LEMARA_FAILED;
    } catch (...) {
        return LEMARA_FAILED;
    }
}

inline lemara_status refuse(lemara_error** error,
                            const std::optional<lemara::Problem>& problem) {
    if (!problem) return LEMARA_OK;
    tell(error, problem->text());
    return LEMARA_REFUSED;
}

inline lemara_status bad(lemara_error** error, const char* what) {
    tell(error, what);
    return LEMARA_BAD_ARGUMENT;
}

inline const char* or_empty(const char* text) { return text == nullptr ? "" : text; }

/// Copies a structure of ours into one of the caller's, which may be older and shorter.
template <class Structure>
lemara_status hand_over(Structure filled, Structure* wanted) {
    if (wanted == nullptr || wanted->size < sizeof(std::size_t))
        return LEMARA_BAD_ARGUMENT;
    filled.size = wanted->size;
    const auto* from = reinterpret_cast<const char*>(&filled);
    auto* to = reinterpret_cast<char*>(wanted);
    const std::size_t known = wanted->size < sizeof filled ? wanted->size : sizeof filled;
    for (std::size_t i = sizeof(std::size_t); i < known; ++i) to[i] = from[i];
    return LEMARA_OK;
}

/// Reads a structure of the caller's; what it lacks keeps its start value.
template <class Structure>
bool take_over(const Structure* given, Structure& filled) {
    if (given == nullptr) return true;
    if (given->size < sizeof(std::size_t)) return false;
    const auto* from = reinterpret_cast<const char*>(given);
    auto* to = reinterpret_cast<char*>(&filled);
    const std::size_t known = given->size < sizeof filled ? given->size : sizeof filled;
    for (std::size_t i = 0; i < known; ++i) to[i] = from[i];
    return true;
}

inline lemara_status strings_of(std::vector<std::string> list, lemara_strings** strings) {
    *strings = new lemara_strings{std::move(list)};
    return LEMARA_OK;
}

constexpr char NULL_ARGUMENT[] = "a null pointer";

/// Answers with a list of one string.
inline lemara_status string_of(std::string text, lemara_strings** strings) {
    std::vector<std::string> list;
    list.push_back(std::move(text));
    return strings_of(std::move(list), strings);
}

}  // namespace lemara::c_api
