#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// The checker for UTF-8 text: what editors, servers and commands build on.
///
/// All text is UTF-8, in any normal form. What is no UTF-8 counts as one character for
/// each longest piece that begins like one, and is left alone. Nothing here writes to
/// standard output, ends the process or throws (but std::bad_alloc): errors are values.

namespace lemara {

namespace host {
struct CheckerInside;
}  // namespace host

/// Something that went wrong, in words for the user.
struct Problem {
    std::string file;      ///< empty if no file is to blame
    std::size_t line = 0;  ///< counted from 1; 0 for the file as a whole
    std::string reason;    ///< what is wrong, and what to do if that isn't plain

    /// "sareak.cfg:4: no such table: zenbakiak.sare"; without a file "line 4: ..."
    [[gnu::visibility("default")]] std::string text() const;
};

/// A place between two characters of a text, counted from its start in three units. A
/// byte order mark counts like any character.
struct Place {
    std::size_t byte = 0;        ///< bytes of UTF-8
    std::size_t code_point = 0;  ///< characters as Unicode numbers them
    std::size_t utf16 = 0;       ///< units, two for a character beyond U+FFFF
};

/// A stretch of a text. Its first character may be looked at by line and column.
struct Span {
    Place begin;           ///< in front of its first character
    Place end;             ///< behind its last character
    std::size_t line = 1;  ///< counted from 1; LF, CR LF and CR end a line
    std::size_t column =
        1;  ///< counted from 1 in code points; a byte order mark has none
    std::size_t column_utf16 = 1;  ///< the same in UTF-16 units
};

/// What there is to tell about a stretch of text.
enum class Kind {
    unknown,      ///< no source knows the word
    better_form,  ///< a known deviant form; `forms` has the standard ones
    use_instead,  ///< a known word; `forms` has what is recommended in its place
    unit_start,  ///< unknown by itself, but units of several words begin with it: `forms`
    foreign,     ///< holds a letter that the tables can't; reported on request alone
};

/// "unknown", "better-form", "use-instead", "unit-start", "foreign".
[[gnu::visibility("default")]] const char* name_of(Kind kind);

/// Something to tell the user about a stretch of text.
struct Finding {
    Kind kind = Kind::unknown;  ///< what it is
    Span span;                  ///< where it is
    std::string token;          ///< as written: the bytes of the text at `span`

    /// Proposals or better forms, the likeliest first, without repeats; the checker
    /// accepts each of them. At most as many as were asked for.
    std::vector<std::string> forms;
    bool complete = true;  ///< false if time ran out before all candidates were tried
};

/// One reading of a token.
struct Reading {
    std::string lemma;    ///< its lemma
    std::string tags;     ///< blank-separated: "IZE ARR"
    std::string network;  ///< key of the table that gave it; empty for an unknown word
    std::string raw;      ///< the whole analysis as the table has it
    std::string better;   ///< the recommended lemma, or empty
    std::string instead;  ///< the lemma to use instead, or empty
    std::string source;   ///< where the recommendation is from, or empty
    int case_class = 0;  ///< 1: the word begins with a capital; 2: it has no small letter
};

/// A generated form and its reading.
struct Form {
    std::string form;  ///< as it is written
    Reading reading;   ///< the lemma and the tags that it was made from
};

/// A token of a text: a word, a sign, or a unit of several words.
struct Token {
    Span span;           ///< where it is
    std::string text;    ///< as written
    std::string folded;  ///< as the engine read it; empty for what it was kept from
    bool blank_follows = false;  ///< white space follows
    std::size_t paragraph = 0;   ///< counted from 0
    std::size_t sentence = 0;    ///< counted from 0 in the whole text
    bool known = false;          ///< some source has a reading
    bool foreign = false;        ///< a foreign word, an address, or a sign beyond Latin-1
    std::vector<Reading> readings;  ///< in the order of the networks
};

/// What separates paragraphs. A sentence and a unit of several words lie within one.
enum class Paragraphs {
    lines,  ///< each line is one
    blank,  ///< blank lines separate; other line ends are blanks
    whole,  ///< the text is one
};

/// How Checker::check checks.
struct CheckOptions {
    Paragraphs paragraphs = Paragraphs::lines;  ///< what separates them
    std::size_t most_forms =
        8;  ///< for each finding; 0 leaves them out and saves the time
    /// Time for the proposals of one word; 0 is no limit. It is looked at between
    /// candidates.
    std::chrono::milliseconds time_per_word{0};
    std::chrono::milliseconds time_in_all{0};  ///< the same for all of a call
    bool report_foreign = false;  ///< words with foreign letters are findings
    /// Words that count as known, as written or in small letters. Borrowed.
    const std::set<std::string>* accepted = nullptr;
};

/// A word of the personal dictionary.
struct PersonalWord {
    std::string word;        ///< in its base form; a verb in its participle
    std::string word_class;  ///< "ARR", "IZO", "ADI", "PIB", "LIB" or "IZB"
    std::string better;      ///< the better form, or empty
    std::string instead;     ///< the form to use instead, or empty
};

/// What Checker::import_words did.
struct ImportReport {
    std::size_t added = 0;           ///< are new
    std::size_t there = 0;           ///< were in the dictionary before
    std::vector<Problem> refused;    ///< one for each line that could not be taken
    std::optional<Problem> problem;  ///< why nothing was written at all
};

/// What Checker::open opens.
struct Settings {
    /// Configuration file that lists the tables, one a line; a name that is no path from
    /// the working folder is looked for beside the file. Empty: see find_configuration.
    std::string configuration;
    /// The personal dictionary, which need not exist. Empty: default_dictionary().
    std::string dictionary;
    bool use_dictionary = true;  ///< false: no personal dictionary at all
};

/// The engine's own mark-ups, which Checker::render writes: docs/outputs.md shows them.
enum class Format {
    multext,   ///< a line for each token, with its analyses
    cg3,       ///< constraint grammar's stream
    ikute,     ///< the last problem word of each sentence
    zuzenlex,  ///< a verdict for each token
    check,     ///< the same, and proposals on request
};

/// The checker. Any number of threads may use one object at once; a word that one of them
/// adds is seen by all from then on.
///
/// Words in other scripts, or with a letter that Latin-1 lacks, are never findings but
/// Kind::foreign; web and mail addresses, paths, file names, handles, hashtags, and
/// tokens without a letter are never findings at all.
///
/// A paragraph longer than 16 KiB is analysed in pieces, cut where a sentence seems to
/// end (behind 32 KiB at any blank), so memory does not grow with the text; a unit of
/// several words across such a cut is not seen. Time is linear in the length of the text.
class [[gnu::visibility("default")]] Checker {
public:
    /// What open answers.
    struct Opened {
        std::unique_ptr<Checker>
            checker;                    ///< null if it can't work; `problems` tells why
        std::vector<Problem> problems;  ///< with a checker: what was passed over
    };

    /// Opens tables and dictionary. Bad lines of the dictionary are passed over and told.
    static Opened open(const Settings& settings);

    ~Checker();
    Checker(const Checker&) = delete;
    Checker& operator=(const Checker&) = delete;

    /// The findings in a text, in its order.
    std::vector<Finding> check(std::string_view text, const CheckOptions& options = {})
        const;

    /// The same as they are found, without keeping them; `take` answers false to end the
    /// check.
    void check(std::string_view text, const CheckOptions& options,
               const std::function<bool(const Finding&)>& take) const;

    /// All tokens of a text with their readings, in order, none overlapping another.
    /// `take` answers false to end.
    void analyze(std::string_view text, Paragraphs paragraphs,
                 const std::function<bool(const Token&)>& take) const;
    /// The same as a list.
    std::vector<Token> analyze(std::string_view text,
                               Paragraphs paragraphs = Paragraphs::lines) const;

    /// True if a check of `word` alone has no finding. A word with foreign letters is
    /// valid.
    bool valid(std::string_view word) const;

    /// The forms of a finding for `word`, known or not, as check gives them: at most
    /// `most`, within `time` (0 is no limit).
    std::vector<std::string> suggest(std::string_view word, std::size_t most = 8,
                                     std::chrono::milliseconds time = {}) const;

    /// The lemmas of a word, in the order of its readings, without repeats.
    std::vector<std::string> lemmas(std::string_view word) const;

    /// The forms of a word: of its first reading that holds `tag` ("ARR"), up to that
    /// tag; for an unknown word those that the class `tag` gives it.
    std::vector<Form> generate(std::string_view word, std::string_view tag) const;

    /// A paragraph in one of the engine's own mark-ups, which escape nothing. Foreign
    /// words show as "*"; lemara/formats.h and lemara/json.h have formats that hold them.
    /// `variants` adds the values of recommendations, and to Format::check the proposals.
    /// `number` is that of the paragraph, which Format::check always shows as 0.
    std::string render(std::string_view paragraph, Format format, bool variants,
                       int number = 1) const;

    /// Adds a word to the personal dictionary and its file. Without a class the word
    /// becomes a common noun ("ARR"), or, if it begins with a capital, a name ("IZB").
    /// Nothing is changed if there is a problem, and a word that is there with its class
    /// is none.
    std::optional<Problem> add_word(const PersonalWord& word);

    /// Removes a word: with the class given, or with all of its classes. A word that
    /// isn't there is a problem.
    std::optional<Problem> remove_word(std::string_view word,
                                       std::string_view word_class = "");

    /// The personal words in the order of the file.
    std::vector<PersonalWord> words() const;

    /// Adds the words of a plain or hunspell list (UTF-8, a word a line; a count in the
    /// first line,
    /// "/FLAGS" and what stands behind a TAB are passed over) in one write.
    ImportReport import_words(std::string_view list);

    /// The personal words as a hunspell list: their number, then a word a line, sorted.
    std::string export_words() const;

    /// Reads the dictionary's file again if another process has changed it since. True if
    /// it had.
    bool refresh();

    std::string configuration() const;        ///< path of the configuration in use
    std::vector<std::string> tables() const;  ///< paths of the tables in use
    std::string dictionary() const;           ///< path of the personal dictionary

private:
    friend struct host::CheckerInside;

    std::unique_ptr<host::CheckerInside> inside_;

    Checker();
};

/// The configuration that a checker uses when it is told none: the file or folder that
/// the environment's LEMARA_TABLES names; else sareak.cfg of the tables installed beside
/// this library, or beside or built with the running program; else that of
/// $XDG_DATA_HOME/lemara and $XDG_DATA_DIRS/lemara. Empty if there is none; `looked` gets
/// the places in any case.
[[gnu::visibility("default")]] std::string find_configuration(
    std::vector<std::string>* looked = nullptr);

/// $XDG_DATA_HOME/lemara/hiztegia.txt, normally under ~/.local/share; empty without a
/// home.
[[gnu::visibility("default")]] std::string default_dictionary();

/// The version of the library: "1.0.0".
[[gnu::visibility("default")]] const char* version();

}  // namespace lemara
