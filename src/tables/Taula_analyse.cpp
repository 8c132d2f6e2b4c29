// Analysis: a token against the lower side of the table. The walk itself is in
// packed_walk.h. Tests: tests/tables/Taula_analyse_test.cpp.
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Taula.h"
#include "analysis/RecordText.h"
#include "karaktereak.h"
#include "tables/inside.h"
#include "tables/lazy_transducer.h"
#include "tables/packed_walk.h"
#include "tables/token_walk.h"
#include "tables/word_map.h"

std::vector<Analisia> Taula::analizatuTokena(std::string tokena) const {
    return lemara::analyse_token(*this, tokena).records;
}

std::vector<std::string*>& Taula::birbilaTokena(const char* tokena,
                                                std::vector<std::string*>& emaitzak,
                                                int egoera, const char* hondarra,
                                                char* irteera) const {
    lemara::PackedAnalysis walk(lemara::packed_form(*this), lemara::text_of(tokena),
                                lemara::text_of(hondarra));
    walk.start_with(lemara::text_of(irteera));
    walk.run(egoera, [&](std::string_view text) {
        auto copy = std::make_unique<std::string>(text);
        emaitzak.push_back(copy.get());
        copy.release();
        return true;
    });
    return emaitzak;
}

namespace lemara {
namespace {

/// 0 no capital in front, 2 no small letter, 1 between the two. A digit or sign in front
/// counts as a capital.
int case_class(const std::string& token) {
    if (token.empty()) return 2;
    const auto is_upper = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return orbi_toupper(byte) == byte;
    };
    if (!is_upper(token[0])) return 0;
    for (const char c : token) {
        if (!is_upper(c)) return 1;
    }
    return 2;
}

/// True if the better form of a record is what stands in the text already.
bool replaces_itself(const Analisia& record, const std::string& token) {
    if (record.erabili.empty() && record.hobe.empty()) return false;
    const std::string_view start = std::string_view(token).substr(0, record.lema.size());
    return !start.empty() && (start == record.erabili || start == record.hobe);
}

/// Walks a token as typed from the first state on. Answers how far the walk came.
template <class Visit>
std::size_t walk_token(const Taula& table, const std::string& token, Visit visit) {
    const std::string lowered =
        tolowercase(std::string(up_to_nul(token).substr(0, WALK_LIMIT)));
    PackedAnalysis walk(packed_form(table), token.c_str(), lowered);
    walk.run(0, visit);
    return walk.reach();
}

/// The same, by the steps that were made before if there are any. `spelt` is filled in at
/// the first visit then.
template <class Visit>
std::size_t analyse(const Taula& table, const std::string& token,
                    LazyTransducer::Spelt& spelt, Visit visit) {
    if (lazy_form(table).spell(token.c_str(), spelt, visit)) return spelt.reach;
    return walk_token(table, token, visit);
}

/// Looks among the analyses of a token for one that makes it a word. A visitor.
class WordFinder {
public:
    explicit WordFinder(const std::string& token) : token_(token) {}

    bool operator()(std::string_view text) {
        // Bracket groups and "MAT" are rare; only then the record is looked at as a
        // whole.
        if (contains(text, "[") || contains(text, "MAT")) {
            const Analisia record(std::string(text), "");
            found = !replaces_itself(record, token_) && !contains(record.etiketa, "MAT");
        } else {
            found = true;
        }
        return !found;
    }

    bool found = false;

private:
    const std::string& token_;
};

}  // namespace

TokenAnalyses analyse_token(const Taula& table, const std::string& token) {
    const int maiuskula = case_class(token);
    TokenAnalyses result;
    std::vector<Analisia>& records = result.records;
    LazyTransducer::Spelt spelt;
    result.reach = analyse(table, token, spelt, [&](std::string_view text) {
        if (records.empty()) records.reserve(spelt.most);
        Analisia& record = records.emplace_back(RecordText{text, table.hiztegia});
        record.maiuskula = maiuskula;
        if (replaces_itself(record, token)) records.pop_back();
        return true;
    });
    return result;
}

std::optional<std::size_t> known_reach(const Taula& table, std::string_view word,
                                       std::string_view text) {
    return lazy_form(table).known_reach(word, text);
}

std::optional<Analisia> first_analysis(const Taula& table, const std::string& token) {
    const int maiuskula = case_class(token);
    std::optional<Analisia> first;
    LazyTransducer::Spelt spelt;
    analyse(table, token, spelt, [&](std::string_view text) {
        first.emplace(RecordText{text, table.hiztegia});
        first->maiuskula = maiuskula;
        if (replaces_itself(*first, token)) first.reset();
        return !first;
    });
    return first;
}

bool finds_word(const Taula& table, const std::string& token) {
    WordFinder finder(token);
    const auto counts = [&finder](std::string_view text) { return !finder(text); };
    switch (lazy_form(table).answer(up_to_nul(token).substr(0, WALK_LIMIT), counts)) {
        case Answer::no:
            return false;
        case Answer::yes:
            return true;
        case Answer::ask_the_walk:
            return walk_finds_word(table, token);
        case Answer::ask_the_texts:
            break;
    }
    LazyTransducer::Spelt spelt;
    analyse(table, token, spelt, std::ref(finder));
    return finder.found;
}

bool walk_finds_word(const Taula& table, const std::string& token) {
    WordFinder finder(token);
    walk_token(table, token, std::ref(finder));
    return finder.found;
}

}  // namespace lemara
