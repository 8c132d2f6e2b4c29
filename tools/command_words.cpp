// The commands that answer for single words: valid, suggest, generate, lookup.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <unordered_set>

#include "commands.h"
#include "engine.h"
#include "failure.h"

namespace lemara::tools {

namespace {

struct WordArguments {
    EngineArguments engine;
    std::vector<std::string> words;
    std::string lemma, tag;  // generate
    bool flag = false;       // valid --deep, lookup --all
};

/// Strings in their order, each once.
class Unrepeated {
public:
    bool add(const std::string& text) { return seen_.insert(text).second; }

private:
    std::unordered_set<std::string> seen_;
};

int judge(const WordArguments& arguments) {
    Session session(arguments.engine);
    bool all_valid = true;
    const bool all_read =
        session.for_each_word(arguments.words, [&](const std::string& word) {
            const bool valid = session.engine().isValid(word, arguments.flag);
            all_valid = all_valid && valid;
            session.write(word + (valid ? "\tvalid\n" : "\tunknown\n"));
        });
    session.flush();
    return all_valid && all_read ? DONE : FINDINGS;
}

int suggest(const WordArguments& arguments) {
    Session session(arguments.engine);
    bool all_helped = true;
    const bool all_read =
        session.for_each_word(arguments.words, [&](const std::string& word) {
            std::string line = word;
            Unrepeated unrepeated;
            for (const std::string& proposal :
                 session.engine().lortu_ezzg_proposamenak(word)) {
                if (unrepeated.add(proposal)) line += '\t' + proposal;
            }
            all_helped = all_helped && line != word;
            session.write(line + '\n');
        });
    session.flush();
    return all_helped && all_read ? DONE : FINDINGS;
}

/// Writes "FORM, TAB, ANALYSIS" for each record, each line once. True if there was any.
bool write_forms(Session& session, const std::vector<Analisia>& records) {
    Unrepeated unrepeated;
    for (const Analisia& record : records) {
        const std::string line = record.forma + '\t' + record.analisia + '\n';
        if (unrepeated.add(line)) session.write(line);
    }
    return !records.empty();
}

/// A tag as the tables have it: the angle brackets may be left out on the command line.
std::string in_brackets(const std::string& tag) {
    return !tag.empty() && tag.front() == '<' ? tag : '<' + tag + '>';
}

int generate(const WordArguments& arguments) {
    Session session(arguments.engine);
    bool all_found = true;
    const bool all_read =
        session.for_each_word({arguments.lemma}, [&](const std::string& lemma) {
            const auto forms =
                session.engine().sortuFormak(lemma, in_brackets(arguments.tag));
            all_found = write_forms(session, forms) && all_found;
        });
    session.flush();
    return all_found && all_read ? DONE : FINDINGS;
}

int look_up(const WordArguments& arguments) {
    Session session(arguments.engine);
    bool all_found = true;
    const bool all_read =
        session.for_each_word(arguments.words, [&](const std::string& start) {
            const auto entries = session.engine().bilatuHasiera(start, !arguments.flag);
            all_found = write_forms(session, entries) && all_found;
        });
    session.flush();
    return all_found && all_read ? DONE : FINDINGS;
}

std::shared_ptr<WordArguments> arguments_for(CLI::App& command) {
    auto arguments = std::make_shared<WordArguments>();
    add_engine_options(command, arguments->engine);
    return arguments;
}

constexpr const char* WORDS = "words; - or none for the lines of standard input";

}  // namespace

void add_valid(CLI::App& app, int& status) {
    CLI::App* command = app.add_subcommand("valid", "Tell which words are valid");
    auto arguments = arguments_for(*command);
    command->add_flag("--deep", arguments->flag,
                      "a word that begins a multi-word entry is valid too");
    command->add_option("WORD", arguments->words, WORDS);
    command->footer(
        "Writes each word, a TAB, and \"valid\" or \"unknown\".\n"
        "Exit status: 0 all are valid; 1 some are not; 2 wrong usage, or a file that "
        "can't be "
        "used.\n\n"
        "Examples:\n"
        "  lemara valid etxea etxxea\n"
        "  lemara valid - < words.txt");
    command->callback([arguments, &status] { status = judge(*arguments); });
}

void add_suggest(CLI::App& app, int& status) {
    CLI::App* command =
        app.add_subcommand("suggest", "Propose right words for wrong ones");
    auto arguments = arguments_for(*command);
    command->add_option("WORD", arguments->words, WORDS);
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
        ->add_option("LEMMA", arguments->lemma,
                     "the word; - for the lines of standard input")
        ->required();
    command
        ->add_option(
            "TAG", arguments->tag,
            "a tag that the forms carry, as IZE; for a word that the lexicon lacks its "
            "class: ARR, IZO, ADI, PIB, LIB or IZB")
        ->required();
    command->footer(
        "Writes each form, a TAB, and its analysis.\n"
        "Exit status: 0 done; 1 there is no such form; 2 wrong usage, or a file that "
        "can't be "
        "used.\n\n"
        "Examples:\n"
        "  lemara generate etxe IZE\n"
        "  lemara generate blog ARR");
    command->callback([arguments, &status] { status = generate(*arguments); });
}

void add_lookup(CLI::App& app, int& status) {
    CLI::App* command =
        app.add_subcommand("lookup", "List the lexicon's entries that begin with a text");
    auto arguments = arguments_for(*command);
    command->add_flag("--all", arguments->flag,
                      "also entries that are not to be written as they stand");
    command->add_option("PREFIX", arguments->words, WORDS);
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
