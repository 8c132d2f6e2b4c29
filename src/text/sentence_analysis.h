// The inner road of the text analysis: what the public operations of Esaldia and Paragrafoa
// do, without their copies of the map of networks.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "Esaldia.h"
#include "Paragrafoa.h"

namespace lemara {

using Networks = std::map<std::string, Sarea*>;

/// The network of that key; null if there is none, or none with a table.
const Sarea* find_network(const Networks& networks, const std::string& key);

/// The analyses of one run of tokens. See Esaldia::analizatuTokena.
std::vector<Analisia> analyse_run(const Networks& networks,
                                  const HiztegiPertsonala& dictionary,
                                  const std::string& text, int token_count,
                                  bool dictionary_first);

/// Analyses the tokens of a sentence by longest match. See Esaldia::analizatu.
void analyse_sentence(Esaldia& sentence, const Networks& networks,
                      const HiztegiPertsonala& dictionary, bool dictionary_first);

/// Splits, tokenises and analyses a text. See Paragrafoa::analizatu.
void analyse_paragraph(Paragrafoa& paragraph, const Networks& networks,
                       const HiztegiPertsonala& dictionary, bool dictionary_first);

}  // namespace lemara
