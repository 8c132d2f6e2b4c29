// A UTF-8 text as the engine reads it: pieces of Latin-1 with a way back to the source.
// Tests: tests/host/positions_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "lemara/utf8.h"
#include "lemara/checker.h"

namespace lemara::host {

/// Bytes of the source.
struct Bytes {
    std::size_t begin = 0, end = 0;
};

/// Letters of the longest word that the engine is shown; a longer run is kept from it.
constexpr std::size_t LONGEST_WORD = 250;

// A piece ends behind so many bytes: where a sentence seems to end, at a blank, anywhere.
constexpr std::size_t PIECE_TO_SENTENCE = 16 * 1024;
constexpr std::size_t PIECE_TO_BLANK = 32 * 1024;
constexpr std::size_t PIECE_LIMIT = 64 * 1024;

struct Piece {
    std::string latin1;          ///< never holds a NUL
    std::vector<Bytes> sources;  ///< for each byte of it the characters that it is for
    std::vector<Bytes> foreign;  ///< the foreign words, each of them a STAND_IN
    std::size_t paragraph = 0;
};

/// Cuts a text into pieces.
class PieceReader {
public:
    /// With `addresses` an address is a STAND_IN, and so is a sign that the engine would take
    /// into a word; else both come as they stand.
    PieceReader(std::string_view text, Paragraphs paragraphs, bool addresses = true)
        : text_(text), paragraphs_(paragraphs), addresses_(addresses) {}

    /// The next piece that is not blank; false at the end of the text.
    bool next(Piece& piece);

private:
    bool step(Piece& piece);
    bool line_end(Piece& piece);
    bool blank_line_follows() const;
    void word_chain(Piece& piece);
    bool word_part(Piece& piece, std::size_t& end);
    bool joiner_follows(std::string_view& bytes, std::size_t& length) const;
    void put(Piece& piece, std::string_view bytes, Bytes source);

    std::string_view text_;
    Paragraphs paragraphs_;
    bool addresses_;
    std::size_t at_ = 0;
    std::size_t paragraph_ = 0;
    char32_t before_ = ' ';
};

/// A word or short text as the engine reads it, in one piece.
std::string fold_word(std::string_view utf8, bool* foreign = nullptr);

/// A paragraph as the engine reads it by itself, in one piece: it has rules of its own for
/// addresses.
std::string fold_paragraph(std::string_view utf8);

}  // namespace lemara::host
