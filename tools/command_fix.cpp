// Correcting texts: `lemara fix`. A file is asked through, or corrected where the better
// form is sure, and then replaced as a whole.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>

#include "checker.h"
#include "commands.h"
#include "corrections.h"
#include "engine.h"
#include "failure.h"
#include "files.h"
#include "fix_dialogue.h"
#include "output.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

constexpr std::size_t LOOK_FOR_NUL = 8192;  // bytes at the start of a file

struct FixArguments {
    CheckerArguments checker;
    Encoding encoding = Encoding::UTF_8;
    Paragraphs paragraphs = Paragraphs::LINES;
    bool yes_better = false, dry_run = false;
    std::size_t most = 9;
    std::vector<std::string> files;
};

/// What was decided on one file.
struct Outcome {
    std::vector<Correction> corrections;
    std::size_t left = 0;  // findings that stay, and that nobody accepted
    bool stopped = false;
};

/// The form that --yes-better takes; empty if none is sure. Where readings of a word have
/// different better forms, only its sentence tells which one is meant.
std::string sure_form(const Finding& finding) {
    const bool recommended =
        finding.kind == Kind::better_form || finding.kind == Kind::use_instead;
    return recommended && finding.forms.size() == 1 && finding.complete ? finding.forms[0]
                                                                        : "";
}

class Fixer {
public:
    Fixer(Checker& checker, const FixArguments& arguments)
        : checker_(checker), arguments_(arguments) {
        options_.paragraphs = arguments.paragraphs == Paragraphs::BLANK
                                  ? lemara::Paragraphs::blank
                                  : lemara::Paragraphs::lines;
        options_.most_forms = arguments.yes_better ? 2 : arguments.most;
        if (!arguments.yes_better) dialogue_.emplace(checker);
    }

    /// Works through the bytes of a file.
    Outcome work(const std::string& file, const std::string& bytes) {
        if (bytes.substr(0, LOOK_FOR_NUL).find('\0') != bytes.npos) {
            throw Failure(shown_file(file) + ": not a text: it holds NUL bytes");
        }
        const bool latin1 = arguments_.encoding == Encoding::LATIN_1;
        const std::string text = latin1 ? utf8_from_latin1(bytes) : bytes;
        if (const std::size_t at = find_invalid_utf8(text); at != text.npos) {
            message(shown_file(file) + ": not UTF-8 at byte " + std::to_string(at + 1) +
                    "; such bytes stay as they are (--encoding latin-1?)");
        }
        Outcome outcome;
        checker_.check(text, options_, [&](const Finding& finding) {
            return decide(file, finding, text, outcome);
        });
        return outcome;
    }

private:
    Checker& checker_;
    const FixArguments& arguments_;
    CheckOptions options_;
    std::optional<FixDialogue> dialogue_;

    /// Takes one decision; false to end the check.
    bool decide(const std::string& file, const Finding& finding, const std::string& text,
                Outcome& outcome) {
        if (!dialogue_) {
            if (!correct(finding, sure_form(finding), outcome)) ++outcome.left;
            return true;
        }
        while (!dialogue_->is_settled(finding)) {
            const Answer answer = dialogue_->ask(file, finding, text);
            if (answer.decision == Decision::ACCEPT) return true;
            if (answer.decision == Decision::REPLACE) {
                if (correct(finding, answer.text, outcome)) return true;
                message("that form can't stand there");
                continue;
            }
            ++outcome.left;
            outcome.stopped = answer.decision != Decision::NEXT_FILE;
            if (answer.decision == Decision::ABANDON) outcome.corrections.clear();
            return false;
        }
        return true;
    }

    /// Puts a form in the place of a finding; false if it can't stand there.
    bool correct(const Finding& finding, const std::string& form,
                 Outcome& outcome) const {
        Correction correction{finding.span.begin.byte, finding.span.end.byte,
                              over_the_same_lines(finding.token, form)};
        if (correction.text.empty()) return false;
        if (arguments_.encoding == Encoding::LATIN_1) {  // a character is a byte
            correction.begin = finding.span.begin.code_point;
            correction.end = finding.span.end.code_point;
            char32_t missing = 0;
            const std::string utf8 = correction.text;
            if (!latin1_exactly(utf8, correction.text, missing)) return false;
        }
        if (!outcome.corrections.empty() &&
            correction.begin < outcome.corrections.back().end) {
            return false;
        }
        outcome.corrections.push_back(std::move(correction));
        return true;
    }
};

void tell(const std::string& file, const Outcome& outcome) {
    if (outcome.corrections.empty() && outcome.left == 0) return;
    message(shown_file(file) + ": " + std::to_string(outcome.corrections.size()) +
            " corrected" +
            (outcome.left == 0 ? ""
             : outcome.stopped ? ", not all seen"
                               : ", " + std::to_string(outcome.left) + " left"));
}

/// Corrects one file, or standard input.
Outcome fix_file(Fixer& fixer, const std::string& file, bool dry_run, Results& results) {
    const bool is_file = file != "-";
    host::FileStamp seen;
    if (is_file) {
        require_regular(file);
        if (!dry_run && ::access(file.c_str(), W_OK) != 0) {
            throw Failure(file + ": cannot write: " + std::strerror(errno));
        }
        seen =
            host::FileStamp::of(file);  // before the bytes: a write in between is noticed
    }
    const std::string bytes = read_file(file);
    Outcome outcome = fixer.work(file, bytes);
    if (dry_run) {
        results.write(diff_of(shown_file(file), bytes, outcome.corrections));
    } else if (!is_file) {
        results.write(corrected(bytes, outcome.corrections));
    } else if (!outcome.corrections.empty()) {
        const auto problem = host::replace_unlocked(
            host::target_of(file), corrected(bytes, outcome.corrections), &seen);
        if (problem) throw Failure(problem->text());
    }
    results.flush();
    tell(file, outcome);
    return outcome;
}

int fix(const FixArguments& arguments) {
    if (!arguments.yes_better) {
        if (std::find(arguments.files.begin(), arguments.files.end(), "-") !=
            arguments.files.end()) {
            throw Failure(
                "standard input can't be asked about; --yes-better corrects it");
        }
        if (::isatty(STDIN_FILENO) != 1 || ::isatty(STDERR_FILENO) != 1) {
            throw Failure(
                "no terminal to ask on; --yes-better corrects without questions");
        }
    }
    const std::unique_ptr<Checker> checker = open_checker(arguments.checker);
    Fixer fixer(*checker, arguments);
    Results results;
    int status = DONE;
    for (const std::string& file : arguments.files) {
        try {
            const Outcome outcome = fix_file(fixer, file, arguments.dry_run, results);
            if (outcome.left > 0 && status == DONE) status = FINDINGS;
            if (outcome.stopped) break;
        } catch (const Failure& failure) {
            message(failure.what());
            status = FAILED;
        }
    }
    return status;
}

}  // namespace

void add_fix(CLI::App& app, int& status) {
    CLI::App* command = app.add_subcommand("fix", "Correct texts, asking for each word");
    auto arguments = std::make_shared<FixArguments>();
    add_checker_options(*command, arguments->checker);
    add_encoding_option(*command, arguments->encoding);
    command->add_flag(
        "--yes-better", arguments->yes_better,
        "ask nothing: put the recommended form wherever there is just one, and "
        "leave all else");
    command->add_flag("--dry-run", arguments->dry_run,
                      "write no file, but what would change, as a diff");
    command->add_option("--most", arguments->most, "proposals for a word (default 9)")
        ->type_name("N");
    add_paragraph_options(*command, arguments->paragraphs, arguments->files);
    command->get_option("FILE")->required()->description(
        "text files; - for standard input, with --yes-better");
    command->footer(
        "Shows each finding with its line and proposals, and reads an answer:\n"
        "  NUMBER  take that proposal        r  type a replacement\n"
        "  a  leave the word as it is        A  leave it wherever it stands\n"
        "  d  add it to the personal dictionary\n"
        "  s  leave the rest of this file    q  write what is done, and stop\n"
        "  x  stop, and leave this file as it was\n"
        "A file is replaced when all of it is decided, whole or not at all, and never if "
        "it "
        "has changed\nin the meantime. All bytes but the corrected words stay as they "
        "are. "
        "Standard input goes to\nstandard output.\n"
        "Exit status: 0 nothing is left to correct; 1 findings are left; 2 wrong usage, "
        "or a "
        "file that\ncan't be used; the other files are corrected.\n\n"
        "Examples:\n"
        "  lemara fix letter.txt\n"
        "  lemara fix --yes-better --dry-run *.txt\n"
        "  lemara fix --yes-better - < draft.txt > better.txt");
    command->callback([arguments, &status] { status = fix(*arguments); });
}

}  // namespace lemara::tools
