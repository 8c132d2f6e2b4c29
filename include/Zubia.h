#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

/// An arc of a transducer. A plain value; symbols are Latin-1 text of any length.
class [[gnu::visibility("default")]] Zubia {
public:
    std::int32_t
        hurrengo_egoera;        ///< number of the target state; negative: end of a word
    std::string goiko_ikurra;   ///< upper symbol; "<>" where the table's file says so
    std::string beheko_ikurra;  ///< lower symbol; empty: the arc reads nothing

    /// Target 0, both symbols empty.
    Zubia();
    /// All fields in their order.
    Zubia(int hurrengo_egoera, std::string goiko_ikurra, std::string beheko_ikurra);

    /// The arcs of a loaded table share a block of memory. `delete` ends one of them, or
    /// one that `new` made.
    static void operator delete(void* place) noexcept;
    /// Its counterpart; what it makes stands alone.
    static void* operator new(std::size_t size);
    /// The same; null if there is no memory.
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
    /// Memory of the caller.
    static void* operator new(std::size_t, void* place) noexcept { return place; }

    /// The three fields as text of three lines, for people.
    std::string toString() const;
};
