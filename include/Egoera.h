#pragma once

#include <cstddef>
#include <new>
#include <vector>

#include "Zubia.h"

/// A state of a transducer with its arcs, in the order in which they are tried.
///
/// The state owns its arcs, but only deleteZubiak frees them: whoever deletes a state
/// calls it first. A null arc is passed over everywhere.
class [[gnu::visibility("default")]] Egoera {
public:
    bool final;  ///< set by the last record read; read by printEgoera alone
    std::vector<Zubia*> zubiak;  ///< owned; a word ends by an arc with a negative target

    Egoera();

    /// Takes over the arcs of `zubiak`.
    Egoera(std::vector<Zubia*> zubiak, bool final);

    Egoera(const Egoera&) = delete;  // two states would own the same arcs
    Egoera& operator=(const Egoera&) = delete;

    /// Frees the vector, not the arcs.
    virtual ~Egoera();

    /// The states of a loaded table share a block of memory. `delete` ends one of them, or
    /// one that `new` made.
    static void operator delete(void* place) noexcept;
    /// Its counterpart; what it makes stands alone.
    static void* operator new(std::size_t size);
    /// The same; null if there is no memory.
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
    /// Memory of the caller.
    static void* operator new(std::size_t, void* place) noexcept { return place; }

    /// Appends an arc and takes it over.
    void addZubia(Zubia * zubia);

    /// True if some arc's lower symbol equals `ikurra`.
    bool hasZubia(const std::string& ikurra) const;

    /// Deletes every arc. The vector keeps its size; its slots become null.
    void deleteZubiak();

    /// Writes the state and its arcs to standard output, for people.
    void printEgoera() const;
};
