#include "tables/file_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>

namespace lemara {
namespace {

constexpr std::size_t FIRST_ROOM = std::size_t{1} << 16;  // where no size is known

struct Closed {
    int file;
    ~Closed() { ::close(file); }
};

}  // namespace

void FileBytes::make_room(std::size_t capacity) {
    void* const larger = std::realloc(bytes_.get(), capacity);
    if (larger == nullptr) throw std::bad_alloc();
    static_cast<void>(bytes_.release());
    bytes_.reset(static_cast<char*>(larger));
    capacity_ = capacity;
}

bool FileBytes::read(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const Closed closed{file};
    struct stat status {};
    const bool known = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    // One more than the file has, so that its end is seen at once.
    make_room(known ? static_cast<std::size_t>(status.st_size) + 1 : FIRST_ROOM);
    size_ = 0;
    while (true) {
        if (size_ == capacity_) make_room(2 * capacity_);
        const ssize_t count = ::read(file, bytes_.get() + size_, capacity_ - size_);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return true;
        size_ += static_cast<std::size_t>(count);
    }
}

}  // namespace lemara
