#include "tables/bulk_memory.h"

#include <atomic>
#include <cstdint>

#include "tables/large_pages.h"

namespace lemara {
namespace {

constexpr std::size_t ALIGNED = 16;
constexpr std::size_t ODD = 8;  // where an object stands behind such a place

constexpr std::size_t rounded(std::size_t size, std::size_t unit) {
    return (size + unit - 1) / unit * unit;
}

}  // namespace

/// What a page begins with.
struct BulkRoom::Page {
    Page* first;                     // of the block
    std::atomic<std::size_t> alive;  // of the first page: objects of all pages
};

BulkRoom::BulkRoom(std::size_t size, std::size_t count)
    : stride_(rounded(size, ALIGNED)), left_(count) {
    if (count == 0) return;
    static_assert(FIRST % ALIGNED == ODD && sizeof(Page) <= FIRST,
                  "the first object stands behind it");
    of_page_ = (PAGE - FIRST) / stride_;
    const std::size_t pages = (count + of_page_ - 1) / of_page_;
    const std::size_t last = count - of_page_ * (pages - 1);
    const std::size_t bytes = PAGE * (pages - 1) + FIRST + last * stride_;
    page_ = static_cast<char*>(::operator new (bytes, std::align_val_t{PAGE}));
    use_large_pages(page_, bytes);
    block_ = reinterpret_cast<Page*>(page_);
    for (std::size_t page = 0; page < pages; ++page)
        ::new (page_ + PAGE * page) Page{block_, {0}};
    block_->alive.store(count, std::memory_order_relaxed);
}

BulkRoom::~BulkRoom() {
    if (left_ != 0) leave(block_, left_);
}

void BulkRoom::leave(Page* block, std::size_t objects) noexcept {
    if (block->alive.fetch_sub(objects, std::memory_order_acq_rel) == objects)
        ::operator delete (block, std::align_val_t{PAGE});
}

void BulkRoom::free(void* place) noexcept {
    const auto address = reinterpret_cast<std::uintptr_t>(place);
    if (!BULK_OBJECTS || address % ALIGNED != ODD) {
        ::operator delete(place);
        return;
    }
    leave(reinterpret_cast<Page*>(address & ~(PAGE - 1))->first, 1);
}

}  // namespace lemara
