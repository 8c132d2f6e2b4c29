// Memory of several megabytes that is written from end to end.
#pragma once

#include <sys/mman.h>

#include <cstddef>

namespace lemara {

constexpr std::size_t LARGE_PAGE = std::size_t{1} << 21;

/// Asks for large pages, if the system has any to give: the first touch of each small one
/// costs more than what is written into it. `bytes` belong to the caller alone.
inline void use_large_pages(void* block, std::size_t bytes) {
#ifdef MADV_HUGEPAGE
    if (bytes >= LARGE_PAGE) ::madvise(block, bytes, MADV_HUGEPAGE);
#else
    static_cast<void>(block);
    static_cast<void>(bytes);
#endif
}

}  // namespace lemara
