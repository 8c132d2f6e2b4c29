// Cutting a text into sentences. Tests: tests/text/Paragrafoa_test.cpp.
#include "Paragrafoa.h"

#include <string_view>
#include <utility>

#include "analysis/text_pieces.h"
#include "karaktereak.h"
#include "text/sentence_analysis.h"

namespace {

/// Finds the ends of sentences in one text. A byte behind the text reads as NUL.
class Splitter {
public:
    Splitter(std::string_view text, const Taula* table) : text_(text), table_(table) {}

    /// True if a sentence ends with the blank at `i`.
    bool ends_at(std::size_t i) const {
        if (i == 0 || text_[i] != ' ') return false;
        switch (text_[i - 1]) {
            case '!':
            case '?':
            case ':':
                return true;
            case '.':
                return dot_ends(i - 1);
            default:
                return false;
        }
    }

private:
    char at(std::size_t i) const { return i < text_.size() ? text_[i] : '\0'; }

    bool dot_ends(std::size_t dot) const {
        if (is_abbreviation(dot)) return false;
        const char next = at(dot + 2);
        if (dot > 0 && (lemara::is_digit(at(dot - 1)) || erromatarraDa(at(dot - 1)))) {
            // An ordinal, unless a quotation opens behind it.
            return next == '"' && !orbi_islower(at(dot + 3));
        }
        return !orbi_islower(next);
    }

    bool is_abbreviation(std::size_t dot) const {
        return table_ != nullptr &&
               !table_->analizatuTokena(std::string(word_before(dot))).empty();
    }

    /// The word that the dot closes, up to and with its first dot.
    std::string_view word_before(std::size_t dot) const {
        std::size_t start = dot;
        while (start > 0 && text_[start] != ' ') --start;
        // Kept on purpose: a blank that is the text's first byte is not stepped over, and
        // the word is then empty.
        if (text_[start] == ' ') {
            if (start == 0) return "";
            ++start;
        }
        return text_.substr(start, text_.find('.', start) - start + 1);
    }

    std::string_view text_;
    const Taula* table_;
};

}  // namespace

Paragrafoa::Paragrafoa(int number, std::string text)
    : zenbakia(number), testua(std::move(text)) {}

std::vector<std::size_t> lemara::sentence_ends(std::string_view text,
                                               const Taula* table) {
    const Splitter splitter(text, table);
    std::vector<std::size_t> ends;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (splitter.ends_at(i)) ends.push_back(i + 1);
    }
    ends.push_back(text.size());
    return ends;
}

void Paragrafoa::esaldikatu(const Taula* taula) {
    const std::string_view text = lemara::up_to_nul(testua);
    int number = -1;  // Kept on purpose: sentences are numbered from -1.
    std::size_t start = 0;
    for (const std::size_t end : lemara::sentence_ends(text, taula)) {
        esaldiak.emplace_back(number++, std::string(text.substr(start, end - start)));
        start = end;
    }
}

std::vector<Esaldia> Paragrafoa::analizatu(std::map<std::string, Sarea*> sareak,
                                           const HiztegiPertsonala& hiztegia,
                                           bool hpLehenik) {
    lemara::analyse_paragraph(*this, sareak, hiztegia, hpLehenik);
    return esaldiak;
}

void lemara::analyse_paragraph(Paragrafoa& paragraph, const Networks& networks,
                               const HiztegiPertsonala& dictionary,
                               bool dictionary_first) {
    const Sarea* main_network = find_network(networks, "eumorfo");
    if (main_network != nullptr) paragraph.esaldikatu(main_network->taula);
    for (Esaldia& sentence : paragraph.esaldiak) sentence.tokenizatu();
    for (Esaldia& sentence : paragraph.esaldiak) {
        analyse_sentence(sentence, networks, dictionary, dictionary_first);
    }
}
