// The C interface: a rendering of lemara::Checker. Tests: tests/bindings/c_api_test.c.
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "inside.h"

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

using namespace lemara::c_api;

constexpr std::pair<lemara_format, lemara::Format> FORMATS[] = {
    {LEMARA_MULTEXT, lemara::Format::multext},
    {LEMARA_CG3, lemara::Format::cg3},
    {LEMARA_IKUTE, lemara::Format::ikute},
    {LEMARA_ZUZENLEX, lemara::Format::zuzenlex},
    {LEMARA_MARKUP, lemara::Format::check},
};

lemara_span span_of(const lemara::Span& span) {
    return {span.begin.byte,     span.end.byte,    span.begin.code_point,
            span.end.code_point, span.begin.utf16, span.end.utf16,
            span.line,           span.column,      span.column_utf16};
}

lemara::Paragraphs paragraphs_of(lemara_paragraphs paragraphs) {
    if (paragraphs == LEMARA_BLANK_LINES) return lemara::Paragraphs::blank;
    return paragraphs == LEMARA_WHOLE ? lemara::Paragraphs::whole
                                      : lemara::Paragraphs::lines;
}

/// The options of a check, and the set that they borrow.
struct WantedCheck {
    lemara::CheckOptions options;
    std::set<std::string> accepted;

    /// Takes them over; answers what is wrong with them, or null.
    const char* read(const lemara_check_options* from) {
        lemara_check_options given = LEMARA_INIT(lemara_check_options);
        given.most_forms = options.most_forms;
        if (!take_over(from, given)) return "options without their size";
        if (given.accepted == nullptr && given.accepted_count > 0) return NULL_ARGUMENT;
        options.paragraphs = paragraphs_of(given.paragraphs);
        options.most_forms = given.most_forms;
        options.time_per_word = std::chrono::milliseconds(given.ms_per_word);
        options.time_in_all = std::chrono::milliseconds(given.ms_in_all);
        options.report_foreign = given.report_foreign != 0;
        for (std::size_t i = 0; i < given.accepted_count; ++i) {
            accepted.insert(or_empty(given.accepted[i]));
        }
        options.accepted = &accepted;
        return nullptr;
    }
};

std::vector<const char*> pointers_to(const std::vector<std::string>& strings) {
    std::vector<const char*> pointers;
    for (const std::string& string : strings) pointers.push_back(string.c_str());
    return pointers;
}

// The structures of the interface; what they point to stays with the originals.

lemara_finding shown_as(const lemara::Finding& finding,
                        const std::vector<const char*>& forms) {
    lemara_finding shown = LEMARA_INIT(lemara_finding);
    shown.kind = static_cast<lemara_kind>(finding.kind);
    shown.span = span_of(finding.span);
    shown.token = finding.token.c_str();
    shown.forms = forms.data();
    shown.form_count = forms.size();
    shown.complete = finding.complete ? 1 : 0;
    return shown;
}

lemara_token shown_as(const lemara::Token& token) {
    lemara_token shown = LEMARA_INIT(lemara_token);
    shown.span = span_of(token.span);
    shown.text = token.text.c_str();
    shown.known = token.known ? 1 : 0;
    shown.foreign = token.foreign ? 1 : 0;
    shown.blank_follows = token.blank_follows ? 1 : 0;
    shown.paragraph = token.paragraph;
    shown.sentence = token.sentence;
    shown.reading_count = token.readings.size();
    shown.folded = token.folded.c_str();
    return shown;
}

lemara_reading shown_as(const lemara::Reading& reading, const char* form) {
    lemara_reading shown = LEMARA_INIT(lemara_reading);
    shown.form = form;
    shown.lemma = reading.lemma.c_str();
    shown.tags = reading.tags.c_str();
    shown.network = reading.network.c_str();
    shown.raw = reading.raw.c_str();
    shown.better = reading.better.c_str();
    shown.instead = reading.instead.c_str();
    shown.source = reading.source.c_str();
    shown.case_class = reading.case_class;
    return shown;
}

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
        made->configuration = made->checker->configuration();
        made->dictionary = made->checker->dictionary();
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

const char* lemara_configuration(const lemara_checker* checker) {
    return checker == nullptr ? "" : checker->configuration.c_str();
}

const char* lemara_dictionary(const lemara_checker* checker) {
    return checker == nullptr ? "" : checker->dictionary.c_str();
}

lemara_status lemara_tables(const lemara_checker* checker, lemara_strings** tables,
                            lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || tables == nullptr) return bad(error, NULL_ARGUMENT);
        return strings_of(checker->checker->tables(), tables);
    });
}

lemara_status lemara_find_configuration(lemara_strings** found, lemara_strings** looked,
                                        lemara_error** error) {
    return guarded(error, [&] {
        if (found == nullptr) return bad(error, NULL_ARGUMENT);
        std::vector<std::string> places;
        auto result = std::make_unique<lemara_strings>();
        result->list.push_back(lemara::find_configuration(&places));
        if (looked != nullptr) *looked = new lemara_strings{std::move(places)};
        *found = result.release();
        return LEMARA_OK;
    });
}

lemara_status lemara_default_dictionary(lemara_strings** path, lemara_error** error) {
    return guarded(error, [&] {
        if (path == nullptr) return bad(error, NULL_ARGUMENT);
        return string_of(lemara::default_dictionary(), path);
    });
}

lemara_status lemara_check(const lemara_checker* checker, const char* text, size_t length,
                           const lemara_check_options* options,
                           lemara_findings** findings, lemara_error** error) {
    return guarded(error, [&] {
        if (findings == nullptr) return bad(error, NULL_ARGUMENT);
        *findings = nullptr;
        if (checker == nullptr || text == nullptr) return bad(error, NULL_ARGUMENT);
        WantedCheck wanted;
        if (const char* wrong = wanted.read(options)) return bad(error, wrong);
        auto result = std::make_unique<lemara_findings>();
        result->list = checker->checker->check({text, length}, wanted.options);
        for (const lemara::Finding& finding : result->list) {
            result->forms.push_back(pointers_to(finding.forms));
        }
        *findings = result.release();
        return LEMARA_OK;
    });
}

lemara_status lemara_check_each(const lemara_checker* checker, const char* text,
                                size_t length, const lemara_check_options* options,
                                lemara_take_finding take, void* context,
                                lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || text == nullptr || take == nullptr) {
            return bad(error, NULL_ARGUMENT);
        }
        WantedCheck wanted;
        if (const char* wrong = wanted.read(options)) return bad(error, wrong);
        checker->checker->check({text, length}, wanted.options,
                                [&](const lemara::Finding& finding) {
                                    const auto forms = pointers_to(finding.forms);
                                    const lemara_finding shown = shown_as(finding, forms);
                                    return take(&shown, context) != 0;
                                });
        return LEMARA_OK;
    });
}

size_t lemara_findings_count(const lemara_findings* findings) {
    return findings == nullptr ? 0 : findings->list.size();
}

lemara_status lemara_findings_get(const lemara_findings* findings, size_t index,
                                  lemara_finding* finding) {
    if (index >= lemara_findings_count(findings)) return LEMARA_BAD_ARGUMENT;
    return hand_over(shown_as(findings->list[index], findings->forms[index]), finding);
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

lemara_status lemara_analyze_each(const lemara_checker* checker, const char* text,
                                  size_t length, lemara_paragraphs paragraphs,
                                  lemara_take_token take, void* context,
                                  lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || text == nullptr || take == nullptr) {
            return bad(error, NULL_ARGUMENT);
        }
        checker->checker->analyze(
            {text, length}, paragraphs_of(paragraphs), [&](const lemara::Token& token) {
                std::vector<lemara_reading> readings;
                for (const lemara::Reading& reading : token.readings) {
                    readings.push_back(shown_as(reading, ""));
                }
                const lemara_token shown = shown_as(token);
                return take(&shown, readings.data(), context) != 0;
            });
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
    return hand_over(shown_as(tokens->list[index].token), token);
}

lemara_status lemara_tokens_reading(const lemara_tokens* tokens, size_t index,
                                    size_t reading_index, lemara_reading* reading) {
    if (index >= lemara_tokens_count(tokens)) return LEMARA_BAD_ARGUMENT;
    const lemara_tokens::Entry& entry = tokens->list[index];
    if (reading_index >= entry.token.readings.size()) return LEMARA_BAD_ARGUMENT;
    const char* form = entry.forms.empty() ? "" : entry.forms[reading_index].c_str();
    return hand_over(shown_as(entry.token.readings[reading_index], form), reading);
}

void lemara_tokens_free(lemara_tokens* tokens) { delete tokens; }

lemara_status lemara_render(const lemara_checker* checker, const char* paragraph,
                            size_t length, lemara_format format, int variants, int number,
                            lemara_strings** markup, lemara_error** error) {
    return guarded(error, [&] {
        if (checker == nullptr || paragraph == nullptr || markup == nullptr) {
            return bad(error, NULL_ARGUMENT);
        }
        for (const auto& [known, wanted] : FORMATS) {
            if (known != format) continue;
            return string_of(checker->checker->render({paragraph, length}, wanted,
                                                      variants != 0, number),
                             markup);
        }
        return bad(error, "no such format");
    });
}

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

size_t lemara_strings_count(const lemara_strings* strings) {
    return strings == nullptr ? 0 : strings->list.size();
}

const char* lemara_strings_get(const lemara_strings* strings, size_t index) {
    return index < lemara_strings_count(strings) ? strings->list[index].c_str() : nullptr;
}

size_t lemara_strings_length(const lemara_strings* strings, size_t index) {
    return index < lemara_strings_count(strings) ? strings->list[index].size() : 0;
}

void lemara_strings_free(lemara_strings* strings) { delete strings; }
