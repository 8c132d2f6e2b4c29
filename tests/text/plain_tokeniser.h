// A plain tokeniser to judge the library's: the rules one byte at a time, with no
// shortcut and no helper of the library.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace lemara::test {

/// A token's text and whether a blank followed.
struct Piece {
    std::string text;
    bool blank;
};

inline bool operator==(const Piece& a, const Piece& b) {
    return a.text == b.text && a.blank == b.blank;
}

inline std::ostream& operator<<(std::ostream& out, const Piece& piece) {
    return out << '"' << piece.text << "\" " << (piece.blank ? 't' : 'f');
}

/// Holds the text, the place and the pending word, and knows no shortcut.
class PlainTokeniser {
public:
    explicit PlainTokeniser(std::string text) : text_(std::move(text)) {}

    std::vector<Piece> run() {
        while (place_ < text_.size()) step();
        if (!pending_.empty()) close(false);
        return tokens_;
    }

private:
    unsigned char at(std::size_t place) const {
        return place < text_.size() ? static_cast<unsigned char>(text_[place]) : 0;
    }
    static bool is_digit(unsigned char c) { return c >= '0' && c <= '9'; }
    static bool is_alphanumeric(unsigned char c) {
        return is_digit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    }
    static bool is_sign(unsigned char c) {
        const std::string signs = "!\"'()*+,-./:;=?[]_{}\241\277";
        return c == 0 || signs.find(static_cast<char>(c)) != std::string::npos;
    }
    bool is_number_dot(std::size_t place) const {
        return at(place) == '.' && place > 0 && is_digit(at(place - 1)) &&
               place != text_.size() - 1;
    }
    bool begins_as_address() const {
        const std::string four = text_.substr(0, 4);
        return four == "http" || four == "sftp" || four == "www." ||
               text_.substr(0, 3) == "ftp";
    }

    void close(bool blank) {
        tokens_.push_back({pending_.c_str(), blank});
        pending_.clear();
    }

    void step() {
        const unsigned char c = at(place_);
        if (c == ' ') {
            if (!pending_.empty()) {
                close(true);
            } else {
                tokens_.back().blank = true;
            }
            ++place_;
        } else if (is_sign(c) && !is_number_dot(place_)) {
            if (!pending_.empty()) close(false);
            tokens_.push_back({std::string(1, static_cast<char>(c)), false});
            ++place_;
        } else if (is_alphanumeric(c)) {
            if (begins_as_address()) {
                address_run();
            } else {
                word_run();
            }
        } else {
            if (c != '.') pending_ += static_cast<char>(c);
            ++place_;
        }
    }

    bool word_ends_at(std::size_t next) const {
        if (next == text_.size()) return true;
        if (at(next) == ' ') return true;
        if (at(next) == '.' && next == text_.size() - 1) return true;
        if (at(next) == '.' && at(next + 1) == ' ') return true;
        if (at(next) == '.' && is_sign(at(next + 1))) return true;
        return is_sign(at(next)) && at(next) != '.';
    }

    void word_run() {
        do {
            pending_ += text_[place_];
            ++place_;
        } while (!word_ends_at(place_));
    }

    void address_run() {
        for (;;) {
            pending_ += static_cast<char>(at(place_));
            if (place_ + 2 == text_.size()) break;
            if (at(place_ + 2) == ' ' || at(place_ + 2) == 0) break;
            ++place_;
        }
        pending_ += static_cast<char>(at(place_ + 1));
        place_ += 3;
    }

    std::string text_;
    std::size_t place_ = 0;
    std::string pending_;
    std::vector<Piece> tokens_;
};

}  // namespace lemara::test
