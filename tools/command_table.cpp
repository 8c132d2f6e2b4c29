#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "Taula.h"
#include "att_convert.h"
#include "commands.h"
#include "compiled.h"
#include "failure.h"
#include "files.h"
#include "lemara/compiled_table.h"
#include "output.h"
#include "table_check.h"

namespace lemara::tools {

namespace {

constexpr std::size_t MOST_REFUSALS =
    20;  // told for one file; a bad symbol is on many arcs

constexpr const char* UNUSABLE = "unusable compiled table: ";

struct ConvertArguments {
    std::string in, out;
    AttOptions options;
};

std::string place(const std::string& file, std::size_t line) {
    return line == 0 ? shown_file(file) : shown_file(file) + ':' + std::to_string(line);
}

void tell_refusals(const std::string& file, const std::vector<Refusal>& refusals) {
    const std::size_t told = std::min(refusals.size(), MOST_REFUSALS);
    for (std::size_t i = 0; i < told; ++i) {
        message(place(file, refusals[i].line) + ": " + refusals[i].text);
    }
    if (told < refusals.size()) {
        message(shown_file(file) + ": " + std::to_string(refusals.size() - told) +
                " more of the kind");
    }
}

/// Writes bytes to a file, or to standard output for "-".
void put(const std::string& file, const std::string& bytes) {
    if (file != "-") return write_file(file, bytes);
    Results results;
    results.write(bytes);
    results.flush();
}

int convert(const ConvertArguments& arguments) {
    const Conversion result = table_from_att(read_file(arguments.in), arguments.options);
    if (!result.refusals.empty()) {
        tell_refusals(arguments.in, result.refusals);
        return FAILED;
    }
    if (result.weighted_line != 0) {
        message(place(arguments.in, result.weighted_line) +
                ": a table has no weights; they are left out");
    }
    put(arguments.out, result.table);
    return DONE;
}

/// The bytes of a table file, deciphered if the library would.
std::string read_table(const std::string& file) {
    std::string bytes = read_file(file);
    const bool enciphered = file.find("SARE8") != file.npos && !is_compiled_table(bytes);
    return enciphered ? crypt_decode(bytes) : bytes;
}

/// The text of a compiled table. Errors: Failure for a damaged one.
std::string text_of_sound(const std::string& file, const std::string& image) {
    const std::string defect = compiled_table_defect(image);
    if (!defect.empty()) throw Failure(shown_file(file) + ": " + UNUSABLE + defect);
    return text_from_compiled(image);
}

struct CompileArguments {
    std::string in, out;
};

int compile(const CompileArguments& arguments) {
    const std::string text = read_table(arguments.in);
    if (is_compiled_table(text)) {
        throw Failure(shown_file(arguments.in) + ": is a compiled table already");
    }
    const std::size_t defects = check_table(text).size();
    const TableStats stats = table_stats(text);
    if (stats.arcs + stats.finals == 0) {
        throw Failure(shown_file(arguments.in) + ": no table; it holds no record");
    }
    put(arguments.out, compile_table_text(text));
    if (defects == 0) return DONE;
    message(shown_file(arguments.in) + ": compiled, but it has " +
            std::to_string(defects) + (defects == 1 ? " defect" : " defects") +
            "; lemara table check lists them");
    return FINDINGS;
}

int write_text(const CompileArguments& arguments) {
    const std::string image = read_file(arguments.in);
    put(arguments.out, text_of_sound(arguments.in, image));
    return DONE;
}

/// The defects of a table in either form. Those of a compiled one have no lines.
std::vector<Defect> defects_of(const std::string& bytes) {
    if (!is_compiled_table(bytes)) return check_table(bytes);
    const std::string damage = compiled_table_defect(bytes);
    if (!damage.empty()) return {{0, UNUSABLE + damage}};
    std::vector<Defect> defects = check_table(text_from_compiled(bytes));
    for (Defect& defect : defects) defect.line = 0;
    return defects;
}

int check(const std::vector<std::string>& files) {
    Results results;
    int status = DONE;
    for (const std::string& file : files) {
        for (const Defect& defect : defects_of(read_table(file))) {
            results.write(place(file, defect.line) + ": " + defect.text + '\n');
            status = FINDINGS;
        }
    }
    results.flush();
    return status;
}

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, value < 1e15 ? "%.0f" : "%.3e", value);
    return text;
}

void write_stats(Results& results, const std::string& file, const TableStats& stats,
                 bool compiled) {
    const auto row = [&](const char* name, const std::string& value) {
        std::string line = name;
        line.resize(24, ' ');
        results.write(line + value + '\n');
    };
    results.write(shown_file(file) + '\n');
    row("  form", compiled ? "compiled" : "text");
    row("  bytes", std::to_string(stats.bytes));
    row("  states", std::to_string(stats.states));
    row("  records", std::to_string(stats.arcs + stats.finals));
    row("  arcs", std::to_string(stats.arcs));
    row("  final states", std::to_string(stats.finals));
    row("  symbol pairs", std::to_string(stats.pairs));
    row("  upper symbols", std::to_string(stats.upper_symbols));
    row("  tags", std::to_string(stats.tags));
    row("  lower symbols", std::to_string(stats.lower_symbols));
    row("  most arcs of a state", std::to_string(stats.most_arcs));
    if (!compiled) {
        row("  longest record", std::to_string(stats.longest_record) + " bytes");
    }
    if (!stats.finite) return row("  paths", "without number: the table has cycles");
    row("  paths", number(stats.words));
    row("  longest path", std::to_string(stats.longest_path) + " arcs");
    row("  longest word", std::to_string(stats.longest_word) + " bytes");
    row("  longest analysis", std::to_string(stats.longest_analysis) + " bytes");
}

int print_stats(const std::vector<std::string>& files) {
    Results results;
    for (const std::string& file : files) {
        const std::string bytes = read_table(file);
        const bool compiled = is_compiled_table(bytes);
        TableStats stats = table_stats(compiled ? text_of_sound(file, bytes) : bytes);
        stats.bytes = bytes.size();
        write_stats(results, file, stats, compiled);
    }
    results.flush();
    return DONE;
}

void add_convert(CLI::App& table, int& status) {
    CLI::App* command =
        table.add_subcommand("convert", "Write a network in AT&T text as a table");
    auto arguments = std::make_shared<ConvertArguments>();
    command
        ->add_option(
            "IN", arguments->in,
            "AT&T text in UTF-8, as foma's \"write att\" gives it; - for standard input")
        ->required();
    command
        ->add_option("-o,--output", arguments->out,
                     "the table to write; - for standard output")
        ->type_name("FILE")
        ->required();
    command->add_flag(
        "--lower", arguments->options.lower,
        "lower the capitals of the lower side; without it they are refused");
    command->footer(
        "Exit status: 0 written; 2 refused, or a file that can't be used.\n\n"
        "Examples:\n"
        "  foma -q -e 'read lexc words.lexc' -e 'write att > words.att' -s\n"
        "  lemara table convert --lower words.att -o words.sare");
    command->callback([arguments, &status] { status = convert(*arguments); });
}

CLI::App* add_in_and_out(CLI::App& table, const char* name, const char* about,
                         const char* in, const char* out,
                         const std::shared_ptr<CompileArguments>& arguments) {
    CLI::App* command = table.add_subcommand(name, about);
    command->add_option("IN", arguments->in, in)->required();
    command->add_option("-o,--output", arguments->out, out)
        ->type_name("FILE")
        ->required();
    return command;
}

void add_compile(CLI::App& table, int& status) {
    auto arguments = std::make_shared<CompileArguments>();
    CLI::App* command = add_in_and_out(
        table, "compile", "Write a table in the form that is mapped and used in place",
        "a table; - for standard input",
        "the compiled table to write; - for standard output", arguments);
    command->footer(
        "A compiled table answers like the text that it was made from, and is recognised "
        "by its\nfirst bytes, whatever its name. It is checked whenever it is opened. "
        "\"lemara table text\"\nmakes text of it again.\n"
        "Exit status: 0 written; 1 written, but the table has defects; 2 a file that "
        "can't be used.\n\n"
        "Example:\n"
        "  lemara table compile eumorfo.sare -o eumorfo.sarec");
    command->callback([arguments, &status] { status = compile(*arguments); });
}

void add_text(CLI::App& table, int& status) {
    auto arguments = std::make_shared<CompileArguments>();
    CLI::App* command =
        add_in_and_out(table, "text", "Write a compiled table as text",
                       "a compiled table; - for standard input",
                       "the text to write; - for standard output", arguments);
    command->footer(
        "Exit status: 0 written; 2 a file that can't be used.\n\n"
        "Example:\n"
        "  lemara table text eumorfo.sarec -o eumorfo.sare");
    command->callback([arguments, &status] { status = write_text(*arguments); });
}

void add_files_command(CLI::App& table, int& status, const char* name, const char* about,
                       const char* footer, int (*run)(const std::vector<std::string>&)) {
    CLI::App* command = table.add_subcommand(name, about);
    auto files = std::make_shared<std::vector<std::string>>();
    command->add_option("FILE", *files, "table files; - for standard input")->required();
    command->footer(footer);
    command->callback([files, run, &status] { status = run(*files); });
}

}  // namespace

void add_table(CLI::App& app, int& status) {
    CLI::App* table = app.add_subcommand("table", "Make, check and measure tables");
    table->require_subcommand(1);
    table->footer(
        "Examples:\n"
        "  lemara table convert --lower words.att -o words.sare\n"
        "  lemara table check words.sare\n"
        "  lemara table compile words.sare -o words.sarec");
    add_convert(*table, status);
    add_compile(*table, status);
    add_text(*table, status);
    add_files_command(
        *table, status, "check", "List every defect of a table with its line",
        "Exit status: 0 no defect; 1 defects; 2 a file that can't be used.\n\n"
        "Example:\n"
        "  lemara table check eumorfo.sare hp.sare",
        check);
    add_files_command(*table, status, "stats", "Tell the size of a table",
                      "Exit status: 0 told; 2 a file that can't be used.\n\n"
                      "Example:\n"
                      "  lemara table stats eumorfo.sare",
                      print_stats);
}

}  // namespace lemara::tools
