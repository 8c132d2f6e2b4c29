#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Analisia.h"
#include "HiztegiPertsonala.h"
#include "Sarea.h"
#include "Tokena.h"

/// A sentence and its tokens. A plain value.
class [[gnu::visibility("default")]] Esaldia {
public:
    std::int32_t zenbakia;        ///< counted from -1; no output shows it
    std::string testua;           ///< Latin-1, without leading blanks and tabs
    std::vector<Tokena> tokenak;  ///< empty until tokenizatu has run

    /// A sentence that is not cut into tokens yet.
    Esaldia(int zenbakia, std::string testua);
    Esaldia(const Esaldia&) = default;
    Esaldia(Esaldia &&) = default;
    Esaldia& operator=(const Esaldia&) = default;
    Esaldia& operator=(Esaldia&&) = default;
    virtual ~Esaldia() = default;

    /// Cuts the text into tokens and appends them.
    ///
    /// Blanks separate; a sign of puntuazioaDa is a token of its own; a dot inside a word
    /// stays with it; the dot behind a digit is dropped unless it is the last byte. A
    /// sentence that begins as an address ("http", "sftp", "ftp", "www.") is read by the
    /// rules of addresses.
    void tokenizatu();

    /// Analyses the tokens by longest match: from each token the longest run of at most 7
    /// that the dictionary or a network knows becomes one token. A single token that
    /// nothing knows gets one analysis with the `etiketa` " EZZG". The token "]" is left
    /// without one, and " -->OJO arraroa:]" goes to standard output.
    void analizatu(std::map<std::string, Sarea*> sareak,
                   const HiztegiPertsonala& hiztegia, bool hpLehenik);

    /// The analyses of one run of `tokenKopurua` tokens: with `hpLehenik` those of the
    /// dictionary or, if it has none, of all networks in key order that see runs of that
    /// length; without it, those of the networks and then of the dictionary.
    std::vector<Analisia> analizatuTokena(
        std::map<std::string, Sarea*> sareak, const HiztegiPertsonala& hiztegia,
        const std::string& testua, int tokenKopurua, bool hpLehenik) const;

    /// Appends the dictionary's analyses of a run to `analisiak` and returns a copy of
    /// it. Without a network "hp", or for a run longer than its `maila`, nothing is
    /// appended.
    std::vector<Analisia> analizatuHiztegiPertsonalean(
        const std::map<std::string, Sarea*>& sareak, const HiztegiPertsonala& hiztegia,
        const std::string& testua, std::vector<Analisia>& analisiak, int tokenKopurua)
        const;
};
