#include "Zubia.h"

#include <utility>

Zubia::Zubia() : hurrengo_egoera(0) {}

Zubia::Zubia(int target, std::string upper, std::string lower)
    : hurrengo_egoera(target),
      goiko_ikurra(std::move(upper)),
      beheko_ikurra(std::move(lower)) {}

std::string Zubia::toString() const {
    return "\n   - hurrengo_egoera: " + std::to_string(hurrengo_egoera) +
           "\n   - goiko_ikurra: " + goiko_ikurra +
           "\n   - beheko_ikurra: " + beheko_ikurra + "\n";
}
