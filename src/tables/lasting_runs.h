// Memory for runs of plain elements that stay where they are as long as the object lives,
// however many follow.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace lemara {

/// In chunks of a size, at most so many. A run is at most a chunk long.
template <class T, std::size_t OF_CHUNK, std::size_t MOST_CHUNKS>
class LastingRuns {
public:
    /// Room for a run, not filled in; null if a bound is passed.
    T* room(std::size_t count) {
        if (count > OF_CHUNK) return nullptr;
        if (left_ < count) {
            if (chunks_.size() == MOST_CHUNKS) return nullptr;
            chunks_.emplace_back(new T[OF_CHUNK]);
            left_ = OF_CHUNK;
        }
        T* run = chunks_.back().get() + (OF_CHUNK - left_);
        left_ -= count;
        return run;
    }

    /// Gives the room back that was asked for last.
    void give_back(std::size_t count) { left_ += count; }

    /// A lasting copy; null if there is nothing to copy, or no room.
    const T* copy_of(const std::vector<T>& run) {
        T* copy = run.empty() ? nullptr : room(run.size());
        if (copy != nullptr) std::copy(run.begin(), run.end(), copy);
        return copy;
    }

private:
    std::vector<std::unique_ptr<T[]>> chunks_;
    std::size_t left_ = 0;  // in the last chunk
};

}  // namespace lemara
