// One contestant of bench/compare: a program that loads its data, does one task over a
// list of words until it has used enough processor time, and tells how long a pass took,
// as JSON.
//
//     PEER TASK WORDS [--answers FILE] [--seconds S] DATA...
//
// WORDS is UTF-8, a word a line. With --answers the answers of one pass are written to
// FILE, a line for each word, so that contestants can be compared. Time is processor time
// of this process, so other work on the machine costs little; the median pass counts.
#pragma once

#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

namespace peer {

using Strings = std::vector<std::string>;

inline double cpu_seconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Resident memory that is this process's own or shared, in KiB, as Linux tells it.
inline long resident_kib() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, 6, "VmRSS:") == 0) return std::atol(line.c_str() + 6);
    }
    return 0;
}

struct Arguments {
    std::string task, answers;
    Strings words, data;
    double seconds = 0.25;
};

inline Strings read_lines(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::cerr << path << ": cannot open\n";
        std::exit(2);
    }
    Strings lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

inline Arguments arguments(int argc, char** argv) {
    Arguments result;
    if (argc < 3) std::exit(2);
    result.task = argv[1];
    result.words = read_lines(argv[2]);
    for (int i = 3; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--answers") {
            result.answers = argv[++i];
        } else if (word == "--seconds") {
            result.seconds = std::atof(argv[++i]);
        } else {
            result.data.push_back(word);
        }
    }
    return result;
}

/// Strings, sorted and without repeats, in one line.
inline std::string line_of(Strings strings) {
    std::sort(strings.begin(), strings.end());
    strings.erase(std::unique(strings.begin(), strings.end()), strings.end());
    std::string line;
    for (const std::string& text : strings) line += (line.empty() ? "" : "\t") + text;
    return line;
}

/// Times passes over the words. `ask(word, text)` asks about one: it writes the answer to
/// `text`, a std::string*, if it isn't null, and returns a number that depends on the
/// answer. `before` runs in front of each pass, outside the time.
///
/// A template, so that nothing but the question is in the time, not even a call.
template <class Ask>
int measure(const Arguments& arguments, double load_seconds, const Strings& words,
            const Ask& ask, const std::function<void()>& before = nullptr) {
    const long rss = resident_kib();
    if (!arguments.answers.empty()) {
        if (before) before();
        std::ofstream out(arguments.answers, std::ios::binary);
        for (const std::string& word : words) {
            std::string text;
            ask(word, &text);
            out << text << '\n';
        }
    }
    std::vector<double> passes;
    std::size_t sum = 0;
    double spent = 0;
    while (spent < arguments.seconds || passes.size() < 3) {
        if (before) before();
        sum = 0;
        const double start = cpu_seconds();
        for (const std::string& word : words) sum += ask(word, nullptr);
        passes.push_back(cpu_seconds() - start);
        spent += passes.back();
        if (spent > 4 * arguments.seconds + 2) break;
    }
    std::sort(passes.begin(), passes.end());
    std::printf(
        "{\"items\": %zu, \"seconds\": %.9f, \"passes\": %zu, \"load\": %.9f, "
        "\"rss_kib\": %ld, \"sum\": %zu}\n",
        words.size(), passes[passes.size() / 2], passes.size(), load_seconds, rss, sum);
    return 0;
}

}  // namespace peer
