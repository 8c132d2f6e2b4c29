#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Esaldia.h"
#include "HiztegiPertsonala.h"
#include "Sarea.h"

/// A text, its sentences, and the four ways in which an analysed text is written.
///
/// Text is Latin-1 and may be of any length; it ends at a NUL. Nothing is escaped in any
/// of the outputs. The print operations write to standard output and flush after each
/// line.
class [[gnu::visibility("default")]] Paragrafoa {
public:
    std::int32_t zenbakia;          ///< shown by the outputs as the paragraph's number
    std::string testua;             ///< the text
    std::vector<Esaldia> esaldiak;  ///< empty until the text has been split

    /// A text that is not split yet.
    Paragrafoa(int zenbakia, std::string testua);
    Paragrafoa(const Paragrafoa&) = default;
    Paragrafoa(Paragrafoa &&) = default;
    Paragrafoa& operator=(const Paragrafoa&) = default;
    Paragrafoa& operator=(Paragrafoa&&) = default;
    virtual ~Paragrafoa() = default;

    /// Appends the sentences of the text. "! ", "? " and ": " end one; ". " does unless
    /// `taula` knows the word in front, dot included, or what stands around the dot
    /// speaks against it. There is always a last sentence, if only an empty one. A null
    /// table knows no abbreviation.
    void esaldikatu(const Taula* taula);

    /// Splits, tokenises and analyses the text and returns a copy of the sentences.
    /// Without a network "eumorfo" nothing is split. Meant to be called once.
    std::vector<Esaldia> analizatu(std::map<std::string, Sarea*> sareak,
                                   const HiztegiPertsonala& hiztegia, bool hpLehenik);

    /// Writes a line for each token: text, place, and its analyses as lemma and tags,
    /// sorted and without repeats. With `aldaerak` also the values of `sai`, `hobe` and
    /// `erabili`. The other two arguments change nothing.
    void print_Multext(bool aldaerak, bool bigarrena, bool hirugarrena) const;

    /// The text as cohorts and readings in the manner of constraint grammar. The
    /// arguments are those of print_Multext.
    std::string get_CG3(bool aldaerak, bool bigarrena, bool hirugarrena) const;

    /// Writes a verdict for each token: correct, unknown, or its better forms, which
    /// `sarea` inflects. A null network has no better forms.
    void print_Zuzenlex(const Sarea* sarea) const;

    /// Writes the last problem word of each sentence that has one, with all its analyses.
    void print_Ikute() const;
};
