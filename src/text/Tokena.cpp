#include "Tokena.h"

#include <utility>

// Kept on purpose: the number is taken and not stored.
Tokena::Tokena(std::string text, bool blank, int)
    : testua(std::move(text)), hutsunea(blank) {}
