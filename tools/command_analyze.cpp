// Analysing texts: `lemara analyze`. The formats of other programs are made of the
// checker's tokens, chunk by chunk, in several threads if asked for; the engine's own
// mark-ups come from the engine, paragraph by paragraph.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <thread>

#include "checker.h"
#include "choices.h"
#include "chunk_places.h"
#include "commands.h"
#include "engine.h"
#include "failure.h"
#include "files.h"
#include "lemara/json.h"
#include "ordered_jobs.h"
#include "output.h"
#include "render.h"
#include "token_report.h"

namespace lemara::tools {

namespace {

constexpr std::size_t ANALYSED_AT_ONCE = std::size_t{1} << 15;  // bytes; tokens are large

enum class Output { MULTEXT, CG3_LEMARA, IKUTE, ZUZENLEX, CG3, CONLLU, JSON, JSONL };

struct AnalyzeArguments {
    EngineArguments engine;
    Paragraphs paragraphs = Paragraphs::LINES;
    Output output = Output::MULTEXT;
    bool values = false, records = false, exit_zero = false;
    std::size_t jobs = 1;
    std::vector<std::string> files;
};

std::optional<Format> engine_format(Output output) {
    switch (output) {
        case Output::MULTEXT:
            return Format::multext;
        case Output::CG3_LEMARA:
            return Format::cg3;
        case Output::IKUTE:
            return Format::ikute;
        case Output::ZUZENLEX:
            return Format::zuzenlex;
        default:
            return std::nullopt;
    }
}

TokenFormat token_format(Output output) {
    switch (output) {
        case Output::CG3:
            return TokenFormat::CG3;
        case Output::CONLLU:
            return TokenFormat::CONLLU;
        case Output::JSON:
            return TokenFormat::JSON;
        default:
            return TokenFormat::JSONL;
    }
}

lemara::Paragraphs checker_paragraphs(Paragraphs paragraphs) {
    return paragraphs == Paragraphs::BLANK ? lemara::Paragraphs::blank
                                           : lemara::Paragraphs::lines;
}

struct AnalysedChunk {
    ChunkText text;
    std::vector<Token> tokens;  // places count from the start of the chunk
    std::string records;        // with --jsonl
};

/// A JSON object for each line, with its tokens.
std::string records_of(const Checker& checker, std::string_view text) {
    std::string records;
    for_each_line(text, [&](std::string_view line) {
        std::string tokens;
        checker.analyze(line, lemara::Paragraphs::lines, [&](const Token& token) {
            tokens += (tokens.empty() ? "" : ",") + to_json(token);
            return true;
        });
        records += "{\"tokens\":[" + tokens + "]}\n";
    });
    return records;
}

/// Calls `take` with the tokens of a text, their places counted from its start.
template <class Take>
void for_each_token(const Checker& checker, const AnalyzeArguments& arguments,
                    const ChunkText& chunk, Take take) {
    chunk.with_spans([&](std::string_view text, const auto& correct) {
        checker.analyze(text, checker_paragraphs(arguments.paragraphs),
                        [&](const Token& token) {
                            Token corrected = token;
                            correct(corrected.span);
                            take(std::move(corrected));
                            return true;
                        });
    });
}

AnalysedChunk analysed(const Checker& checker, const AnalyzeArguments& arguments,
                       Chunk chunk) {
    AnalysedChunk result;
    result.text = ChunkText(std::move(chunk), arguments.engine.encoding);
    if (arguments.records) {
        result.records = records_of(checker, result.text.chunk.text);
    } else {
        for_each_token(checker, arguments, result.text,
                       [&](Token token) { result.tokens.push_back(std::move(token)); });
    }
    return result;
}

/// Writes what the chunks bring, in their order.
class Report {
public:
    Report(const AnalyzeArguments& arguments, const std::vector<std::string>& files)
        : records_(arguments.records),
          files_(files),
          tokens_(token_format(arguments.output), arguments.values,
                  [this](std::string_view text) { results_.write(text); }) {
        if (!records_) tokens_.start();
    }

    void take(AnalysedChunk analysed) {
        begin(analysed.text);
        for (Token& token : analysed.tokens) take(std::move(token));
        results_.write(analysed.records);
        end(analysed.text);
    }

    /// A chunk, its tokens one by one, and its end.
    void begin(const ChunkText& text) {
        const std::string file = shown_file(files_[text.chunk.file]);
        places_.enter(text);
        if (text.chunk.first) tokens_.start_file(file);
        const std::string complaint = places_.complaint(text, file);
        if (!complaint.empty()) message(complaint);
    }
    void take(Token token) {
        places_.shift(token.span);
        tokens_.take(std::move(token));
    }
    void end(const ChunkText& text) {
        tokens_.end_chunk();
        if (files_[text.chunk.file] == "-") results_.flush();
        places_.leave(text);
        if (text.chunk.trouble.empty()) return;
        message(text.chunk.trouble);
        failed_ = true;
    }

    int finish() {
        if (!records_) tokens_.finish();
        results_.flush();
        return failed_ ? FAILED : places_.any_invalid() ? FINDINGS : DONE;
    }

private:
    Results results_;
    bool records_;
    const std::vector<std::string>& files_;
    TokenReport tokens_;
    ChunkPlaces places_;
    bool failed_ = false;
};

int analyze_tokens(const Checker& checker, const AnalyzeArguments& arguments) {
    ChunkReader reader(arguments.files,
                       chunk_ends(arguments.paragraphs, arguments.records),
                       ANALYSED_AT_ONCE);
    Report report(arguments, reader.files());
    const std::size_t threads = thread_count(arguments.jobs);
    if (threads == 1 && !arguments.records) {
        // Tokens are written as they come: a line may be as long as it likes.
        for (Chunk chunk; reader.next(chunk);) {
            const ChunkText text(std::move(chunk), arguments.engine.encoding);
            report.begin(text);
            for_each_token(checker, arguments, text,
                           [&](Token token) { report.take(std::move(token)); });
            report.end(text);
        }
        return report.finish();
    }
    OrderedJobs<Chunk, AnalysedChunk> jobs(
        threads,
        [&](Chunk chunk) { return analysed(checker, arguments, std::move(chunk)); },
        [&](AnalysedChunk chunk) { report.take(std::move(chunk)); });
    for (Chunk chunk; reader.next(chunk);) jobs.add(std::move(chunk));
    jobs.finish();
    return report.finish();
}

int analyze(const AnalyzeArguments& arguments) {
    const std::unique_ptr<Checker> checker =
        open_checker(checker_arguments(arguments.engine));
    const auto status = [&](int found) {
        return found == FINDINGS && arguments.exit_zero ? DONE : found;
    };
    const std::optional<Format> format = engine_format(arguments.output);
    if (arguments.records || !format) return status(analyze_tokens(*checker, arguments));
    RenderArguments wanted;
    wanted.format = *format;
    wanted.variants = arguments.values;
    wanted.encoding = arguments.engine.encoding;
    wanted.paragraphs = arguments.paragraphs;
    wanted.jobs = arguments.jobs;
    wanted.files = arguments.files;
    return status(
        render_texts(*checker, wanted, [](const std::string&) { return true; }));
}

void add_output_options(CLI::App& command, AnalyzeArguments& arguments) {
    const std::map<std::string, Output> outputs{{"multext", Output::MULTEXT},
                                                {"cg3", Output::CG3},
                                                {"cg3-lemara", Output::CG3_LEMARA},
                                                {"conllu", Output::CONLLU},
                                                {"json", Output::JSON},
                                                {"jsonl", Output::JSONL},
                                                {"ikute", Output::IKUTE},
                                                {"zuzenlex", Output::ZUZENLEX}};
    command
        .add_option(
            "--format", arguments.output,
            "multext (default), cg3 (for vislcg3), conllu, json (one document), "
            "jsonl (an object for each token), cg3-lemara, ikute (the last problem "
            "word of each sentence) or zuzenlex (a verdict for each word)")
        ->transform(one_of(outputs))
        ->type_name("NAME");
    command.add_flag(
        "--jsonl", arguments.records,
        "answer each line of the input with one line, a JSON object with its "
        "tokens");
    command.add_flag(
        "--values", arguments.values,
        "with multext and both cg3: also source, better form and form to use "
        "instead");
    command.add_flag("--exit-zero", arguments.exit_zero,
                     "exit with status 0 also if something is no UTF-8");
    command
        .add_option("--jobs", arguments.jobs,
                    "threads that analyse (default 1; 0: as many as there are cores); "
                    "the output is "
                    "the same")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{0}, MOST_THREADS).description(""));
}

}  // namespace

void add_analyze(CLI::App& app, int& status) {
    CLI::App* command = app.add_subcommand("analyze", "Write the analyses of a text");
    auto arguments = std::make_shared<AnalyzeArguments>();
    add_engine_options(*command, arguments->engine);
    add_output_options(*command, *arguments);
    add_paragraph_options(*command, arguments->paragraphs, arguments->files);
    command->footer(
        "docs/outputs.md describes the formats. cg3, conllu, json and jsonl are UTF-8 "
        "and "
        "hold each word as\nwritten; the others are the engine's own, in the encoding of "
        "the "
        "input, where a word that Latin-1\nlacks is a \"*\".\n"
        "Exit status: 0 done; 1 done, but something was no UTF-8; 2 wrong usage, or a "
        "file "
        "that can't be used;\nthe other files are analysed.\n\n"
        "Examples:\n"
        "  printf 'Kaixo, mundua!\\n' | lemara analyze\n"
        "  lemara analyze --format cg3 letter.txt | vislcg3 -g grammar.cg3\n"
        "  lemara analyze --format conllu letter.txt > letter.conllu");
    command->callback([arguments, &status] { status = analyze(*arguments); });
}

}  // namespace lemara::tools
