// The bytes of a file, read at once.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace lemara {

class FileBytes {
public:
    /// False if the file can't be opened, or has more than 2 GiB. One that breaks off in
    /// reading ends there.
    bool read(const std::string& path);

    std::string_view view() const { return {bytes_.get(), size_}; }

private:
    struct Free {
        bool large;  // it stands on large pages
        void operator()(char* bytes) const noexcept;
    };

    void make_room(std::size_t capacity);

    // Nothing is written into it that is not read.
    std::unique_ptr<char, Free> bytes_{nullptr, Free{false}};
    std::size_t size_ = 0, capacity_ = 0;
};

}  // namespace lemara
