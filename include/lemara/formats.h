#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "lemara/checker.h"

/// \file
/// Sentences as other programs for language read them. A sentence is the tokens of
/// Checker::analyze that share a number, in their order. All text is UTF-8; what is none
/// becomes U+FFFD.

namespace lemara {

/// A sentence for vislcg3: a line "{p=PARAGRAPH s=NUMBER z=...}", which passes through it
/// as text, then a cohort for each token, between two cohorts "<EBUK>" of which a grammar
/// makes its DELIMITERS. `z` lists the tokens, counted from 1, that no blank follows.
///
///     "<Etxea>"
///     	"etxe" <id=1> IZE ARR ABS NUMS HAS_MAI
///
/// The cohort holds the word as written. `id` is the place of the reading among the
/// token's own, from 1; readings that read alike are written once. HAS_MAI: the word
/// begins with a capital; DEN_MAI: all of it is capitals, or has no letter. With `values`
/// `<s=SOURCE>`, `<h=BETTER>` and `<e=INSTEAD>` follow. An unknown word has the reading
/// "WORD" EZZG, and `<foreign>` behind it if it was kept from the tables.
[[gnu::visibility("default")]] std::string to_cg3(const std::vector<Token>& sentence,
                                                  std::size_t paragraph,
                                                  std::size_t number, bool values);

/// A sentence in CoNLL-U, from its "# text" to the empty line behind it; what other
/// comments there are to be stand in front. Empty for no tokens.
///
/// Each word has the first reading of its token. UPOS and FEATS come of its tags by
/// docs/tagset_ud.tsv, XPOS is the tags with "+" between them; HEAD, DEPREL and DEPS are
/// empty. A unit of several words has a line for each: UPOS and, if it has as many parts,
/// lemma for each of them, XPOS and FEATS for the last, which bears the ending. An
/// unknown word has no lemma and UPOS X, or SYM if it is an address or holds no letter.
///
/// MISC holds SpaceAfter=No, TokenRange=BEGIN:END (code points from the start of the
/// text), Unit=N on the first of a unit's N words, and Alts=N if the token has N more
/// readings.
[[gnu::visibility("default")]] std::string to_conllu(const std::vector<Token>& sentence);

}  // namespace lemara
