#include "Zubia.h"

#include <utility>

#include "tables/bulk_memory.h"

Zubia::Zubia() : hurrengo_egoera(0) {}

Zubia::Zubia(int target, std::string upper, std::string lower)
    : hurrengo_egoera(target),
      goiko_ikurra(std::move(upper)),
      beheko_ikurra(std::move(lower)) {}

void* Zubia::operator new(std::size_t size) { return ::operator new(size); }

void* Zubia::operator new(std::size_t size, const std::nothrow_t& nothrow) noexcept {
    return ::operator new(size, nothrow);
}

void Zubia::operator delete(void* place) noexcept { lemara::BulkRoom::free(place); }

std::string Zubia::toString() const {
    return "\n   - hurrengo_egoera: " + std::to_string(hurrengo_egoera) +
           "\n   - goiko_ikurra: " + goiko_ikurra +
           "\n   - beheko_ikurra: " + beheko_ikurra + "\n";
}
