// The command line of ispell: what editors start, without a subcommand.
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "checker.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "ispell.h"
#include "output.h"
#include "text_chunks.h"
#include "text_encoding.h"
#include "text_reader.h"

namespace lemara::tools {

namespace {

constexpr int UNKNOWN_DICTIONARY = 1;  // exit status; what clients of ispell look for

enum class Mode { NONE, VERSION, PIPE, LIST, LINES };

struct IspellArguments {
    Mode mode = Mode::NONE;
    bool good = false;  // with LIST: the known words
    CheckerArguments checker;
    std::string language = "eu", encoding;
    std::vector<std::string> files;
};

/// The value of the option at `at`: behind it in one argument, or the next one.
std::string value_of(const std::vector<std::string>& arguments, std::size_t& at,
                     std::size_t name) {
    const std::string& argument = arguments[at];
    if (argument.size() > name) return argument.substr(name + (argument[name] == '='));
    if (++at == arguments.size())
        throw Failure(argument + " needs a value; see lemara --help");
    return arguments[at];
}

bool begins(const std::string& text, std::string_view start) {
    return text.compare(0, start.size(), start) == 0;
}

/// Takes an option that has a meaning here; false for one that has none.
bool take_option(const std::vector<std::string>& arguments, std::size_t& at,
                 IspellArguments& result) {
    const std::string& argument = arguments[at];
    if (begins(argument, "--config")) {
        result.checker.configuration = value_of(arguments, at, 8);
    } else if (begins(argument, "--dictionary")) {
        result.checker.dictionary = value_of(arguments, at, 12);
    } else if (argument == "--no-dictionary") {
        result.checker.no_dictionary = true;
    } else if (begins(argument, "--encoding")) {
        result.encoding = value_of(arguments, at, 10);
    } else if (argument == "-a") {
        result.mode = Mode::PIPE;
    } else if (argument == "-l" || argument == "-G") {
        result.mode = Mode::LIST;
        result.good = result.good || argument == "-G";
    } else if (argument == "-L") {
        result.mode = Mode::LINES;
    } else if (argument == "-v" || argument == "-vv") {
        result.mode = Mode::VERSION;
    } else if (begins(argument, "-d")) {
        result.language = value_of(arguments, at, 2);
    } else if (begins(argument, "-p")) {
        result.checker.dictionary = value_of(arguments, at, 2);
    } else if (begins(argument, "-i")) {
        result.encoding = value_of(arguments, at, 2);
    } else if (begins(argument, "-T") || begins(argument, "-w") ||
               begins(argument, "-W")) {
        value_of(arguments, at, 2);  // means nothing to us
    } else {
        constexpr std::string_view NO_MEANING = "mBCStnH";
        return argument.size() == 2 && NO_MEANING.find(argument[1]) != NO_MEANING.npos;
    }
    return true;
}

IspellArguments read_arguments(const std::vector<std::string>& arguments) {
    IspellArguments result;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        if (arguments[at].size() < 2 || arguments[at][0] != '-') {
            result.files.push_back(arguments[at]);
        } else if (!take_option(arguments, at, result)) {
            throw Failure("unknown option " + arguments[at] + "; see lemara --help");
        }
    }
    return result;
}

std::string small_letters(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    });
    return text;
}

bool is_our_language(const std::string& name) {
    const std::string language = small_letters(name);
    return language == "eu" || begins(language, "eu_") || begins(language, "eu-") ||
           language == "basque" || language == "euskara" || language == "default";
}

/// The locale's encoding, as far as the tools know it: Latin-1 where its name says so.
std::string locale_encoding() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') return value;
    }
    return "";
}

Encoding encoding_of(const IspellArguments& arguments) {
    const std::string name = small_letters(
        arguments.encoding.empty() ? locale_encoding() : arguments.encoding);
    const bool latin1 = name.find("8859-1") != name.npos ||
                        name.find("8859_1") != name.npos ||
                        name.find("88591") != name.npos || name.find("latin") == 0;
    return latin1 ? Encoding::LATIN_1 : Encoding::UTF_8;
}

std::string in_utf8(const std::string& text, Encoding encoding) {
    return encoding == Encoding::LATIN_1 ? encoded(text, Encoding::UTF_8) : text;
}

std::string out_of_utf8(const std::string& text, Encoding encoding) {
    if (encoding == Encoding::UTF_8) return text;
    std::string latin1;
    char32_t missing = 0;
    latin1_exactly(text, latin1, missing);  // it came from Latin-1, or from the tables
    return latin1;
}

int serve(Checker& checker, Encoding encoding) {
    Results results;
    results.write(ispell_banner());
    results.flush();
    IspellConversation conversation(checker);
    LineReader lines("-");
    for (std::string line; lines.next(line);) {
        const std::string answer = conversation.answer(in_utf8(line, encoding));
        if (answer.empty()) continue;
        results.write(out_of_utf8(answer, encoding));
        results.flush();
    }
    return DONE;
}

/// Writes the words of a text that are unknown, or, if wanted, those that are known.
void list_words(const Checker& checker, const std::string& text, bool good,
                Encoding encoding, Results& results) {
    CheckOptions options;
    options.most_forms = 0;
    std::vector<std::size_t> findings;
    checker.check(text, options, [&](const Finding& finding) {
        findings.push_back(finding.span.begin.byte);
        if (!good) results.write(out_of_utf8(finding.token, encoding) + '\n');
        return true;
    });
    if (!good) return;
    checker.analyze(text, lemara::Paragraphs::lines, [&](const Token& token) {
        const bool wrong =
            std::binary_search(findings.begin(), findings.end(), token.span.begin.byte);
        if (!wrong && is_checked_word(token)) {
            results.write(out_of_utf8(token.text, encoding) + '\n');
        }
        return true;
    });
}

/// Writes the lines of a text that hold an unknown word, as they stand.
void list_lines(const Checker& checker, const std::string& text, Encoding encoding,
                Results& results) {
    CheckOptions options;
    options.most_forms = 0;
    std::size_t told = 0;  // where the line that was written last ends
    checker.check(text, options, [&](const Finding& finding) {
        const std::size_t at = finding.span.begin.byte;
        if (at < told) return true;
        const std::size_t before = at == 0 ? text.npos : text.rfind('\n', at - 1);
        const std::size_t start = before == text.npos ? 0 : before + 1;
        told = std::min(text.find('\n', at), text.size());
        results.write(out_of_utf8(text.substr(start, told - start), encoding) + '\n');
        return true;
    });
}

int list(const Checker& checker, const IspellArguments& arguments) {
    const Encoding encoding = encoding_of(arguments);
    Results results;
    int status = DONE;
    ChunkReader reader(arguments.files, ChunkReader::Ends::LINES);
    for (Chunk chunk; reader.next(chunk);) {
        const std::string text = in_utf8(chunk.text, encoding);
        if (arguments.mode == Mode::LINES) {
            list_lines(checker, text, encoding, results);
        } else {
            list_words(checker, text, arguments.good, encoding, results);
        }
        results.flush();
        if (chunk.trouble.empty()) continue;
        message(chunk.trouble);
        status = FAILED;
    }
    return status;
}

}  // namespace

bool is_ispell_command_line(int count, char** arguments) {
    if (count < 2) return false;
    const std::string_view first = arguments[1];
    return first.size() > 1 && first[0] == '-' && first != "-h" && first != "--help" &&
           first != "--version";
}

int run_as_ispell(int count, char** arguments) {
    const IspellArguments wanted =
        read_arguments(std::vector<std::string>(arguments + 1, arguments + count));
    if (wanted.mode == Mode::NONE) {
        throw Failure("a command, or -a, -l, -L or -vv, is required; see lemara --help");
    }
    if (wanted.mode == Mode::VERSION) {
        Results results;
        results.write(ispell_banner());
        results.flush();
        return DONE;
    }
    if (!is_our_language(wanted.language)) {
        message("no dictionary " + wanted.language + "; there is eu");
        return UNKNOWN_DICTIONARY;
    }
    const std::unique_ptr<Checker> checker = open_checker(wanted.checker, true);
    if (wanted.mode == Mode::PIPE) return serve(*checker, encoding_of(wanted));
    return list(*checker, wanted);
}

}  // namespace lemara::tools
