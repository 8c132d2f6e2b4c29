// The C interface: a rendering of lemara::Checker. Tests: tests/bindings/c_api_test.c.
#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lemara/checker.h"
#include "lemara/lemara.h"

struct lemara_error {
    std::string message;
};

struct lemara_strings {
    std::vector<std::string> list;
};

struct lemara_checker {
    std::unique_ptr<lemara::Checker> checker;
    std::vector<std::string> notes;
};

struct lemara_findings {
    std::vector<lemara::Finding> list;
    std::vector<std::vector<const char*>> forms;
};

struct lemara_tokens {
    struct Entry {
        lemara::Token token;
        std::vector<std::string> forms;  // of its readings, if they were generated
    };
    std::vector<Entry> list;
};

namespace {

void tell(lemara_error** error, std::string message) {
    if (error == nullptr) return;
    *error = new (std::nothrow) lemara_error{std::move(message)};
}

/// Runs `action`, which answers a status; no exception gets out.
template <class Action>
lemara_status guarded(lemara_error** error, Action action) noexcept {
    if (error != nullptr) *error = nullptr;
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return LEMARA_NO_MEMORY;
    } catch (const std::exception& e) {
        try {
            tell(error, e.what());
        } catch (...) {
        }
        return LEMARA_FAILED;
    } catch (...) {
        return LEMARA_FAILED;
    }
}

lemara_status refuse(lemara_error** error,
                     const std::optional<lemara::Problem>& problem) {
    if (!problem) return LEMARA_OK;
    tell(error, problem->text());
    return LEMARA_REFUSED;
}

lemara_status bad(lemara_error** error, const char* what) {
    tell(error, what);
    return LEMARA_BAD_ARGUMENT;
}

const char* or_empty(const char* text) { return text == nullptr ? "" : text; }

/// Copies a structure of ours into one of the caller's, which may be older and shorter.
template <class Structure>
lemara_status hand_over(Structure filled, Structure* wanted) {
    if (wanted == nullptr || wanted->size < sizeof(std::size_t))
        return LEMARA_BAD_ARGUMENT;
    filled.size = wanted->size;
    const auto* from = reinterpret_cast<const char*>(&filled);
    auto* to = reinterpret_cast<char*>(wanted);
    const std::size_t known = wanted->size < sizeof filled ? wanted->size : sizeof filled;
    for (std::size_t i = sizeof(std::size_t); i < known; ++i) to[i] = from[i];
    return LEMARA_OK;
}

/// Reads a structure of the caller's; what it lacks keeps its start value.
template <class Structure>
bool take_over(const Structure* given, Structure& filled) {
    if (given == nullptr) return true;
    if (given->size < sizeof(std::size_t)) return false;
    const auto* from = reinterpret_cast<const char*>(given);
    auto* to = reinterpret_cast<char*>(&filled);
    const std::size_t known = given->size < sizeof filled ? given->size : sizeof filled;
    for (std::size_t i = 0; i < known; ++i) to[i] = from[i];
    return true;
}

lemara_span span_of(const lemara::Span& span) {
    return {span.begin.byte,     span.end.byte,    span.begin.code_point,
            span.end.code_point, span.begin.utf16, span.end.utf16,
            span.line,           span.column};
}

lemara::Paragraphs paragraphs_of(lemara_paragraphs paragraphs) {
    if (paragraphs == LEMARA_BLANK_LINES) return lemara::Paragraphs::blank;
    return paragraphs == LEMARA_WHOLE ? lemara::Paragraphs::whole
                                      : lemara::Paragraphs::lines;
}

lemara_status strings_of(std::vector<std::string> list, lemara_strings** strings) {
    *strings = new lemara_strings{std::move(list)};
    return LEMARA_OK;
}

constexpr char NULL_ARGUMENT[] = "a null pointer";

}  // namespace

int lemara_api_version(void) { return LEMARA_API_VERSION; }

const char* lemara_version(void) { return lemara::version(); }

const char* lemara_kind_name(lemara_kind kind) {
    return lemara::name_of(static_cast<lemara::Kind>(kind));
}

const char* lemara_error_message(const lemara_error* error) {
    return error == nullptr ? "" : error->message.c_str();
}

void lemara_error_free(lemara_error* error) { delete error; }

lemara_status lemara_open(const lemara_settings* settings, lemara_checker** checker,
                          lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr) return bad(error, NULL_ARGUMENT);
        *checker = nullptr;
        lemara_settings given = LEMARA_INIT(lemara_settings);
        if (!take_over(settings, given)) return bad(error, "settings without their size");
        lemara::Settings wanted;
        wanted.configuration = or_empty(given.configuration);
        wanted.dictionary = or_empty(given.dictionary);
        wanted.use_dictionary = given.no_dictionary == 0;
        lemara::Checker::Opened opened = lemara::Checker::open(wanted);
        if (!opened.checker) return refuse(error, opened.problems.at(0));
        auto made = std::make_unique<lemara_checker>();
        for (const lemara::Problem& problem : opened.problems) {
            made->notes.push_back(problem.text());
        }
        made->checker = std::move(opened.checker);
        *checker = made.release();
        return LEMARA_OK;
    });
}

void lemara_close(lemara_checker* checker) { delete checker; }

lemara_status lemara_notes(const lemara_checker* checker, lemara_strings** notes,
                           lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || notes == nullptr) return bad(error, NULL_ARGUMENT);
        return strings_of(checker->notes, notes);
    });
}

lemara_status lemara_check(const lemara_checker* checker, const char* text, size_t length,
                           const lemara_check_options* options,
                           lemara_findings** findings, lemara_error** error) {
    return guarded(error, [&] {
        if (findings == nullptr) return bad(error, NULL_ARGUMENT);
        *findings = nullptr;
        if (checker == nullptr || text == nullptr) return bad(error, NULL_ARGUMENT);
        lemara::CheckOptions wanted;
        lemara_check_options given = LEMARA_INIT(lemara_check_options);
        given.most_forms = wanted.most_forms;
        if (!take_over(options, given)) return bad(error, "options without their size");
        wanted.paragraphs = paragraphs_of(given.paragraphs);
        wanted.most_forms = given.most_forms;
        wanted.time_per_word = std::chrono::milliseconds(given.ms_per_word);
        wanted.time_in_all = std::chrono::milliseconds(given.ms_in_all);
        wanted.report_foreign = given.report_foreign != 0;
        auto result = std::make_unique<lemara_findings>();
        result->list = checker->checker->check({text, length}, wanted);
        for (const lemara::Finding& finding : result->list) {
            result->forms.emplace_back();
            for (const std::string& form : finding.forms) {
                result->forms.back().push_back(form.c_str());
            }
        }
        *findings = result.release();
        return LEMARA_OK;
    });
}

size_t lemara_findings_count(const lemara_findings* findings) {
    return findings == nullptr ? 0 : findings->list.size();
}

lemara_status lemara_findings_get(const lemara_findings* findings, size_t index,
                                  lemara_finding* finding) {
    if (index >= lemara_findings_count(findings)) return LEMARA_BAD_ARGUMENT;
    const lemara::Finding& found = findings->list[index];
    lemara_finding filled = LEMARA_INIT(lemara_finding);
    filled.kind = static_cast<lemara_kind>(found.kind);
    filled.span = span_of(found.span);
    filled.token = found.token.c_str();
    filled.forms = findings->forms[index].data();
    filled.form_count = found.forms.size();
    filled.complete = found.complete ? 1 : 0;
    return hand_over(filled, finding);
}

void lemara_findings_free(lemara_findings* findings) { delete findings; }

lemara_status lemara_analyze(const lemara_checker* checker, const char* text,
                             size_t length, lemara_paragraphs paragraphs,
                             lemara_tokens** tokens, lemara_error** error) {
    return guarded(error, [&] {
        if (tokens == nullptr) return bad(error, NULL_ARGUMENT);
        *tokens = nullptr;
        if (checker == nullptr || text == nullptr) return bad(error, NULL_ARGUMENT);
        auto result = std::make_unique<lemara_tokens>();
        checker->checker->analyze({text, length}, paragraphs_of(paragraphs),
                                  [&](const lemara::Token& token) {
                                      result->list.push_back({token, {}});
                                      return true;
                                  });
        *tokens = result.release();
        return LEMARA_OK;
    });
}

lemara_status lemara_generate(const lemara_checker* checker, const char* word,
                              size_t length, const char* tag, lemara_tokens** forms,
                              lemara_error** error) {
    return guarded(error, [&] {
        if (forms == nullptr) return bad(error, NULL_ARGUMENT);
        *forms = nullptr;
        if (checker == nullptr || word == nullptr || tag == nullptr) {
            return bad(error, NULL_ARGUMENT);
        }
        auto result = std::make_unique<lemara_tokens>();
        result->list.emplace_back();
        lemara_tokens::Entry& entry = result->list.back();
        entry.token.text.assign(word, length);
        for (lemara::Form& form : checker->checker->generate({word, length}, tag)) {
            entry.forms.push_back(std::move(form.form));
            entry.token.readings.push_back(std::move(form.reading));
        }
        entry.token.known = !entry.forms.empty();
        *forms = result.release();
        return LEMARA_OK;
    });
}

size_t lemara_tokens_count(const lemara_tokens* tokens) {
    return tokens == nullptr ? 0 : tokens->list.size();
}

lemara_status lemara_tokens_get(const lemara_tokens* tokens, size_t index,
                                lemara_token* token) {
    if (index >= lemara_tokens_count(tokens)) return LEMARA_BAD_ARGUMENT;
    const lemara::Token& found = tokens->list[index].token;
    lemara_token filled = LEMARA_INIT(lemara_token);
    filled.span = span_of(found.span);
    filled.text = found.text.c_str();
    filled.known = found.known ? 1 : 0;
    filled.foreign = found.foreign ? 1 : 0;
    filled.blank_follows = found.blank_follows ? 1 : 0;
    filled.paragraph = found.paragraph;
    filled.sentence = found.sentence;
    filled.reading_count = found.readings.size();
    return hand_over(filled, token);
}

lemara_status lemara_tokens_reading(const lemara_tokens* tokens, size_t index,
                                    size_t reading_index, lemara_reading* reading) {
    if (index >= lemara_tokens_count(tokens)) return LEMARA_BAD_ARGUMENT;
    const lemara_tokens::Entry& entry = tokens->list[index];
    if (reading_index >= entry.token.readings.size()) return LEMARA_BAD_ARGUMENT;
    const lemara::Reading& found = entry.token.readings[reading_index];
    lemara_reading filled = LEMARA_INIT(lemara_reading);
    filled.form = entry.forms.empty() ? "" : entry.forms[reading_index].c_str();
    filled.lemma = found.lemma.c_str();
    filled.tags = found.tags.c_str();
    filled.network = found.network.c_str();
    filled.raw = found.raw.c_str();
    filled.better = found.better.c_str();
    filled.instead = found.instead.c_str();
    return hand_over(filled, reading);
}

void lemara_tokens_free(lemara_tokens* tokens) { delete tokens; }

lemara_status lemara_valid(const lemara_checker* checker, const char* word, size_t length,
                           int* valid, lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || word == nullptr || valid == nullptr) {
            return bad(error, NULL_ARGUMENT);
        }
        *valid = checker->checker->valid({word, length}) ? 1 : 0;
        return LEMARA_OK;
    });
}

lemara_status lemara_suggest(const lemara_checker* checker, const char* word,
                             size_t length, size_t most, unsigned milliseconds,
                             lemara_strings** forms, lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || word == nullptr || forms == nullptr) {
            return bad(error, NULL_ARGUMENT);
        }
        return strings_of(
            checker->checker->suggest({word, length}, most,
                                      std::chrono::milliseconds(milliseconds)),
            forms);
    });
}

lemara_status lemara_lemmas(const lemara_checker* checker, const char* word,
                            size_t length, lemara_strings** lemmas,
                            lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || word == nullptr || lemmas == nullptr) {
            return bad(error, NULL_ARGUMENT);
        }
        return strings_of(checker->checker->lemmas({word, length}), lemmas);
    });
}

lemara_status lemara_add_word(lemara_checker* checker, const char* word, size_t length,
                              const char* word_class, lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || word == nullptr) return bad(error, NULL_ARGUMENT);
        return refuse(error, checker->checker->add_word({std::string(word, length),
                                                         or_empty(word_class), "", ""}));
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

lemara_status lemara_refresh(lemara_checker* checker, int* changed,
                             lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr) return bad(error, NULL_ARGUMENT);
        const bool it_has = checker->checker->refresh();
        if (changed != nullptr) *changed = it_has ? 1 : 0;
        return LEMARA_OK;
    });
}

size_t lemara_strings_count(const lemara_strings* strings) {
    return strings == nullptr ? 0 : strings->list.size();
}

const char* lemara_strings_get(const lemara_strings* strings, size_t index) {
    return index < lemara_strings_count(strings) ? strings->list[index].c_str() : nullptr;
}

void lemara_strings_free(lemara_strings* strings) { delete strings; }
