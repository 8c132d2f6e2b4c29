#include "engine.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "configuration.h"
#include "failure.h"
#include "lemara/checker.h"

namespace lemara::tools {

namespace {

std::string default_configuration() {
    std::vector<std::string> looked;
    std::string path = find_configuration(&looked);
    if (!path.empty()) return path;
    std::string places;
    for (const std::string& place : looked) places += (places.empty() ? "" : ", ") + place;
    throw Failure("no tables: name a configuration with --config; none is at " + places);
}

std::vector<ListedTable> find_tables(const std::string& configuration) {
    if (!configuration.empty()) return read_configuration(configuration, "");
    // The tables that came with the command lie beside their list, wherever that is.
    const std::string path = default_configuration();
    return read_configuration(path, std::filesystem::path(path).parent_path().string());
}

/// While one stands, an exit of the process is a failure: the library ends the process,
/// with status 0, when a table vanishes between our look at it and its own.
class NoExit {
public:
    NoExit() {
        static const int registered = std::atexit([] {
            if (!standing_) return;
            message("a table vanished while it was loaded");
            ::_exit(FAILED);
        });
        static_cast<void>(registered);
        standing_ = true;
    }
    ~NoExit() { standing_ = false; }
    NoExit(const NoExit&) = delete;
    NoExit& operator=(const NoExit&) = delete;

private:
    static inline bool standing_ = false;
};

void load_networks(Lemara& engine, const std::vector<ListedTable>& tables) {
    const NoExit guard;
    for (const ListedTable& table : tables) {
        auto network =
            std::make_unique<Sarea>(table.key, table.path, new Taula(table.path));
        Sarea*& slot = engine.sareak[table.key];
        delete slot;  // a later network of the same key replaces an earlier one
        slot = network.release();
    }
}

}  // namespace

void add_engine_options(CLI::App& command, EngineArguments& arguments) {
    command.add_option(
        "--config", arguments.configuration,
        "configuration file that lists the tables, one a line; without it the "
        "tables that came with lemara");
    command.add_option("--dictionary", arguments.dictionary,
                       "personal dictionary, in Latin-1");
    add_encoding_option(command, arguments.encoding);
}

void add_encoding_option(CLI::App& command, Encoding& encoding) {
    const std::map<std::string, Encoding> encodings{{"utf-8", Encoding::UTF_8},
                                                    {"latin-1", Encoding::LATIN_1}};
    command
        .add_option("--encoding", encoding,
                    "encoding of text in and out: utf-8 (default) or latin-1")
        ->transform(CLI::CheckedTransformer(encodings, CLI::ignore_case).description(""))
        ->type_name("NAME");
}

void add_paragraph_options(CLI::App& command, Paragraphs& paragraphs,
                           std::vector<std::string>& files) {
    const std::map<std::string, Paragraphs> ends{{"lines", Paragraphs::LINES},
                                                 {"blank", Paragraphs::BLANK}};
    command
        .add_option(
            "--paragraphs", paragraphs,
            "what a paragraph is: lines (default; each line is one) or blank (blank "
            "lines stand between them)")
        ->transform(CLI::CheckedTransformer(ends).description(""))
        ->type_name("NAME");
    command.add_option("FILE", files, "text files; - or none for standard input");
}

Session::Session(const EngineArguments& arguments) : encoding_(arguments.encoding) {
    const std::vector<ListedTable> tables = find_tables(arguments.configuration);
    if (!arguments.dictionary.empty()) {
        for (const std::string& note : check_dictionary(arguments.dictionary))
            message(note);
    }
    engine_ = std::make_unique<Lemara>();
    load_networks(*engine_, tables);
    engine_->konfigurazioa = arguments.configuration;
    engine_->hiztegiFitxategia = arguments.dictionary;
    engine_->hiztegiPertsonala = arguments.dictionary.empty()
                                     ? new HiztegiPertsonala()
                                     : new HiztegiPertsonala(arguments.dictionary);
    if (!arguments.dictionary.empty() && network("hp") == nullptr) {
        throw Failure(
            "no network \"hp\", which a personal dictionary needs; list a table with "
            "that file name in the configuration");
    }
}

const Sarea* Session::network(const std::string& key) const {
    const auto found = engine_->sareak.find(key);
    return found == engine_->sareak.end() ? nullptr : found->second;
}

bool Session::decode(const std::string& place, const std::string& typed,
                     std::string& word) {
    std::string complaint;
    std::optional<std::string> latin1 = decoded(typed, encoding_, complaint);
    if (!complaint.empty()) {
        message(place + ": " + complaint + (latin1 ? "" : "; word passed over"));
    }
    if (!latin1) return false;
    word = std::move(*latin1);
    return true;
}

}  // namespace lemara::tools
