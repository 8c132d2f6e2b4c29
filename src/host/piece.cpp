#include "host/piece.h"

#include "host/addresses.h"
#include "host/characters.h"

namespace lemara::host {

namespace {

constexpr std::size_t LONG_ENOUGH = 5;  // letters of a word that is no abbreviation

/// True if the text, which ends with a blank, ends a sentence for sure: no abbreviation.
bool ends_sentence(const std::string& text) {
    if (text.size() < LONG_ENOUGH + 2) return false;
    const std::size_t sign = text.size() - 2;
    if (text[sign] == '!' || text[sign] == '?') return true;
    if (text[sign] != '.') return false;
    for (std::size_t i = 1; i <= LONG_ENOUGH; ++i) {
        if (!is_letter(text[sign - i])) return false;
    }
    return true;
}

bool is_blank(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

bool is_word_role(Role role) {
    return role == Role::word || role == Role::foreign || role == Role::accent;
}

}  // namespace

Folding PieceReader::folding_of(const Character& character) const {
    return character.valid ? host::folding_of(character.code, signs_)
                           : Folding{Role::foreign};
}

void PieceReader::put(Piece& piece, std::string_view bytes, Bytes source) {
    piece.latin1 += bytes;
    piece.sources.insert(piece.sources.end(), bytes.size(), source);
}

bool PieceReader::next(Piece& piece) {
    do {
        piece.latin1.clear();
        piece.sources.clear();
        piece.foreign.clear();
        piece.paragraph = paragraph_;
        if (at_ >= text_.size()) return false;
        while (at_ < text_.size() && step(piece)) {
        }
    } while (is_blank(piece.latin1));
    return true;
}

/// Reads one unit of the text; false if the piece ends behind it.
bool PieceReader::step(Piece& piece) {
    const Character c = character_at(text_, at_);
    const Folding folding = folding_of(c);
    const bool addressed = signs_ == Signs::apart &&
                           (folding.role == Role::word || folding.role == Role::sign);
    const std::size_t address =
        addressed && may_precede_address(before_) ? address_at(text_, at_) : 0;
    if (address > 0) {
        put(piece, {&STAND_IN, 1}, {at_, at_ + address});
        at_ += address;
        before_ = 'a';
        return piece.latin1.size() < PIECE_LIMIT;
    }
    if (is_word_role(folding.role)) {
        word_chain(piece);
        return piece.latin1.size() < PIECE_LIMIT;
    }
    if (folding.role == Role::line_end) return line_end(piece);
    const std::size_t start = at_;
    at_ += c.length;
    if (folding.role == Role::nothing) return true;
    before_ = c.code;
    const bool blank = folding.role == Role::blank;
    put(piece, blank ? " " : folding.bytes, {start, at_});
    const std::size_t size = piece.latin1.size();
    if (!blank) return size < PIECE_LIMIT;
    return size < PIECE_TO_SENTENCE ||
           (size < PIECE_TO_BLANK && !ends_sentence(piece.latin1));
}

bool PieceReader::line_end(Piece& piece) {
    const std::size_t start = at_;
    at_ += text_.substr(at_, 2) == "\r\n" ? 2 : 1;
    before_ = '\n';
    const bool ends = paragraphs_ == Paragraphs::lines ||
                      (paragraphs_ == Paragraphs::blank && blank_line_follows());
    if (!ends) {
        put(piece, " ", {start, at_});
        return piece.latin1.size() < PIECE_TO_BLANK;
    }
    // With blank lines between paragraphs, those that hold nothing don't count.
    if (paragraphs_ == Paragraphs::lines || !is_blank(piece.latin1)) ++paragraph_;
    return false;
}

bool PieceReader::blank_line_follows() const {
    std::size_t at = at_;
    while (at < text_.size()) {
        const Character c = character_at(text_, at);
        if (c.code == '\n' || c.code == '\r') return true;
        if (folding_of(c).role != Role::blank) return false;
        at += c.length;
    }
    return false;
}

/// A word with what is joined to it: "EAEn", "Lodz-en", "d'Or". A foreign letter makes
/// all of it foreign.
void PieceReader::word_chain(Piece& piece) {
    const std::size_t start = at_;
    const std::size_t kept = piece.latin1.size();
    bool foreign = false;
    std::size_t end = at_;
    for (;;) {
        foreign = !word_part(piece, end) || foreign;
        std::string_view joiner;
        std::size_t length = 0;
        if (!joiner_follows(joiner, length)) break;
        if (!foreign && piece.latin1.size() >= PIECE_LIMIT) break;
        put(piece, joiner, {at_, at_ + length});
        at_ += length;
        if (foreign) {
            piece.latin1.resize(kept);
            piece.sources.resize(kept);
        }
    }
    before_ = 'a';
    if (!foreign) return;
    piece.latin1.resize(kept);
    piece.sources.resize(kept);
    put(piece, {&STAND_IN, 1}, {start, end});
    piece.foreign.push_back({start, end});
}

/// Reads letters and digits; false if the engine can't be shown them.
bool PieceReader::word_part(Piece& piece, std::size_t& end) {
    const std::size_t kept = piece.latin1.size();
    bool fits = true;
    bool on_letter = false;  // an accent may compose with what stands directly before it
    while (at_ < text_.size()) {
        const Character c = character_at(text_, at_);
        const Folding folding = folding_of(c);
        if (folding.role != Role::nothing && !is_word_role(folding.role)) break;
        const std::size_t start = at_;
        at_ += c.length;
        if (folding.role == Role::nothing) {
            on_letter = false;
            continue;
        }
        end = at_;
        if (folding.role == Role::accent && on_letter && fits) {
            if (const char letter = composed(piece.latin1.back(), c.code)) {
                piece.latin1.back() = letter;
                piece.sources.back().end = at_;
                continue;
            }
        }
        fits = fits && folding.role == Role::word &&
               piece.latin1.size() - kept < LONGEST_WORD;
        on_letter = fits && folding.bytes.size() == 1;  // no ligature
        if (fits) put(piece, folding.bytes, {start, at_});
    }
    return fits;
}

/// True if a sign stands here that joins the word before it to one behind it.
bool PieceReader::joiner_follows(std::string_view& bytes, std::size_t& length) const {
    if (at_ >= text_.size()) return false;
    const Character c = character_at(text_, at_);
    const Folding folding = folding_of(c);
    if (folding.role != Role::sign) return false;
    if (folding.bytes != "-" && folding.bytes != "'" && folding.bytes != ".")
        return false;
    if (at_ + c.length >= text_.size()) return false;
    const Character next = character_at(text_, at_ + c.length);
    if (!is_word_role(folding_of(next).role)) return false;
    bytes = folding.bytes;
    length = c.length;
    return true;
}

EngineText engine_text(std::string_view utf8) {
    EngineText result;
    PieceReader reader(utf8, Paragraphs::whole, Signs::as_typed);
    for (Piece piece; reader.next(piece);) {
        result.latin1 += piece.latin1;
        for (std::size_t i = 0; result.lost.end == 0 && i < piece.latin1.size(); ++i) {
            const bool stands_in =
                piece.latin1[i] == STAND_IN && utf8[piece.sources[i].begin] != STAND_IN;
            if (stands_in) result.lost = piece.sources[i];
        }
    }
    return result;
}

std::string fold_word(std::string_view utf8, bool* foreign) {
    std::string word;
    bool any_foreign = false;
    PieceReader reader(utf8, Paragraphs::whole);
    for (Piece piece; reader.next(piece);) {
        word += piece.latin1;
        any_foreign = any_foreign || piece.latin1.find(STAND_IN) != std::string::npos;
    }
    if (foreign != nullptr) *foreign = any_foreign;
    const std::size_t first = word.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return word.substr(first, word.find_last_not_of(' ') - first + 1);
}

}  // namespace lemara::host
