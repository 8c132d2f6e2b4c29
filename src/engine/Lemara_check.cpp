// The paragraph check: a verdict for each token of a text, as mark-up.
// Tests: tests/engine/Lemara_check_test.cpp.
#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Lemara.h"
#include "analysis/text_pieces.h"
#include "engine/entries.h"
#include "engine/verdicts.h"

using lemara::contains;

namespace {

constexpr int MOST_ENTRIES = 5;  // multi-word entries shown for one unknown word

std::string element(const std::string& name, const std::string& text) {
    return "\n\t\t<" + name + ">" + text + "</" + name + ">";
}

void restore_case(std::string& form, int case_class) {
    if (case_class == 2) form = touppercase(form);
    // The standard conversion: an accented small letter stays.
    if (case_class == 1 && !form.empty()) form[0] = lemara::standard_toupper(form[0]);
}

/// Equal lengths may come in any order; they keep theirs, on every standard library.
/// Records are large, so their places are sorted and each is moved once.
std::vector<Analisia> shortest_first(std::vector<Analisia> entries) {
    std::vector<Analisia*> order;
    order.reserve(entries.size());
    for (Analisia& entry : entries) order.push_back(&entry);
    std::stable_sort(order.begin(), order.end(),
                     [](const Analisia* a, const Analisia* b) {
                         return Analisia::CompareLemaLuzera(*a, *b);
                     });
    std::vector<Analisia> sorted;
    sorted.reserve(entries.size());
    for (Analisia* entry : order) sorted.push_back(std::move(*entry));
    return sorted;
}

}  // namespace

bool lemara::is_unknown(const Tokena& token) {
    return token.analisiak.size() == 1 && token.analisiak[0].etiketa == " EZZG";
}

std::vector<Analisia> lemara::entries_behind(const Lemara& engine, const Tokena& token) {
    const std::string start = token.testua + ' ';
    std::vector<Analisia> entries = engine.bilatuHasiera(start, true);
    if (token.maiuskula <= 0) return shortest_first(std::move(entries));
    for (Analisia& entry : engine.bilatuHasiera(tolowercase(start), true)) {
        restore_case(entry.forma, token.maiuskula);
        const bool known = std::any_of(
            entries.begin(), entries.end(),
            [&](const Analisia& other) { return other.forma == entry.forma; });
        if (!known) entries.push_back(std::move(entry));
    }
    return shortest_first(std::move(entries));
}

bool lemara::has_entry_behind(const Lemara& engine, const Tokena& token) {
    const Sarea* network = find_network(engine.sareak, "eumorfo");
    const auto any = [](const Analisia&) { return true; };
    const std::string start = token.testua + ' ';
    return has_entry(network, start, any) ||
           (token.maiuskula > 0 && has_entry(network, tolowercase(start), any));
}

std::string Lemara::verdict_of_unknown(const Tokena& token, bool proposatu) const {
    const std::vector<Analisia> entries = lemara::entries_behind(*this, token);
    if (!entries.empty()) {
        std::string verdict = "\n\t<prop k=\"ezz\" h=\"bai\">";
        int count = 0;
        for (const Analisia& entry : entries) {
            // Kept on purpose: compared with position 0 and not with absence. The verdict
            // begins with a line feed, so only an empty lemma is held back.
            if (verdict.find(entry.lema) == 0) continue;
            verdict += element("sugg", entry.forma);
            if (++count == MOST_ENTRIES) break;
        }
        return verdict + "\n\t</prop>";
    }
    if (!proposatu) return "\n\t<prop k=\"ezz\"/>";
    std::string verdict = "\n\t<prop k=\"ezz\">";
    for (const std::string& proposal : lortu_ezzg_proposamenak(token.testua)) {
        if (!contains(verdict, "<sugg>" + proposal + "</sugg>")) {
            verdict += element("sugg", proposal);
        }
    }
    return verdict + "\n\t</prop>";
}

std::string Lemara::verdict_of_known(const Tokena& token) const {
    std::string verdict = "\n\t<prop>";
    const bool clean = lemara::for_each_recommendation(
        *this, token, [&](const lemara::Recommendation& advice) {
            const std::string name = advice.instead ? "erabili" : "hobe";
            for (const Analisia& form : advice.forms) {
                // Kept on purpose: sought anywhere in the verdict so far, mark-up
                // included.
                if (!contains(verdict, form.forma)) verdict += element(name, form.forma);
            }
            if (advice.forms.empty() && !contains(verdict, ">" + advice.lemmas + "<")) {
                verdict += element(
                    name, sortu_forma_ezezaguna(advice.lemmas, advice.analysis.etiketa));
            }
        });
    return clean ? "\n\t<prop k=\"ok\"/>" : verdict + "\n\t</prop>";
}

std::string Lemara::getParagrafoaZuzenlex(const std::string& testua,
                                          bool proposatu) const {
    const Paragrafoa paragraph = analizatu_paragrafoa(1, testua);
    std::ostringstream out;
    out << "<p>\n";
    int sentence_number = 0;
    for (const Esaldia& sentence : paragraph.esaldiak) {
        out << "<es ezk=\"" << ++sentence_number << "\" pzk=\"0\">\n";
        int number = 0;
        for (const Tokena& token : sentence.tokenak) {
            out << "<tok h=\"" << ++number << "\" z=\"" << (token.hutsunea ? "32" : "0")
                << "\">\n\t<frm>" << token.testua << "</frm>"
                << (lemara::is_unknown(token) ? verdict_of_unknown(token, proposatu)
                                              : verdict_of_known(token))
                << "\n</tok>\n";
        }
        out << "</es>\n";
    }
    out << "</p>\n";
    return out.str();
}
