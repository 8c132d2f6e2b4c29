// Work done by several threads, its results taken in order.
// Tests: tests/tools/ordered_jobs_test.cpp.
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <queue>
#include <thread>
#include <utility>
#include <vector>

namespace lemara::tools {

constexpr std::size_t MOST_THREADS = 256;

/// The threads that are meant: for 0 as many as there are cores.
inline std::size_t thread_count(std::size_t wanted) {
    return wanted > 0 ? wanted : std::max(1u, std::thread::hardware_concurrency());
}

/// Runs `work` on values in `threads` threads and hands the results to `take`, in the
/// order in which the values were added and in the thread that adds them. With one thread
/// the work is done where it is added.
///
/// At most four results for each thread wait. An exception of `work` comes out where its
/// result would be taken.
template <class Value, class Result>
class OrderedJobs {
public:
    OrderedJobs(std::size_t threads, std::function<Result(Value)> work,
                std::function<void(Result)> take)
        : work_(std::move(work)), take_(std::move(take)), most_(threads * 4) {
        for (std::size_t i = 0; threads > 1 && i < threads; ++i) {
            threads_.emplace_back([this] { run(); });
        }
    }

    ~OrderedJobs() {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            ending_ = true;
        }
        changed_.notify_all();
        for (std::thread& thread : threads_) thread.join();
    }
    OrderedJobs(const OrderedJobs&) = delete;
    OrderedJobs& operator=(const OrderedJobs&) = delete;

    void add(Value value) {
        if (threads_.empty()) return take_(work_(std::move(value)));
        Task task([this, held = std::make_shared<Value>(std::move(value))] {
            return work_(std::move(*held));
        });
        results_.push_back(task.get_future());
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            tasks_.push(std::move(task));
        }
        changed_.notify_one();
        while (results_.size() >= most_ || first_is_ready()) take_first();
    }

    /// Takes what is left.
    void finish() {
        while (!results_.empty()) take_first();
    }

private:
    using Task = std::packaged_task<Result()>;

    std::function<Result(Value)> work_;
    std::function<void(Result)> take_;
    std::size_t most_;
    std::deque<std::future<Result>> results_;
    std::queue<Task> tasks_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool ending_ = false;
    std::vector<std::thread> threads_;  // last, so that the rest is there when they start

    bool first_is_ready() {
        return !results_.empty() && results_.front().wait_for(std::chrono::seconds(0)) ==
                                        std::future_status::ready;
    }

    void take_first() {
        Result result = results_.front().get();
        results_.pop_front();
        take_(std::move(result));
    }

    void run() {
        while (true) {
            Task task;
            {
                std::unique_lock<std::mutex> lock(mutex_);
                changed_.wait(lock, [this] { return ending_ || !tasks_.empty(); });
                if (ending_) return;
                task = std::move(tasks_.front());
                tasks_.pop();
            }
            task();
        }
    }
};

}  // namespace lemara::tools
