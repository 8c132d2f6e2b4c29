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
    for (const Analisia& entry : all_entries()) {
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

const std::string& recommended(const Analisia& form) {
    return form.hobe.empty() ? form.erabili : form.hobe;
}

std::vector<Analisia> better_forms(const std::string& lemma, const Analisia& form) {
    return basque().sareak.at("eumorfo")->ordeztuForma(lemma, form);
}

/// True if no token of the text is unknown or has a better form.
bool is_right(const std::string& text) {
    const std::vector<Verdict> verdicts = check(basque(), text, false);
    return std::all_of(verdicts.begin(), verdicts.end(),
                       [](const Verdict& verdict) { return verdict.kind == "ok"; });
}

}  // namespace

// Where the better lemma lacks the tags of a form, the engine gives it as it stands. That
// is right for a word of one form alone.
TEST(Deviant, EveryBetterLemmaInflectsLikeTheDeviantOne) {
    const std::set<std::string> beginnings = deviant_beginnings();
    std::size_t count = 0;
    for (const std::string& beginning : beginnings) {
        const std::vector<Analisia> forms =
            main_table().sortuFormak(beginning, "", false, false);
        count += forms.size();
        if (forms.size() == 1) continue;
        std::set<std::string> missing;
        for (const Analisia& form : forms) {
            if (is_derived(form.etiketa)) continue;
            for (const std::string& better : pieces(recommended(form))) {
                if (better_forms(better, form).empty())
                    missing.insert(better + form.etiketa);
            }
        }
        EXPECT_TRUE(missing.empty())
            << utf8(beginning) << ": nothing for " << missing.size() << " forms, as "
            << utf8(missing.empty() ? "" : *missing.begin());
    }
    std::cout << beginnings.size() << " deviant entries, " << count << " forms\n";
    EXPECT_GE(beginnings.size(), 600u);
}

TEST(Deviant, BetterFormsAreRight) {
    std::set<std::string> seen;
    for (const std::string& beginning : deviant_beginnings()) {
        const std::vector<Analisia> forms =
            main_table().sortuFormak(beginning, "", false, false);
        if (forms.empty()) continue;
        for (const std::size_t i : {std::size_t{0}, forms.size() / 2, forms.size() - 1}) {
            const Analisia& form = forms[i];
            for (const std::string& better : pieces(recommended(form))) {
                std::vector<std::string> given = forms_of(better_forms(better, form));
                if (given.empty()) given.push_back(better);
                for (const std::string& text : given) {
                    if (!seen.insert(text).second) continue;
                    EXPECT_TRUE(is_right(text))
                        << utf8(text) << ", for " << utf8(form.forma);
                }
            }
        }
    }
    std::cout << seen.size() << " better forms\n";
    EXPECT_GT(seen.size(), 600u);
}
