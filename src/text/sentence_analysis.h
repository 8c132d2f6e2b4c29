// The inner road of the text analysis: what the public operations of Esaldia and
// Paragrafoa do, without their copies of the map of networks.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Esaldia.h"
#include "Paragrafoa.h"

namespace lemara {

using Networks = std::map<std::string, Sarea*>;

/// Where a token stands in the text of its sentence, in bytes.
struct TokenPlace {
    std::size_t begin = 0, end = 0;
};
using TokenPlaces = std::vector<TokenPlace>;

/// Where the sentences of a text end, the last one at its end. See
/// Paragrafoa::esaldikatu.
std::vector<std::size_t> sentence_ends(std::string_view text, const Taula* table);

/// As Esaldia::tokenizatu, but no sentence is read by the rules of addresses, and
/// `places` gets the place of each token.
void tokenise_plain(Esaldia& sentence, TokenPlaces& places);

/// The network of that key; null if there is none, or none with a table.
const Sarea* find_network(const Networks& networks, const std::string& key);

/// The analyses of one run of tokens. See Esaldia::analizatuTokena.
std::vector<Analisia> analyse_run(const Networks& networks,
                                  const HiztegiPertsonala& dictionary,
                                  const std::string& text, int token_count,
                                  bool dictionary_first);

/// The same for ever shorter runs from one token on: what a network has read of a longer
/// run tells which of the shorter ones it can't know, and it isn't asked about those.
class RunAnalyser {
public:
    RunAnalyser(const Networks& networks, const HiztegiPertsonala& dictionary,
                bool dictionary_first);

    /// To be called before the longest run from a token.
    void start() {
        for (Asked& network : asked_) network.reach = WHOLE;
    }

    /// Every run from here on begins `text`, and has at least the word in front: what is
    /// known of the word tells which networks read no further.
    void limit(const std::string& word, const std::string& text);

    /// `text` begins every longer run that was asked about since start, unless
    /// `is_prefix` is false; then nothing is known of it.
    std::vector<Analisia> analyse(const std::string& text, int token_count,
                                  bool is_prefix);

    /// True if it's known that a text of that size, which begins every longer run, has no
    /// analysis.
    bool is_beyond_reach(std::size_t size, int token_count) const;

private:
    static constexpr std::size_t WHOLE = static_cast<std::size_t>(-1);

    struct Asked {
        const Taula* table;
        int longest_run;
        std::size_t reach;  // bytes that it can read of a run
    };

    void append_networks(const std::string& text, int token_count, bool is_prefix,
                         std::vector<Analisia>& analyses);

    const Networks& networks_;
    const HiztegiPertsonala& dictionary_;
    const bool dictionary_first_;
    std::vector<Asked> asked_;  // without "hp", in the order of the networks
};

/// Analyses the tokens of a sentence by longest match. See Esaldia::analizatu. `places`,
/// unless null, holds the places of the tokens and is merged as they are.
void analyse_sentence(Esaldia& sentence, const Networks& networks,
                      const HiztegiPertsonala& dictionary, bool dictionary_first,
                      TokenPlaces* places = nullptr);

/// Splits, tokenises and analyses a text. See Paragrafoa::analizatu.
void analyse_paragraph(Paragrafoa& paragraph, const Networks& networks,
                       const HiztegiPertsonala& dictionary, bool dictionary_first);

}  // namespace lemara
