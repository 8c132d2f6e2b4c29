/** \file
 * The C interface of the checker.
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

/** Marks what the library exports. */
#if defined(__GNUC__)
#define LEMARA_API __attribute__((visibility("default")))
#else
#define LEMARA_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Grows when functions or fields are added; what there is stays as it is. */
#define LEMARA_API_VERSION 1

/** An empty structure with its size: lemara_settings settings =
 * LEMARA_INIT(lemara_settings); */
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

/** Begins an enumeration that holds any int, in C++ as in C: a number that has no name
 * here does no harm. */
#ifdef __cplusplus
#define LEMARA_ENUM(name) enum name : int
#else
#define LEMARA_ENUM(name) enum name
#endif

/** How a call went. */
typedef LEMARA_ENUM(lemara_status){
    LEMARA_OK = 0,           /**< done */
    LEMARA_REFUSED = 1,      /**< the message tells why */
    LEMARA_BAD_ARGUMENT = 2, /**< null, an index too high, a structure without its size */
    LEMARA_NO_MEMORY = 3,    /**< there is no memory */
    LEMARA_FAILED = 4        /**< what should not happen */
} lemara_status;

/** What there is to tell about a stretch of text. */
typedef LEMARA_ENUM(lemara_kind){
    LEMARA_UNKNOWN = 0,     /**< no source knows the word */
    LEMARA_BETTER_FORM = 1, /**< a deviant form; the forms are the standard ones */
    LEMARA_USE_INSTEAD = 2, /**< the forms are recommended in its place */
    LEMARA_UNIT_START =
        3,             /**< unknown; units of several words begin with it: the forms */
    LEMARA_FOREIGN = 4 /**< holds a letter that the tables can't; on request alone */
} lemara_kind;

/** What separates paragraphs. Any other number is read as LEMARA_LINES. */
typedef LEMARA_ENUM(lemara_paragraphs){
    LEMARA_LINES = 0,       /**< each line is a paragraph */
    LEMARA_BLANK_LINES = 1, /**< blank lines separate them */
    LEMARA_WHOLE = 2        /**< the text is one */
} lemara_paragraphs;

/** The mark-ups that lemara_render writes. It refuses any other number. */
typedef LEMARA_ENUM(lemara_format){
    LEMARA_MULTEXT = 0,  /**< a line for each token, with its analyses */
    LEMARA_CG3 = 1,      /**< constraint grammar's stream */
    LEMARA_IKUTE = 2,    /**< the last problem word of each sentence */
    LEMARA_ZUZENLEX = 3, /**< a verdict for each token */
    LEMARA_MARKUP = 4    /**< the same, and proposals on request */
} lemara_format;

/** A checker: tables and a personal dictionary. */
typedef struct lemara_checker lemara_checker;
/** The findings of a check. */
typedef struct lemara_findings lemara_findings;
/** The tokens of a text, or the forms of a word. */
typedef struct lemara_tokens lemara_tokens;
/** A list of strings. */
typedef struct lemara_strings lemara_strings;
/** The words of a personal dictionary. */
typedef struct lemara_personal_words lemara_personal_words;
/** What went wrong. */
typedef struct lemara_error lemara_error;

/** What lemara_open opens. */
typedef struct lemara_settings {
    size_t size;               /**< see LEMARA_INIT */
    const char* configuration; /**< null: the tables that are installed */
    const char* dictionary;    /**< null: that of the user */
    int no_dictionary;         /**< not 0: no personal dictionary at all */
} lemara_settings;

/** How lemara_check checks. */
typedef struct lemara_check_options {
    size_t size;                  /**< see LEMARA_INIT */
    lemara_paragraphs paragraphs; /**< what separates them */
    size_t most_forms;            /**< for each finding */
    unsigned ms_per_word;         /**< time for its proposals; 0 is no limit */
    unsigned ms_in_all;           /**< time for all proposals; 0 is no limit */
    int report_foreign;           /**< not 0: words with foreign letters are findings */
    const char* const* accepted;  /**< words that count as known, as written or in small
                                       letters; null for none */
    size_t accepted_count;        /**< how many words these are */
} lemara_check_options;

/** A stretch of a text. Places are counted from its start; line and columns begin at 1.
 */
typedef struct lemara_span {
    size_t begin_byte;       /**< of its first character */
    size_t end_byte;         /**< behind its last character */
    size_t begin_code_point; /**< of its first character */
    size_t end_code_point;   /**< behind its last character */
    size_t begin_utf16;      /**< in units, two for a character beyond U+FFFF */
    size_t end_utf16;        /**< the same of its end */
    size_t line;             /**< of its first character */
    size_t column;           /**< of its first character, in code points */
    size_t column_utf16;     /**< the same in UTF-16 units */
} lemara_span;

/** Something to tell the user about a stretch of text. */
typedef struct lemara_finding {
    size_t size;              /**< see LEMARA_INIT */
    lemara_kind kind;         /**< what it is */
    lemara_span span;         /**< where it is */
    const char* token;        /**< as written */
    const char* const* forms; /**< proposals or better forms, the likeliest first */
    size_t form_count;        /**< how many forms there are */
    int complete;             /**< 0: time ran out before all candidates were tried */
} lemara_finding;

/** A reading of a token, or a generated form. */
typedef struct lemara_reading {
    size_t size;         /**< see LEMARA_INIT */
    const char* form;    /**< of a generated form; empty for a token */
    const char* lemma;   /**< its lemma */
    const char* tags;    /**< "IZE ARR" */
    const char* network; /**< key of the table that gave it */
    const char* raw;     /**< the whole analysis */
    const char* better;  /**< the recommended lemma, or empty */
    const char* instead; /**< the lemma to use instead, or empty */
    const char* source;  /**< where the recommendation is from, or empty */
    int case_class;      /**< 1: the word begins with a capital; 2: no small letter */
} lemara_reading;

/** A token of a text: a word, a sign, or a unit of several words. */
typedef struct lemara_token {
    size_t size;          /**< see LEMARA_INIT */
    lemara_span span;     /**< where it is */
    const char* text;     /**< as written */
    int known;            /**< 1: some source has a reading */
    int foreign;          /**< 1: a foreign word, an address, or a sign beyond Latin-1 */
    int blank_follows;    /**< 1: white space follows */
    size_t paragraph;     /**< from 0 */
    size_t sentence;      /**< from 0, in the whole text */
    size_t reading_count; /**< how many readings it has */
    const char* folded;   /**< as the engine read it; empty for what it was kept from */
} lemara_token;

/** A word of the personal dictionary. */
typedef struct lemara_personal_word {
    size_t size;            /**< see LEMARA_INIT */
    const char* word;       /**< ends with a NUL */
    const char* word_class; /**< "ARR", "IZO", "ADI", "PIB", "LIB" or "IZB" */
    const char* better;     /**< the better form; null or empty for none */
    const char* instead;    /**< the form to use instead; null or empty for none */
} lemara_personal_word;

/** What lemara_import_words did. */
typedef struct lemara_import_report {
    size_t size;  /**< see LEMARA_INIT */
    size_t added; /**< how many words are new */
    size_t there; /**< how many were in the dictionary before */
} lemara_import_report;

/** Takes a finding that lives during the call; answers 0 to end the check. */
typedef int (*lemara_take_finding)(const lemara_finding* finding, void* context);
/** Takes a token, and its readings, that live during the call; answers 0 to end. */
typedef int (*lemara_take_token)(const lemara_token* token,
                                 const lemara_reading* readings, void* context);

/** LEMARA_API_VERSION of the library. */
LEMARA_API int lemara_api_version(void);
/** The version of the library: "1.0.0". */
LEMARA_API const char* lemara_version(void);
/** "unknown", "better-form", "use-instead", "unit-start", "foreign"; "" for another
 * number. */
LEMARA_API const char* lemara_kind_name(lemara_kind kind);

/** The text of an error; "" for null. */
LEMARA_API const char* lemara_error_message(const lemara_error* error);
/** Frees an error. */
LEMARA_API void lemara_error_free(lemara_error* error);

/** Opens a checker. Null `settings` are all null. Lines of the dictionary that were
 * passed over are no failure; lemara_notes tells of them. */
LEMARA_API lemara_status lemara_open(const lemara_settings* settings,
                                     lemara_checker** checker, lemara_error** error);
/** Closes a checker. No call may be at work on it. */
LEMARA_API void lemara_close(lemara_checker* checker);
/** What was passed over while the checker was opened. */
LEMARA_API lemara_status lemara_notes(const lemara_checker* checker,
                                      lemara_strings** notes, lemara_error** error);
/** Path of the configuration in use; it lives as long as the checker. "" for null. */
LEMARA_API const char* lemara_configuration(const lemara_checker* checker);
/** Path of the personal dictionary, or empty; it lives as long as the checker. */
LEMARA_API const char* lemara_dictionary(const lemara_checker* checker);
/** Paths of the tables in use. */
LEMARA_API lemara_status lemara_tables(const lemara_checker* checker,
                                       lemara_strings** tables, lemara_error** error);
/** The configuration that a checker uses when it is told none, as a list of one string,
 * which is empty if there is none. `looked` gets the places in any case; it may be null.
 */
LEMARA_API lemara_status lemara_find_configuration(lemara_strings** found,
                                                   lemara_strings** looked,
                                                   lemara_error** error);
/** The personal dictionary that a checker uses when it is told none, as a list of one
 * string, which is empty without a home. */
LEMARA_API lemara_status lemara_default_dictionary(lemara_strings** path,
                                                   lemara_error** error);

/** The findings in a text, in its order. Null `options` are lines, 8 forms, no limit of
 * time. */
LEMARA_API lemara_status lemara_check(const lemara_checker* checker, const char* text,
                                      size_t length, const lemara_check_options* options,
                                      lemara_findings** findings, lemara_error** error);
/** The same as they are found, without keeping them; `context` goes to `take`, which may
 * not throw. */
LEMARA_API lemara_status lemara_check_each(const lemara_checker* checker,
                                           const char* text, size_t length,
                                           const lemara_check_options* options,
                                           lemara_take_finding take, void* context,
                                           lemara_error** error);
/** How many findings there are; 0 for null. */
LEMARA_API size_t lemara_findings_count(const lemara_findings* findings);
/** Finding number `index`, from 0. */
LEMARA_API lemara_status lemara_findings_get(const lemara_findings* findings,
                                             size_t index, lemara_finding* finding);
/** Frees findings. */
LEMARA_API void lemara_findings_free(lemara_findings* findings);

/** All tokens of a text with their readings. */
LEMARA_API lemara_status lemara_analyze(const lemara_checker* checker, const char* text,
                                        size_t length, lemara_paragraphs paragraphs,
                                        lemara_tokens** tokens, lemara_error** error);
/** The same one by one, without keeping them; `context` goes to `take`, which may not
 * throw. */
LEMARA_API lemara_status lemara_analyze_each(const lemara_checker* checker,
                                             const char* text, size_t length,
                                             lemara_paragraphs paragraphs,
                                             lemara_take_token take, void* context,
                                             lemara_error** error);
/** The forms of a word, as one token whose readings they are: those of its first reading
 * that holds `tag` ("ARR"), up to that tag; for an unknown word those that the class
 * `tag` gives it. */
LEMARA_API lemara_status lemara_generate(const lemara_checker* checker, const char* word,
                                         size_t length, const char* tag,
                                         lemara_tokens** forms, lemara_error** error);
/** How many tokens there are; 0 for null. */
LEMARA_API size_t lemara_tokens_count(const lemara_tokens* tokens);
/** Token number `index`, from 0. */
LEMARA_API lemara_status lemara_tokens_get(const lemara_tokens* tokens, size_t index,
                                           lemara_token* token);
/** Reading number `reading_index`, from 0, of token number `index`. */
LEMARA_API lemara_status lemara_tokens_reading(const lemara_tokens* tokens, size_t index,
                                               size_t reading_index,
                                               lemara_reading* reading);
/** Frees tokens. */
LEMARA_API void lemara_tokens_free(lemara_tokens* tokens);

/** A paragraph in one of the engine's own mark-ups, which escape nothing, as a list of
 * one string. Foreign words and addresses show as "*". `variants` that are not 0 add the
 * values of recommendations, and to LEMARA_MARKUP the proposals. `number` is that of the
 * paragraph, which LEMARA_MARKUP always shows as 0. */
LEMARA_API lemara_status lemara_render(const lemara_checker* checker,
                                       const char* paragraph, size_t length,
                                       lemara_format format, int variants, int number,
                                       lemara_strings** markup, lemara_error** error);

/** 1 in `valid` if a check of the word alone has no finding. */
LEMARA_API lemara_status lemara_valid(const lemara_checker* checker, const char* word,
                                      size_t length, int* valid, lemara_error** error);
/** At most `most` proposals for a word, within `milliseconds` (0 is no limit). */
LEMARA_API lemara_status lemara_suggest(const lemara_checker* checker, const char* word,
                                        size_t length, size_t most, unsigned milliseconds,
                                        lemara_strings** forms, lemara_error** error);
/** The lemmas of a word, in the order of its readings, without repeats. */
LEMARA_API lemara_status lemara_lemmas(const lemara_checker* checker, const char* word,
                                       size_t length, lemara_strings** lemmas,
                                       lemara_error** error);

/** Adds a word to the personal dictionary and its file. A null class is derived: a
 * capital makes a name, else it is a common noun. Classes are "ARR", "IZO", "ADI", "PIB",
 * "LIB" and "IZB". */
LEMARA_API lemara_status lemara_add_word(lemara_checker* checker, const char* word,
                                         size_t length, const char* word_class,
                                         lemara_error** error);
/** The same with all that the dictionary knows of a word. */
LEMARA_API lemara_status lemara_add_personal_word(lemara_checker* checker,
                                                  const lemara_personal_word* word,
                                                  lemara_error** error);
/** Removes a word: with the class given, or, for null, with all of its classes. */
LEMARA_API lemara_status lemara_remove_word(lemara_checker* checker, const char* word,
                                            size_t length, const char* word_class,
                                            lemara_error** error);
/** The personal words alone, in the order of the file. */
LEMARA_API lemara_status lemara_words(const lemara_checker* checker,
                                      lemara_strings** words, lemara_error** error);
/** The personal words with their classes and better forms, in the order of the file. */
LEMARA_API lemara_status lemara_list_personal_words(const lemara_checker* checker,
                                                    lemara_personal_words** words,
                                                    lemara_error** error);
/** How many words there are; 0 for null. */
LEMARA_API size_t lemara_personal_words_count(const lemara_personal_words* words);
/** Word number `index`, from 0. */
LEMARA_API lemara_status lemara_personal_words_get(const lemara_personal_words* words,
                                                   size_t index,
                                                   lemara_personal_word* word);
/** Frees personal words. */
LEMARA_API void lemara_personal_words_free(lemara_personal_words* words);
/** Adds the words of a plain or hunspell list (a word a line; a count in the first line,
 * "/FLAGS" and what stands behind a TAB are passed over) in one write. `refused` gets a
 * line for each word that could not be taken; it and `report` may be null. */
LEMARA_API lemara_status lemara_import_words(lemara_checker* checker, const char* list,
                                             size_t length, lemara_import_report* report,
                                             lemara_strings** refused,
                                             lemara_error** error);
/** The personal words as a hunspell list, in one string: their number, then a word a
 * line, sorted. */
LEMARA_API lemara_status lemara_export_words(const lemara_checker* checker,
                                             lemara_strings** list, lemara_error** error);
/** Reads the dictionary again if another process has changed it; 1 in `changed` if it
 * had.
 */
LEMARA_API lemara_status lemara_refresh(lemara_checker* checker, int* changed,
                                        lemara_error** error);

/** How many strings there are; 0 for null. */
LEMARA_API size_t lemara_strings_count(const lemara_strings* strings);
/** String number `index`, from 0; null if there is none. */
LEMARA_API const char* lemara_strings_get(const lemara_strings* strings, size_t index);
/** Its length in bytes, should it hold a NUL; 0 if there is none. */
LEMARA_API size_t lemara_strings_length(const lemara_strings* strings, size_t index);
/** Frees strings. */
LEMARA_API void lemara_strings_free(lemara_strings* strings);

#ifdef __cplusplus
}
#endif

#endif
