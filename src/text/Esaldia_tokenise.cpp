// The tokeniser: one pass over the sentence, with one pending word.
//
// Twin: tests/text/plain_tokeniser.h. Tests: tests/text/Esaldia_tokenise_test.cpp.
#include <string>
#include <string_view>
#include <vector>

#include "Esaldia.h"
#include "analysis/text_pieces.h"
#include "iragazkiak.h"
#include "karaktereak.h"
#include "text/sentence_analysis.h"

namespace {

class Tokeniser {
public:
    Tokeniser(const std::string& text, std::vector<Tokena>& tokens, bool read_addresses,
              lemara::TokenPlaces* places)
        : text_(text),
          tokens_(tokens),
          address_(read_addresses && begins_as_address(text)),
          places_(places) {}

    void run() {
        for (std::size_t i = 0; i < text_.size();) i = step(i);
        if (!pending_.empty()) close_pending(false);
    }

private:
    // Kept on purpose: the beginning of the whole sentence decides how every word in it
    // is read. An address further on is cut into its pieces.
    static bool begins_as_address(std::string_view text) {
        using lemara::starts_with;
        return starts_with(text, "http") || starts_with(text, "sftp") ||
               starts_with(text, "www.") || starts_with(text, "ftp");
    }

    /// The byte at `i`; 0 behind the end.
    char at(std::size_t i) const { return i < text_.size() ? text_[i] : '\0'; }
    bool is_last(std::size_t i) const { return i + 1 == text_.size(); }
    bool is_gap(std::size_t i) const { return at(i) == ' ' || at(i) == '\0'; }
    bool is_sign(std::size_t i) const { return puntuazioaDa(at(i)); }

    bool is_number_dot(std::size_t i) const {
        return at(i) == '.' && i > 0 && lemara::is_digit(at(i - 1)) && !is_last(i);
    }

    /// Handles what stands at `i` and returns where to go on.
    std::size_t step(std::size_t i) {
        const char c = at(i);
        if (c == ' ') {
            if (!pending_.empty()) {
                close_pending(true);
            } else if (!tokens_.empty()) {
                tokens_.back().hutsunea = true;
            }
            return i + 1;
        }
        if (is_sign(i) && !is_number_dot(i)) {
            if (!pending_.empty()) close_pending(false);
            add_token(std::string(1, c), false, {i, i + 1});
            return i + 1;
        }
        if (pending_.empty()) pending_place_.begin = i;
        if (alfazenbakizkoaDa(static_cast<unsigned char>(c))) {
            return pending_place_.end = address_ ? address_run(i) : word_run(i);
        }
        // Kept on purpose: the dot of a number in mid-sentence vanishes, and the word in
        // front of it stays open.
        if (c == '.') return i + 1;
        pending_ += c;
        return pending_place_.end = i + 1;
    }

    bool word_ends_at(std::size_t i) const {
        if (i >= text_.size() || is_gap(i)) return true;
        if (at(i) == '.') return is_last(i) || at(i + 1) == ' ' || is_sign(i + 1);
        return is_sign(i);
    }

    std::size_t word_run(std::size_t i) {
        do {
            pending_ += at(i++);
        } while (!word_ends_at(i));
        return i;
    }

    std::size_t address_run(std::size_t i) {
        for (;; ++i) {
            pending_ += at(i);
            // Kept on purpose: the look-ahead is of two bytes, and the second is jumped
            // over when the run stops. A blank there neither ends the word nor leaves a
            // gap.
            if (i + 2 == text_.size() || is_gap(i + 2)) break;
        }
        pending_ += at(i + 1);
        return i + 3;
    }

    void close_pending(bool blank) {
        add_token(std::string(lemara::up_to_nul(pending_)), blank, pending_place_);
        pending_.clear();
    }

    void add_token(std::string text, bool blank, lemara::TokenPlace place) {
        if (places_ != nullptr) places_->push_back(place);
        tokens_.emplace_back(std::move(text), blank, 0);
        tokens_.back().maiuskula = kalkulatuMaiuskulak(tokens_.back().testua.c_str());
    }

    const std::string& text_;
    std::vector<Tokena>& tokens_;
    const bool address_;
    lemara::TokenPlaces* const places_;
    std::string pending_;
    lemara::TokenPlace pending_place_;
};

}  // namespace

Esaldia::Esaldia(int number, std::string text)
    : zenbakia(number), testua(std::move(text)) {
    testua.erase(0, testua.find_first_not_of(" \t"));
}

void Esaldia::tokenizatu() { Tokeniser(testua, tokenak, true, nullptr).run(); }

void lemara::tokenise_plain(Esaldia& sentence, TokenPlaces& places) {
    Tokeniser(sentence.testua, sentence.tokenak, false, &places).run();
}
