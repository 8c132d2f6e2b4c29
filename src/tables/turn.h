// A lock for which nobody waits.
#pragma once

#include <atomic>

namespace lemara {

/// A turn at something that one thread at a time may do, if no other is at it. Costs less
/// than a mutex, and is for what can as well be left undone.
class Turn {
public:
    explicit Turn(std::atomic_flag& busy)
        : busy_(busy), mine_(!busy.test_and_set(std::memory_order_acquire)) {}
    ~Turn() {
        if (mine_) busy_.clear(std::memory_order_release);
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    explicit operator bool() const { return mine_; }

private:
    std::atomic_flag& busy_;
    const bool mine_;
};

}  // namespace lemara
