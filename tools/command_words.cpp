// The commands that answer for single words: valid, suggest, generate, lookup.
#include <CLI/CLI.hpp>
#include <memory>
#include <unordered_set>

#include "asked_words.h"
#include "commands.h"
#include "engine.h"
#include "failure.h"
#include "lemara/json.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

struct WordArguments {
    EngineArguments engine;
    AskedWords asked;
    bool json = false, jsonl = false, exit_zero = false;
    std::string tag;    // generate
    bool flag = false;  // valid --deep, lookup --all
};

/// Strings in their order, each once.
class Unrepeated {
public:
    bool add(const std::string& text) { return seen_.insert(text).second; }

private:
    std::unordered_set<std::string> seen_;
};

/// Opens an engine and answers by `answer(engine, word)`. The exit status.
template <class Ask>
int answer_by(const WordArguments& arguments, Ask answer) {
    Session session(arguments.engine);
    AskedWords asked = arguments.asked;
    asked.encoding = arguments.engine.encoding;
    asked.format = arguments.jsonl  ? AnswerFormat::JSONL
                   : arguments.json ? AnswerFormat::JSON
                                    : AnswerFormat::TEXT;
    const bool all_good = answer_words(
        asked, session.results(),
        [&](const AskedWord& word) { return answer(session.engine(), word); });
    return all_good || arguments.exit_zero ? DONE : FINDINGS;
}

/// A word with foreign letters is no finding of the check, and valid here too.
int judge(const WordArguments& arguments) {
    return answer_by(arguments, [&](const Lemara& engine, const AskedWord& word) {
        Answer answer;
        answer.good = word.foreign || engine.isValid(word.latin1, arguments.flag);
        answer.text = word.typed + (answer.good ? "\tvalid\n" : "\tunknown\n");
        answer.members = std::string("\"valid\":") + (answer.good ? "true" : "false") +
                         (word.foreign ? ",\"foreign\":true" : "");
        return answer;
    });
}

int suggest(const WordArguments& arguments) {
    return answer_by(arguments, [](const Lemara& engine, const AskedWord& word) {
        Answer answer;
        answer.text = word.typed;
        std::string forms;
        Unrepeated unrepeated;
        if (!word.foreign) {
            for (const std::string& proposal :
                 engine.lortu_ezzg_proposamenak(word.latin1)) {
                if (!unrepeated.add(proposal)) continue;
                const std::string form = utf8_from_latin1(proposal);
                answer.good = true;
                answer.text += '\t' + form;
                forms += (forms.empty() ? "" : ",") + json_string(form);
            }
        }
        answer.text += '\n';
        answer.members = "\"forms\":[" + forms + ']';
        return answer;
    });
}

/// Each record once: for people "FORM, TAB, ANALYSIS", as JSON a list called `name`.
Answer answer_of(const std::vector<Analisia>& records, const char* name) {
    Answer answer;
    answer.good = !records.empty();
    std::string list;
    Unrepeated unrepeated;
    for (const Analisia& record : records) {
        const std::string form = utf8_from_latin1(record.forma);
        const std::string analysis = utf8_from_latin1(record.analisia);
        const std::string line = form + '\t' + analysis + '\n';
        if (!unrepeated.add(line)) continue;
        answer.text += line;
        list += (list.empty() ? "" : ",") + std::string("{\"form\":") +
                json_string(form) + ",\"analysis\":" + json_string(analysis) + '}';
    }
    answer.members = '"' + std::string(name) + "\":[" + list + ']';
    return answer;
}

/// A tag as the tables have it: the angle brackets may be left out on the command line.
std::string in_brackets(const std::string& tag) {
    return !tag.empty() && tag.front() == '<' ? tag : '<' + tag + '>';
}

int generate(const WordArguments& arguments) {
    const std::string tag = in_brackets(arguments.tag);
    return answer_by(arguments, [&](const Lemara& engine, const AskedWord& word) {
        if (word.foreign) return answer_of({}, "forms");
        return answer_of(engine.sortuFormak(word.latin1, tag), "forms");
    });
}

int look_up(const WordArguments& arguments) {
    return answer_by(arguments, [&](const Lemara& engine, const AskedWord& word) {
        if (word.foreign) return answer_of({}, "entries");
        return answer_of(engine.bilatuHasiera(word.latin1, !arguments.flag), "entries");
    });
}

std::shared_ptr<WordArguments> arguments_for(CLI::App& command) {
    auto arguments = std::make_shared<WordArguments>();
    add_engine_options(command, arguments->engine);
    command.add_flag("--json", arguments->json,
                     "one JSON document, with an object for each word");
    command.add_flag(
        "--jsonl", arguments->jsonl,
        "a JSON object for each word, one a line; each line of standard input "
        "gets one line");
    command.add_flag("--exit-zero", arguments->exit_zero,
                     "exit with status 0 whatever the answers are");
    return arguments;
}

constexpr const char* WORDS = "words; - or none for the lines of standard input";

}  // namespace

void add_valid(CLI::App& app, int& status) {
    CLI::App* command = app.add_subcommand("valid", "Tell which words are valid");
    auto arguments = arguments_for(*command);
    command->add_flag("--deep", arguments->flag,
                      "a word that begins a multi-word entry is valid too");
    command->add_option("WORD", arguments->asked.words, WORDS);
    command->footer(
        "Writes each word, a TAB, and \"valid\" or \"unknown\".\n"
        "Exit status: 0 all are valid; 1 some are not; 2 wrong usage, or a file that "
        "can't be "
        "used.\n\n"
        "Examples:\n"
        "  lemara valid etxea etxxea\n"
        "  lemara valid - < words.txt\n"
        "  lemara valid --jsonl --exit-zero < words.txt > answers.jsonl");
    command->callback([arguments, &status] { status = judge(*arguments); });
}

void add_suggest(CLI::App& app, int& status) {
    CLI::App* command =
        app.add_subcommand("suggest", "Propose right words for wrong ones");
    auto arguments = arguments_for(*command);
    command->add_option("WORD", arguments->asked.words, WORDS);
    command->footer(
        "Writes each word and its proposals, best first, with TABs between them.\n"
        "Exit status: 0 each word has a proposal; 1 some have none; 2 wrong usage, or a "
        "file "
        "that can't be used.\n\n"
        "Example:\n"
        "  lemara suggest etxxea");
    command->callback([arguments, &status] { status = suggest(*arguments); });
}

void add_generate(CLI::App& app, int& status) {
    CLI::App* command = app.add_subcommand("generate", "Write the forms of a word");
    auto arguments = arguments_for(*command);
    command
        ->add_option("LEMMA", arguments->asked.words,
                     "words; - for the lines of standard input")
        ->required();
    command
        ->add_option(
            "TAG", arguments->tag,
            "a tag that the forms carry, as IZE; for a word that the lexicon lacks "
            "its class: ARR, IZO, ADI, PIB, LIB or IZB")
        ->required();
    command->positionals_at_end();
    command->footer(
        "Writes each form, a TAB, and its analysis.\n"
        "Exit status: 0 done; 1 there is no such form; 2 wrong usage, or a file that "
        "can't be "
        "used.\n\n"
        "Examples:\n"
        "  lemara generate etxe IZE\n"
        "  lemara generate --jsonl - IZE < lemmas.txt\n"
        "  lemara generate blog ARR");
    command->callback([arguments, &status] { status = generate(*arguments); });
}

void add_lookup(CLI::App& app, int& status) {
    CLI::App* command =
        app.add_subcommand("lookup", "List the lexicon's entries that begin with a text");
    auto arguments = arguments_for(*command);
    command->add_flag("--all", arguments->flag,
                      "also entries that are not to be written as they stand");
    command->add_option("PREFIX", arguments->asked.words, WORDS);
    command->footer(
        "Writes each entry's form, a TAB, and its lemma and first tag. A blank at the "
        "end of "
        "PREFIX asks for\nmulti-word entries that begin with that word.\n"
        "Exit status: 0 done; 1 there is no such entry; 2 wrong usage, or a file that "
        "can't be "
        "used.\n\n"
        "Examples:\n"
        "  lemara lookup etxeko\n"
        "  lemara lookup 'bat '");
    command->callback([arguments, &status] { status = look_up(*arguments); });
}

}  // namespace lemara::tools
