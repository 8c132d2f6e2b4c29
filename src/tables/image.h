// Compiled tables as files: checked, then mapped. The layout is that of PackedLayout,
// with a header of 64 bytes in front: magic number, version, byte order, checksum, total
// size, the sizes of the arrays, flags.
//
// Tests: tests/tables/image_test.cpp.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tables/packed.h"

namespace lemara {

/// Writes the header in front of a packed block.
std::string image_of(const PackedTable& table);

/// What is wrong with the states and arcs of an image; empty if nothing is. No search
/// minds such a defect, but there is no graph that the image stands for.
std::string defect_of_graph(const PackedView& view);

/// An image that is whole and safe to search, in memory or mapped.
class Image {
public:
    /// Opens the file at `path`; null if it is no such image. Maps it if it has this
    /// machine's byte order, else reads and turns it. `compiled` tells whether the file
    /// means to be one.
    static std::unique_ptr<Image> open(const std::string& path, bool& compiled);

    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    const PackedView& view() const { return view_; }

private:
    Image() = default;

    void map(int file, std::size_t size);

    const char* mapped_ = nullptr;
    std::size_t mapped_size_ = 0;
    std::vector<std::uint64_t> own_;
    PackedView view_;
};

}  // namespace lemara
