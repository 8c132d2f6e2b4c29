#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Analisia.h"
#include "Egoera.h"
#include "Esaldia.h"
#include "HPsarrera.h"
#include "HiztegiPertsonala.h"
#include "Paragrafoa.h"
#include "Sarea.h"
#include "Taula.h"
#include "Tokena.h"
#include "Zubia.h"
#include "fitxategiak.h"
#include "iragazkiak.h"
#include "karaktereak.h"
#include "proposamenak.h"

/// The engine: the networks, the personal dictionary, and everything that a host asks of
/// them. Include this header and you have them all.
///
/// Text is 8-bit Latin-1. All operations but kargatu_sareak only read, and any number of
/// threads may call them on one engine at once. A network that is missing ("eumorfo",
/// "hp", or a key that nobody loaded) never answers, and asking for it changes nothing.
class [[gnu::visibility("default")]] Lemara {
public:
    std::string konfigurazioa;      ///< path of the configuration file
    std::string hiztegiFitxategia;  ///< path of the personal dictionary
    std::map<std::string, Sarea*>
        sareak;  ///< the networks by key; key order is asking order
    HiztegiPertsonala* hiztegiPertsonala;  ///< never deleted by the engine; may be null

    /// An engine with no networks and no dictionary.
    Lemara();

    /// Loads the networks that the configuration file lists; the dictionary is empty.
    /// Errors: as kargatu_sareak.
    explicit Lemara(const std::string& konfigurazioa);

    /// The same with a dictionary from a file. Errors: as kargatu_sareak, and then as
    /// HiztegiPertsonala::kargatu_fitxategia.
    Lemara(const std::string& konfigurazioa, const std::string& hiztegiFitxategia);

    Lemara(const Lemara&) = delete;  // two engines would own the same tables
    Lemara& operator=(const Lemara&) = delete;

    /// Writes "Taulak husten..." to standard output and deletes the tables of all
    /// networks. The Sarea records and the dictionary stay allocated (and reachable, so
    /// that leak checkers are silent): a host may still hold them.
    virtual ~Lemara();

    /// Reads the configuration file: a table path a line, at most 10; lines that are
    /// empty or begin with "//", a blank, a tab or a carriage return are comments.
    /// Relative paths are relative to the working directory. The key of a network is its
    /// file name up to the first dot, without a final "PG". A later network replaces an
    /// earlier one of its key.
    ///
    /// Standard output gets a line feed for each network, "Ezin da ireki '...'" for a
    /// file that doesn't exist, and "kargatu_sareak: Taula kopuru handiegia: 10 da
    /// topea!" for the eleventh. A configuration that can't be opened is passed over.
    ///
    /// Errors: std::out_of_range "basic_string::substr" for a key of fewer than two
    /// bytes; the networks before it stay. A table that vanishes while it is loaded ends
    /// the process (see Taula::kargatu_taula).
    void kargatu_sareak();

    /// Calls Taula::kargatu on a table of the caller's. A null table is passed over.
    void kargatu_taula(Taula * taula);

    /// The text, split, tokenised and analysed. Its number is 1, whatever the first
    /// argument.
    Paragrafoa analizatu_paragrafoa(int zenbakia, const std::string& testua) const;

    /// The paragraph check: a mark-up with a verdict for each token (correct, unknown
    /// with multi-word entries or, with `proposatu`, proposals, or better forms). Nothing
    /// is escaped.
    ///
    /// Errors: std::out_of_range as Sarea::ordeztuForma and sortu_forma_ezezaguna.
    std::string getParagrafoaZuzenlex(const std::string& testua, bool proposatu) const;

    /// The analyses of a token in the network of that key; no case test but the walk's
    /// own.
    std::vector<Analisia> analizatuTokena(const std::string& tokena,
                                          const std::string& sarea) const;

    /// The analyses of a token in all networks, "hp" included, in key order.
    std::vector<Analisia> analizatuTokena(const std::string& tokena) const;

    /// The speller's yes or no. A word with a blank or a "-" is judged as text, by its
    /// first sentence. With `sakon` a word that begins a multi-word entry is valid too.
    bool isValid(const std::string& hitza, bool sakon) const;

    /// The entries of "eumorfo" whose analysis begins with `hasiera`, each cut at its
    /// first tag. With `iragazi` only those whose form is known and not one to be
    /// replaced.
    std::vector<Analisia> bilatuHasiera(const std::string& hasiera, bool iragazi) const;

    /// The forms of a word: for a known one, those of its first analysis that holds
    /// `etiketa`, up to and with that tag; for an unknown one, those that the
    /// dictionary's machinery gives it with `etiketa` as its class tag ("<ARR>", "<IZO>",
    /// ...).
    ///
    /// Errors: std::out_of_range "basic_string::substr" for a network "hp" that generates
    /// a form shorter than its class tag.
    std::vector<Analisia> sortuFormak(const std::string& hitza,
                                      const std::string& etiketa) const;

    /// Proposals for an unknown word, in the order of the stages that find them; repeats
    /// are not removed. The case of the word is restored.
    std::vector<std::string> lortu_ezzg_proposamenak(const std::string& hitza) const;

    /// The form of `hitza`, a lemma that the lexicon lacks, whose tags equal `etiketa`
    /// (an Analisia::etiketa); `hitza` itself if there is none. Errors: as sortuFormak.
    std::string sortu_forma_ezezaguna(const std::string& hitza,
                                      const std::string& etiketa) const;

private:
    std::vector<std::unique_ptr<Sarea>> ordezkatuak;  // networks replaced by a later one

    const Sarea* find_network(const std::string& key) const;
    const HiztegiPertsonala& dictionary() const;
    void release_all();
    bool is_valid_text(const std::string& text) const;
    bool is_in_dictionary(const std::string& word) const;
    bool is_in_networks(const std::string& word) const;
    bool begins_entry(const std::string& word) const;
    std::string verdict_of_unknown(const Tokena& token, bool proposatu) const;
    std::string verdict_of_known(const Tokena& token) const;
};
