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
    EXPECT(reading.case_class == 1);
    EXPECT(lemara_tokens_get(tokens, 1, &token) == LEMARA_OK && !token.known);
    EXPECT(lemara_tokens_reading(tokens, 1, 0, &reading) == LEMARA_BAD_ARGUMENT);
    lemara_tokens_free(tokens);

    EXPECT(lemara_analyze(checker, "Etxeak", 6, (lemara_paragraphs)99, &tokens, NULL) ==
           LEMARA_OK);
    EXPECT(lemara_tokens_count(tokens) == 1);
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

static int take_finding(const lemara_finding* finding, void* context) {
    strcat((char*)context, finding->token);
    strcat((char*)context, finding->form_count > 0 ? finding->forms[0] : "");
    return strcmp(finding->token, "amigoak") != 0;
}

static int take_token(const lemara_token* token, const lemara_reading* readings,
                      void* context) {
    strcat((char*)context, token->folded);
    strcat((char*)context, token->reading_count > 0 ? readings[0].lemma : "-");
    return strcmp(token->text, "bozo") != 0;
}

static void hand_out_one_by_one(const lemara_checker* checker) {
    char taken[100] = "";
    const char* accepted[] = {"bozo"};
    lemara_check_options options = LEMARA_INIT(lemara_check_options);
    const char text[] = "bozo, amigoak bozo";
    EXPECT(lemara_check_each(checker, text, strlen(text), NULL, take_finding, taken,
                             NULL) == LEMARA_OK);
    EXPECT(strcmp(taken, "bozopozoamigoaklagunak") == 0);
    taken[0] = '\0';
    options.accepted = accepted;
    options.accepted_count = 1;
    EXPECT(lemara_check_each(checker, text, strlen(text), &options, take_finding, taken,
                             NULL) == LEMARA_OK);
    EXPECT(strcmp(taken, "amigoak") == 0); /* most_forms is 0 */
    taken[0] = '\0';
    EXPECT(lemara_analyze_each(checker, "Etxeak bozo etxe", 16, LEMARA_LINES, take_token,
                               taken, NULL) == LEMARA_OK);
    EXPECT(strcmp(taken, "Etxeaketxebozo-") == 0);
    options.accepted = NULL;
    EXPECT(lemara_check_each(checker, text, strlen(text), &options, take_finding, taken,
                             NULL) == LEMARA_BAD_ARGUMENT);
    EXPECT(lemara_check_each(checker, text, strlen(text), NULL, NULL, taken, NULL) ==
           LEMARA_BAD_ARGUMENT);
    EXPECT(lemara_analyze_each(checker, text, strlen(text), LEMARA_LINES, NULL, NULL,
                               NULL) == LEMARA_BAD_ARGUMENT);
}

static void render_paragraphs(const lemara_checker* checker) {
    static const struct {
        lemara_format format;
        int variants;
        const char* piece;
    } rows[] = {
        {LEMARA_MULTEXT, 0, "Etxeak\tBOS\tetxe\\+"},
        {LEMARA_CG3, 0, "\"<EBUK>\""},
        {LEMARA_IKUTE, 0, "<frm>bozo</frm>"},
        {LEMARA_ZUZENLEX, 0, "<frm>Etxeak</frm>"},
        {LEMARA_ZUZENLEX, 0, "pzk=\"7\""},
        {LEMARA_MARKUP, 1, "<sugg>pozo</sugg>"},
    };
    size_t i;
    lemara_strings* markup = NULL;
    lemara_error* error = NULL;
    for (i = 0; i < sizeof rows / sizeof *rows; ++i) {
        EXPECT(lemara_render(checker, "Etxeak bozo", 11, rows[i].format, rows[i].variants,
                             7, &markup, NULL) == LEMARA_OK);
        EXPECT(lemara_strings_count(markup) == 1);
        EXPECT(strstr(lemara_strings_get(markup, 0), rows[i].piece) != NULL);
        EXPECT(lemara_strings_length(markup, 0) == strlen(lemara_strings_get(markup, 0)));
        lemara_strings_free(markup);
    }
    EXPECT(lemara_render(checker, "bozo", 4, LEMARA_MARKUP, 0, 1, &markup, NULL) ==
           LEMARA_OK);
    EXPECT(strstr(lemara_strings_get(markup, 0), "pozo") == NULL);
    lemara_strings_free(markup);
    EXPECT(lemara_render(checker, "bozo", 4, (lemara_format)99, 0, 1, &markup, &error) ==
           LEMARA_BAD_ARGUMENT);
    EXPECT(strcmp(lemara_error_message(error), "no such format") == 0);
    lemara_error_free(error);
}

static void tell_what_is_in_use(const lemara_checker* checker, const char* configuration,
                                const char* dictionary) {
    lemara_strings* list = NULL;
    lemara_strings* looked = NULL;
    EXPECT(strcmp(lemara_configuration(checker), configuration) == 0);
    EXPECT(strcmp(lemara_dictionary(checker), dictionary) == 0);
    EXPECT(strcmp(lemara_configuration(NULL), "") == 0);
    EXPECT(lemara_tables(checker, &list, NULL) == LEMARA_OK);
    EXPECT(lemara_strings_count(list) == 3);
    EXPECT(strstr(lemara_strings_get(list, 0), ".sare") != NULL);
    lemara_strings_free(list);
    EXPECT(lemara_find_configuration(&list, &looked, NULL) == LEMARA_OK);
    EXPECT(lemara_strings_count(list) == 1 && lemara_strings_count(looked) > 0);
    lemara_strings_free(list);
    lemara_strings_free(looked);
    EXPECT(lemara_default_dictionary(&list, NULL) == LEMARA_OK);
    EXPECT(lemara_strings_count(list) == 1);
    lemara_strings_free(list);
}

static void move_lists_of_words(lemara_checker* checker) {
    lemara_personal_word word = LEMARA_INIT(lemara_personal_word);
    lemara_personal_words* words = NULL;
    lemara_import_report report = LEMARA_INIT(lemara_import_report);
    lemara_strings* list = NULL;
    lemara_error* error = NULL;
    word.word = "zubi";
    word.word_class = "ARR";
    word.better = "lagun";
    EXPECT(lemara_add_personal_word(checker, &word, NULL) == LEMARA_OK);
    word.size = 0;
    EXPECT(lemara_add_personal_word(checker, &word, NULL) == LEMARA_BAD_ARGUMENT);
    word.size = sizeof word;
    word.word = "x";
    EXPECT(lemara_add_personal_word(checker, &word, &error) == LEMARA_REFUSED);
    lemara_error_free(error);

    EXPECT(lemara_import_words(checker, "2\nzubi\nzopo/A\nx\n", 16, &report, &list,
                               NULL) == LEMARA_OK);
    EXPECT(report.added == 1 && report.there == 1);
    EXPECT(lemara_strings_count(list) == 1);
    EXPECT(strncmp(lemara_strings_get(list, 0), "line 4: ", 8) == 0);
    EXPECT(strstr(lemara_strings_get(list, 0), "two letters") != NULL);
    lemara_strings_free(list);
    EXPECT(lemara_import_words(checker, "zopo", 4, NULL, NULL, NULL) == LEMARA_OK);
    EXPECT(lemara_export_words(checker, &list, NULL) == LEMARA_OK);
    EXPECT(strcmp(lemara_strings_get(list, 0), "2\nzopo\nzubi\n") == 0);
    lemara_strings_free(list);

    EXPECT(lemara_list_personal_words(checker, &words, NULL) == LEMARA_OK);
    EXPECT(lemara_personal_words_count(words) == 2);
    EXPECT(lemara_personal_words_get(words, 0, &word) == LEMARA_OK);
    EXPECT(strcmp(word.word, "zubi") == 0 && strcmp(word.word_class, "ARR") == 0);
    EXPECT(strcmp(word.better, "lagun") == 0 && strcmp(word.instead, "") == 0);
    EXPECT(lemara_personal_words_get(words, 2, &word) == LEMARA_BAD_ARGUMENT);
    lemara_personal_words_free(words);
    lemara_personal_words_free(NULL);
    EXPECT(lemara_personal_words_count(NULL) == 0);
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
    EXPECT(strcmp(lemara_kind_name((lemara_kind)99), "") == 0);
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
    hand_out_one_by_one(checker);
    render_paragraphs(checker);
    tell_what_is_in_use(checker, argv[1], dictionary);
    keep_words(checker);
    move_lists_of_words(checker);
    lemara_close(checker);
    refuse_what_is_wrong();
    return failures == 0 ? 0 : 1;
}
