// Judges the candidates for a misspelt word as edits of it. All candidates share what
// stands in front of their edit, so the tables read that part of the word once for all.
// What stands behind it they share too: where an edit leads to the node that the one
// before it led to, the rest of the word is not read again. A loop over letters, as of
// addresses in the web, takes every edit to the same node.
//
// Gives what Lemara::isValid gives for the candidate as a string; that is its twin.
// Tests: tests/engine/Lemara_proposals_test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "Lemara.h"
#include "proposals/edits.h"
#include "tables/lazy_transducer.h"

namespace lemara {

class CandidateJudge {
public:
    /// `word` up to its first NUL; the engine outlives the judge.
    CandidateJudge(const Lemara& engine, const std::string& word);

    /// The word as typed, and in small letters: what edits are edits of.
    const std::string& typed() const { return typed_; }
    const std::string& folded() const { return folded_; }

    /// True if `base` with the edit is a valid word. `base` is typed() or folded().
    bool is_valid(const std::string& base, const Edit& edit);

private:
    using Node = LazyTransducer::Node;

    /// Where the rest of the word led to when it was last read.
    struct Ending {
        Node from = LazyTransducer::DEAD, to = LazyTransducer::DEAD;
    };
    struct Network {
        LazyTransducer* words;
        std::vector<Node> prefixes;   // the node behind each number of bytes
        std::vector<Ending> endings;  // of the rest behind each number of bytes
    };

    Answer ask(Network& network, const Edit& edit, bool small) const;

    const Lemara& engine_;
    const std::string typed_, folded_;
    const bool by_strings_;  // the word is one that only isValid can judge
    const bool has_dictionary_;
    std::vector<Network> networks_;
};

}  // namespace lemara
