// Every deviant entry of the main network, in all its forms: the better form comes out,
// in the same inflection, and is right itself.
#include <algorithm>
#include <set>
#include <string>

#include "language.h"

namespace {

using namespace lemara::test;

/// The beginnings of the analyses that hold a better form or a form to use instead.
std::set<std::string> deviant_beginnings() {
    std::set<std::string> beginnings;
    for (const Analisia& entry : main_table().sortuFormak("", "", true, false)) {
        if (!entry.hobe.empty() || !entry.erabili.empty())
            beginnings.insert(entry.analisia);
    }
    return beginnings;
}

std::vector<std::string> pieces(const std::string& lemmas) {
    std::vector<std::string> list;
    std::istringstream text(lemmas);
    for (std::string lemma; std::getline(text, lemma, '/');) list.push_back(lemma);
    return list;
}

/// True if a reading of the form has no better form of its own.
bool is_right(const std::string& form) {
    const std::vector<Verdict> verdicts = check(basque(), form, false);
    return std::all_of(verdicts.begin(), verdicts.end(),
                       [](const Verdict& verdict) { return verdict.kind == "ok"; });
}

}  // namespace

TEST(Deviant, EveryBetterLemmaInflectsLikeTheDeviantOne) {
    std::size_t forms = 0, bad = 0;
    const std::set<std::string> beginnings = deviant_beginnings();
    for (const std::string& beginning : beginnings) {
        std::set<std::string> missing;
        for (const Analisia& form :
             main_table().sortuFormak(beginning, "", false, false)) {
            if (is_derived(form.etiketa)) continue;
            ++forms;
            for (const std::string& better :
                 pieces(form.hobe.empty() ? form.erabili : form.hobe)) {
                if (basque().sareak.at("eumorfo")->ordeztuForma(better, form).empty()) {
                    missing.insert(better + form.etiketa);
                }
            }
        }
        if (missing.empty()) continue;
        ++bad;
        EXPECT_TRUE(missing.empty())
            << utf8(beginning) << ": nothing for " << missing.size() << " forms, as "
            << utf8(*missing.begin());
    }
    std::cout << beginnings.size() << " deviant entries, " << forms << " forms; without "
              << bad << '\n';
    EXPECT_GE(beginnings.size(), 600u);
}

TEST(Deviant, BetterFormsAreRight) {
    std::set<std::string> seen;
    for (const std::string& beginning : deviant_beginnings()) {
        const std::vector<Analisia> forms =
            main_table().sortuFormak(beginning, "", false, false);
        // The first, a middle and the last form of each entry.
        for (const std::size_t i : {std::size_t{0}, forms.size() / 2, forms.size() - 1}) {
            if (i >= forms.size()) continue;
            const Analisia& form = forms[i];
            for (const std::string& better :
                 pieces(form.hobe.empty() ? form.erabili : form.hobe)) {
                for (const Analisia& record :
                     basque().sareak.at("eumorfo")->ordeztuForma(better, form)) {
                    if (!seen.insert(record.forma).second) continue;
                    EXPECT_TRUE(is_right(record.forma))
                        << utf8(record.forma) << ", for " << utf8(form.forma);
                }
            }
        }
    }
    std::cout << seen.size() << " better forms\n";
    EXPECT_GT(seen.size(), 600u);
}
