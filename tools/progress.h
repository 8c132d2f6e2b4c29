// How far a long job is, on a terminal alone.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace lemara::tools {

/// A line on standard error that tells which share of the input is done, drawn anew a few
/// times a second and wiped at the end. If standard error is no terminal nothing is
/// written.
class Progress {
public:
    /// `files` as for TextReader. What comes from standard input or a pipe has no size;
    /// then the bytes that were read are told.
    explicit Progress(const std::vector<std::string>& files);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Tells that `bytes` of the input are done in all.
    void reached(std::uint64_t bytes);

    /// Wipes the line, so that something else can be written.
    void wipe();

private:
    bool shown_;
    bool drawn_ = false;
    std::uint64_t total_ = 0;  // 0: not known
    std::chrono::steady_clock::time_point next_;
};

}  // namespace lemara::tools
