/* The C interface of the checker.
 *
 * Text is UTF-8 and comes with its length, so that it may hold anything; strings that
 * come back end with a NUL. Handles are opaque. What a call hands out belongs to the
 * caller, who frees it by the function of its kind; pointers inside of it live as long.
 * Null pointers may be freed.
 *
 * Nothing is thrown or printed, and the process never ends. A call answers LEMARA_OK or
 * tells what went wrong: by its status, and, if `error` is not null, by a message.
 *
 * One checker serves many threads at once. A result is for one thread at a time.
 *
 * Structures begin with their size, which the caller sets (see LEMARA_INIT): a program
 * that was built with an older version goes on to work.
 */
#ifndef LEMARA_LEMARA_H
#define LEMARA_LEMARA_H

#include <stddef.h>

#if defined(__GNUC__)
#define LEMARA_API __attribute__((visibility("default")))
#else
#define LEMARA_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Grows when functions or fields are added; what there is stays as it is. */
#define LEMARA_API_VERSION 1

/* lemara_settings settings = LEMARA_INIT(lemara_settings); */
#ifdef __cplusplus
#define LEMARA_INIT(type)          \
    [] {                           \
        type empty{};              \
        empty.size = sizeof(type); \
        return empty;              \
    }()
#else
#define LEMARA_INIT(type) \
    { .size = sizeof(type) }
#endif

typedef enum lemara_status {
    LEMARA_OK = 0,
    LEMARA_REFUSED = 1,      /* the message tells why */
    LEMARA_BAD_ARGUMENT = 2, /* null, an index too high, a structure without its size */
    LEMARA_NO_MEMORY = 3,
    LEMARA_FAILED = 4 /* what should not happen */
} lemara_status;

typedef enum lemara_kind {
    LEMARA_UNKNOWN = 0,     /* no source knows the word */
    LEMARA_BETTER_FORM = 1, /* a deviant form; the forms are the standard ones */
    LEMARA_USE_INSTEAD = 2, /* the forms are recommended in its place */
    LEMARA_UNIT_START = 3,  /* unknown; units of several words begin with it: the forms */
    LEMARA_FOREIGN = 4      /* holds a letter that the tables can't; on request alone */
} lemara_kind;

typedef enum lemara_paragraphs {
    LEMARA_LINES = 0,       /* each line is a paragraph */
    LEMARA_BLANK_LINES = 1, /* blank lines separate them */
    LEMARA_WHOLE = 2        /* the text is one */
} lemara_paragraphs;

typedef struct lemara_checker lemara_checker;
typedef struct lemara_findings lemara_findings;
typedef struct lemara_tokens lemara_tokens;
typedef struct lemara_strings lemara_strings;
typedef struct lemara_error lemara_error;

typedef struct lemara_settings {
    size_t size;
    const char* configuration; /* null: the tables that are installed */
    const char* dictionary;    /* null: that of the user */
    int no_dictionary;         /* not 0: no personal dictionary at all */
} lemara_settings;

typedef struct lemara_check_options {
    size_t size;
    lemara_paragraphs paragraphs;
    size_t most_forms;    /* for each finding */
    unsigned ms_per_word; /* time for its proposals; 0 is no limit */
    unsigned ms_in_all;   /* time for all proposals; 0 is no limit */
    int report_foreign;
} lemara_check_options;

/* Places are counted from the start of the text; line and column begin at 1, and the
 * column counts code points. */
typedef struct lemara_span {
    size_t begin_byte, end_byte;
    size_t begin_code_point, end_code_point;
    size_t begin_utf16, end_utf16;
    size_t line, column;
} lemara_span;

typedef struct lemara_finding {
    size_t size;
    lemara_kind kind;
    lemara_span span;
    const char* token;        /* as written */
    const char* const* forms; /* proposals or better forms, the likeliest first */
    size_t form_count;
    int complete; /* 0: time ran out before all candidates were tried */
} lemara_finding;

typedef struct lemara_reading {
    size_t size;
    const char* form; /* of a generated form; empty for a token */
    const char* lemma;
    const char* tags; /* "IZE ARR" */
    const char* network;
    const char* raw;     /* the whole analysis */
    const char* better;  /* the recommended lemma, or empty */
    const char* instead; /* the lemma to use instead, or empty */
} lemara_reading;

typedef struct lemara_token {
    size_t size;
    lemara_span span;
    const char* text;
    int known;
    int foreign;
    int blank_follows;
    size_t paragraph, sentence; /* from 0 */
    size_t reading_count;
} lemara_token;

LEMARA_API int lemara_api_version(void);
LEMARA_API const char* lemara_version(void); /* "1.0.0" */
LEMARA_API const char* lemara_kind_name(lemara_kind kind);

/* The text of an error; "" for null. */
LEMARA_API const char* lemara_error_message(const lemara_error* error);
LEMARA_API void lemara_error_free(lemara_error* error);

/* Opens a checker. Null `settings` are all null. Lines of the dictionary that were passed
 * over are no failure; lemara_notes tells of them. */
LEMARA_API lemara_status lemara_open(const lemara_settings* settings,
                                     lemara_checker** checker, lemara_error** error);
LEMARA_API void lemara_close(lemara_checker* checker);
LEMARA_API lemara_status lemara_notes(const lemara_checker* checker,
                                      lemara_strings** notes, lemara_error** error);

/* The findings in a text, in its order. Null `options` are lines, 8 forms, no limit of
 * time. */
LEMARA_API lemara_status lemara_check(const lemara_checker* checker, const char* text,
                                      size_t length, const lemara_check_options* options,
                                      lemara_findings** findings, lemara_error** error);
LEMARA_API size_t lemara_findings_count(const lemara_findings* findings);
LEMARA_API lemara_status lemara_findings_get(const lemara_findings* findings,
                                             size_t index, lemara_finding* finding);
LEMARA_API void lemara_findings_free(lemara_findings* findings);

/* All tokens of a text with their readings. */
LEMARA_API lemara_status lemara_analyze(const lemara_checker* checker, const char* text,
                                        size_t length, lemara_paragraphs paragraphs,
                                        lemara_tokens** tokens, lemara_error** error);
/* The forms of a word, as one token whose readings they are. */
LEMARA_API lemara_status lemara_generate(const lemara_checker* checker, const char* word,
                                         size_t length, const char* tag,
                                         lemara_tokens** forms, lemara_error** error);
LEMARA_API size_t lemara_tokens_count(const lemara_tokens* tokens);
LEMARA_API lemara_status lemara_tokens_get(const lemara_tokens* tokens, size_t index,
                                           lemara_token* token);
LEMARA_API lemara_status lemara_tokens_reading(const lemara_tokens* tokens, size_t index,
                                               size_t reading_index,
                                               lemara_reading* reading);
LEMARA_API void lemara_tokens_free(lemara_tokens* tokens);

/* One word: 1 in `valid` if a check of it has no finding; at most `most` proposals within
 * `milliseconds` (0 is no limit); its lemmas. */
LEMARA_API lemara_status lemara_valid(const lemara_checker* checker, const char* word,
                                      size_t length, int* valid, lemara_error** error);
LEMARA_API lemara_status lemara_suggest(const lemara_checker* checker, const char* word,
                                        size_t length, size_t most, unsigned milliseconds,
                                        lemara_strings** forms, lemara_error** error);
LEMARA_API lemara_status lemara_lemmas(const lemara_checker* checker, const char* word,
                                       size_t length, lemara_strings** lemmas,
                                       lemara_error** error);

/* The personal dictionary. A null class is derived: a capital makes a name, else it is a
 * common noun. Classes are "ARR", "IZO", "ADI", "PIB", "LIB" and "IZB". */
LEMARA_API lemara_status lemara_add_word(lemara_checker* checker, const char* word,
                                         size_t length, const char* word_class,
                                         lemara_error** error);
LEMARA_API lemara_status lemara_remove_word(lemara_checker* checker, const char* word,
                                            size_t length, const char* word_class,
                                            lemara_error** error);
LEMARA_API lemara_status lemara_words(const lemara_checker* checker,
                                      lemara_strings** words, lemara_error** error);
/* Reads the dictionary again if another process has changed it; 1 in `changed` if it had.
 */
LEMARA_API lemara_status lemara_refresh(lemara_checker* checker, int* changed,
                                        lemara_error** error);

LEMARA_API size_t lemara_strings_count(const lemara_strings* strings);
LEMARA_API const char* lemara_strings_get(const lemara_strings* strings, size_t index);
LEMARA_API void lemara_strings_free(lemara_strings* strings);

#ifdef __cplusplus
}
#endif

#endif
