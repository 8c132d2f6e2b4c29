// Six ways in which a word goes wrong, each undone by a generator of its own.
// Tests: tests/proposals/.
#include "proposamenak.h"

#include <utility>

#include "analysis/text_pieces.h"
#include "karaktereak.h"
#include "proposals/edits.h"

namespace {

using Candidates = std::vector<std::string>;

std::string text_of(const char* word) { return std::string(lemara::text_of(word)); }

std::string folded(const char* word) { return tolowercase(text_of(word)); }

/// A visitor that appends each candidate to `list`.
auto into(Candidates& list, const std::string& word) {
    return [&](const lemara::Edit& edit) {
        list.push_back(lemara::applied(word, edit));
        return true;
    };
}

}  // namespace

std::vector<std::string> sortu_proposamen_hautagaiak_MAI(const char* hitza) {
    const std::string word = folded(hitza);
    Candidates list;
    for (const lemara::Rewrite& row : lemara::REPLACEMAI) {
        if (!lemara::starts_with(word, row.key)) continue;
        std::string candidate =
            lemara::applied(word, {0, row.key.size(), row.replacement});
        if (candidate.size() >= lemara::SHORTEST_CANDIDATE) list.push_back(candidate);
        // All in capitals, and of any length.
        list.push_back(touppercase(std::move(candidate)));
        break;
    }
    return list;
}

std::vector<std::string> sortu_proposamen_hautagaiak_DISLEXIA(const char* hitza) {
    const std::string word = text_of(hitza);
    Candidates list;
    lemara::for_each_swap(word, into(list, word));
    return list;
}

std::vector<std::string> sortu_proposamen_hautagaiak_REP(const char* hitza) {
    const std::string word = folded(hitza);
    Candidates list;
    lemara::for_each_known_error(word, into(list, word));
    return list;
}

std::vector<std::string> sortu_proposamen_hautagaiak_MARRA_HUTSUNE(const char* hitza) {
    const std::string word = folded(hitza);
    Candidates list;
    lemara::for_each_missing_blank(word, into(list, word));
    return list;
}

std::vector<std::string> sortu_proposamen_hautagaiak_REP2(const char* hitza) {
    const std::string word = folded(hitza);
    Candidates list;
    lemara::for_each_letter_too_many_or_few(word, into(list, word));
    return list;
}

std::vector<std::string> sortu_proposamen_hautagaiak_TRY(const char* hitza) {
    const std::string word = text_of(hitza);
    Candidates list;
    lemara::for_each_wrong_letter(word, into(list, word));
    return list;
}

std::map<int, std::vector<std::string>> proposamen_hautagaiak_lortu(std::string hitza) {
    const char* word = hitza.c_str();
    return {
        {1, sortu_proposamen_hautagaiak_MAI(word)},
        {2, sortu_proposamen_hautagaiak_DISLEXIA(word)},
        {3, sortu_proposamen_hautagaiak_REP(word)},
        {4, sortu_proposamen_hautagaiak_MARRA_HUTSUNE(word)},
        {5, sortu_proposamen_hautagaiak_REP2(word)},
        {6, sortu_proposamen_hautagaiak_TRY(word)},
    };
}
