// How much of a text the lexicon knows.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "commands.h"
#include "engine.h"
#include "failure.h"
#include "progress.h"
#include "word_kinds.h"

namespace lemara::tools {

namespace {

constexpr const char* UNKNOWN_TAGS = " EZZG";  // of the one analysis of an unknown token

struct CoverageArguments {
    EngineArguments engine;
    Paragraphs paragraphs = Paragraphs::LINES;
    std::size_t top = 20;
    std::vector<std::string> files;
};

struct Type {
    WordKind kind = WordKind::SIGN;
    bool known = true;
    std::size_t count = 0;
};

using Types = std::unordered_map<std::string, Type>;

bool is_known(const Tokena& token) {
    return token.analisiak.size() != 1 || token.analisiak[0].etiketa != UNKNOWN_TAGS;
}

void count_tokens(const Paragrafoa& paragraph, Types& types) {
    for (const Esaldia& sentence : paragraph.esaldiak) {
        for (const Tokena& token : sentence.tokenak) {
            if (token.testua.empty()) continue;  // of a sentence without words
            Type& type = types[token.testua];
            if (type.count == 0) {
                type.kind = kind_of_word(token.testua);
                type.known = is_known(token);
            }
            ++type.count;
        }
    }
}

struct Figures {
    std::size_t tokens = 0, known_tokens = 0, types = 0, known_types = 0;

    void add(const Type& type) {
        tokens += type.count;
        types += 1;
        if (!type.known) return;
        known_tokens += type.count;
        known_types += 1;
    }
};

std::string share(std::size_t part, std::size_t whole) {
    if (whole == 0) return "-";
    char text[16];
    std::snprintf(text, sizeof text, "%.2f %%",
                  100.0 * static_cast<double>(part) / static_cast<double>(whole));
    return text;
}

std::string row(const std::string& name, const std::array<std::string, 6>& cells) {
    constexpr std::size_t NAME_WIDTH = 26, CELL_WIDTH = 10;
    std::string line = name;
    line.resize(NAME_WIDTH, ' ');
    for (const std::string& cell : cells) {
        line +=
            std::string(CELL_WIDTH - std::min(CELL_WIDTH - 1, cell.size()), ' ') + cell;
    }
    return line + '\n';
}

std::string row(const std::string& name, const Figures& figures) {
    return row(
        name,
        {std::to_string(figures.tokens), std::to_string(figures.known_tokens),
         share(figures.known_tokens, figures.tokens), std::to_string(figures.types),
         std::to_string(figures.known_types), share(figures.known_types, figures.types)});
}

std::string table_of(const Types& types) {
    std::array<Figures, WORD_KINDS> kinds;
    Figures words;
    for (const auto& entry : types) {
        kinds[static_cast<std::size_t>(entry.second.kind)].add(entry.second);
        if (is_word(entry.second.kind)) words.add(entry.second);
    }
    const auto of = [&](WordKind kind) { return kinds[static_cast<std::size_t>(kind)]; };
    return row("", {"tokens", "known", "share", "types", "known", "share"}) +
           row("words", words) + row("  beginning in lower case", of(WordKind::SMALL)) +
           row("  capitalised", of(WordKind::CAPITALISED)) +
           row("  all capitals", of(WordKind::CAPITALS)) +
           row("  with digits", of(WordKind::WITH_DIGITS)) +
           row("numbers", of(WordKind::NUMBER)) + row("punctuation", of(WordKind::SIGN));
}

/// The unknown tokens, the commonest in front; in the order of their bytes if they are as
/// common.
std::vector<std::pair<std::string, std::size_t>> unknown_ones(const Types& types,
                                                              std::size_t most) {
    std::vector<std::pair<std::string, std::size_t>> found;
    for (const auto& entry : types) {
        if (!entry.second.known) found.emplace_back(entry.first, entry.second.count);
    }
    const auto commoner = [](const auto& a, const auto& b) {
        return a.second != b.second ? a.second > b.second : a.first < b.first;
    };
    std::sort(found.begin(), found.end(), commoner);
    if (found.size() > most) found.resize(most);
    return found;
}

int cover(const CoverageArguments& arguments) {
    Session session(arguments.engine);
    Progress progress(arguments.files);
    std::size_t complaints = 0;
    std::string first_complaint;
    TextReader reader(arguments.files, arguments.engine.encoding, arguments.paragraphs,
                      [&](const std::string& text) {
                          if (complaints++ == 0) first_complaint = text;
                      });
    Types types;
    for (Piece piece; reader.next(piece);) {
        if (!piece.usable) continue;
        session.printed([&] {
            count_tokens(session.engine().analizatu_paragrafoa(1, piece.text), types);
        });
        progress.reached(reader.bytes_read());
    }
    progress.wipe();
    if (complaints > 0) message(first_complaint);
    if (complaints > 1) message(std::to_string(complaints - 1) + " more of the kind");
    session.write(table_of(types));
    const auto unknown = unknown_ones(types, arguments.top);
    if (!unknown.empty()) session.write("\n");
    for (const auto& [text, count] : unknown) {
        session.write(std::to_string(count) + '\t' + text + '\n');
    }
    session.flush();
    return reader.refused() ? FINDINGS : DONE;
}

}  // namespace

void add_coverage(CLI::App& app, int& status) {
    CLI::App* command =
        app.add_subcommand("coverage", "Tell how much of a text the lexicon knows");
    auto arguments = std::make_shared<CoverageArguments>();
    add_engine_options(*command, arguments->engine);
    command
        ->add_option("--top", arguments->top,
                     "how many of the commonest unknown words to list (default 20)")
        ->type_name("N");
    add_paragraph_options(*command, arguments->paragraphs, arguments->files);
    command->footer(
        "A token is what the engine makes one of: a word, a sign, or a multi-word entry. "
        "Words have a letter;\nnumbers and punctuation have none and are told apart. "
        "\"Types\" counts each different token once.\nBehind the table stand the "
        "commonest unknown tokens with their counts.\n"
        "Exit status: 0 done; 1 done, but lines could not be read; 2 wrong usage, or a "
        "file that can't be used.\n\n"
        "Examples:\n"
        "  lemara coverage book.txt\n"
        "  lemara coverage --top 1000 *.txt | grep -v '^1[[:space:]]'");
    command->callback([arguments, &status] { status = cover(*arguments); });
}

}  // namespace lemara::tools
