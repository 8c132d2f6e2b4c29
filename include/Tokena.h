#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Analisia.h"

/// A token of a sentence. A plain value.
class [[gnu::visibility("default")]] Tokena {
public:
    std::string testua;          ///< the text, Latin-1; several words after a merge
    bool hutsunea = false;       ///< a blank followed
    std::int32_t maiuskula = 0;  ///< 1: no small letter, or a capital in front; else 0
    std::vector<Analisia> analisiak;  ///< in the order in which they were found

    Tokena() = default;

    /// Stores text and blank. The number is not stored: `maiuskula` stays 0.
    Tokena(std::string testua, bool hutsunea, int maiuskula);

    Tokena(const Tokena&) = default;
    Tokena(Tokena &&) = default;
    Tokena& operator=(const Tokena&) = default;
    Tokena& operator=(Tokena&&) = default;
    virtual ~Tokena() = default;
};
