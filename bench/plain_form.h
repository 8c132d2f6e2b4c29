// The plain form of a table: its graph, walked arc by arc, and records taken apart field
// by field. What bench/compare measures the packed form against, and what judges it.
// Written as one would write it first: a string that grows and is cut back, a comparison
// for each arc of a state, a scan of the analysis for each field.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Lemara.h"

namespace lemara::bench {

/// An analysis with its fields, each by the extractor that says what it is.
struct PlainRecord {
    PlainRecord(const std::string& text, const std::string& network)
        : analisia(text), lema(ateraGoitik(text.c_str(), "L")), hiztegia(network) {
        static const Analisia any("", "");
        etiketa = any.ateraEtiketa(text.c_str());
        twol = any.ateraTWOL(text.c_str());
        if (lema.size() >= 2 && lema.find('+') != std::string::npos &&
            etiketa.find("WEB") == std::string::npos) {
            lema.erase(std::remove(lema.begin(), lema.end(), '+'), lema.end());
        }
        tasuna = any.ateraTasuna(text.c_str());
        iritzia = any.ateraIritzia(text.c_str());
        sai = ateraGoitik(text.c_str(), "[s=");
        hobe = ateraGoitik(text.c_str(), "[h=");
        erabili = ateraGoitik(text.c_str(), "[e=");
    }

    std::string analisia, lema, etiketa, twol, hiztegia;
    std::string sai, hobe, erabili, tasuna, iritzia, forma;
    int maiuskula = 0;
};

class PlainForm {
public:
    explicit PlainForm(const Taula& table) : table_(table) {}

    /// Calls `visit` with each analysis string of a token.
    template <class Visit>
    void analyse(const std::string& token, Visit visit) {
        token_ = token;
        rest_ = tolowercase(token.substr(0, WALK_LIMIT));
        output_.clear();
        step(0, rest_.c_str(), visit);
    }

    /// All records of a token. Record: PlainRecord, or the library's own.
    template <class Record = PlainRecord>
    std::vector<Record> records(const std::string& token) {
        std::vector<Record> result;
        analyse(token, [&](const std::string& text) {
            Record record(text, table_.hiztegia);
            const std::string start = token.substr(0, record.lema.size());
            if (!start.empty() && (start == record.hobe || start == record.erabili))
                return;
            result.push_back(record);
        });
        return result;
    }

    /// Calls `visit` with each analysis and form whose analysis begins with `target`.
    template <class Visit>
    void generate(const std::string& target, bool stop_at_tag, Visit visit) {
        target_ = target;
        stop_at_tag_ = stop_at_tag;
        upper_.clear();
        lower_.clear();
        forms(0, visit);
    }

private:
    template <class Visit>
    void step(int state, const char* rest, Visit& visit) {
        if (state < 0) {
            if (*rest == '\0' &&
                egiaztatuIzenBereziakEtaSinboloak(token_.c_str(), output_.c_str()) &&
                kenduHAULtxarrak(output_.c_str(), token_.c_str())) {
                visit(output_);
            }
            return;
        }
        if (static_cast<std::size_t>(state) >= table_.egoerak.size()) return;
        if (output_.size() == 1 &&
            !egiaztatuIzenBereziakEtaSinboloak(token_.c_str(), output_.c_str()) &&
            touppercase(token_) != token_) {
            return;
        }
        for (const Zubia* arc : table_.egoerak[static_cast<std::size_t>(state)]->zubiak) {
            const std::string& lower = arc->beheko_ikurra;
            if (std::strncmp(rest, lower.c_str(), lower.size()) != 0) continue;
            const std::size_t length = output_.size();
            output_ += arc->goiko_ikurra;
            step(arc->hurrengo_egoera, rest + lower.size(), visit);
            output_.resize(length);
        }
    }

    bool is_shut_out() const {
        const auto has = [&](const char* part) {
            return upper_.find(part) != std::string::npos;
        };
        const auto wanted = [&](const char* part) {
            return target_.find(part) != std::string::npos;
        };
        return (has("<ELI_IZE") && !wanted("<ELI_IZE")) ||
               (has("<PSP") && !wanted("<PSP")) || has("ba<AUR>") || has("<ADL>") ||
               has("<Rare>");
    }

    template <class Visit>
    void forms(int state, Visit& visit) {
        const std::size_t n = std::min(upper_.size(), target_.size());
        if (upper_.compare(0, n, target_, 0, n) != 0) return;
        if (state < 0) {
            visit(upper_, lower_);
            return;
        }
        if (static_cast<std::size_t>(state) >= table_.egoerak.size()) return;
        if (stop_at_tag_ && upper_.find('<') != std::string::npos) {
            if (upper_.size() >= target_.size()) visit(upper_, lower_);
            return;
        }
        if (is_shut_out()) return;
        for (const Zubia* arc : table_.egoerak[static_cast<std::size_t>(state)]->zubiak) {
            const std::string& symbol = arc->goiko_ikurra;
            const bool left_out =
                symbol == "<>" ||
                (symbol.size() > 1 && (symbol[1] == '0' || symbol[1] == '1'));
            const std::size_t upper = upper_.size(), lower = lower_.size();
            if (!left_out) upper_ += symbol;
            lower_ += arc->beheko_ikurra;
            forms(arc->hurrengo_egoera, visit);
            upper_.resize(upper);
            lower_.resize(lower);
        }
    }

    const Taula& table_;
    std::string token_, rest_, output_;
    std::string target_, upper_, lower_;
    bool stop_at_tag_ = false;
};

/// Loads a table's text as one would first: a pass to count the states, a pass to fill
/// them.
inline std::unique_ptr<Taula> plain_load(const std::string& path) {
    auto table = std::make_unique<Taula>();
    int states = 0;
    std::string line;
    for (std::ifstream in(path); std::getline(in, line);) {
        const bool final = line.compare(0, 7, "final: ") == 0;
        states = std::max(states, std::atoi(line.c_str() + (final ? 7 : 0)) + 1);
    }
    for (int i = 0; i < states; ++i) table->egoerak.push_back(new Egoera);
    for (std::ifstream in(path); std::getline(in, line);) {
        if (line.compare(0, 7, "final: ") == 0) {
            const auto state = static_cast<std::size_t>(std::atoi(line.c_str() + 7));
            table->egoerak[state]->zubiak.push_back(new Zubia(-1, "", ""));
            continue;
        }
        const std::size_t first = line.find('\t'), second = line.find('\t', first + 1);
        const std::string symbols = line.substr(first + 1, second - first - 1);
        std::string upper = symbols, lower = symbols;
        const std::size_t colon = symbols.find(':');
        if (symbols.size() > 1 && colon != std::string::npos) {
            upper = symbols.substr(0, colon);
            lower = symbols.substr(colon + 1);
            if (lower == "<>") lower.clear();
        }
        const auto state = static_cast<std::size_t>(std::atoi(line.c_str()));
        table->egoerak[state]->zubiak.push_back(
            new Zubia(std::atoi(line.c_str() + second + 1), upper, lower));
    }
    return table;
}

}  // namespace lemara::bench
