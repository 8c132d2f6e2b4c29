// The slow, obvious twins of the two searches of a table: each is the rule in so many words,
// over the graph of Egoera and Zubia. Texts are copied at each step but for the lower text of
// a generation, which all branches share, because capitals that one record carried down stay
// for the next.
//
// Both count what they come across (`hits`), so that a test can tell whether its tables
// reached every rule.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "Taula.h"
#include "hits.h"
#include "iragazkiak.h"
#include "karaktereak.h"

namespace lemara::test {

inline bool plain_contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}
inline bool plain_small(char c) { return c >= 'a' && c <= 'z'; }
inline bool plain_capital(char c) { return c >= 'A' && c <= 'Z'; }

/// What a search stands on: a state, or nothing where there is none.
inline const Egoera* plain_state(const Taula& table, int number) {
    if (number < 0 || static_cast<std::size_t>(number) >= table.egoerak.size()) return nullptr;
    return table.egoerak[static_cast<std::size_t>(number)];
}

/// States that the path entered, each with the progress it had made by then.
using Trail = std::vector<std::pair<int, std::size_t>>;

class PlainAnalysis {
public:
    PlainAnalysis(const Taula& table, const std::string& token, Hits& hits)
        : table_(table), token_(token.substr(0, token.find('\0'))), whole_(token), hits_(hits) {}

    bool gave_up() const { return steps_ > STEP_LIMIT; }

    /// The strings of all paths from a state on, behind the text of `output`.
    std::vector<std::string> strings_from(int state, const std::string& rest,
                                          const std::string& output) {
        step(state, rest, output, {});
        return found_;
    }

    std::vector<Analisia> run() {
        step(0, tolowercase(token_.substr(0, 999)), "", {});
        std::vector<Analisia> records;
        for (const std::string& text : found_) {
            Analisia record(text, table_.hiztegia);
            const std::string upper = touppercase(whole_);
            if (whole_.substr(0, 1) != upper.substr(0, 1)) {
                record.maiuskula = 0;
            } else if (whole_ == upper) {
                record.maiuskula = 2;
            } else {
                record.maiuskula = 1;
            }
            const std::string start = whole_.substr(0, record.lema.size());
            if (!start.empty() && (start == record.hobe || start == record.erabili)) {
                ++hits_["a record that is its own replacement"];
                continue;
            }
            ++hits_["case class " + std::to_string(record.maiuskula)];
            records.push_back(record);
        }
        return records;
    }

private:
    static constexpr long STEP_LIMIT = 20000;

    bool fits_case(const std::string& analysis) {
        const bool lower = !token_.empty() && plain_small(token_[0]);
        if (lower && !analysis.empty() && plain_capital(analysis[0])) return false;
        if (plain_contains(analysis, "<PIB>") || plain_contains(analysis, "<LIB>")) {
            ++hits_["a person or a place"];
            if (lower) return false;
        } else if (plain_contains(analysis, "<IZB>")) {
            ++hits_["another name"];
            if (lower) return false;
        }
        if (plain_contains(analysis, "<SNB>") || plain_contains(analysis, "<SIG>")) {
            ++hits_["a symbol"];
            const std::string lemma = ateraGoitik(analysis.c_str(), "L");
            return token_.compare(0, lemma.size(), lemma) == 0;
        }
        return true;
    }

    void step(int state, const std::string& rest, const std::string& output, Trail trail) {
        if (++steps_ > STEP_LIMIT) return;
        if (state < 0) {
            if (!rest.empty()) {
                ++hits_["an end with input left"];
                return;
            }
            if (!fits_case(output)) {
                ++hits_["a path that doesn't fit the token's case"];
                return;
            }
            if (!kenduHAULtxarrak(output.c_str(), token_.c_str())) {
                ++hits_["a false multiword"];
                return;
            }
            found_.push_back(output);
            return;
        }
        const Egoera* const here = plain_state(table_, state);
        if (here == nullptr) {
            ++hits_["a target that doesn't exist"];
            return;
        }
        const std::pair<int, std::size_t> entry(state, rest.size());
        if (std::find(trail.begin(), trail.end(), entry) != trail.end()) {
            ++hits_["a cycle in the analysis"];
            return;
        }
        trail.push_back(entry);
        if (output.size() == 1 && !fits_case(output) && touppercase(token_) != token_) {
            ++hits_["the early cut at a capital"];
            return;
        }
        for (const Zubia* arc : here->zubiak) {
            if (arc == nullptr) continue;
            const std::string& lower = arc->beheko_ikurra;
            if (rest.compare(0, lower.size(), lower) != 0) continue;
            if (lower.size() > 1) ++hits_["a lower symbol of several bytes"];
            if (lower.empty() && arc->hurrengo_egoera >= 0) ++hits_["an empty lower symbol"];
            if (arc->goiko_ikurra == "<>") ++hits_["a marker in the analysis"];
            step(arc->hurrengo_egoera, rest.substr(lower.size()), output + arc->goiko_ikurra,
                 trail);
        }
    }

    const Taula& table_;
    const std::string token_;  // up to a NUL
    const std::string whole_;
    Hits& hits_;
    std::vector<std::string> found_;
    long steps_ = 0;
};

class PlainGeneration {
public:
    PlainGeneration(const Taula& table, std::string lemma, std::string tags, bool stop_at_tag,
                    Hits& hits)
        : table_(table), stop_at_tag_(stop_at_tag), hits_(hits) {
        for (auto at = tags.find("<>"); at != std::string::npos; at = tags.find("<>")) {
            ++hits_["a marker in the tags"];
            tags.erase(at, 2);
        }
        target_ = (lemma + tags).substr(0, 1000);
    }

    bool gave_up() const { return steps_ > STEP_LIMIT; }

    std::vector<Analisia> run() { return run_from(0, "", ""); }

    /// The records of all paths from a state on, behind the two texts.
    std::vector<Analisia> run_from(int state, const std::string& upper, const std::string& lower) {
        lower_ = lower;
        step(state, upper, lower, {});
        return records_;
    }

    /// The lower text that the search was started with, and the capitals it has taken since.
    const std::string& lower_left() const { return lower_; }

private:
    static constexpr long STEP_LIMIT = 20000;

    /// `clean` is the lower text as the arcs wrote it, `lower_` what it has become.
    void emit(const std::string& upper, const std::string& clean) {
        const std::string fresh = capitals_carried(upper, clean);
        lower_ = capitals_carried(upper, lower_);
        if (lower_ != fresh) ++hits_["a capital of an earlier record"];
        if (fresh != clean) ++hits_["a capital carried down"];
        Analisia record(upper, table_.hiztegia);
        record.forma = lower_;
        records_.push_back(record);
    }

    static std::string capitals_carried(const std::string& upper, std::string lower) {
        for (std::size_t i = 0; i < upper.size() && i < lower.size() && upper[i] != '<'; ++i) {
            if (plain_capital(upper[i]) && lower[i] == upper[i] - 'A' + 'a') lower[i] = upper[i];
        }
        return lower;
    }

    bool excluded(const std::string& upper) {
        for (const std::string tag : {"<ELI_IZE", "<PSP"}) {
            if (!plain_contains(upper, tag)) continue;
            ++hits_[plain_contains(target_, tag) ? tag + " in the target" : tag + " excluded"];
            if (!plain_contains(target_, tag)) return true;
        }
        for (const std::string part : {"ba<AUR>", "<ADL>", "<Rare>"}) {
            if (!plain_contains(upper, part)) continue;
            ++hits_[part + " excluded"];
            return true;
        }
        return false;
    }

    void step(int state, const std::string& upper, const std::string& clean, Trail trail) {
        if (++steps_ > STEP_LIMIT) return;
        const std::size_t n = std::min(upper.size(), target_.size());
        const bool agrees = upper.substr(0, n) == target_.substr(0, n);
        if (state < 0) {
            if (!agrees) return;
            if (upper.size() < target_.size()) ++hits_["a path shorter than the target"];
            emit(upper, clean);
            return;
        }
        const Egoera* const here = plain_state(table_, state);
        if (here == nullptr) return;
        if (plain_contains(target_, "<ELI_IZE") && upper == target_) {
            ++hits_["an exact target"];
            emit(upper, clean);
            return;
        }
        if (!agrees) return;
        if (stop_at_tag_ && plain_contains(upper, "<")) {
            if (upper.size() < target_.size()) {
                ++hits_["a tag before the end of the target"];
                return;
            }
            ++hits_["a stop at a tag"];
            emit(upper, clean);
            return;
        }
        if (excluded(upper)) return;
        // Behind the stops: a path that ends here needs no way on.
        const std::pair<int, std::size_t> entry(state, n);
        if (std::find(trail.begin(), trail.end(), entry) != trail.end()) {
            ++hits_["a cycle in the generation"];
            return;
        }
        trail.push_back(entry);
        for (const Zubia* arc : here->zubiak) {
            if (arc == nullptr) continue;
            const std::string& symbol = arc->goiko_ikurra;
            const bool digit = symbol.size() > 1 && (symbol[1] == '0' || symbol[1] == '1');
            const bool skipped = symbol == "<>" || digit;
            if (symbol == "<>") ++hits_["a marker in the generation"];
            if (digit) ++hits_[std::string("a skipped tag in ") + symbol[1]];
            if (symbol.empty() && arc->hurrengo_egoera >= 0) ++hits_["an empty upper symbol"];
            if (symbol.size() > 1 && symbol[0] != '<') ++hits_["an upper symbol of several bytes"];
            const std::size_t length = lower_.size();
            lower_ += arc->beheko_ikurra;
            step(arc->hurrengo_egoera, skipped ? upper : upper + symbol,
                 clean + arc->beheko_ikurra, trail);
            lower_.resize(length);
        }
    }

    const Taula& table_;
    const bool stop_at_tag_;
    Hits& hits_;
    std::string target_;
    std::string lower_;
    std::vector<Analisia> records_;
    long steps_ = 0;
};

}  // namespace lemara::test
