/* The C interface from C. Arguments: a configuration, and a folder to write into. */
#include <lemara/lemara.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int failures = 0;

#define EXPECT(condition)                                                    \
    do {                                                                     \
        if (!(condition)) {                                                  \
            printf("%s:%d: not true: %s\n", __FILE__, __LINE__, #condition); \
            ++failures;                                                      \
        }                                                                    \
    } while (0)

static lemara_checker* open_checker(const char* configuration, const char* dictionary) {
    lemara_settings settings = LEMARA_INIT(lemara_settings);
    lemara_checker* checker = NULL;
    lemara_error* error = NULL;
    settings.configuration = configuration;
    settings.dictionary = dictionary;
    if (lemara_open(&settings, &checker, &error) != LEMARA_OK) {
        printf("%s\n", lemara_error_message(error));
        exit(1);
    }
    return checker;
}

static void check_text(const lemara_checker* checker) {
    const char text[] =
        "\xe2\x80\x9c"
        "bozo\xe2\x80\x9d etxeak,\namigoak";
    lemara_findings* findings = NULL;
    lemara_finding finding = LEMARA_INIT(lemara_finding);
    EXPECT(lemara_check(checker, text, strlen(text), NULL, &findings, NULL) == LEMARA_OK);
    EXPECT(lemara_findings_count(findings) == 2);
    EXPECT(lemara_findings_get(findings, 0, &finding) == LEMARA_OK);
    EXPECT(finding.kind == LEMARA_UNKNOWN);
    EXPECT(strcmp(lemara_kind_name(finding.kind), "unknown") == 0);
    EXPECT(strcmp(finding.token, "bozo") == 0);
    EXPECT(finding.span.begin_byte == 3 && finding.span.end_byte == 7);
    EXPECT(finding.span.begin_code_point == 1 && finding.span.begin_utf16 == 1);
    EXPECT(finding.span.line == 1 && finding.span.column == 2);
    EXPECT(finding.form_count == 1 && strcmp(finding.forms[0], "pozo") == 0);
    EXPECT(lemara_findings_get(findings, 1, &finding) == LEMARA_OK);
    EXPECT(finding.kind == LEMARA_BETTER_FORM && finding.span.line == 2);
    EXPECT(finding.form_count == 1 && strcmp(finding.forms[0], "lagunak") == 0);
    EXPECT(lemara_findings_get(findings, 2, &finding) == LEMARA_BAD_ARGUMENT);
    lemara_findings_free(findings);
}

static void answer_about_words(const lemara_checker* checker) {
    lemara_strings* list = NULL;
    int valid = 0;
    EXPECT(lemara_valid(checker, "etxeak", 6, &valid, NULL) == LEMARA_OK && valid == 1);
    EXPECT(lemara_valid(checker, "bozo", 4, &valid, NULL) == LEMARA_OK && valid == 0);
    EXPECT(lemara_suggest(checker, "bozo", 4, 5, 1000, &list, NULL) == LEMARA_OK);
    EXPECT(lemara_strings_count(list) == 1);
    EXPECT(strcmp(lemara_strings_get(list, 0), "pozo") == 0);
    EXPECT(lemara_strings_get(list, 1) == NULL);
    lemara_strings_free(list);
    EXPECT(lemara_lemmas(checker, "etxeak", 6, &list, NULL) == LEMARA_OK);
    EXPECT(lemara_strings_count(list) == 1);
    EXPECT(strcmp(lemara_strings_get(list, 0), "etxe") == 0);
    lemara_strings_free(list);
}

static void analyse_and_generate(const lemara_checker* checker) {
    lemara_tokens* tokens = NULL;
    lemara_token token = LEMARA_INIT(lemara_token);
    lemara_reading reading = LEMARA_INIT(lemara_reading);
    size_t i, count = 0;
    EXPECT(lemara_analyze(checker, "Etxeak bozo", 11, LEMARA_LINES, &tokens, NULL) ==
           LEMARA_OK);
    EXPECT(lemara_tokens_count(tokens) == 2);
    EXPECT(lemara_tokens_get(tokens, 0, &token) == LEMARA_OK);
    EXPECT(strcmp(token.text, "Etxeak") == 0 && token.known && token.reading_count > 0);
    EXPECT(lemara_tokens_reading(tokens, 0, 0, &reading) == LEMARA_OK);
    EXPECT(strcmp(reading.lemma, "etxe") == 0 && strcmp(reading.form, "") == 0);
    EXPECT(lemara_tokens_get(tokens, 1, &token) == LEMARA_OK && !token.known);
    EXPECT(lemara_tokens_reading(tokens, 1, 0, &reading) == LEMARA_BAD_ARGUMENT);
    lemara_tokens_free(tokens);

    EXPECT(lemara_generate(checker, "etxe", 4, "IZE", &tokens, NULL) == LEMARA_OK);
    EXPECT(lemara_tokens_get(tokens, 0, &token) == LEMARA_OK && token.reading_count > 1);
    for (i = 0; i < token.reading_count; ++i) {
        EXPECT(lemara_tokens_reading(tokens, 0, i, &reading) == LEMARA_OK);
        if (strcmp(reading.form, "etxeak") == 0) ++count;
    }
    EXPECT(count > 0);
    lemara_tokens_free(tokens);
}

static void keep_words(lemara_checker* checker) {
    lemara_error* error = NULL;
    lemara_strings* words = NULL;
    int valid = 0, changed = 1;
    EXPECT(lemara_add_word(checker, "zapaburu", 8, NULL, &error) == LEMARA_OK);
    EXPECT(lemara_valid(checker, "zapaburu", 8, &valid, NULL) == LEMARA_OK && valid == 1);
    EXPECT(lemara_words(checker, &words, NULL) == LEMARA_OK);
    EXPECT(lemara_strings_count(words) == 1);
    lemara_strings_free(words);
    EXPECT(lemara_refresh(checker, &changed, NULL) == LEMARA_OK && changed == 0);
    EXPECT(lemara_add_word(checker, "x", 1, NULL, &error) == LEMARA_REFUSED);
    EXPECT(strstr(lemara_error_message(error), "two letters") != NULL);
    lemara_error_free(error);
    EXPECT(lemara_remove_word(checker, "zapaburu", 8, "ARR", NULL) == LEMARA_OK);
    EXPECT(lemara_remove_word(checker, "zapaburu", 8, NULL, NULL) == LEMARA_REFUSED);
    EXPECT(lemara_valid(checker, "zapaburu", 8, &valid, NULL) == LEMARA_OK && valid == 0);
}

static void refuse_what_is_wrong(void) {
    lemara_settings settings = LEMARA_INIT(lemara_settings);
    lemara_checker* checker = NULL;
    lemara_error* error = NULL;
    settings.configuration = "no/such/file.cfg";
    EXPECT(lemara_open(&settings, &checker, &error) == LEMARA_REFUSED);
    EXPECT(checker == NULL);
    EXPECT(strstr(lemara_error_message(error), "no/such/file.cfg: cannot open") != NULL);
    lemara_error_free(error);
    settings.size = 0;
    EXPECT(lemara_open(&settings, &checker, NULL) == LEMARA_BAD_ARGUMENT);
    EXPECT(lemara_open(NULL, NULL, NULL) == LEMARA_BAD_ARGUMENT);
    EXPECT(lemara_check(NULL, "", 0, NULL, NULL, NULL) == LEMARA_BAD_ARGUMENT);
    EXPECT(lemara_findings_count(NULL) == 0);
    EXPECT(strcmp(lemara_error_message(NULL), "") == 0);
    lemara_error_free(NULL);
    lemara_findings_free(NULL);
    lemara_tokens_free(NULL);
    lemara_strings_free(NULL);
    lemara_close(NULL);
}

int main(int argc, char** argv) {
    char dictionary[4096];
    lemara_checker* checker;
    if (argc != 3) return 2;
    snprintf(dictionary, sizeof dictionary, "%s/c_api_words.txt", argv[2]);
    remove(dictionary);
    checker = open_checker(argv[1], dictionary);
    EXPECT(lemara_api_version() == LEMARA_API_VERSION);
    EXPECT(strlen(lemara_version()) >= 5);
    check_text(checker);
    answer_about_words(checker);
    analyse_and_generate(checker);
    keep_words(checker);
    lemara_close(checker);
    refuse_what_is_wrong();
    return failures == 0 ? 0 : 1;
}
