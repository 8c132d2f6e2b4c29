#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "att_convert.h"
#include "commands.h"
#include "failure.h"
#include "files.h"
#include "output.h"
#include "table_check.h"

namespace lemara::tools {

namespace {

constexpr std::size_t MOST_REFUSALS =
    20;  // told for one file; a bad symbol is on many arcs

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
    if (arguments.out == "-") {
        Results results;
        results.write(result.table);
        results.flush();
    } else {
        write_file(arguments.out, result.table);
    }
    return DONE;
}

int check(const std::vector<std::string>& files) {
    Results results;
    int status = DONE;
    for (const std::string& file : files) {
        for (const Defect& defect : check_table(read_file(file))) {
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

void write_stats(Results& results, const std::string& file, const TableStats& stats) {
    const auto row = [&](const char* name, const std::string& value) {
        std::string line = name;
        line.resize(24, ' ');
        results.write(line + value + '\n');
    };
    results.write(shown_file(file) + '\n');
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
    row("  longest record", std::to_string(stats.longest_record) + " bytes");
    if (!stats.finite) return row("  paths", "without number: the table has cycles");
    row("  paths", number(stats.words));
    row("  longest path", std::to_string(stats.longest_path) + " arcs");
    row("  longest word", std::to_string(stats.longest_word) + " bytes");
    row("  longest analysis", std::to_string(stats.longest_analysis) + " bytes");
}

int print_stats(const std::vector<std::string>& files) {
    Results results;
    for (const std::string& file : files) {
        write_stats(results, file, table_stats(read_file(file)));
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
        "  lemara table check words.sare");
    add_convert(*table, status);
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
