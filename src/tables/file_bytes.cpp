#include "tables/file_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <new>

#include "tables/large_pages.h"

namespace lemara {
namespace {

constexpr std::size_t LARGEST = std::size_t{1} << 31;     // bytes of a file
constexpr std::size_t FIRST_ROOM = std::size_t{1} << 16;  // where no size is known

struct Closed {
    int file;
    ~Closed() { ::close(file); }
};

}  // namespace

void FileBytes::Free::operator()(char* bytes) const noexcept {
    if (large) {
        ::operator delete (bytes, std::align_val_t{LARGE_PAGE});
    } else {
        ::operator delete(bytes);
    }
}

void FileBytes::make_room(std::size_t capacity) {
    const bool large = capacity > LARGE_PAGE;
    if (large) capacity = (capacity + LARGE_PAGE - 1) / LARGE_PAGE * LARGE_PAGE;
    void* const room = large ? ::operator new (capacity, std::align_val_t{LARGE_PAGE})
                             : ::operator new(capacity);
    use_large_pages(room, capacity);
    if (size_ != 0) std::memcpy(room, bytes_.get(), size_);
    bytes_ = {static_cast<char*>(room), Free{large}};
    capacity_ = capacity;
}

bool FileBytes::read(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const Closed closed{file};
    struct stat status {};
    const bool known = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    const std::size_t size =
        known ? static_cast<std::size_t>(status.st_size) : FIRST_ROOM;
    size_ = 0;
    if (size > LARGEST) return false;
    make_room(size + 1);  // so that the end of the file is seen at once
    while (size_ <= LARGEST) {
        if (size_ == capacity_) make_room(2 * capacity_);
        const ssize_t count = ::read(file, bytes_.get() + size_, capacity_ - size_);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return true;
        size_ += static_cast<std::size_t>(count);
    }
    size_ = 0;
    return false;
}

}  // namespace lemara
