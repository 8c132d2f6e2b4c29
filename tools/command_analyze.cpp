#include <CLI/CLI.hpp>
#include <memory>

#include "choices.h"
#include "commands.h"
#include "engine.h"
#include "failure.h"

namespace lemara::tools {

namespace {

enum class Format { MULTEXT, CG3, IKUTE, ZUZENLEX };

struct AnalyzeArguments {
    EngineArguments engine;
    Format format = Format::MULTEXT;
    bool values = false;
    Paragraphs paragraphs = Paragraphs::LINES;
    std::vector<std::string> files;
};

std::string rendered(Session& session, const Paragrafoa& paragraph,
                     const AnalyzeArguments& arguments) {
    const bool values = arguments.values;
    if (arguments.format == Format::CG3) return paragraph.get_CG3(values, false, false);
    return session.printed([&] {
        switch (arguments.format) {
            case Format::IKUTE:
                return paragraph.print_Ikute();
            case Format::ZUZENLEX:
                return paragraph.print_Zuzenlex(session.network("eumorfo"));
            default:
                return paragraph.print_Multext(values, false, false);
        }
    });
}

int analyze(const AnalyzeArguments& arguments) {
    Session session(arguments.engine);
    TextReader reader(arguments.files, arguments.engine.encoding, arguments.paragraphs,
                      message);
    int number = 0;
    for (Piece piece; reader.next(piece);) {
        if (!piece.usable) {
            session.write_raw(piece.text + '\n');
            continue;
        }
        Paragrafoa paragraph = session.engine().analizatu_paragrafoa(1, piece.text);
        paragraph.zenbakia = ++number;
        session.write(rendered(session, paragraph, arguments));
        session.flush();
    }
    session.flush();
    return reader.refused() ? FINDINGS : DONE;
}

}  // namespace

void add_analyze(CLI::App& app, int& status) {
    CLI::App* command = app.add_subcommand("analyze", "Write the analyses of a text");
    auto arguments = std::make_shared<AnalyzeArguments>();
    add_engine_options(*command, arguments->engine);
    const std::map<std::string, Format> formats{{"multext", Format::MULTEXT},
                                                {"cg3", Format::CG3},
                                                {"ikute", Format::IKUTE},
                                                {"zuzenlex", Format::ZUZENLEX}};
    command
        ->add_option(
            "--format", arguments->format,
            "multext (default), cg3, ikute (the last problem word of each sentence) or "
            "zuzenlex (a verdict for each word)")
        ->transform(one_of(formats))
        ->type_name("NAME");
    command->add_flag(
        "--values", arguments->values,
        "with multext and cg3: also source, better form and form to use instead");
    add_paragraph_options(*command, arguments->paragraphs, arguments->files);
    command->footer(
        "docs/outputs.md describes the formats. Paragraphs are numbered from 1.\n"
        "Exit status: 0 done; 1 done, but lines could not be read; 2 wrong usage, or a "
        "file "
        "that can't be used.\n\n"
        "Examples:\n"
        "  printf 'Kaixo, mundua!\\n' | lemara analyze\n"
        "  lemara analyze --format cg3 --values letter.txt");
    command->callback([arguments, &status] { status = analyze(*arguments); });
}

}  // namespace lemara::tools
