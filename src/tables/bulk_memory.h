// Memory for the states and arcs of a loaded table: one block for all of a kind, out of
// which each is deleted on its own, as if it came from `new`. A host may do so, and may
// put its own objects in their place.
//
// How a deletion tells the two apart: what `new` returns is aligned to 16 bytes; an
// object of a block is not, it stands 8 bytes behind such a place. The block is cut into
// pages, and each begins with the way to the block's count of objects that are still
// alive. The last one to go takes the block along.
//
// Under AddressSanitizer there are no blocks, so that it sees every object by itself.
//
// Tests: tests/tables/bulk_memory_test.cpp.
#pragma once

#include <cstddef>
#include <new>
#include <utility>

namespace lemara {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool EVERY_OBJECT_IS_WATCHED = true;
#elif !defined(__has_feature)
constexpr bool EVERY_OBJECT_IS_WATCHED = false;
#elif __has_feature(address_sanitizer)
constexpr bool EVERY_OBJECT_IS_WATCHED = true;
#else
constexpr bool EVERY_OBJECT_IS_WATCHED = false;
#endif

constexpr bool BULK_OBJECTS =
    !EVERY_OBJECT_IS_WATCHED && __STDCPP_DEFAULT_NEW_ALIGNMENT__ >= 16;

/// Room for `count` objects of a size. What was not taken out of it goes with it.
class BulkRoom {
public:
    BulkRoom(std::size_t size, std::size_t count);
    ~BulkRoom();
    BulkRoom(const BulkRoom&) = delete;
    BulkRoom& operator=(const BulkRoom&) = delete;

    /// The next place; there are `count` of them.
    void* take() {
        if (taken_ == of_page_) {
            page_ += PAGE;
            taken_ = 0;
        }
        --left_;
        return page_ + FIRST + stride_ * taken_++;
    }

    /// Ends an object's place, wherever it came from.
    static void free(void* place) noexcept;

private:
    static constexpr std::size_t PAGE = std::size_t{1} << 16;  // a power of two
    static constexpr std::size_t FIRST = 24;                   // of a page's objects

    struct Page;

    static void leave(Page* block, std::size_t objects) noexcept;

    std::size_t stride_, left_;
    Page* block_ = nullptr;
    char* page_ = nullptr;     // that objects are taken from
    std::size_t of_page_ = 0;  // objects
    std::size_t taken_ = 0;    // of the page's
};

/// Makes objects of one class that `delete` ends one by one.
template <class T>
class Bulk {
public:
    explicit Bulk(std::size_t count) : room_(sizeof(T), BULK_OBJECTS ? count : 0) {
        static_assert(alignof(T) <= 8, "a place is aligned to 8 bytes");
    }

    template <class... Arguments>
    T* make(Arguments&&... arguments) {
        if (!BULK_OBJECTS) return new T(std::forward<Arguments>(arguments)...);
        return ::new (room_.take()) T(std::forward<Arguments>(arguments)...);
    }

private:
    BulkRoom room_;
};

}  // namespace lemara
