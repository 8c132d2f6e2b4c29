// Bytes from outside, as bad as they come, from a seed that a failure can print.
#pragma once

#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "support.h"

namespace lemara::test {

class RandomBytes {
public:
    explicit RandomBytes(unsigned seed) : engine_(seed) {}

    unsigned below(unsigned limit) { return static_cast<unsigned>(engine_()) % limit; }
    bool once_in(unsigned n) { return below(n) == 0; }

    /// Any bytes.
    std::string raw(unsigned longest) {
        std::string text(below(longest + 1), ' ');
        for (char& c : text) c = static_cast<char>(below(256));
        return text;
    }

    /// Bytes of a small alphabet, which hits the rules of a format more often.
    std::string from(const std::string& alphabet, unsigned longest) {
        std::string text(below(longest + 1), ' ');
        for (char& c : text) c = alphabet[below(static_cast<unsigned>(alphabet.size()))];
        return text;
    }

    const std::string& any_of(const std::vector<std::string>& texts) {
        return texts[below(static_cast<unsigned>(texts.size()))];
    }

    /// `text` with some bytes changed, dropped or doubled.
    std::string mutated(std::string text, const std::string& alphabet) {
        for (unsigned n = below(4); n > 0 && !text.empty(); --n) {
            const std::size_t at = below(static_cast<unsigned>(text.size()));
            switch (below(4)) {
                case 0: text[at] = static_cast<char>(below(256)); break;
                case 1: text.erase(at, 1 + below(3)); break;
                case 2:
                    text.insert(at, 1, alphabet[below(static_cast<unsigned>(alphabet.size()))]);
                    break;
                default: text.insert(at, text.substr(at, 1 + below(8))); break;
            }
        }
        return text;
    }

private:
    std::mt19937 engine_;
};

/// Writes a file anew and returns its path. A file that is emptied and written again may be
/// flushed to the disk each time, which costs milliseconds; a new one is not.
inline std::string write_anew(const TempDir& folder, const std::string& name,
                              const std::string& bytes) {
    std::remove(folder.path(name).c_str());
    return folder.write(name, bytes);
}

}  // namespace lemara::test
