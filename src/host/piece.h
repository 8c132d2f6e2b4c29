// A UTF-8 text as the engine reads it: pieces of Latin-1 with a way back to the source.
// Tests: tests/host/positions_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/characters.h"
#include "lemara/checker.h"
#include "lemara/utf8.h"

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
    PieceReader(std::string_view text, Paragraphs paragraphs, Signs signs = Signs::apart)
        : text_(text), paragraphs_(paragraphs), signs_(signs) {}

    /// The next piece that is not blank; false at the end of the text.
    bool next(Piece& piece);

private:
    Folding folding_of(const Character& character) const;
    bool step(Piece& piece);
    bool line_end(Piece& piece);
    bool blank_line_follows() const;
    void word_chain(Piece& piece);
    bool word_part(Piece& piece, std::size_t& end);
    bool joiner_follows(std::string_view& bytes, std::size_t& length) const;
    void put(Piece& piece, std::string_view bytes, Bytes source);

    std::string_view text_;
    Paragraphs paragraphs_;
    Signs signs_;
    std::size_t at_ = 0;
    std::size_t paragraph_ = 0;
    char32_t before_ = ' ';
};

/// A paragraph as the engine alone reads it: its own rules see signs and addresses as
/// they are typed.
struct EngineText {
    std::string latin1;
    Bytes lost;  ///< the first stretch that STAND_IN stands for; empty if there is none
};

/// The one folding for whoever asks the engine itself. Visible for the command.
[[gnu::visibility("default")]] EngineText engine_text(std::string_view utf8);

/// A word or short text as the checker reads it, in one piece, without blanks around it.
std::string fold_word(std::string_view utf8, bool* foreign = nullptr);

}  // namespace lemara::host
