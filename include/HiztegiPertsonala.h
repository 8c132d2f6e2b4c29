#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Analisia.h"
#include "HPsarrera.h"
#include "Sarea.h"

/// The user's own words.
///
/// Each word has a class tag: "<ARR>" common noun, "<IZO>" adjective, "<ADI>" verb,
/// "<PIB>" person, "<LIB>" place, "<IZB>" other name. Word and tag yield one to three
/// paradigm entries, by the last letters of the word; lookup and generation read those
/// alone.
///
/// The file is Latin-1 text, one word a line, five fields with a TAB between them: word,
/// class tag, better form, form to use instead, source mark. A "|" may stand behind the
/// word. Lines that begin with "//" are comments.
///
/// Reading operations may be called from many threads at once, as long as none changes
/// the dictionary.
class [[gnu::visibility("default")]] HiztegiPertsonala {
public:
    std::string fitxategia;            ///< path of the file; empty if there is none
    std::vector<HPsarrera*> sarrerak;  ///< owned: the records, in file order
    std::map<std::string, HPsarrera*>
        erroak;                      ///< owned: paradigm entries by lower-case stem
    std::int32_t gutxieneko_luzera;  ///< length in bytes of the shortest word of the file
    std::int32_t
        gehienezko_hitzak;  ///< most words (blanks plus one) in an entry of the file

    HiztegiPertsonala();

    /// Loads the file. Errors: as kargatu_fitxategia.
    explicit HiztegiPertsonala(const std::string& fitxategia);

    HiztegiPertsonala(const HiztegiPertsonala&) =
        delete;  // two would own the same entries
    HiztegiPertsonala& operator=(const HiztegiPertsonala&) = delete;
    virtual ~HiztegiPertsonala();

    /// Reads the file `fitxategia`, behind what is there. A file that can't be opened is
    /// passed over and leaves `gutxieneko_luzera` at 10000, so that words added later
    /// match only as they stand. Cost: n log n in the records and lines.
    ///
    /// Errors: std::out_of_range "basic_string::substr" for a line whose class tag is
    /// empty or doesn't begin with "<". A tag that begins so and lacks its ">" costs that
    /// line.
    void kargatu_fitxategia();

    /// Adds a word: `sarrera` with the class tag `kategoria`. A word that is there with
    /// the same tag is left as it is. With `fitxategian` a line is appended to the file
    /// first; a file that can't be written is passed over. A stem that is taken stays
    /// with the word that had it first. An empty word is filed as one in a byte that is
    /// no letter. Cost: linear in `sarrerak`, which may be changed by hand at any time,
    /// so nothing is remembered of it.
    ///
    /// Errors: std::out_of_range "basic_string::at" for a word of one byte, a sibilant,
    /// with
    /// "<LIB>"; the record stands by then.
    void gehitu_sarrera(bool fitxategian, const std::string& sarrera,
                        const std::string& kategoria, const std::string& hobe,
                        const std::string& erabili, const std::string& sai);

    /// Removes the records of `sarrera` with the tag `kategoria`, and the paradigm
    /// entries whose lemma is `sarrera` and whose tags contain `kategoria`. With
    /// `fitxategian` the file is written anew from the records: comments and passed-over
    /// lines are gone then. A file that can't be written is passed over. The removed
    /// objects stay valid as long as the dictionary. Cost: linear in the containers.
    void kendu_sarrera(bool fitxategian, const std::string& sarrera,
                       const std::string& kategoria);

    /// The analyses of `hitza`: for each stem that begins it, in the order of the stems,
    /// what the network makes of the rest. A null network, or one without a table, never
    /// answers.
    std::vector<Analisia> analizatu(const std::string& hitza, const Sarea* sarea) const;

    /// The stem of a verb, from its participle alone.
    std::string lortuAdoin(const std::string& aditza) const;

    /// The verbal noun of a verb, from its participle alone.
    std::string lortuAditzizen(const std::string& aditza) const;

private:
    std::vector<std::unique_ptr<HPsarrera>> kenduak;  // removed entries, kept to the end

    /// gehitu_sarrera of a word that is not there with its tag.
    void gehitu_berria(bool fitxategian, const std::string& sarrera,
                       const std::string& kategoria, const std::string& hobe,
                       const std::string& erabili, const std::string& sai);
};
