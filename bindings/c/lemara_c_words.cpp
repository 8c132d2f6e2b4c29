// The personal dictionary in the C interface. Tests: tests/bindings/c_api_test.c.
#include "inside.h"

struct lemara_personal_words {
    std::vector<lemara::PersonalWord> list;
};

using namespace lemara::c_api;

lemara_status lemara_add_word(lemara_checker* checker, const char* word, size_t length,
                              const char* word_class, lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || word == nullptr) return bad(error, NULL_ARGUMENT);
        return refuse(error, checker->checker->add_word({std::string(word, length),
                                                         or_empty(word_class), "", ""}));
    });
}

lemara_status lemara_add_personal_word(lemara_checker* checker,
                                       const lemara_personal_word* word,
                                       lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || word == nullptr) return bad(error, NULL_ARGUMENT);
        lemara_personal_word given = LEMARA_INIT(lemara_personal_word);
        if (!take_over(word, given)) return bad(error, "a word without its size");
        if (given.word == nullptr) return bad(error, NULL_ARGUMENT);
        return refuse(error, checker->checker->add_word(
                                 {given.word, or_empty(given.word_class),
                                  or_empty(given.better), or_empty(given.instead)}));
    });
}

lemara_status lemara_remove_word(lemara_checker* checker, const char* word, size_t length,
                                 const char* word_class, lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || word == nullptr) return bad(error, NULL_ARGUMENT);
        return refuse(
            error, checker->checker->remove_word({word, length}, or_empty(word_class)));
    });
}

lemara_status lemara_words(const lemara_checker* checker, lemara_strings** words,
                           lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || words == nullptr) return bad(error, NULL_ARGUMENT);
        std::vector<std::string> list;
        for (lemara::PersonalWord& word : checker->checker->words()) {
            list.push_back(std::move(word.word));
        }
        return strings_of(std::move(list), words);
    });
}

lemara_status lemara_list_personal_words(const lemara_checker* checker,
                                         lemara_personal_words** words,
                                         lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || words == nullptr) return bad(error, NULL_ARGUMENT);
        *words = new lemara_personal_words{checker->checker->words()};
        return LEMARA_OK;
    });
}

size_t lemara_personal_words_count(const lemara_personal_words* words) {
    return words == nullptr ? 0 : words->list.size();
}

lemara_status lemara_personal_words_get(const lemara_personal_words* words, size_t index,
                                        lemara_personal_word* word) {
    if (index >= lemara_personal_words_count(words)) return LEMARA_BAD_ARGUMENT;
    const lemara::PersonalWord& found = words->list[index];
    lemara_personal_word filled = LEMARA_INIT(lemara_personal_word);
    filled.word = found.word.c_str();
    filled.word_class = found.word_class.c_str();
    filled.better = found.better.c_str();
    filled.instead = found.instead.c_str();
    return hand_over(filled, word);
}

void lemara_personal_words_free(lemara_personal_words* words) { delete words; }

lemara_status lemara_import_words(lemara_checker* checker, const char* list,
                                  size_t length, lemara_import_report* report,
                                  lemara_strings** refused, lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || list == nullptr) return bad(error, NULL_ARGUMENT);
        if (report != nullptr && report->size < sizeof(std::size_t)) {
            return bad(error, "a report without its size");
        }
        auto lines = std::make_unique<lemara_strings>();
        const lemara::ImportReport done = checker->checker->import_words({list, length});
        if (done.problem) return refuse(error, done.problem);
        for (const lemara::Problem& problem : done.refused) {
            lines->list.push_back(problem.text());
        }
        lemara_import_report filled = LEMARA_INIT(lemara_import_report);
        filled.added = done.added;
        filled.there = done.there;
        if (report != nullptr) hand_over(filled, report);
        if (refused != nullptr) *refused = lines.release();
        return LEMARA_OK;
    });
}

lemara_status lemara_export_words(const lemara_checker* checker, lemara_strings** list,
                                  lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || list == nullptr) return bad(error, NULL_ARGUMENT);
        return string_of(checker->checker->export_words(), list);
    });
}

lemara_status lemara_refresh(lemara_checker* checker, int* changed,
                             lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr) return bad(error, NULL_ARGUMENT);
        const bool it_has = checker->checker->refresh();
        if (changed != nullptr) *changed = it_has ? 1 : 0;
        return LEMARA_OK;
    });
}
