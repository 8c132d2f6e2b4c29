#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <string_view>

#include "commands.h"
#include "engine.h"
#include "failure.h"

namespace lemara::tools {

namespace {

struct CheckArguments {
    EngineArguments engine;
    Paragraphs paragraphs = Paragraphs::LINES;
    bool no_suggest = false;
    std::vector<std::string> files;
};

bool begins(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

/// True if a token of the mark-up is unknown or has a better form. Nothing in the mark-up
/// is escaped, but no token begins a line, so lines can be told apart.
bool has_findings(std::string_view markup) {
    bool in_verdict = false;
    while (!markup.empty()) {
        const std::size_t end = std::min(markup.find('\n'), markup.size());
        const std::string_view line = markup.substr(0, end);
        markup.remove_prefix(std::min(end + 1, markup.size()));
        if (begins(line, "\t<prop k=\"ezz\"")) return true;
        if (in_verdict && begins(line, "\t\t<")) return true;
        in_verdict = line == "\t<prop>";
    }
    return false;
}

int check(const CheckArguments& arguments) {
    Session session(arguments.engine);
    TextReader reader(arguments.files, arguments.engine.encoding, arguments.paragraphs,
                      message);
    bool findings = false;
    for (Piece piece; reader.next(piece);) {
        if (!piece.usable) {
            session.write_raw(piece.text + '\n');
            continue;
        }
        const std::string markup =
            session.engine().getParagrafoaZuzenlex(piece.text, !arguments.no_suggest);
        findings = findings || has_findings(markup);
        session.write(markup);
        session.flush();
    }
    session.flush();
    return findings || reader.refused() ? FINDINGS : DONE;
}

}  // namespace

void add_check(CLI::App& app, int& status) {
    CLI::App* command = app.add_subcommand("check", "Check the spelling of a text");
    auto arguments = std::make_shared<CheckArguments>();
    add_engine_options(*command, arguments->engine);
    command->add_flag("--no-suggest", arguments->no_suggest,
                      "mark unknown words without proposals; much faster");
    add_paragraph_options(*command, arguments->paragraphs, arguments->files);
    command->footer(
        "Writes a verdict for each word, as mark-up; docs/outputs.md describes it.\n"
        "Exit status: 0 all is right; 1 unknown words, better forms, or lines that could "
        "not "
        "be read;\n2 wrong usage, or a file that can't be used.\n\n"
        "Examples:\n"
        "  lemara check letter.txt\n"
        "  printf 'Kaixo, mundua!\\n' | lemara check\n"
        "  lemara check --paragraphs blank --no-suggest --dictionary my.hp book.txt");
    command->callback([arguments, &status] { status = check(*arguments); });
}

}  // namespace lemara::tools
