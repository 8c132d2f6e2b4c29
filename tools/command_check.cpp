// Checking texts: `lemara check`. Files are cut into chunks between paragraphs; chunks
// are checked by themselves, in several threads if asked for, and told in their order.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <string_view>
#include <thread>

#include "check_formats.h"
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
#include "progress.h"
#include "render.h"
#include "terminal.h"

namespace lemara::tools {

namespace {

enum class Output { TEXT, ZUZENLEX, JSON, JSONL, SARIF, GITHUB };
enum class Colour { AUTO, ALWAYS, NEVER };

struct CheckArguments {
    CheckerArguments checker;
    Encoding encoding = Encoding::UTF_8;
    Paragraphs paragraphs = Paragraphs::LINES;
    Output output = Output::TEXT;
    Colour colour = Colour::AUTO;
    bool no_suggest = false, fail_fast = false, foreign = false, records = false;
    bool summary = false, exit_zero = false;
    std::size_t most = 8, jobs = 1;
    std::vector<std::string> files;
};

CheckFormat format_of(Output output) {
    switch (output) {
        case Output::JSON:
            return CheckFormat::JSON;
        case Output::JSONL:
            return CheckFormat::JSONL;
        case Output::SARIF:
            return CheckFormat::SARIF;
        case Output::GITHUB:
            return CheckFormat::GITHUB;
        default:
            return CheckFormat::TEXT;
    }
}

/// A chunk and what was found in it. Places count from the start of the chunk.
struct CheckedChunk {
    ChunkText text;
    std::vector<Finding> findings;
    std::size_t words = 0;
    std::string records;  // with --jsonl
};

/// Stretches between blanks that hold a letter, or what may be one.
std::size_t count_words(std::string_view text) {
    std::size_t words = 0;
    bool letter = false;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool blank = byte == ' ' || (byte >= '\t' && byte <= '\r');
        const unsigned char lower = byte | 0x20;
        if (blank) {
            words += letter;
            letter = false;
        } else if ((lower >= 'a' && lower <= 'z') || byte >= 0x80) {
            letter = true;
        }
    }
    return words + letter;
}

/// Checks chunks. May be used by several threads.
class ChunkCheck {
public:
    ChunkCheck(const Checker& checker, const CheckArguments& arguments)
        : checker_(checker), arguments_(arguments) {
        options_.paragraphs = arguments.paragraphs == Paragraphs::BLANK
                                  ? lemara::Paragraphs::blank
                                  : lemara::Paragraphs::lines;
        options_.most_forms = arguments.no_suggest ? 0 : arguments.most;
        options_.report_foreign = arguments.foreign;
    }

    CheckedChunk operator()(Chunk chunk) const {
        CheckedChunk result;
        result.text = ChunkText(std::move(chunk), arguments_.encoding);
        result.words = count_words(result.text.chunk.text);
        if (arguments_.records) {
            make_records(result);
        } else {
            find_all(result);
        }
        return result;
    }

private:
    const Checker& checker_;
    const CheckArguments& arguments_;
    CheckOptions options_;

    void find_all(CheckedChunk& result) const {
        result.text.with_spans([&](std::string_view text, const auto& correct) {
            checker_.check(text, options_, [&](const Finding& finding) {
                result.findings.push_back(finding);
                correct(result.findings.back().span);
                return !arguments_.fail_fast;
            });
        });
    }

    void make_records(CheckedChunk& result) const {
        for_each_line(result.text.chunk.text, [&](std::string_view line) {
            std::string entries;
            for (const Finding& finding : checker_.check(line, options_)) {
                entries += (entries.empty() ? "" : ",") + to_json(finding);
                result.findings.push_back(finding);
            }
            result.records += "{\"findings\":[" + entries + "]}\n";
        });
    }
};

std::string counted(std::size_t count, const char* thing) {
    return std::to_string(count) + ' ' + thing + (count == 1 ? "" : "s");
}

/// Tells what the chunks bring, in their order.
class Report {
public:
    explicit Report(const CheckArguments& arguments)
        : arguments_(arguments),
          format_(format_of(arguments.output)),
          files_(arguments.files.empty() ? std::vector<std::string>{"-"}
                                         : arguments.files),
          progress_(arguments.files),
          on_terminal_(::isatty(STDOUT_FILENO) == 1),
          coloured_(arguments.colour == Colour::ALWAYS ||
                    (arguments.colour == Colour::AUTO && on_terminal_ &&
                     has_terminal_colours())),
          with_lines_(format_ == CheckFormat::TEXT && (on_terminal_ || coloured_)),
          width_(width_of_terminal(STDOUT_FILENO)) {
        if (!arguments.records) results_.write(report_head(format_, version()));
    }

    void take(const CheckedChunk& checked) {
        const Chunk& chunk = checked.text.chunk;
        file_ = files_[chunk.file] == "-" ? "standard input" : files_[chunk.file];
        places_.enter(checked.text);
        const std::string complaint = places_.complaint(checked.text, file_);
        if (!complaint.empty()) tell_message(complaint);
        for (const Finding& finding : checked.findings) tell(finding, chunk.text);
        results_.write(checked.records);
        places_.leave(checked.text);
        words_ += checked.words;
        bytes_ += chunk.text.size();
        if (!chunk.trouble.empty()) {
            failed_ = true;
            tell_message(chunk.trouble);
        }
        progress_.reached(bytes_);
        if (results_wanted_now()) results_.flush();
    }

    bool ended() const { return arguments_.fail_fast && findings_ > 0; }

    int finish() {
        progress_.wipe();
        if (!arguments_.records) results_.write(report_tail(format_));
        results_.flush();
        if (arguments_.summary) tell_summary();
        if (failed_) return FAILED;
        return findings_ > 0 && !arguments_.exit_zero ? FINDINGS : DONE;
    }

private:
    const CheckArguments& arguments_;
    CheckFormat format_;
    std::vector<std::string> files_;
    Results results_;
    Progress progress_;
    bool on_terminal_, coloured_, with_lines_;
    std::size_t width_;
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::string file_;
    ChunkPlaces places_;
    bool failed_ = false;
    std::size_t findings_ = 0, words_ = 0;
    std::uint64_t bytes_ = 0;

    /// What comes from a pipe or a terminal is answered as it comes.
    bool results_wanted_now() const { return on_terminal_ || file_ == "standard input"; }

    void tell(Finding finding, const std::string& text) {
        if (ended()) return;
        if (on_terminal_) progress_.wipe();
        ++findings_;
        if (arguments_.records) return;
        const std::size_t begin = finding.span.begin.byte, end = finding.span.end.byte;
        places_.shift(finding.span);
        results_.write(with_lines_ && arguments_.encoding == Encoding::UTF_8
                           ? with_its_line(file_, finding, before_on_line(text, begin),
                                           after_on_line(text, end),
                                           width_ - SIDE_MARGINS, coloured_)
                           : report_entry(format_, file_, finding, findings_ == 1));
    }

    void tell_message(const std::string& text) {
        progress_.wipe();
        if (on_terminal_) results_.flush();
        message(text);
    }

    void tell_summary() {
        const auto time =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start_);
        char seconds[32];
        std::snprintf(seconds, sizeof seconds, "%.3f s", time.count());
        message(counted(findings_, "finding") + " in " + counted(words_, "word") +
                " of " + counted(files_.size(), "file") + ", " + seconds);
    }
};

int check_as_findings(const CheckArguments& arguments) {
    const std::unique_ptr<Checker> checker = open_checker(arguments.checker);
    ChunkReader reader(arguments.files,
                       chunk_ends(arguments.paragraphs, arguments.records));
    Report report(arguments);
    OrderedJobs<Chunk, CheckedChunk> jobs(
        thread_count(arguments.jobs), ChunkCheck(*checker, arguments),
        [&](const CheckedChunk& checked) { report.take(checked); });
    for (Chunk chunk; !report.ended() && reader.next(chunk);) jobs.add(std::move(chunk));
    if (!report.ended()) jobs.finish();
    return report.finish();
}

/// True if a token of the mark-up is unknown or has a better form. Nothing in the mark-up
/// is escaped, but no token begins a line, so lines can be told apart.
bool has_findings(std::string_view markup) {
    const auto begins = [](std::string_view text, std::string_view start) {
        return text.substr(0, start.size()) == start;
    };
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

int check_as_markup(const CheckArguments& arguments) {
    const std::unique_ptr<Checker> checker = open_checker(arguments.checker);
    RenderArguments wanted;
    wanted.format = Format::check;
    wanted.variants = !arguments.no_suggest;
    wanted.encoding = arguments.encoding;
    wanted.paragraphs = arguments.paragraphs;
    wanted.jobs = arguments.jobs;
    wanted.files = arguments.files;
    bool findings = false;
    const int status = render_texts(*checker, wanted, [&](const std::string& rendered) {
        findings = findings || has_findings(rendered);
        return !(findings && arguments.fail_fast);
    });
    if (status == FAILED) return FAILED;
    return (findings || status == FINDINGS) && !arguments.exit_zero ? FINDINGS : DONE;
}

int check(const CheckArguments& arguments) {
    if (arguments.output != Output::ZUZENLEX) return check_as_findings(arguments);
    for (const auto& [given, option] :
         {std::pair(arguments.records, "--jsonl"), {arguments.summary, "--summary"}}) {
        if (given)
            throw Failure(std::string(option) + " does not go with --format zuzenlex");
    }
    return check_as_markup(arguments);
}

void add_output_options(CLI::App& command, CheckArguments& arguments) {
    const std::map<std::string, Output> outputs{
        {"text", Output::TEXT},   {"zuzenlex", Output::ZUZENLEX},
        {"json", Output::JSON},   {"jsonl", Output::JSONL},
        {"sarif", Output::SARIF}, {"github", Output::GITHUB}};
    command
        .add_option(
            "--format", arguments.output,
            "text (default), json (one document), jsonl (an object for each "
            "finding), sarif, github (commands of a workflow) or zuzenlex (a verdict "
            "for each token, as the engine writes it)")
        ->transform(one_of(outputs))
        ->type_name("NAME");
    command.add_flag(
        "--jsonl", arguments.records,
        "answer each line of the input with one line, a JSON object with its "
        "findings");
    const std::map<std::string, Colour> colours{
        {"auto", Colour::AUTO}, {"always", Colour::ALWAYS}, {"never", Colour::NEVER}};
    command
        .add_option(
            "--color", arguments.colour,
            "auto (default: on a terminal, unless NO_COLOR is set), always, never")
        ->transform(one_of(colours))
        ->type_name("WHEN");
    command.add_flag("--summary", arguments.summary,
                     "tell findings, words and time at the end");
}

}  // namespace

void add_check(CLI::App& app, int& status) {
    CLI::App* command = app.add_subcommand("check", "Check the spelling of texts");
    auto arguments = std::make_shared<CheckArguments>();
    add_checker_options(*command, arguments->checker);
    add_encoding_option(*command, arguments->encoding);
    add_output_options(*command, *arguments);
    command->add_flag("--no-suggest", arguments->no_suggest,
                      "no proposals and no better forms; much faster");
    command->add_option("--most", arguments->most, "proposals for a word (default 8)")
        ->type_name("N");
    command->add_flag("--foreign", arguments->foreign,
                      "tell words in other scripts, too");
    command->add_flag("--exit-zero", arguments->exit_zero,
                      "exit with status 0 also if there are findings");
    command->add_flag("--fail-fast", arguments->fail_fast, "end at the first finding");
    command
        ->add_option("--jobs", arguments->jobs,
                     "threads that check (default 1; 0: as many as there are cores); the "
                     "output is the same")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{0}, MOST_THREADS).description(""));
    add_paragraph_options(*command, arguments->paragraphs, arguments->files);
    command->footer(
        "Writes FILE:LINE:COLUMN: WORD \xE2\x86\x92 PROPOSALS for each finding, on a "
        "terminal with the line; nothing if\nall is well. Columns count characters from "
        "1. "
        "Web and mail addresses, paths, and words in other\nscripts are passed over. "
        "docs/command-line.md describes the formats.\n"
        "Exit status: 0 all is right; 1 there were findings; 2 wrong usage, or a file "
        "that "
        "can't be used;\nthe other files are checked.\n\n"
        "Examples:\n"
        "  lemara check letter.txt\n"
        "  printf 'Kaixo, mundua!\\n' | lemara check\n"
        "  lemara check --jobs 0 --no-suggest --summary *.txt\n"
        "  lemara check --format sarif docs/*.md > lemara.sarif\n"
        "  lemara check --format zuzenlex letter.txt");
    command->callback([arguments, &status] { status = check(*arguments); });
}

}  // namespace lemara::tools
